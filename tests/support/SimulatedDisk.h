#pragma once

#include "support/TracedProcess.h"

#include <QByteArray>
#include <QString>

#include <map>
#include <optional>
#include <vector>

namespace orvella {

/// A disk that takes the calls of a recorded program and knows, after each, what a power cut would leave.
///
/// It promises no more than POSIX: the bytes of a file are there once the file was synced, a name once its folder was.
/// What was not synced is there or not; of names, those that were changed first come first. Only what lies in one
/// folder, and below it, is looked at. The program has no umask.
class SimulatedDisk final {
public:
    /// What becomes of bytes that were not synced.
    enum class Unsynced { lost, halved, kept };

    /// Takes the folder as it is now for what is on the disk.
    explicit SimulatedDisk(const QString& root);

    /// Makes the call. A call that it does not know stops the program.
    void take(const TracedCall& call);

    /// How many names have been changed and are not safe yet.
    [[nodiscard]] std::size_t unsafeNames() const { return m_unsafe.size(); }

    /// Makes, in an empty folder, what a power cut would leave now, if the first `names` unsafe changes of names have
    /// reached the disk.
    void leave(const QString& folder, std::size_t names, Unsynced bytes) const;

private:
    using Id = std::size_t;
    using Names = std::map<QByteArray, Id>;

    struct Node {
        enum class Kind { file, folder, link } kind = Kind::file;
        unsigned mode = 0;
        /// Of a link, where it leads.
        QByteArray bytes;
        QByteArray safeBytes;
        Names names;
    };

    /// The name gets the node, or goes; a renaming does both at once.
    struct Change {
        struct Step {
            Id folder;
            QByteArray name;
            std::optional<Id> node;
        };

        std::vector<Step> steps;
    };

    using Folders = std::map<Id, Names>;

    Id scan(const QString& path);
    Id add(Node node);
    void change(Change change);
    static void apply(const Change& change, Folders& folders);
    [[nodiscard]] std::optional<QByteArray> inside(const QByteArray& path) const;
    [[nodiscard]] std::optional<Id> find(const QByteArray& path) const;
    [[nodiscard]] std::pair<Id, QByteArray> place(const QByteArray& path) const;
    void open(const QByteArray& path, const QByteArray& flags, const QByteArray& mode, qint64 number);
    void write(qint64 number, const QByteArray& bytes);
    void sync(qint64 number);
    void move(const QByteArray& from, const QByteArray& to);
    void makeFolder(const QByteArray& path, const QByteArray& mode);
    void setMode(std::optional<Id> node, const QByteArray& mode);
    void leave(Id node, const QString& path, const Folders& folders, Unsynced bytes) const;

    QByteArray m_root;
    std::vector<Node> m_nodes;
    /// The names that are safe.
    Folders m_safe;
    /// In their order.
    std::vector<Change> m_unsafe;
    std::map<qint64, Id> m_open;
};

} // namespace orvella
