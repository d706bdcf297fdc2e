#include "app/StatusMenu.h"

namespace orvella {

using namespace Qt::Literals::StringLiterals;

StatusMenu::StatusMenu(const Actions& actions)
{
    setObjectName(u"statusMenu"_s);
    add(u"showAd"_s, tr("Open ad"), actions.showAd);
    add(u"showMenuPopover"_s, tr("Balances and settings"), actions.showMenuPopover);
    add(u"showLaunchWindow"_s, tr("About Orvella"), actions.showLaunchWindow);
    addSeparator();
    add(u"quit"_s, tr("Quit Orvella"), actions.quit);
}

void StatusMenu::add(const QString& name, const QString& text, const std::function<void()>& action)
{
    if (!action)
        return;
    auto* const entry = addAction(text);
    entry->setObjectName(name);
    connect(entry, &QAction::triggered, this, action);
}

} // namespace orvella
