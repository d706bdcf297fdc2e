#pragma once

#include <QProcess>
#include <QString>

namespace orvella {

/// A real panel on a virtual desktop that was started without one.
class PanelProcess final {
public:
    /// `program`: one of those that tools/dev/desktop has configured.
    explicit PanelProcess(const QString& program);
    PanelProcess(const PanelProcess&) = delete;
    PanelProcess& operator=(const PanelProcess&) = delete;
    ~PanelProcess();

    /// False where it is missing. It takes some time until its status area is there.
    [[nodiscard]] bool start();
    /// Ends it and waits until it is gone.
    void stop();

private:
    QProcess m_process;
};

} // namespace orvella
