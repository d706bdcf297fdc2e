#include "sandbox/ViewerPage.h"

#include "sandbox/Categories.h"
#include "sandbox/Page.h"
#include "sandbox/Printable.h"

namespace orvella::sandbox {

using namespace Qt::Literals::StringLiterals;

namespace {

QString balanceRow(const QString& id, const QString& label, Amount amount)
{
    return u"<div><dt>%1</dt><dd class=\"money\" id=\"%2\">%3</dd></div>\n"_s.arg(label, id, amount.dollars());
}

QString balancesSection(const Balances& balances)
{
    return u"<section>\n<h2>Balances</h2>\n<dl class=\"rows\">\n"_s
        + balanceRow(u"available"_s, u"Available"_s, balances.available)
        + balanceRow(u"pending"_s, u"Pending"_s, balances.pending) + balanceRow(u"paid"_s, u"Paid out"_s, balances.paid)
        + balanceRow(u"lifetime"_s, u"Lifetime"_s, balances.lifetime)
        + u"</dl>\n<p class=\"note\">What a device earns before it is linked is pending on that device; linking it "
          u"makes"
          " it available here. Amounts are exact; the program shows whole cents, rounded down.</p>\n</section>\n"_s;
}

QString signalsText(const Device& device)
{
    if (device.settings.anonymousMode)
        return u"Anonymous"_s;
    if (!device.settings.appSignalConsent)
        return u"Not anonymous, shares no categories"_s;
    QStringList labels;
    for (const auto& category : device.categories)
        labels.append(categoryLabel(category));
    return labels.isEmpty() ? u"Shares categories, none at present"_s : u"Shares "_s + labels.join(u", "_s);
}

QString deviceItem(const Device& device)
{
    const auto opening = device.settings.autoOpenAds ? u"Ads open by themselves"_s : u"Ads open by hand"_s;
    return u"<li><strong><bdi>%1</bdi></strong><span class=\"note\">Orvella %2, language %3, last seen %4</span>"
           "<span class=\"note\">%5. %6.</span></li>\n"_s.arg(htmlText(device.name), htmlText(device.appVersion),
               htmlText(device.language), readableText(device.seenAt), htmlText(signalsText(device)), opening);
}

QString devicesSection(const std::vector<Device>& devices)
{
    QString items;
    for (const auto& device : devices)
        items += deviceItem(device);
    const auto list = items.isEmpty()
        ? u"<p>No device is linked yet. Start Orvella and enter the code that it shows.</p>\n"_s
        : u"<ul class=\"devices\">\n"_s + items + u"</ul>\n"_s;
    return u"<section>\n<h2>Devices</h2>\n"_s + list
        + u"<p><a class=\"button\" href=\"/activate\">Link a device</a></p>\n</section>\n"_s;
}

QString verdictOf(View::State state)
{
    switch (state) {
    case View::State::watching:
        return u"<span class=\"verdict\">Watching</span>"_s;
    case View::State::credited:
        return u"<span class=\"verdict paid\">Paid</span>"_s;
    case View::State::notCompleted:
        return u"<span class=\"verdict\">Not completed</span>"_s;
    case View::State::refused:
        return u"<span class=\"verdict refused\">Refused</span>"_s;
    }
    return {};
}

QString viewRow(const View& view)
{
    const auto amount = view.state == View::State::credited ? view.viewerEarn.dollars() : u"–"_s;
    const auto clicked = view.clicked ? u", page visited"_s : QString();
    return u"<tr><td class=\"wide\"><bdi>%1</bdi><span class=\"note\">%2, <bdi>%3</bdi>%4</span></td>"
           "<td class=\"number\">%5 s</td><td class=\"money\">%6</td><td>%7</td></tr>\n"_s.arg(
               htmlText(view.advertiserName), readableText(view.startedAt), htmlText(view.deviceName), clicked,
               QString::number(view.requiredSeconds), amount, verdictOf(view.state));
}

QString viewsSection(const std::vector<View>& views)
{
    if (views.empty())
        return u"<section>\n<h2>Views</h2>\n<p>No ad was viewed yet.</p>\n</section>\n"_s;
    QString rows;
    for (const auto& view : views)
        rows += viewRow(view);
    return u"<section>\n<h2>Views</h2>\n<div class=\"scroll\"><table id=\"views\">\n<thead><tr><th>Advertiser</th>"
           "<th class=\"number\">Time</th><th class=\"number\">Amount</th>"
           "<th>Verdict</th></tr></thead>\n<tbody>\n%1</tbody>\n</table></div>\n</section>\n"_s.arg(rows);
}

} // namespace

Reply ViewerPage::reply() const
{
    const auto notice = justLinked.isEmpty()
        ? QString()
        : u"<p class=\"success\" id=\"linked\" role=\"status\"><bdi>%1</bdi> is linked. What it has earned is available"
          " now.</p>\n"_s.arg(htmlText(justLinked));
    const auto header =
        u"<header>\n<div><h1>Your dashboard</h1>\n<p class=\"note\">Viewer account <bdi>%1</bdi></p></div>\n"
        "<div class=\"earned\"><strong id=\"earned\">%2</strong><span>earned</span></div>\n"
        "</header>\n"_s.arg(htmlText(viewer), balances.lifetime.dollars());
    const auto content = notice + header + u"<div class=\"columns\">\n"_s + balancesSection(balances)
        + devicesSection(devices) + u"</div>\n"_s + viewsSection(views);
    return Page {u"Dashboard – Orvella"_s, u"en"_s, content}.reply(200);
}

} // namespace orvella::sandbox
