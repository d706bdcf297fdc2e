#pragma once

#include <cstdlib>
#include <memory>

namespace orvella {

/// Frees what xcb has allocated.
struct X11Free {
    void operator()(void* reply) const { std::free(reply); }
};

/// What an X server answered; nothing where it refused or is gone.
template <class T> using X11Reply = std::unique_ptr<T, X11Free>;

} // namespace orvella
