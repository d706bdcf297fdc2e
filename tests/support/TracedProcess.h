#pragma once

#include <QByteArrayList>
#include <QStringList>

#include <vector>

namespace orvella {

/// One system call as it was made.
struct TracedCall {
    QByteArray name;
    /// Texts without their quotes, everything else as strace writes it.
    QByteArrayList arguments;
    /// Negative where the call failed.
    qint64 result = 0;
};

/// A program that runs to its end under strace, which follows what it does with files.
class TracedProcess final {
public:
    /// Starts it and waits. `options` go to strace.
    TracedProcess(const QStringList& command, const QStringList& options);

    /// Why it could not be followed; empty where it could.
    [[nodiscard]] const QByteArray& trouble() const { return m_trouble; }

    /// Whether SIGKILL ended it.
    [[nodiscard]] bool wasKilled() const { return m_wasKilled; }

    /// What it printed, by lines.
    [[nodiscard]] const QByteArrayList& lines() const { return m_lines; }

    [[nodiscard]] const std::vector<TracedCall>& calls() const { return m_calls; }

private:
    void readCalls(const QByteArray& record);

    QByteArray m_trouble;
    bool m_wasKilled = false;
    QByteArrayList m_lines;
    std::vector<TracedCall> m_calls;
};

} // namespace orvella
