#pragma once

#include "core/AppState.h"
#include "support/FakePlatform.h"
#include "support/FakeTransport.h"
#include "support/Samples.h"
#include "ui/MenuPopoverView.h"

#include <QAbstractButton>
#include <QLabel>
#include <QTest>

#include <map>
#include <memory>

namespace orvella {

/// The menu over a state of its own, and what it asks of its owner.
struct MenuWorld {
    FakePlatform platform;
    FakeTransport transport;
    std::unique_ptr<AppState> state;
    Look look {platform.look};
    std::unique_ptr<MenuPopoverView> view;
    int adsShown = 0;
    int checks = 0;

    explicit MenuWorld(const std::map<QString, Json>& settings = {})
    {
        platform.settings.values = settings;
        platform.settings.values.emplace(QStringLiteral("didConfigureLaunchAtLogin"), true);
        transport.answerEverything();
        state = std::make_unique<AppState>(platform.lend(), transport);
        view = std::make_unique<MenuPopoverView>(
            look, *state, platform.lend(), MenuPopoverView::Actions {[this] { ++adsShown; }, [this] { ++checks; }});
        view->show();
        settle();
    }

    [[nodiscard]] QString text(const QString& name) const
    {
        const auto* const label = view->findChild<QLabel*>(name);
        return label ? label->text() : QString();
    }

    [[nodiscard]] QAbstractButton* button(const QString& name) const { return view->findChild<QAbstractButton*>(name); }

    [[nodiscard]] bool has(const QString& name) const { return view->findChild<QWidget*>(name) != nullptr; }

    void click(const QString& name)
    {
        QTest::mouseClick(button(name), Qt::LeftButton);
        settle();
    }

    void offer()
    {
        state->availableAd = anAd();
        settle();
    }
};

} // namespace orvella
