#include "sandbox/ActivationPage.h"

#include "sandbox/Page.h"
#include "sandbox/Printable.h"

namespace orvella::sandbox {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype kLongestShownCode = 32;

} // namespace

Reply ActivationPage::reply(int status) const
{
    const auto error = problem.isEmpty()
        ? QString()
        : u"<p class=\"error\" id=\"problem\" role=\"alert\">%1</p>"_s.arg(htmlText(problem));
    const auto described = problem.isEmpty() ? u"hint"_s : u"problem hint"_s;
    const auto content = uR"(<section class="narrow">
<h1>Activate a device</h1>
<p>Linking a device makes what it has earned available in your wallet, and what it earns from then on.</p>
<form method="post" action="/activate">
<label for="code">Activation code</label>
<input class="code" id="code" name="code" value="%1" placeholder="XXXX-XXXX" maxlength="32" required autofocus
 autocomplete="off" autocapitalize="characters" spellcheck="false" aria-describedby="%2">
%3
<p class="note" id="hint">Orvella shows the code when it runs for the first time. It is valid for 24 hours.</p>
<button type="submit">Link this device</button>
</form>
</section>)"_s.arg(htmlText(code.left(kLongestShownCode)), described, error);
    return Page {u"Activate a device – Orvella"_s, u"en"_s, content}.reply(status);
}

} // namespace orvella::sandbox
