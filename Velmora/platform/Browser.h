#pragma once

#include <QUrl>

namespace orvella {

/// The viewer's default web browser.
class Browser {
public:
    virtual ~Browser() = default;

    /// Opens the page; false where the system says that it could not.
    virtual bool open(const QUrl& page) = 0;
};

} // namespace orvella
