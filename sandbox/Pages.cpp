#include "sandbox/Pages.h"

#include "sandbox/ActivationPage.h"
#include "sandbox/AdvertiserPage.h"
#include "sandbox/Page.h"
#include "sandbox/Printable.h"
#include "sandbox/ViewerPage.h"

#include <QFile>

namespace orvella::sandbox {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kMostViews = 200;

QString demoViewer()
{
    return u"demo"_s;
}

Reply resource(const QString& name, const QByteArray& contentType)
{
    QFile file(u":/sandbox/"_s + name);
    if (!file.open(QFile::ReadOnly))
        qFatal("A built-in file is missing: %s.", qUtf8Printable(name));
    return {200, contentType, file.readAll(), {}};
}

Reply redirect(const QString& path)
{
    return {303, "text/plain; charset=utf-8", "See other.\n", {{"location", path.toUtf8()}}};
}

Reply notice(int status, const QString& title, const QString& text)
{
    return Page {title, u"en"_s, u"<section><h1>%1</h1><p>%2</p></section>"_s.arg(htmlText(title), htmlText(text))}
        .reply(status);
}

Reply wrongMethod(const QByteArray& allowed)
{
    auto reply = notice(405, u"This cannot be done here"_s, u"The page does not take this kind of request."_s);
    reply.headers.emplace_back("allow", allowed);
    return reply;
}

/// Whether another site's page may have sent the form. Browsers say where a form comes from; what says nothing is none.
bool isFromElsewhere(const Request& request)
{
    const auto site = request.headers.value("sec-fetch-site", "same-origin");
    if (site != "same-origin" && site != "none")
        return true;
    const auto own = "http://" + request.headers.value("host");
    return request.headers.value("origin", own) != own;
}

} // namespace

Pages::Pages(const Campaigns& campaigns, Devices& devices, Ledger& ledger, const ServiceTime& time, Announcer announce)
    : m_campaigns(campaigns)
    , m_devices(devices)
    , m_ledger(ledger)
    , m_time(time)
    , m_announce(std::move(announce))
{
}

Reply Pages::answer(const Request& request)
{
    static const auto kAdvertiser = u"/advertiser/"_s;
    const auto isGet = request.method == Request::Method::get;
    if (request.path.startsWith(u"/api/"))
        return {404, "application/json", R"({"error":"there is no such call","ok":false})", {}};
    if (request.path == u"/activate") {
        if (request.method == Request::Method::post)
            return activate(request);
        return isGet ? activation(request) : wrongMethod("GET, POST");
    }
    const auto isAdvertiser = request.path.startsWith(kAdvertiser);
    const auto isPage = isAdvertiser || request.path == u"/" || request.path == u"/viewer"
        || request.path == u"/style.css" || request.path == u"/mark.svg";
    if (!isPage)
        return notice(404, u"There is no such page"_s, u"Look at your dashboard, or activate a device."_s);
    if (!isGet)
        return wrongMethod("GET");
    if (isAdvertiser)
        return advertiser(request.path.sliced(kAdvertiser.size()));
    if (request.path == u"/")
        return redirect(u"/viewer"_s);
    if (request.path == u"/style.css")
        return resource(u"style.css"_s, "text/css; charset=utf-8");
    if (request.path == u"/mark.svg")
        return resource(u"mark.svg"_s, "image/svg+xml");
    return viewer(request);
}

Reply Pages::viewer(const Request& request)
{
    const auto viewer = demoViewer();
    ViewerPage page;
    page.viewer = viewer;
    page.balances = m_ledger.balancesOfViewer(viewer);
    page.devices = m_devices.ofViewer(viewer);
    page.views = m_ledger.viewsOfViewer(viewer, m_time.now(), kMostViews);
    const auto linked = m_devices.find(request.query.queryItemValue(u"linked"_s));
    if (linked && linked->viewer == viewer)
        page.justLinked = linked->name;
    return page.reply();
}

Reply Pages::activation(const Request& request)
{
    const auto code = request.query.queryItemValue(u"code"_s, QUrl::FullyDecoded);
    return ActivationPage {code, {}}.reply(200);
}

Reply Pages::activate(const Request& request)
{
    if (isFromElsewhere(request))
        return notice(
            403, u"The form came from another site"_s, u"Open the activation page and enter the code there."_s);
    if (!request.headers.value("content-type").startsWith("application/x-www-form-urlencoded"))
        return notice(415, u"This cannot be read"_s, u"Enter the code on the activation page."_s);
    const auto form = QUrlQuery(QString::fromUtf8(request.body).replace(u'+', u' '));
    const auto typed = form.queryItemValue(u"code"_s, QUrl::FullyDecoded);
    const auto linking = m_devices.link(typed, demoViewer(), m_time.now());
    switch (linking.outcome) {
    case Devices::Linking::Outcome::unknownCode:
        return ActivationPage {typed, u"No device has this code. Compare it with the one that Orvella shows."_s}.reply(
            404);
    case Devices::Linking::Outcome::usedCode:
        return ActivationPage {typed, u"This code has been used: its device is linked already."_s}.reply(409);
    case Devices::Linking::Outcome::expiredCode:
        return ActivationPage {typed, u"This code has expired: it was valid for 24 hours."_s}.reply(410);
    case Devices::Linking::Outcome::linked:
        break;
    }
    m_announce(printable(linking.device->name) + u" linked to viewer "_s + linking.device->viewer);
    return redirect(u"/viewer?linked="_s + linking.device->id);
}

Reply Pages::advertiser(const QString& campaignId) const
{
    const auto* const campaign = m_campaigns.find(campaignId);
    if (!campaign)
        return notice(404, u"There is no such advertiser"_s, u"The campaign may have ended."_s);
    return advertiserPage(*campaign);
}

} // namespace orvella::sandbox
