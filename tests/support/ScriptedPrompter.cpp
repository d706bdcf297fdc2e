#define GCR_API_SUBJECT_TO_CHANGE
#include <gcr/gcr-base.h>

#include "support/ScriptedPrompter.h"

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

namespace {

const auto kConnectionName = u"scripted-prompter"_s;
const auto kBusName = u"org.gnome.keyring.SystemPrompter"_s;
const auto kPath = u"/org/gnome/keyring/Prompter"_s;

} // namespace

ScriptedPrompter::ScriptedPrompter()
    : m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, kConnectionName))
{
    if (!m_bus.registerVirtualObject(kPath, this) || !m_bus.registerService(kBusName))
        qFatal("There is another prompter on the bus.");
}

ScriptedPrompter::~ScriptedPrompter()
{
    QDBusConnection::disconnectFromBus(kConnectionName);
}

void ScriptedPrompter::enter(const char* password)
{
    answer(u"yes"_s, password);
}

void ScriptedPrompter::dismiss()
{
    answer(u"no"_s, nullptr);
}

void ScriptedPrompter::answer(const QString& reply, const char* password)
{
    const auto prompt = take();
    auto* const sealed = gcr_secret_exchange_send(prompt.exchange.get(), password, -1);
    ready(prompt, reply, QString::fromUtf8(sealed));
    g_free(sealed);
}

ScriptedPrompter::Prompt ScriptedPrompter::take()
{
    if (m_open.empty())
        qFatal("No prompt is up.");
    auto prompt = m_open.front();
    m_open.erase(m_open.begin());
    return prompt;
}

void ScriptedPrompter::ready(const Prompt& prompt, const QString& reply, const QString& exchange)
{
    auto call = QDBusMessage::createMethodCall(
        prompt.client, prompt.callback, u"org.gnome.keyring.internal.Prompter.Callback"_s, u"PromptReady"_s);
    // Without a strength a new password counts as empty. The protocol boxes each value twice.
    const auto strength = QVariant::fromValue(QDBusVariant(1));
    call << reply << QVariantMap {{u"password-strength"_s, strength}} << exchange;
    m_bus.send(call);
}

bool ScriptedPrompter::handleMessage(const QDBusMessage& message, const QDBusConnection&)
{
    const auto arguments = message.arguments();
    const auto callback = arguments.value(0).value<QDBusObjectPath>().path();
    m_bus.send(message.createReply());
    if (message.member() == u"BeginPrompting") {
        ready({message.service(), callback, nullptr}, {}, {});
    } else if (message.member() == u"PerformPrompt") {
        const std::shared_ptr<GcrSecretExchange> exchange(gcr_secret_exchange_new(nullptr), g_object_unref);
        gcr_secret_exchange_receive(exchange.get(), arguments.value(3).toString().toUtf8().constData());
        m_open.push_back({message.service(), callback, exchange});
        ++m_shown;
    } else if (message.member() == u"StopPrompting") {
        std::erase_if(m_open, [&](const auto& prompt) { return prompt.callback == callback; });
        m_bus.send(QDBusMessage::createMethodCall(
            message.service(), callback, u"org.gnome.keyring.internal.Prompter.Callback"_s, u"PromptDone"_s));
    }
    return true;
}

QString ScriptedPrompter::introspect(const QString&) const
{
    return {};
}

} // namespace orvella
