#pragma once

#include "platform/Updater.h"

#include <QMessageBox>
#include <QPointer>
#include <QProcessEnvironment>
#include <QString>

#include <memory>

namespace orvella {

class Clock;
class WindowSystem;

/// Has a library of its own look for updates, which packages of the program may leave out. Without it the viewer who
/// asks is told where updates come from.
///
/// The library is loaded when the viewer first asks: until then it costs no memory and nobody is asked anything.
class PluginUpdater final : public Updater {
public:
    /// What the updater has to know of how the program came here.
    struct Surroundings {
        /// The absolute path of the library, where it is or would be.
        QString library;
        QProcessEnvironment environment {};
        /// The program's own executable.
        QString executable {};
    };

    PluginUpdater(Surroundings surroundings, Clock& clock, WindowSystem& windows);
    PluginUpdater(const PluginUpdater&) = delete;
    PluginUpdater& operator=(const PluginUpdater&) = delete;
    ~PluginUpdater() override;

    void start() override {}

    void checkForUpdates() override;

private:
    [[nodiscard]] std::unique_ptr<Updater> load() const;
    [[nodiscard]] QString reason() const;
    [[nodiscard]] QString origin() const;
    void say(const QString& text);

    Surroundings m_surroundings;
    Clock& m_clock;
    WindowSystem& m_windows;
    std::unique_ptr<Updater> m_updater;
    /// Goes away when the viewer closes it.
    QPointer<QMessageBox> m_notice;
};

} // namespace orvella
