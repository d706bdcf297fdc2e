#include "support/FakePlatform.h"

#include <QWindow>

#include <algorithm>
#include <semaphore>
#include <utility>

namespace orvella {

std::optional<bool> FakeSettings::boolean(const QString& key) const
{
    const auto found = values.find(key);
    const auto* const value = found == values.end() ? nullptr : found->second.boolean();
    return value ? std::optional(*value) : std::nullopt;
}

std::optional<QString> FakeSettings::string(const QString& key) const
{
    const auto found = values.find(key);
    const auto* const value = found == values.end() ? nullptr : found->second.string();
    return value ? std::optional(*value) : std::nullopt;
}

void FakeSettings::setBoolean(const QString& key, bool value)
{
    values.insert_or_assign(key, Json(value));
    writes.append(key);
}

void FakeSettings::setInteger(const QString& key, qint64 value)
{
    values.insert_or_assign(key, Json(value));
    writes.append(key);
}

QCoro::Task<std::optional<Secret>> FakeSecrets::read(QString service, QString account, std::stop_token stop)
{
    operations.append(QStringLiteral("read ") + service);
    if (isLocked && !stop.stop_requested())
        co_await unlocked(ignoresStops ? std::stop_token() : stop);
    if (stop.stop_requested())
        co_return std::nullopt;
    for (const auto& item : m_items) {
        if (item.service == service && item.account == account)
            co_return Secret(item.value);
    }
    co_return std::nullopt;
}

QCoro::Task<SecretStore::Finding> FakeSecrets::look(QString service, QString account)
{
    if (finding)
        co_return *finding;
    if (isLocked)
        co_return Finding::locked;
    const auto isIt = [&](const Item& item) { return item.service == service && item.account == account; };
    co_return std::ranges::any_of(m_items, isIt) ? Finding::item : Finding::noItem;
}

QCoro::Task<> FakeSecrets::add(QString service, QString account, Secret value)
{
    operations.append(QStringLiteral("add ") + service);
    if (writesWait)
        co_await unlocked({});
    if (!refusesWrites)
        m_items.push_back({service, account, value.reveal()});
    co_return;
}

QCoro::Task<> FakeSecrets::remove(QString service, QString account)
{
    operations.append(QStringLiteral("remove ") + service);
    if (writesWait)
        co_await unlocked({});
    if (!refusesWrites)
        std::erase_if(m_items, [&](const Item& item) { return item.service == service && item.account == account; });
    co_return;
}

std::vector<QByteArray> FakeSecrets::items(const QString& service) const
{
    std::vector<QByteArray> found;
    for (const auto& item : m_items) {
        if (item.service == service && item.account == QStringLiteral("default"))
            found.push_back(item.value);
    }
    return found;
}

void FakeSecrets::put(const QString& service, const QByteArray& value)
{
    m_items.push_back({service, QStringLiteral("default"), value});
}

void FakeSecrets::unlock()
{
    isLocked = false;
    for (const auto& call : std::exchange(m_waiting, {}))
        call->resume();
}

HeldFlow::Wait FakeSecrets::unlocked(std::stop_token stop)
{
    return m_waiting.emplace_back(std::make_shared<HeldFlow>())->resumedOrStopped(std::move(stop));
}

Result<void> FakeLoginItem::registerItem()
{
    ++registrations;
    if (failure)
        return std::unexpected(*failure);
    if (!isSlow)
        current = Status::enabled;
    return {};
}

Result<void> FakeLoginItem::unregisterItem()
{
    ++unregistrations;
    if (failure)
        return std::unexpected(*failure);
    if (!isSlow)
        current = Status::notRegistered;
    return {};
}

QString FakeLocale::usDollars(qint64 cents) const
{
    return QStringLiteral("$%1").arg(static_cast<double>(cents) / 100.0, 0, 'f', 2);
}

std::vector<RunningApplication> FakeApplications::list() const
{
    ++readings;
    return running;
}

bool FakeBrowser::open(const QUrl& page)
{
    opened.push_back(page);
    return succeeds;
}

class FakeWindows::Watch final : public PressWatch {
public:
    Watch(std::shared_ptr<Listeners> listeners, int id)
        : m_listeners(std::move(listeners))
        , m_id(id)
    {
    }

    ~Watch() override { m_listeners->erase(m_id); }

private:
    std::shared_ptr<Listeners> m_listeners;
    int m_id;
};

void FakeWindows::activate(QWindow& window)
{
    activated.push_back(&window);
    window.requestActivate();
}

void FakeWindows::setInputRegion(QWindow& /*window*/, const QRegion& region)
{
    inputRegion = region;
}

std::unique_ptr<PressWatch> FakeWindows::watchPresses(std::function<void(QPoint)> pressed)
{
    const auto id = m_nextListener++;
    m_listeners->emplace(id, std::move(pressed));
    return std::make_unique<Watch>(m_listeners, id);
}

void FakeWindows::press(QPoint place)
{
    // A listener may go while it is called.
    for (const auto& [id, listener] : Listeners(*m_listeners))
        listener(place);
}

std::optional<bool> FakeForeground::isScreenLocked() const
{
    ++readings;
    return locked;
}

std::optional<QUrl> FakeProxies::wantedFor(QUrl address, std::stop_token stop) const
{
    {
        const std::lock_guard lock(m_mutex);
        m_questions.push_back(std::move(address));
    }
    if (!isSilent)
        return wanted;
    std::binary_semaphore stopped(0);
    const std::stop_callback onStop(stop, [&stopped] { stopped.release(); });
    stopped.acquire();
    return std::nullopt;
}

std::vector<QUrl> FakeProxies::questions() const
{
    const std::lock_guard lock(m_mutex);
    return m_questions;
}

} // namespace orvella
