#include "ui/ad/AdWindowController.h"

#include "platform/StatusItem.h"
#include "ui/ad/AdDisclosure.h"
#include "ui/ad/AdWindowView.h"
#include "ui/popover/StatusItemAnchor.h"

namespace orvella {

using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

/// What the system takes to bring the browser to the front.
constexpr auto kRestoreDelay = 250ms;

} // namespace

AdWindowController::AdWindowController(const Look& look, const AvailableAd& ad, APIClient& api, bool anonymousMode,
    const Platform& platform, OwnerActions actions)
    : m_look(look)
    , m_platform(platform)
    , m_actions(std::move(actions))
    , m_viewing(ad, api, anonymousMode, platform.clock, platform.browser,
          {
              .keepOpenAfterLink = [this] { restoreAfterExternalOpen(); },
              .dismiss =
                  [this] {
                      m_actions.onDismiss();
                      close();
                  },
              .close = [this] { close(); },
              .onFinished = m_actions.onFinished,
              .onFailed = m_actions.onFailed,
          })
{
    m_viewing.showDisclosure.subscribe(this, [this](bool) { updateDisclosure(); });
}

AdWindowController::~AdWindowController()
{
    m_lifetime.request_stop();
}

void AdWindowController::show(Popover::Keyboard keyboard)
{
    m_closeRequested = false;
    if (!m_popover)
        buildPanel();
    m_popover->open(keyboard);
    // Where there is nothing that the panel could hang from, there is nothing to view.
    if (isShown())
        m_viewing.start();
}

bool AdWindowController::isShown() const
{
    return m_popover && m_popover->isShown();
}

void AdWindowController::activate()
{
    if (isShown())
        m_popover->activate();
}

void AdWindowController::restoreAfterExternalOpen()
{
    restore(m_lifetime.get_token());
}

QCoro::Task<> AdWindowController::restore(std::stop_token stop)
{
    co_await m_platform.clock.sleep(kRestoreDelay, stop);
    if (stop.stop_requested() || m_closeRequested || isShown())
        co_return;
    m_popover->open(Popover::Keyboard::left);
}

void AdWindowController::buildPanel()
{
    m_view = new AdWindowView(m_look, m_viewing);
    m_popover = std::make_unique<Popover>(m_look, m_platform.windows, m_platform.clock,
        Popover::Behaviour::applicationDefined, m_view, statusItemAnchor(m_platform.statusItem));
    m_popover->setObjectName(u"adPanel"_s);
    m_popover->setAccessibleName(tr("Ad"));
    // A desktop that closes the panel does so for the viewer.
    connect(m_popover.get(), &Popover::closeRequested, this, [this] { m_viewing.dismiss(); });
    connect(m_popover.get(), &Popover::escaped, this, [this] { m_viewing.showDisclosure = false; });
}

void AdWindowController::close()
{
    m_closeRequested = true;
    m_viewing.cancel();
    m_viewing.showDisclosure = false;
    if (m_disclosure)
        m_disclosure->performClose();
    if (m_popover)
        m_popover->performClose();
}

void AdWindowController::updateDisclosure()
{
    const bool isWanted = m_viewing.showDisclosure() && isShown();
    if (!isWanted) {
        if (m_disclosure)
            m_disclosure->performClose();
        return;
    }
    if (!m_disclosure) {
        m_disclosure =
            std::make_unique<Popover>(m_look, m_platform.windows, m_platform.clock, Popover::Behaviour::transient,
                new AdDisclosure(m_look, m_viewing.ad()), [this] { return informationAnchor(); });
        m_disclosure->setObjectName(u"adDisclosure"_s);
        m_disclosure->setAccessibleName(tr("Ad information"));
        connect(m_disclosure.get(), &Popover::closed, this, [this] {
            if (m_viewing.showDisclosure())
                m_viewing.showDisclosure = false;
        });
    }
    m_disclosure->open(Popover::Keyboard::left);
}

/// The button over the whole height of the panel.
std::optional<PopoverAnchor> AdWindowController::informationAnchor() const
{
    const auto& button = m_view->informationButton();
    const auto panel = m_popover->contentRect();
    const auto left = button.mapTo(m_view, QPoint()).x();
    return PopoverAnchor {
        .rect = QRect(panel.left() + left, panel.top(), button.width(), panel.height()),
        .widget = &button,
    };
}

} // namespace orvella
