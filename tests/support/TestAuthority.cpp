#include "support/TestAuthority.h"

#include <QFile>
#include <QProcess>
#include <QSslCertificate>
#include <QSslKey>

#include <tuple>

using namespace Qt::StringLiterals;

namespace orvella {

namespace {

QByteArray contents(const QString& path)
{
    QFile file(path);
    if (!file.open(QFile::ReadOnly))
        qFatal("A test certificate cannot be read.");
    return file.readAll();
}

} // namespace

TestAuthority::TestAuthority()
{
    openssl({u"req"_s, u"-x509"_s, u"-newkey"_s, u"ec"_s, u"-pkeyopt"_s, u"ec_paramgen_curve:P-256"_s, u"-nodes"_s,
        u"-keyout"_s, path(u"authority.key"_s), u"-out"_s, path(u"authority.pem"_s), u"-days"_s, u"2"_s, u"-subj"_s,
        u"/CN=Test authority"_s});
}

QByteArray TestAuthority::file() const
{
    return QFile::encodeName(path(u"authority.pem"_s));
}

QSslConfiguration TestAuthority::server(const QString& name, int days) const
{
    QFile extensions(path(u"extensions"_s));
    if (!extensions.open(QFile::WriteOnly))
        qFatal("A test certificate cannot be made.");
    extensions.write("subjectAltName=" + name.toLatin1() + '\n');
    extensions.close();

    openssl({u"req"_s, u"-new"_s, u"-newkey"_s, u"ec"_s, u"-pkeyopt"_s, u"ec_paramgen_curve:P-256"_s, u"-nodes"_s,
        u"-keyout"_s, path(u"server.key"_s), u"-out"_s, path(u"server.request"_s), u"-subj"_s, u"/CN=Test server"_s});
    openssl({u"x509"_s, u"-req"_s, u"-in"_s, path(u"server.request"_s), u"-CA"_s, path(u"authority.pem"_s), u"-CAkey"_s,
        path(u"authority.key"_s), u"-CAcreateserial"_s, u"-days"_s, QString::number(days), u"-extfile"_s,
        path(u"extensions"_s), u"-out"_s, path(u"server.pem"_s)});
    return configuration(u"server.pem"_s, u"server.key"_s);
}

std::pair<QString, QString> TestAuthority::filesOfServer(const QString& name) const
{
    std::ignore = server(name);
    return {path(u"server.pem"_s), path(u"server.key"_s)};
}

QSslConfiguration TestAuthority::selfSignedServer(const QString& name) const
{
    openssl({u"req"_s, u"-x509"_s, u"-newkey"_s, u"ec"_s, u"-pkeyopt"_s, u"ec_paramgen_curve:P-256"_s, u"-nodes"_s,
        u"-keyout"_s, path(u"self.key"_s), u"-out"_s, path(u"self.pem"_s), u"-days"_s, u"1"_s, u"-subj"_s,
        u"/CN=Test server"_s, u"-addext"_s, u"subjectAltName="_s + name});
    return configuration(u"self.pem"_s, u"self.key"_s);
}

QSslConfiguration TestAuthority::ofOldDays(QSslConfiguration server, const QByteArray& protocol)
{
    // OpenSSL has the old protocols still, but only where nothing is asked of the ciphers.
    server.setProtocol(QSsl::AnyProtocol);
    server.setBackendConfigurationOption("CipherString", QByteArray("ALL:@SECLEVEL=0"));
    server.setBackendConfigurationOption("MinProtocol", protocol);
    server.setBackendConfigurationOption("MaxProtocol", protocol);
    return server;
}

void TestAuthority::openssl(const QStringList& arguments) const
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(u"openssl"_s, arguments);
    if (!process.waitForFinished() || process.exitCode() != 0)
        qFatal("openssl could not do it: %s", process.readAll().constData());
}

QSslConfiguration TestAuthority::configuration(const QString& certificate, const QString& key) const
{
    QSslConfiguration tls;
    tls.setLocalCertificate(QSslCertificate(contents(path(certificate))));
    tls.setPrivateKey(QSslKey(contents(path(key)), QSsl::Ec));
    return tls;
}

} // namespace orvella
