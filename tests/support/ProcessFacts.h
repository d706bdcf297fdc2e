#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <chrono>

/// What the kernel tells of a process that runs.
namespace orvella::ProcessFacts {

/// The time that all its threads have had on a processor.
[[nodiscard]] std::chrono::milliseconds processorTime(qint64 process);

/// A file of its folder in /proc, such as "cmdline"; empty where there is none.
[[nodiscard]] QByteArray file(qint64 process, const QString& name);

/// Whether it has a handler for this signal.
[[nodiscard]] bool handles(qint64 process, int signal);

/// The processes that it has started and that still run, and theirs.
[[nodiscard]] QList<qint64> descendants(qint64 process);

} // namespace orvella::ProcessFacts
