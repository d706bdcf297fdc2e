#pragma once

#include "base/Json.h"
#include "platform/SettingsStore.h"
#include "platform/linux/files/AtomicFile.h"

#include <QString>

#include <set>

namespace orvella {

/// The settings as a JSON object in a file, read at construction and written, synced to the disk, at every change. What
/// a process has left that was killed while it wrote the file goes at construction, too.
///
/// A change is made to the file as it is then: what the program does not know in it, and what somebody else has changed
/// in it meanwhile, stays. A file that cannot be read, or is not a JSON object, is moved aside under a new name
/// ("settings.json.unreadable-1") before the first change is written, so that a program that only reads changes
/// nothing; while that is refused, or the path leads to something other than a file, or what is there cannot be told,
/// nothing is written. A value that could not be written counts all the same until the program ends, and goes out with
/// the next change that can be.
class FileSettingsStore final : public SettingsStore {
public:
    explicit FileSettingsStore(const QString& path);

    [[nodiscard]] std::optional<bool> boolean(const QString& key) const override;
    [[nodiscard]] std::optional<QString> string(const QString& key) const override;
    [[nodiscard]] bool contains(const QString& key) const override { return m_values.contains(key); }
    void setBoolean(const QString& key, bool value) override;
    void setInteger(const QString& key, qint64 value) override;

private:
    void set(const QString& key, Json value);
    void write();

    AtomicFile m_file;
    Json::Object m_values;
    /// The keys whose values the file does not have yet.
    std::set<QString> m_unwritten;
};

} // namespace orvella
