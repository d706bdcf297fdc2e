#pragma once

#include "platform/BackgroundThread.h"

#include <QCoroTask>
#include <QString>

namespace orvella {

/// Says, without holding any of it, that an item lies in the keyring: an empty file for each service and account,
/// `<service>-<account>.in-keyring`. Without it a keyring that comes late looks like one that was never there.
///
/// The files are written and removed on a thread of the marks' own.
class KeyringMark final {
public:
    /// The folder is made when the first mark is set.
    explicit KeyringMark(QString folder);

    QCoro::Task<bool> isSet(QString service, QString account);
    /// False where it could not be written.
    QCoro::Task<bool> set(QString service, QString account);
    QCoro::Task<> clear(QString service, QString account);

private:
    [[nodiscard]] QString path(const QString& service, const QString& account) const;

    QString m_folder;
    BackgroundThread m_thread;
};

} // namespace orvella
