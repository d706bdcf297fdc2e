#pragma once

#include <QString>

namespace orvella {

/// That somebody keeps the session from going idle, in that one's own words. Either may be empty.
struct IdleInhibition {
    /// A name, a desktop file ID or the path of a program.
    QString who;
    QString why;

    /// Whether it tells of something that people look at, such as a video, a presentation or a game.
    ///
    /// It does unless it is known not to: no program must say so, and each says it in its own language. Known not to
    /// are sound, downloads and other work, and switches that keep a computer awake for no reason of their own. What
    /// says neither who nor why tells of nothing.
    [[nodiscard]] bool isForViewing() const;
};

} // namespace orvella
