#include "support/SandboxProcess.h"

#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QUrlQuery>

#include <memory>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kPatienceMs = 20'000;

QString body(QNetworkReply* reply)
{
    const std::unique_ptr<QNetworkReply> owned(reply);
    QEventLoop loop;
    QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    if (!reply->isFinished())
        loop.exec();
    return QString::fromUtf8(reply->readAll());
}

} // namespace

SandboxProcess::SandboxProcess(const QStringList& options)
{
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(QStringLiteral(ORVELLA_SANDBOX), options);
    while (m_address.isEmpty() && m_process.waitForReadyRead(kPatienceMs)) {
        if (m_process.canReadLine())
            m_address = QString::fromUtf8(m_process.readLine()).trimmed();
    }
}

SandboxProcess::~SandboxProcess()
{
    m_process.terminate();
    if (!m_process.waitForFinished(kPatienceMs))
        m_process.kill();
}

QStringList SandboxProcess::lines()
{
    while (m_process.canReadLine())
        m_lines.append(QString::fromUtf8(m_process.readLine()).trimmed());
    return m_lines;
}

QString SandboxProcess::activationCode()
{
    const auto registrations = lines().filter(u" registered; link it at "_s);
    return registrations.isEmpty() ? QString() : registrations.constLast().section(u"code="_s, 1);
}

QString SandboxProcess::page(const QString& path)
{
    QNetworkAccessManager network;
    return body(network.get(QNetworkRequest(QUrl(m_address + path))));
}

QString SandboxProcess::activate(const QString& code)
{
    QNetworkAccessManager network;
    QNetworkRequest request(QUrl(m_address + u"/activate"_s));
    request.setHeader(QNetworkRequest::ContentTypeHeader, u"application/x-www-form-urlencoded"_s);
    request.setRawHeader("Origin", m_address.toUtf8());
    QUrlQuery form;
    form.addQueryItem(u"code"_s, code);
    return body(network.post(request, form.toString(QUrl::FullyEncoded).toUtf8()));
}

} // namespace orvella
