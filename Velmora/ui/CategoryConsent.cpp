#include "ui/CategoryConsent.h"

#include "core/AppState.h"

namespace orvella {

using namespace Qt::Literals::StringLiterals;

bool CategoryConsent::isOpen(const AppState& state)
{
    return !state.anonymousMode() && state.ageConfirmed();
}

// Deliberate: these texts are shown in English in every language, word for word.
QString CategoryConsent::help(const AppState& state)
{
    if (state.anonymousMode())
        return u"Turn off Anonymous mode to enable category signals."_s;
    if (!state.ageConfirmed())
        return u"Confirm you are 18 or older before enabling category signals."_s;
    return u"Sends broad app categories, never raw app names, so ad matching can be more relevant."_s;
}

QString CategoryConsent::hint(const AppState& state)
{
    if (state.anonymousMode())
        return u"Turn off Anonymous mode to use category signals."_s;
    if (!state.ageConfirmed())
        return u"Confirm you are 18 or older to use category signals."_s;
    return {};
}

} // namespace orvella
