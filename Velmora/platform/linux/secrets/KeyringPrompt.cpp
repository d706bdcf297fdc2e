#include "platform/linux/secrets/KeyringPrompt.h"

#include "platform/linux/bus/BusEnd.h"

#include <utility>

namespace orvella {

using namespace Qt::StringLiterals;

KeyringPrompt::KeyringPrompt(QDBusConnection bus, const QString& owner, const QString& path)
    : m_owners(owner, bus, QDBusServiceWatcher::WatchForUnregistration)
{
    bus.connect(owner, path, u"org.freedesktop.Secret.Prompt"_s, u"Completed"_s, this, SLOT(completed(QDBusMessage)));
    notifyOfBusEnd(bus, this, SLOT(busClosed()));
    // A unique name never gets another owner.
    connect(&m_owners, &QDBusServiceWatcher::serviceUnregistered, this, [this] { end(KeyringTrouble::failed); });
}

KeyringPrompt::~KeyringPrompt() = default;

void KeyringPrompt::completed(const QDBusMessage& message)
{
    const bool isDismissed = message.signature() != u"bv" || message.arguments().constFirst().toBool();
    end(isDismissed ? KeyringTrouble::refused : FromKeyring<>());
}

void KeyringPrompt::busClosed()
{
    end(KeyringTrouble::absent);
}

void KeyringPrompt::end(FromKeyring<> answer)
{
    m_answer = answer;
    m_over.end();
}

} // namespace orvella
