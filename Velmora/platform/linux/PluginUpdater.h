#pragma once

#include "platform/Updater.h"

#include <QMessageBox>
#include <QPointer>
#include <QString>

#include <memory>

namespace orvella {

class Clock;
class WindowSystem;

/// Has a library of its own look for updates, which packages of the program may leave out. Without it the system's
/// packages bring the updates all the same, and the viewer who asks is told so.
///
/// The library is loaded when the viewer first asks: until then it costs no memory and nobody is asked anything.
class PluginUpdater final : public Updater {
public:
    /// The absolute path of the library, where it is or would be.
    PluginUpdater(QString library, Clock& clock, WindowSystem& windows);
    PluginUpdater(const PluginUpdater&) = delete;
    PluginUpdater& operator=(const PluginUpdater&) = delete;
    ~PluginUpdater() override;

    void start() override {}

    void checkForUpdates() override;

private:
    [[nodiscard]] std::unique_ptr<Updater> load() const;
    [[nodiscard]] QString reason() const;
    void say(const QString& text);

    QString m_library;
    Clock& m_clock;
    WindowSystem& m_windows;
    std::unique_ptr<Updater> m_updater;
    /// Goes away when the viewer closes it.
    QPointer<QMessageBox> m_notice;
};

} // namespace orvella
