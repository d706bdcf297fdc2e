#pragma once

#include <QByteArray>

#include <memory>

struct xcb_connection_t;

namespace orvella {

/// Manages the settings of an X11 display, as another program with a connection of its own.
class FakeXSettingsManager final {
public:
    /// Begins with these settings, in the form that XSettingsBytes writes.
    explicit FakeXSettingsManager(const QByteArray& settings);
    FakeXSettingsManager(const FakeXSettingsManager&) = delete;
    FakeXSettingsManager& operator=(const FakeXSettingsManager&) = delete;
    /// Goes away with its window, as one that ends or crashes.
    ~FakeXSettingsManager() = default;

    void put(const QByteArray& settings);

private:
    struct Disconnect {
        void operator()(xcb_connection_t* connection) const;
    };

    void announce() const;

    std::unique_ptr<xcb_connection_t, Disconnect> m_connection;
    quint32 m_root = 0;
    quint32 m_window = 0;
};

} // namespace orvella
