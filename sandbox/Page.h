#pragma once

#include "sandbox/Reply.h"

#include <QString>

namespace orvella::sandbox {

/// One HTML page: the frame that all pages share, without any script.
struct Page {
    QString title;
    /// Of the content, as HTML's "lang".
    QString language;
    /// HTML, every text in it escaped.
    QString content;

    [[nodiscard]] Reply reply(int status) const;
};

} // namespace orvella::sandbox
