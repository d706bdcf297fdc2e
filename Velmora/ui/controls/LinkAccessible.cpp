#include "ui/controls/LinkAccessible.h"

#include "ui/controls/LinkButton.h"

namespace orvella {

namespace {

QAccessibleInterface* create(const QString& /*className*/, QObject* object)
{
    auto* const link = qobject_cast<LinkButton*>(object);
    return link != nullptr ? new LinkAccessible(link) : nullptr;
}

} // namespace

LinkAccessible::LinkAccessible(QWidget* link)
    : QAccessibleWidget(link, QAccessible::Link)
{
}

void LinkAccessible::install()
{
    QAccessible::installFactory(create);
}

QString LinkAccessible::text(QAccessible::Text kind) const
{
    const auto given = QAccessibleWidget::text(kind);
    if (kind == QAccessible::Name && given.isEmpty())
        return static_cast<const QAbstractButton*>(object())->text();
    return given;
}

QStringList LinkAccessible::actionNames() const
{
    return QStringList {pressAction()} + QAccessibleWidget::actionNames();
}

void LinkAccessible::doAction(const QString& action)
{
    if (action == pressAction())
        static_cast<QAbstractButton*>(object())->click();
    else
        QAccessibleWidget::doAction(action);
}

} // namespace orvella
