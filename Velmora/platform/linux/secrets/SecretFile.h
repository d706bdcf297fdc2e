#pragma once

#include "base/Secret.h"
#include "platform/linux/files/AtomicFile.h"

#include <QByteArray>
#include <QString>

#include <map>
#include <optional>
#include <utility>

namespace orvella {

/// The file `secrets.json`, which only its owner can read (0600, in a folder of 0700). Everything here blocks.
///
/// It is JSON: {"version": 1, "items": [{"service": "…", "account": "…", "secret": "<Base64>"}]}.
///
/// A file that others can read, that belongs to somebody else, that is a link or that is not understood is not used: it
/// reads as empty, and before a new one is written it is set aside under a new name. Nothing that is in it is lost.
/// What a process has left that was killed while it wrote the file goes at the next call.
class SecretFile final {
public:
    explicit SecretFile(const QString& folder);

    [[nodiscard]] std::optional<Secret> read(const QString& service, const QString& account) const;

    // Each is whole and for good when it answers true; otherwise the file is as it was.
    bool put(const QString& service, const QString& account, const Secret& value) const;
    bool remove(const QString& service, const QString& account) const;

private:
    using Items = std::map<std::pair<QString, QString>, Secret>;
    enum class State { missing, usable, unusable, unknown };
    class Lock;

    struct Content {
        State state = State::unknown;
        Items items;
    };

    [[nodiscard]] Content load() const;
    [[nodiscard]] bool save(const Items& items) const;
    [[nodiscard]] static std::optional<Items> parse(const QByteArray& text);

    QString m_folder;
    QString m_path;
    AtomicFile m_file;
};

} // namespace orvella
