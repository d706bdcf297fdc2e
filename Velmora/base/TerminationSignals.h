#pragma once

#include <QObject>

#include <csignal>
#include <vector>

namespace orvella {

/// Ends the main loop with the exit code 0 when the system, the session or a terminal asks the program to end: SIGTERM,
/// SIGINT and SIGHUP. Make one before the main loop runs, and before anything is written; a signal in between waits.
///
/// A program that has not ended a second later is ended where it stands, with the exit code 0 too. A signal that was
/// ignored when the program started stays ignored, so that nohup works. The former handlers are back when this is gone.
class TerminationSignals final : public QObject {
    Q_OBJECT

public:
    /// From now on these signals end the process at once, with the exit code 0: for the time in which there is no main
    /// loop, and nothing that is not safe on the disk.
    static void endAtOnce();

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
