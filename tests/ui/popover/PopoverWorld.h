#pragma once

#include "support/FakePlatform.h"
#include "ui/popover/Popover.h"

#include <QPushButton>

#include <memory>
#include <optional>

namespace orvella {

/// A popover with a button in it, and where it is to hang.
struct PopoverWorld {
    FakePlatform platform;
    Look look {platform.look};
    std::optional<PopoverAnchor> anchor {PopoverAnchor {QRect(400, 0, 1, 28), 2}};
    std::unique_ptr<Popover> popover;
    QPushButton* button = nullptr;

    explicit PopoverWorld(Popover::Behaviour behaviour = Popover::Behaviour::transient, bool composites = false)
    {
        platform.windows.composites = composites;
        auto* const content = new QWidget;
        content->setFixedSize(300, 100);
        button = new QPushButton(content);
        popover = std::make_unique<Popover>(
            look, platform.windows, platform.clock, behaviour, content, [this] { return anchor; });
    }

    void open(Popover::Keyboard keyboard = Popover::Keyboard::taken)
    {
        popover->open(keyboard);
        settle();
    }
};

} // namespace orvella
