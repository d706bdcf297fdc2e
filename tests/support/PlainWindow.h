#pragma once

#include <QByteArray>
#include <QString>

#include <memory>
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
    };

    explicit PlainWindow(const Properties& properties);

private:
    struct Disconnect {
        void operator()(xcb_connection_t* connection) const;
    };

    std::unique_ptr<xcb_connection_t, Disconnect> m_connection;
};

} // namespace orvella
