#pragma once

#include <QAccessibleWidget>

namespace orvella {

/// What assistive technology is told about a `LinkButton`: it is a link and can be followed.
class LinkAccessible final : public QAccessibleWidget {
public:
    explicit LinkAccessible(QWidget* link);

    /// Makes the toolkit use it, from now on.
    static void install();

    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    [[nodiscard]] QStringList actionNames() const override;
    void doAction(const QString& action) override;
};

} // namespace orvella
