#pragma once

#include "base/Json.h"
#include "platform/SettingsStore.h"
#include "platform/linux/AtomicFile.h"

#include <QString>

namespace orvella {

/// The settings as a JSON object in a file, read once at construction and written, synced to the disk, at every change.
///
/// What the program does not know in the file stays in it. A file that cannot be read, or is not a JSON object, is
/// moved aside under a new name ("settings.json.unreadable-1") before the first change is written, so that a program
/// that only reads changes nothing; where even that is refused, or where the path leads to something other than a file,
/// nothing is written in this run. A value that could not be written counts all the same
/// until the program ends, and goes out with the next change.
class FileSettingsStore final : public SettingsStore {
public:
    explicit FileSettingsStore(const QString& path);

    [[nodiscard]] std::optional<bool> boolean(const QString& key) const override;
    [[nodiscard]] std::optional<QString> string(const QString& key) const override;
    [[nodiscard]] bool contains(const QString& key) const override { return m_values.contains(key); }
    void setBoolean(const QString& key, bool value) override;
    void setInteger(const QString& key, qint64 value) override;

private:
    enum class State {
        /// The file is ours, or clearly absent.
        writable,
        /// There is one that has to be moved aside first.
        unreadable,
        untouchable,
    };

    void load();
    void write();

    AtomicFile m_file;
    Json::Object m_values;
    State m_state = State::untouchable;
};

} // namespace orvella
