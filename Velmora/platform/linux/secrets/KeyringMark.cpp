#include "platform/linux/secrets/KeyringMark.h"

#include "platform/linux/files/AtomicFile.h"

#include <QCoroFuture>
#include <QFile>
#include <QUrl>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

KeyringMark::KeyringMark(QString folder)
    : m_folder(std::move(folder))
{
}

QCoro::Task<bool> KeyringMark::isSet(QString service, QString account)
{
    auto looking = m_thread.run([file = path(service, account)] { return QFile::exists(file); });
    const auto found = co_await looking;
    co_return found;
}

QCoro::Task<bool> KeyringMark::set(QString service, QString account)
{
    auto writing = m_thread.run(
        [file = path(service, account)] { return QFile::exists(file) || AtomicFile(file).replace({}).has_value(); });
    const auto isWritten = co_await writing;
    co_return isWritten;
}

QCoro::Task<> KeyringMark::clear(QString service, QString account)
{
    auto removing = m_thread.run([file = path(service, account)] { return QFile::remove(file); });
    co_await removing;
}

QString KeyringMark::path(const QString& service, const QString& account) const
{
    const auto name = QUrl::toPercentEncoding(service + u'-' + account);
    return m_folder + u'/' + QString::fromLatin1(name) + u".in-keyring"_s;
}

} // namespace orvella
