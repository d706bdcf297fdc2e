#include "platform/macos/MacWindowSystem.h"

#include "platform/macos/CocoaApplication.h"
#include "platform/macos/CocoaStatusItem.h"
#include "platform/macos/MacPopover.h"

#include <QWindow>

#include <utility>

namespace orvella {

MacWindowSystem::MacWindowSystem(CocoaApplication& application, CocoaStatusItem& statusItem)
    : m_application(application)
    , m_statusItem(statusItem)
{
}

void MacWindowSystem::activate(QWindow& window)
{
    // A window of a program that is not in front gets no keyboard.
    m_application.activate();
    window.raise();
    window.requestActivate();
}

std::unique_ptr<NativePopover> MacWindowSystem::makePopover(
    NativePopover::Behaviour behaviour, std::function<void()> closed)
{
    const auto native = behaviour == NativePopover::Behaviour::transient ? CocoaPopover::Behaviour::transient
                                                                         : CocoaPopover::Behaviour::applicationDefined;
    return std::make_unique<MacPopover>(m_statusItem.makePopover(native, std::move(closed)));
}

} // namespace orvella
