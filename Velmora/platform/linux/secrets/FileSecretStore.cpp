#include "platform/linux/secrets/FileSecretStore.h"

#include <QCoroFuture>

namespace orvella {

FileSecretStore::FileSecretStore(const QString& folder)
    : m_file(folder)
{
}

QCoro::Task<std::optional<Secret>> FileSecretStore::read(QString service, QString account, std::stop_token stop)
{
    if (stop.stop_requested())
        co_return std::nullopt;
    auto reading = m_thread.run([file = m_file, service, account] { return file.read(service, account); });
    auto item = co_await reading;
    co_return stop.stop_requested() ? std::nullopt : std::move(item);
}

QCoro::Task<SecretStore::Finding> FileSecretStore::look(QString service, QString account)
{
    const auto item = co_await read(std::move(service), std::move(account), {});
    co_return item ? Finding::item : Finding::noItem;
}

QCoro::Task<> FileSecretStore::add(QString service, QString account, Secret value)
{
    auto writing = m_thread.run([file = m_file, service, account, value] { return file.put(service, account, value); });
    co_await writing;
}

QCoro::Task<> FileSecretStore::remove(QString service, QString account)
{
    auto writing = m_thread.run([file = m_file, service, account] { return file.remove(service, account); });
    co_await writing;
}

} // namespace orvella
