#include "ui/CategoryConsent.h"

#include "core/AppState.h"

#include <QAbstractButton>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

namespace {

bool isOpen(const AppState& state)
{
    return !state.anonymousMode() && state.ageConfirmed();
}

// Deliberate: these texts, and those of the hint, are shown in English in every language, word for word.
QString help(const AppState& state)
{
    if (state.anonymousMode())
        return u"Turn off Anonymous mode to enable category signals."_s;
    if (!state.ageConfirmed())
        return u"Confirm you are 18 or older before enabling category signals."_s;
    return u"Sends broad app categories, never raw app names, so ad matching can be more relevant."_s;
}

} // namespace

void CategoryConsent::refresh(QAbstractButton& control, const AppState& state)
{
    control.setChecked(state.appSignalConsent());
    control.setEnabled(isOpen(state));
    control.setToolTip(help(state));
    control.setAccessibleDescription(control.toolTip());
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
