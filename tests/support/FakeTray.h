#pragma once

#include <QRect>
#include <QSocketNotifier>

#include <memory>
#include <optional>
#include <vector>

struct xcb_connection_t;

namespace orvella {

/// A tray of the X server's first screen, as far as other programs can tell: it has a connection of its own, and takes
/// their icons into its window by the XEmbed protocol.
///
/// https://specifications.freedesktop.org/systemtray-spec/systemtray-spec-latest.html
class FakeTray final {
public:
    FakeTray();
    FakeTray(const FakeTray&) = delete;
    FakeTray& operator=(const FakeTray&) = delete;
    ~FakeTray();

    /// Becomes the screen's tray and says so.
    void start();
    /// Goes away, as a panel that ends.
    void stop();
    /// Leaves icons that ask for a place where they are.
    void ignoreRequests() { m_ignoresRequests = true; }

    /// How many icons it shows now, after everything that the X server knows of.
    [[nodiscard]] int icons();

    /// Where the icon is on the screen; nothing where there is not exactly one.
    [[nodiscard]] std::optional<QRect> place();

private:
    struct Disconnect {
        void operator()(xcb_connection_t* connection) const;
    };

    [[nodiscard]] quint32 atom(const char* name);
    void readEvents();
    void take(quint32 icon);

    std::unique_ptr<xcb_connection_t, Disconnect> m_connection;
    std::unique_ptr<QSocketNotifier> m_events;
    quint32 m_root = 0;
    quint32 m_visual = 0;
    /// The type of the messages that ask for a place.
    quint32 m_requestType = 0;
    /// The window that holds the icons; 0 while there is no tray.
    quint32 m_window = 0;
    std::vector<quint32> m_icons;
    bool m_ignoresRequests = false;
};

} // namespace orvella
