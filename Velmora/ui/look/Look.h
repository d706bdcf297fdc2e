#pragma once

#include "ui/look/Theme.h"
#include "ui/look/TypeStyle.h"

#include <QFont>
#include <QObject>

namespace orvella {

class DesktopLook;

/// How everything is drawn: colours, fonts and motion, following the desktop while the program runs.
class Look final : public QObject {
    Q_OBJECT

public:
    explicit Look(DesktopLook& desktop);

    [[nodiscard]] const Theme& theme() const { return m_theme; }
    [[nodiscard]] bool isMotionReduced() const;

    /// The style in the desktop's own fonts and at its text size.
    [[nodiscard]] QFont font(TypeStyle style) const;
    /// The height of a line in points.
    [[nodiscard]] int lineHeight(TypeStyle style) const;
    /// A length that grows with the text, in points.
    [[nodiscard]] int scaled(int points) const;

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void changed();

private:
    void refresh();
    [[nodiscard]] Theme currentTheme() const;

    DesktopLook& m_desktop;
    Theme m_theme;
};

} // namespace orvella
