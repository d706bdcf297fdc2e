#pragma once

#include <QSslConfiguration>
#include <QString>
#include <QTemporaryDir>

#include <utility>

namespace orvella {

/// A certificate authority of the test's own, made with the `openssl` command in a temporary folder.
class TestAuthority final {
public:
    TestAuthority();

    /// A PEM file with the authority's certificate.
    [[nodiscard]] QByteArray file() const;

    /// What a server needs that this authority vouches for.
    ///
    /// `name` is the subject's alternative name as openssl writes it, for example "IP:127.0.0.1". With `days` below 0
    /// it has expired.
    [[nodiscard]] QSslConfiguration server(const QString& name, int days = 1) const;
    /// The same for a program: PEM files with the certificate and its key. They last until the next server is made.
    [[nodiscard]] std::pair<QString, QString> filesOfServer(const QString& name) const;
    /// What a server needs that vouches for itself.
    [[nodiscard]] QSslConfiguration selfSignedServer(const QString& name) const;

    /// The same server when it was young: it speaks nothing newer than this protocol, as OpenSSL calls it, for example
    /// "TLSv1.1".
    [[nodiscard]] static QSslConfiguration ofOldDays(QSslConfiguration server, const QByteArray& protocol);

private:
    [[nodiscard]] QString path(const QString& file) const { return m_folder.filePath(file); }

    void openssl(const QStringList& arguments) const;
    [[nodiscard]] QSslConfiguration configuration(const QString& certificate, const QString& key) const;

    QTemporaryDir m_folder;
};

} // namespace orvella
