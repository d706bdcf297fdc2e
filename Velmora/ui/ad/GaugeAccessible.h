#pragma once

#include <QAccessibleWidget>

namespace orvella {

class CountdownGauge;

/// What assistive technology reads of a `CountdownGauge`: a progress whose value is the seconds that are left.
class GaugeAccessible final : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit GaugeAccessible(CountdownGauge* gauge);

    /// Makes the toolkit use it, from now on.
    static void install();

    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    [[nodiscard]] QVariant currentValue() const override;
    /// The viewer cannot set the time.
    void setCurrentValue(const QVariant& value) override { Q_UNUSED(value) }
    [[nodiscard]] QVariant maximumValue() const override;
    [[nodiscard]] QVariant minimumValue() const override { return 0; }
    [[nodiscard]] QVariant minimumStepSize() const override { return 1; }

private:
    [[nodiscard]] const CountdownGauge& gauge() const;
};

} // namespace orvella
