#include "ui/ad/GaugeAccessible.h"

#include "ui/ad/CountdownGauge.h"

namespace orvella {

namespace {

QAccessibleInterface* create(const QString& /*className*/, QObject* object)
{
    auto* const gauge = qobject_cast<CountdownGauge*>(object);
    return gauge != nullptr ? new GaugeAccessible(gauge) : nullptr;
}

} // namespace

GaugeAccessible::GaugeAccessible(CountdownGauge* gauge)
    : QAccessibleWidget(gauge, QAccessible::ProgressBar)
{
}

void GaugeAccessible::install()
{
    QAccessible::installFactory(create);
}

QString GaugeAccessible::text(QAccessible::Text kind) const
{
    if (kind == QAccessible::Value)
        return CountdownGauge::tr("%1 seconds").arg(gauge().remaining());
    return QAccessibleWidget::text(kind);
}

void* GaugeAccessible::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::ValueInterface)
        return static_cast<QAccessibleValueInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

QVariant GaugeAccessible::currentValue() const
{
    return static_cast<qlonglong>(gauge().remaining());
}

QVariant GaugeAccessible::maximumValue() const
{
    return static_cast<qlonglong>(gauge().total());
}

const CountdownGauge& GaugeAccessible::gauge() const
{
    return *static_cast<const CountdownGauge*>(object());
}

} // namespace orvella
