#pragma once

#include <QByteArray>
#include <QRect>
#include <QString>

#include <memory>
#include <optional>
#include <utility>
#include <vector>

struct xcb_connection_t;

namespace orvella {

/// A window of another program, as far as the X server and the window manager can tell: it has a connection of its own.
class PlainWindow final {
public:
    struct Properties {
        QByteArray instance;
        QByteArray windowClass;
        /// The names of atoms, "_NET_WM_WINDOW_TYPE_DOCK" for example.
        std::vector<QByteArray> types;
        std::vector<QByteArray> states;
        QSize size {200, 100};
        /// The process that it says it belongs to.
        std::optional<quint32> process = {};
        /// The number of the workspace that it wants to be on.
        std::optional<quint32> workspace = {};
        /// Further properties, each a name and a text.
        std::vector<std::pair<QByteArray, QByteArray>> texts = {};
    };

    explicit PlainWindow(const Properties& properties);

    [[nodiscard]] quint32 id() const { return m_id; }

    /// Whether the window manager has put it onto the display.
    [[nodiscard]] bool isShown() const;
    /// Where it is on the display now, in pixels, without the window manager's frame.
    [[nodiscard]] QRect place() const;
    /// Has the window manager minimise it.
    void minimise();
    /// Takes the pointer to itself, as an open menu does; false where another program has it.
    [[nodiscard]] bool grabPointer() const;

private:
    struct Disconnect {
        void operator()(xcb_connection_t* connection) const;
    };

    std::unique_ptr<xcb_connection_t, Disconnect> m_connection;
    quint32 m_root = 0;
    quint32 m_id = 0;
};

} // namespace orvella
