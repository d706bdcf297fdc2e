#pragma once

#include "base/Clock.h"
#include "ui/look/Look.h"
#include "ui/popover/HostedWidget.h"
#include "ui/popover/PopoverFrame.h"
#include "ui/popover/PopoverPlacement.h"

#include <QVariantAnimation>
#include <QWidget>

#include <functional>

namespace orvella {

class PressWatch;
class WindowSystem;

/// A window that hangs from something and points at it.
///
/// Where the desktop places windows itself it is an ordinary small window; where the window system has popovers of its
/// own, it is the content of one.
class Popover final : public QWidget {
    Q_OBJECT

public:
    enum class Behaviour {
        /// It goes with a click elsewhere, with Escape, and when another program takes the keyboard from it.
        transient,
        /// It stays until the program closes it.
        applicationDefined,
    };

    /// Whether a popover that opens takes the keyboard from where the viewer is typing.
    enum class Keyboard { left, taken };

    /// `content` has a fixed size, in which its layout agrees with it. `anchor` is asked whenever the place is chosen.
    Popover(const Look& look, WindowSystem& windows, Clock& clock, Behaviour behaviour, QWidget* content,
        std::function<std::optional<PopoverAnchor>()> anchor);
    ~Popover() override;

    void open(Keyboard keyboard);
    /// Closes it for the program.
    void performClose();
    [[nodiscard]] bool isShown() const { return m_hosted ? m_hosted->isShown() : m_isShown; }

    /// Stays open although a button went down elsewhere: that was the status item's.
    void forgivePress();

    /// Gives it the keyboard, in front of everything.
    void activate();

    /// The content's place on the desktop.
    [[nodiscard]] QRect contentRect() const;

Q_SIGNALS:
    /// It is not shown any more, whoever closed it.
    void closed();
    /// The viewer has the desktop close it. A popover that stays is still there.
    void closeRequested();
    /// The viewer pressed Escape in it. One that is transient closes by itself.
    void escaped();

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void openOwn(Keyboard keyboard);
    void chooseFrame();
    void choosePlace();
    void limitInput();
    void followScreens();
    void pressed(QPoint place);
    [[nodiscard]] bool isOnAnchor(QPoint place) const;
    void lostKeyboard();
    /// Closes it unless the status item takes the click that is under way.
    void closeUnlessClicked();
    void stop(std::optional<Clock::TimerId>& timer);
    void fadeTo(qreal opacity);
    void faded();
    void correctPlace();
    /// Where the window is for the content to be at its corner.
    [[nodiscard]] QPoint windowCorner() const;

    const Look& m_look;
    WindowSystem& m_windows;
    Clock& m_clock;
    Behaviour m_behaviour;
    QWidget* m_content;
    std::function<std::optional<PopoverAnchor>()> m_anchor;
    PopoverFrame m_frame;
    /// The top left corner of the content on the desktop.
    QPoint m_corner;
    bool m_isShown = false;
    QVariantAnimation m_fade;
    std::unique_ptr<PressWatch> m_presses;
    bool m_isPressedElsewhere = false;
    std::optional<Clock::TimerId> m_waitForClick;
    std::optional<Clock::TimerId> m_correction;
    /// There where the window system has popovers of its own. Nothing of the above is used then.
    std::unique_ptr<HostedWidget> m_hosted;
};

} // namespace orvella
