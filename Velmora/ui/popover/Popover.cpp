#include "ui/popover/Popover.h"

#include "platform/Screens.h"
#include "platform/WindowSystem.h"

#include <QApplication>
#include <QCloseEvent>
#include <QCursor>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>
#include <QVBoxLayout>
#include <QWindow>

#include <utility>

namespace orvella {

using namespace std::chrono_literals;

namespace {

constexpr auto kPatienceForClick = 250ms;
constexpr auto kCorrectionDelay = 100ms;
constexpr int kFadeMilliseconds = 200;
/// As far as a press on a status item may be from an earlier one, in points.
constexpr int kHalfItem = 16;
constexpr Qt::WindowFlags kBubbleFlags = Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint;
constexpr Qt::WindowFlags kOrdinaryFlags = Qt::Window | Qt::WindowTitleHint | Qt::WindowCloseButtonHint;

NativePopover::Behaviour native(Popover::Behaviour behaviour)
{
    return behaviour == Popover::Behaviour::transient ? NativePopover::Behaviour::transient
                                                      : NativePopover::Behaviour::applicationDefined;
}

} // namespace

Popover::Popover(const Look& look, WindowSystem& windows, Clock& clock, Behaviour behaviour, QWidget* content,
    std::function<std::optional<PopoverAnchor>()> anchor)
    : QWidget(nullptr, kBubbleFlags)
    , m_look(look)
    , m_windows(windows)
    , m_clock(clock)
    , m_behaviour(behaviour)
    , m_content(content)
    , m_anchor(std::move(anchor))
{
    setWindowTitle(QStringLiteral("Orvella"));
    // The keyboard is with the window itself until the viewer tabs on, so that no key does something unseen.
    setFocusPolicy(Qt::ClickFocus);
    setFocus();
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(content);
    m_fade.setDuration(kFadeMilliseconds);
    connect(&m_fade, &QVariantAnimation::valueChanged, this,
        [this](const QVariant& opacity) { setWindowOpacity(opacity.toReal()); });
    connect(&m_fade, &QVariantAnimation::finished, this, &Popover::faded);
    connect(&look, &Look::changed, this, [this] {
        if (m_isShown)
            choosePlace();
    });
    const auto hasClosed = [this] {
        // It goes with motion; by the time that it has gone it may have been opened again.
        if (isShown())
            return;
        hide();
        Q_EMIT closed();
    };
    if (auto popover = windows.makePopover(native(behaviour), hasClosed))
        m_hosted = std::make_unique<HostedWidget>(std::move(popover), *this);
    else
        followScreens();
}

Popover::~Popover()
{
    stop(m_waitForClick);
    stop(m_correction);
}

void Popover::open(Keyboard keyboard)
{
    if (isShown())
        return;
    if (m_hosted)
        m_hosted->open(m_content->size(), m_anchor());
    else
        openOwn(keyboard);
    if (keyboard == Keyboard::taken && isShown())
        activate();
}

void Popover::openOwn(Keyboard keyboard)
{
    m_isShown = true;
    m_isPressedElsewhere = false;
    // It may still be fading away; this is a new opening all the same.
    m_fade.stop();
    hide();
    m_content->setAttribute(Qt::WA_TransparentForMouseEvents, false);
    chooseFrame();
    setAttribute(Qt::WA_ShowWithoutActivating, keyboard == Keyboard::left);
    choosePlace();
    show();
    limitInput();
    fadeTo(1);
    if (m_behaviour == Behaviour::transient)
        m_presses = m_windows.watchPresses([this](QPoint place) { pressed(place); });
    stop(m_correction);
    m_correction = m_clock.startTimer(kCorrectionDelay, [this] { correctPlace(); });
}

void Popover::performClose()
{
    if (m_hosted) {
        m_hosted->performClose();
        return;
    }
    if (!std::exchange(m_isShown, false))
        return;
    stop(m_waitForClick);
    m_presses.reset();
    // What fades away is not there any more.
    m_content->setAttribute(Qt::WA_TransparentForMouseEvents);
    fadeTo(0);
    Q_EMIT closed();
}

void Popover::forgivePress()
{
    stop(m_waitForClick);
    m_isPressedElsewhere = false;
}

void Popover::activate()
{
    if (windowHandle())
        m_windows.activate(*windowHandle());
}

QRect Popover::contentRect() const
{
    return {m_frame.isOrdinaryWindow() ? pos() : m_corner, m_content->size()};
}

bool Popover::event(QEvent* event)
{
    if (event->type() == QEvent::WindowDeactivate)
        lostKeyboard();
    return QWidget::event(event);
}

void Popover::closeEvent(QCloseEvent* event)
{
    event->ignore();
    Q_EMIT closeRequested();
    if (m_behaviour == Behaviour::transient)
        performClose();
}

void Popover::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Escape) {
        QWidget::keyPressEvent(event);
        return;
    }
    Q_EMIT escaped();
    if (m_behaviour == Behaviour::transient)
        performClose();
}

void Popover::paintEvent(QPaintEvent* /*event*/)
{
    // The system's own popover has its own ground and outline.
    if (m_hosted)
        return;
    QPainter painter(this);
    m_frame.paint(painter, rect(), m_look.theme());
}

void Popover::chooseFrame()
{
    using Kind = PopoverFrame::Kind;
    auto kind = Kind::ordinaryWindow;
    if (m_windows.placesWindows())
        kind = m_windows.isCompositing() ? Kind::bubbleWithShadow : Kind::plainBubble;
    const bool isAnother = m_frame.kind() != kind;
    m_frame.setKind(kind);
    // A window is transparent or not, and has its input region, from its making on.
    if (isAnother)
        destroy();
    setWindowFlags(m_frame.isOrdinaryWindow() ? kOrdinaryFlags : kBubbleFlags);
    setAttribute(Qt::WA_TranslucentBackground, m_frame.hasShadow());
}

void Popover::choosePlace()
{
    const auto size = m_content->size();
    const auto place = placePopover(size, m_anchor(), Screens::areas(), Screens::home(), layoutDirection());
    m_corner = place.corner;
    m_frame.setBubble(place.bubble);
    const auto margins = m_frame.margins();
    layout()->setContentsMargins(margins);
    setFixedSize(size.grownBy(margins));
    if (m_frame.isOrdinaryWindow())
        return;
    move(windowCorner());
    if (m_frame.hasShadow()) {
        m_frame.castShadow(devicePixelRatioF(), m_look.theme());
        clearMask();
    } else {
        setMask(m_frame.coveredRegion());
    }
    limitInput();
    update();
}

void Popover::limitInput()
{
    if (m_frame.hasShadow() && windowHandle())
        m_windows.setInputRegion(*windowHandle(), m_frame.inputRegion());
}

void Popover::followScreens()
{
    const auto replace = [this] {
        if (m_isShown)
            choosePlace();
    };
    const auto follow = [this, replace](QScreen* screen) {
        connect(screen, &QScreen::availableGeometryChanged, this, replace);
        connect(screen, &QScreen::geometryChanged, this, replace);
    };
    for (auto* const screen : QGuiApplication::screens())
        follow(screen);
    connect(qGuiApp, &QGuiApplication::screenAdded, this, follow);
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, replace, Qt::QueuedConnection);
}

void Popover::pressed(QPoint place)
{
    if (contentRect().contains(place) || isOnAnchor(place))
        return;
    m_isPressedElsewhere = true;
    if (Screens::isInBar(place))
        closeUnlessClicked();
    else
        performClose();
}

/// Whether a press means what the popover hangs from, which takes it as a click of its own, when the button is
/// released. Of a status item it may be known only where it was last clicked.
bool Popover::isOnAnchor(QPoint place) const
{
    const auto anchor = m_anchor();
    if (!anchor)
        return false;
    const bool isPoint = anchor->rect.width() == 1;
    const int around = isPoint ? kHalfItem : 0;
    return anchor->rect.adjusted(-around, -around, around, around).contains(place);
}

void Popover::lostKeyboard()
{
    // Another window of the program that takes the keyboard leaves it open.
    if (m_behaviour != Behaviour::transient || !m_isShown || m_frame.isOrdinaryWindow() || QApplication::activeWindow())
        return;
    if (Screens::isInBar(QCursor::pos()))
        closeUnlessClicked();
    else
        performClose();
}

/// A click on the status item closes the popover by itself; closed before, it would open again.
void Popover::closeUnlessClicked()
{
    if (m_waitForClick)
        return;
    m_waitForClick = m_clock.startTimer(kPatienceForClick, [this] {
        m_waitForClick.reset();
        // The keyboard may have been away for a moment only, as it is while a panel shows what was clicked.
        if (m_isPressedElsewhere || !isActiveWindow())
            performClose();
    });
}

void Popover::stop(std::optional<Clock::TimerId>& timer)
{
    if (const auto running = std::exchange(timer, std::nullopt))
        m_clock.stopTimer(*running);
}

void Popover::fadeTo(qreal opacity)
{
    m_fade.stop();
    if (m_look.isMotionReduced() || !m_frame.hasShadow()) {
        setWindowOpacity(1);
        faded();
        return;
    }
    m_fade.setStartValue(opacity > 0 ? 0.0 : windowOpacity());
    m_fade.setEndValue(opacity);
    setWindowOpacity(m_fade.startValue().toReal());
    m_fade.start();
}

void Popover::faded()
{
    if (m_isShown)
        return;
    hide();
    // The picture of the shadow and what the window is drawn into take more memory than all the rest of it.
    m_frame.dropShadow();
    destroy();
}

/// Some window managers place a window that takes no keyboard without saying where: the toolkit then believes it to be
/// in the corner of the screen, and so does all that it tells of the positions in it.
void Popover::correctPlace()
{
    m_correction.reset();
    if (!isVisible() || m_frame.isOrdinaryWindow())
        return;
    const auto wanted = windowCorner();
    if (mapToGlobal(QPoint()) == wanted)
        return;
    move(wanted + QPoint(1, 0));
    move(wanted);
}

QPoint Popover::windowCorner() const
{
    const auto margins = m_frame.margins();
    return m_corner - QPoint(margins.left(), margins.top());
}

} // namespace orvella
