#include "ui/ad/AdWindowController.h"

#include "platform/Platform.h"
#include "ui/ad/AdWindowView.h"

#include <QBoxLayout>
#include <QEvent>
#include <QFrame>
#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

namespace orvella {

namespace {

constexpr int kLeastWidth = 260;
constexpr int kGreatestWidth = 640;
constexpr int kMargin = 8;

std::unique_ptr<QFrame> panel(AdViewing& viewing)
{
    auto frame = std::make_unique<QFrame>(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    frame->setFrameShape(QFrame::Box);
    frame->setObjectName(QStringLiteral("adPanel"));
    frame->setWindowTitle(QStringLiteral("Orvella"));
    auto* const layout = new QVBoxLayout(frame.get());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(new AdWindowView(viewing));
    frame->setFixedWidth(std::clamp(frame->sizeHint().width(), kLeastWidth, kGreatestWidth));
    return frame;
}

/// Where a window of this size goes: centred on the anchor and inside the work area, else in its top right corner.
QPoint place(QSize size, std::optional<QPoint> anchor)
{
    const auto* const screen = anchor ? QGuiApplication::screenAt(*anchor) : nullptr;
    const auto* const home = screen ? screen : QGuiApplication::primaryScreen();
    if (!home)
        return {};
    const auto area = home->availableGeometry().adjusted(kMargin, kMargin, -kMargin, -kMargin);
    const int rightmost = std::max(area.left(), area.right() + 1 - size.width());
    const int lowest = std::max(area.top(), area.bottom() + 1 - size.height());
    if (!screen)
        return {rightmost, area.top()};
    return {std::clamp(anchor->x() - size.width() / 2, area.left(), rightmost),
        std::clamp(anchor->y(), area.top(), lowest)};
}

} // namespace

AdWindowController::AdWindowController(
    const AvailableAd& ad, APIClient& api, bool anonymousMode, const Platform& platform, OwnerActions actions)
    : m_actions(std::move(actions))
    , m_viewing(ad, api, anonymousMode, platform.clock, platform.browser,
          {
              .keepOpenAfterLink = [] {},
              .dismiss =
                  [this] {
                      m_actions.onDismiss();
                      close();
                  },
              .close = [this] { close(); },
              .onFinished = [this](std::optional<double> cents) { m_actions.onFinished(cents); },
          })
{
}

AdWindowController::~AdWindowController() = default;

void AdWindowController::show(std::optional<QPoint> anchor)
{
    m_panel = panel(m_viewing);
    m_panel->installEventFilter(this);
    m_panel->adjustSize();
    m_panel->move(place(m_panel->size(), anchor));
    m_panel->show();
    m_viewing.start();
}

bool AdWindowController::isShown() const
{
    return m_panel && m_panel->isVisible();
}

bool AdWindowController::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_panel.get() || event->type() != QEvent::Close)
        return QObject::eventFilter(watched, event);
    event->ignore();
    m_viewing.dismiss();
    return true;
}

void AdWindowController::close()
{
    m_panel->hide();
    m_viewing.cancel();
}

} // namespace orvella
