#pragma once

#include <QMenu>

#include <functional>

namespace orvella {

/// The menu of the status item: the ways to everything, for desktops and viewers that look for them there.
class StatusMenu final : public QMenu {
    Q_OBJECT

public:
    /// What each entry does. An entry without an action is left out.
    struct Actions {
        std::function<void()> showAd;
        std::function<void()> showMenuPopover;
        std::function<void()> showLaunchWindow;
        std::function<void()> quit;
    };

    explicit StatusMenu(const Actions& actions);

private:
    void add(const QString& name, const QString& text, const std::function<void()>& action);
};

} // namespace orvella
