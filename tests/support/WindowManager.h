#pragma once

#include <QProcess>
#include <QString>

namespace orvella {

/// A real window manager in the place of the one that a test's display starts with. At its end there is none.
class WindowManager final {
public:
    explicit WindowManager(QString program);
    WindowManager(const WindowManager&) = delete;
    WindowManager& operator=(const WindowManager&) = delete;
    ~WindowManager();

    /// Waits until it manages the display.
    [[nodiscard]] bool start();
    /// Ends it without giving it time to tidy up.
    void crash();

private:
    QString m_program;
    QProcess m_process;
};

} // namespace orvella
