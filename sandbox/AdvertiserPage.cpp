#include "sandbox/AdvertiserPage.h"

#include "sandbox/Page.h"
#include "sandbox/Printable.h"

namespace orvella::sandbox {

using namespace Qt::Literals::StringLiterals;

Reply advertiserPage(const Campaign& campaign)
{
    const auto content = uR"(<section class="landing">
<p class="advertiser">%1</p>
<h1>%2</h1>
<p class="lead">%3</p>
</section>
<p class="note" lang="en">You came here from an ad in Orvella. This page stands for the advertiser’s own.</p>)"_s.arg(
        htmlText(campaign.advertiserName), htmlText(campaign.headline), htmlText(campaign.text));
    return Page {campaign.advertiserName, campaign.creatives.front().language, content}.reply(200);
}

} // namespace orvella::sandbox
