#include "support/FakePlatform.h"

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

struct FakeSecrets::Unlocked {
    FakeSecrets& store;

    [[nodiscard]] bool await_ready() const noexcept { return !store.isLocked; }

    void await_suspend(std::coroutine_handle<> waiting) { store.m_waiting.push_back(waiting); }

    void await_resume() const noexcept { }
};

QCoro::Task<std::optional<Secret>> FakeSecrets::read(QString service, QString account, std::stop_token stop)
{
    operations.append(QStringLiteral("read ") + service);
    co_await Unlocked {*this};
    if (stop.stop_requested())
        co_return std::nullopt;
    for (const auto& item : m_items) {
        if (item.service == service && item.account == account)
            co_return Secret(item.value);
    }
    co_return std::nullopt;
}

QCoro::Task<> FakeSecrets::add(QString service, QString account, Secret value)
{
    operations.append(QStringLiteral("add ") + service);
    if (!refusesWrites)
        m_items.push_back({service, account, value.reveal()});
    co_return;
}

QCoro::Task<> FakeSecrets::remove(QString service, QString account)
{
    operations.append(QStringLiteral("remove ") + service);
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
    for (const auto waiting : std::exchange(m_waiting, {}))
        waiting.resume();
}

Result<void> FakeLoginItem::registerItem()
{
    ++registrations;
    if (failure)
        return std::unexpected(*failure);
    current = Status::enabled;
    return {};
}

Result<void> FakeLoginItem::unregisterItem()
{
    ++unregistrations;
    if (failure)
        return std::unexpected(*failure);
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

} // namespace orvella
