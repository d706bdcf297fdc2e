#pragma once

#include <QObject>

#include <csignal>
#include <vector>

namespace orvella {

/// Ends the main loop with the exit code 0 when the system, the session or a terminal asks the program to end: SIGTERM,
/// SIGINT and SIGHUP. Make one, after the application object.
///
/// A signal that was ignored when the program started stays ignored, so that nohup works. The former handlers are back
/// when this is gone.
class TerminationSignals final : public QObject {
    Q_OBJECT

public:
    TerminationSignals();
    ~TerminationSignals() override;

private:
    struct Former {
        int signal;
        struct sigaction action;
    };

    void handle(int signal);

    int m_readEnd = -1;
    int m_writeEnd = -1;
    std::vector<Former> m_former;
};

} // namespace orvella
