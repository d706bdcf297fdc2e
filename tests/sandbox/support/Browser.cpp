#include "sandbox/support/Browser.h"

#include <QNetworkReply>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTest>

#include <memory>
#include <tuple>

namespace orvella::sandbox {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kStartMilliseconds = 30'000;

QString executable(const QString& name)
{
    const auto path = QStandardPaths::findExecutable(name);
    if (path.isEmpty())
        qFatal("%s is not installed, and this test needs it.", qPrintable(name));
    return path;
}

Json::Object capabilities(const QString& profile, Browser::Scheme scheme)
{
    const auto preferred = scheme == Browser::Scheme::dark ? u"0"_s : u"1"_s;
    Json::Array arguments;
    for (const auto& argument : {u"--headless"_s, u"--no-sandbox"_s, u"--disable-gpu"_s, u"--disable-quic"_s,
             u"--no-first-run"_s, u"--disable-background-networking"_s, u"--disable-component-update"_s,
             u"--disable-sync"_s, u"--disable-dev-shm-usage"_s, u"--user-data-dir="_s + profile,
             u"--blink-settings=preferredColorScheme="_s + preferred})
        arguments.emplace_back(argument);
    Json::Object options {{u"args"_s, std::move(arguments)}, {u"binary"_s, executable(u"chromium"_s)}};
    Json::Object always {{u"browserName"_s, u"chrome"_s}, {u"goog:chromeOptions"_s, std::move(options)}};
    Json::Object match {{u"alwaysMatch"_s, std::move(always)}};
    return {{u"capabilities"_s, std::move(match)}};
}

QString textOf(const Json& value)
{
    return value.string() ? *value.string() : QString();
}

} // namespace

Browser::Browser(Scheme scheme)
{
    auto environment = QProcessEnvironment::systemEnvironment();
    for (const auto& name : {u"HOME"_s, u"XDG_CONFIG_HOME"_s, u"XDG_CACHE_HOME"_s, u"XDG_DATA_HOME"_s})
        environment.insert(name, m_home.path());
    m_driver.setProcessEnvironment(environment);
    m_driver.start(executable(u"chromedriver"_s), {u"--port=0"_s});
    static const QRegularExpression kPort(u"started successfully on port (\\d+)"_s);
    QByteArray output;
    QRegularExpressionMatch started;
    const auto isUp = QTest::qWaitFor(
        [&] {
            output += m_driver.readAllStandardOutput();
            started = kPort.match(QString::fromUtf8(output));
            return started.hasMatch();
        },
        kStartMilliseconds);
    if (!isUp)
        qFatal("chromedriver did not start: %s", output.constData());
    m_base = u"http://127.0.0.1:%1/session"_s.arg(started.captured(1));
    const auto session = command("POST", {}, capabilities(m_home.filePath(u"profile"_s), scheme));
    m_base += u'/' + *session.object()->at(u"sessionId"_s).string();
}

Browser::~Browser()
{
    command("DELETE", {});
    m_driver.terminate();
    m_driver.waitForFinished();
}

void Browser::open(const QString& address)
{
    command("POST", u"/url"_s, {{u"url"_s, address}});
}

QString Browser::address()
{
    return textOf(command("GET", u"/url"_s));
}

QString Browser::text(const QString& selector)
{
    return textOf(command("GET", element(selector) + u"/text"_s));
}

QString Browser::property(const QString& selector, const QString& name)
{
    return textOf(command("GET", element(selector) + u"/property/"_s + name));
}

QString Browser::style(const QString& selector, const QString& name)
{
    return textOf(command("GET", element(selector) + u"/css/"_s + name));
}

void Browser::type(const QString& selector, const QString& keys)
{
    const auto target = element(selector);
    command("POST", target + u"/clear"_s);
    command("POST", target + u"/value"_s, {{u"text"_s, keys}});
}

void Browser::follow(const QString& selector)
{
    // What is written on the window goes with its page.
    std::ignore = evaluate(u"window.isLeft = 'not yet'"_s);
    command("POST", element(selector) + u"/click"_s);
    const auto isThere = [this] {
        return evaluate(u"window.isLeft === undefined && document.readyState === 'complete'"_s) == u"true";
    };
    if (!QTest::qWaitFor(isThere, kStartMilliseconds))
        qFatal("The browser does not follow %s.", qPrintable(selector));
}

std::size_t Browser::count(const QString& selector)
{
    return command("POST", u"/elements"_s, {{u"using"_s, u"css selector"_s}, {u"value"_s, selector}}).array()->size();
}

QString Browser::evaluate(const QString& expression)
{
    return textOf(command("POST", u"/execute/sync"_s,
        {{u"script"_s, u"return String(%1)"_s.arg(expression)}, {u"args"_s, Json::Array()}}));
}

void Browser::resize(int width, int height)
{
    command("POST", u"/window/rect"_s, {{u"width"_s, qint64 {width}}, {u"height"_s, qint64 {height}}});
}

Json Browser::command(const QByteArray& method, const QString& path, const Json::Object& body)
{
    QNetworkRequest request(QUrl(m_base + path));
    request.setHeader(QNetworkRequest::ContentTypeHeader, u"application/json"_s);
    const auto bytes = method == "POST" ? Json(body).serialise().value_or(QByteArray()) : QByteArray();
    const std::unique_ptr<QNetworkReply> reply(m_network.sendCustomRequest(request, method, bytes));
    if (!QTest::qWaitFor([&reply] { return reply->isFinished(); }, kStartMilliseconds))
        qFatal("The browser does not answer %s.", qPrintable(path));
    const auto text = reply->readAll();
    const auto answer = Json::parse(text);
    if (reply->error() != QNetworkReply::NoError || !answer || !answer->object())
        qFatal("The browser refused %s: %s", qPrintable(path), text.constData());
    return answer->object()->at(u"value"_s);
}

QString Browser::element(const QString& selector)
{
    const auto found = command("POST", u"/element"_s, {{u"using"_s, u"css selector"_s}, {u"value"_s, selector}});
    return u"/element/"_s + textOf(found.object()->begin()->second);
}

} // namespace orvella::sandbox
