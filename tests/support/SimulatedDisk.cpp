#include "support/SimulatedDisk.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <climits>
#include <sys/stat.h>
#include <unistd.h>

namespace orvella {

namespace {

constexpr unsigned kModes = 07777;

unsigned octal(const QByteArray& text)
{
    auto isNumber = false;
    const auto mode = text.toUInt(&isNumber, 8);
    if (!isNumber)
        qFatal("A mode is not understood: %s.", text.constData());
    return mode;
}

} // namespace

SimulatedDisk::SimulatedDisk(const QString& root)
    : m_root(QFile::encodeName(root))
{
    scan(root);
}

SimulatedDisk::Id SimulatedDisk::add(Node node)
{
    m_nodes.push_back(std::move(node));
    return m_nodes.size() - 1;
}

SimulatedDisk::Id SimulatedDisk::scan(const QString& path)
{
    struct stat found {};
    if (::lstat(QFile::encodeName(path).constData(), &found) != 0)
        qFatal("There is nothing at %s.", qPrintable(path));
    const auto mode = found.st_mode & kModes;
    if (S_ISLNK(found.st_mode)) {
        QByteArray target(PATH_MAX, '\0');
        target.resize(::readlink(QFile::encodeName(path).constData(), target.data(), PATH_MAX));
        return add({Node::Kind::link, mode, target, target, {}});
    }
    if (S_ISREG(found.st_mode)) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            qFatal("The file %s cannot be read.", qPrintable(path));
        const auto bytes = file.readAll();
        return add({Node::Kind::file, mode, bytes, bytes, {}});
    }
    const auto folder = add({Node::Kind::folder, mode, {}, {}, {}});
    for (const auto& name : QDir(path).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot))
        m_safe[folder][QFile::encodeName(name)] = scan(path + u'/' + name);
    m_nodes[folder].names = m_safe[folder];
    return folder;
}

std::optional<QByteArray> SimulatedDisk::inside(const QByteArray& path) const
{
    if (path == m_root)
        return QByteArray();
    if (!path.startsWith(m_root + '/'))
        return std::nullopt;
    return path.sliced(m_root.size() + 1);
}

std::optional<SimulatedDisk::Id> SimulatedDisk::find(const QByteArray& path) const
{
    Id node = 0;
    for (const auto& name : path.split('/')) {
        if (name.isEmpty())
            continue;
        const auto& names = m_nodes.at(node).names;
        const auto next = names.find(name);
        if (next == names.end())
            return std::nullopt;
        node = next->second;
    }
    return node;
}

std::pair<SimulatedDisk::Id, QByteArray> SimulatedDisk::place(const QByteArray& path) const
{
    const auto end = path.lastIndexOf('/');
    const auto folder = find(end < 0 ? QByteArray() : path.first(end));
    if (!folder)
        qFatal("There is no folder for %s.", path.constData());
    return {*folder, path.sliced(end + 1)};
}

void SimulatedDisk::apply(const Change& change, Folders& folders)
{
    for (const auto& step : change.steps) {
        if (step.node)
            folders[step.folder].insert_or_assign(step.name, *step.node);
        else
            folders[step.folder].erase(step.name);
    }
}

void SimulatedDisk::change(Change change)
{
    for (const auto& step : change.steps) {
        auto& names = m_nodes.at(step.folder).names;
        if (step.node)
            names.insert_or_assign(step.name, *step.node);
        else
            names.erase(step.name);
    }
    m_unsafe.push_back(std::move(change));
}

void SimulatedDisk::take(const TracedCall& call)
{
    const auto argument = [&call](qsizetype place) { return call.arguments.value(place); };
    const auto& name = call.name;
    if (call.result < 0)
        return;
    if (name == "openat")
        open(argument(1), argument(2), argument(3), call.result);
    else if (name == "close")
        m_open.erase(argument(0).toLongLong());
    else if (name == "write")
        write(argument(0).toLongLong(), argument(1).first(call.result));
    else if (name == "fsync")
        sync(argument(0).toLongLong());
    else if (name == "rename")
        move(argument(0), argument(1));
    else if (name == "renameat2")
        move(argument(1), argument(3));
    else if (name == "mkdir")
        makeFolder(argument(0), argument(1));
    else if (name == "chmod")
        setMode(find(inside(argument(0)).value_or("?")), argument(1));
    else if (name == "fchmod" && m_open.contains(argument(0).toLongLong()))
        setMode(m_open.at(argument(0).toLongLong()), argument(1));
    else if (name == "unlink" && inside(argument(0)))
        change({{{place(*inside(argument(0))).first, place(*inside(argument(0))).second, std::nullopt}}});
    else if (name != "fchmod" && name != "unlink")
        qFatal("The simulated disk does not know the call %s.", name.constData());
}

void SimulatedDisk::open(const QByteArray& path, const QByteArray& flags, const QByteArray& mode, qint64 number)
{
    m_open.erase(number);
    const auto local = inside(path);
    if (!local)
        return;
    auto node = find(*local);
    if (!node) {
        if (!flags.contains("O_CREAT"))
            qFatal("What is opened is not there: %s.", path.constData());
        node = add({Node::Kind::file, octal(mode), {}, {}, {}});
        const auto [folder, name] = place(*local);
        change({{{folder, name, node}}});
    } else if (flags.contains("O_TRUNC")) {
        m_nodes.at(*node).bytes.clear();
    }
    m_open[number] = *node;
}

void SimulatedDisk::write(qint64 number, const QByteArray& bytes)
{
    // At the end: nothing here moves about in a file.
    if (const auto node = m_open.find(number); node != m_open.end())
        m_nodes.at(node->second).bytes += bytes;
}

void SimulatedDisk::sync(qint64 number)
{
    const auto opened = m_open.find(number);
    if (opened == m_open.end())
        return;
    auto& node = m_nodes.at(opened->second);
    node.safeBytes = node.bytes;
    std::erase_if(m_unsafe, [this, folder = opened->second](const Change& change) {
        const auto isHere = std::ranges::any_of(change.steps, [&](const auto& step) { return step.folder == folder; });
        if (isHere)
            apply(change, m_safe);
        return isHere;
    });
}

void SimulatedDisk::move(const QByteArray& from, const QByteArray& to)
{
    if (!inside(from) || !inside(to))
        qFatal("Something is moved over the edge of the simulated disk.");
    const auto node = find(*inside(from));
    const auto [oldFolder, oldName] = place(*inside(from));
    const auto [newFolder, newName] = place(*inside(to));
    change({{{oldFolder, oldName, std::nullopt}, {newFolder, newName, node}}});
}

void SimulatedDisk::makeFolder(const QByteArray& path, const QByteArray& mode)
{
    const auto local = inside(path);
    if (!local)
        return;
    const auto node = add({Node::Kind::folder, octal(mode), {}, {}, {}});
    const auto [folder, name] = place(*local);
    change({{{folder, name, node}}});
}

void SimulatedDisk::setMode(std::optional<Id> node, const QByteArray& mode)
{
    if (node)
        m_nodes.at(*node).mode = octal(mode);
}

void SimulatedDisk::leave(const QString& folder, std::size_t names, Unsynced bytes) const
{
    auto folders = m_safe;
    for (std::size_t number = 0; number < names; ++number)
        apply(m_unsafe.at(number), folders);
    leave(0, folder, folders, bytes);
}

void SimulatedDisk::leave(Id id, const QString& path, const Folders& folders, Unsynced bytes) const
{
    const auto& node = m_nodes.at(id);
    if (node.kind == Node::Kind::folder) {
        QDir().mkpath(path);
        const auto names = folders.find(id);
        for (const auto& [name, inner] : names == folders.end() ? Names() : names->second)
            leave(inner, path + u'/' + QFile::decodeName(name), folders, bytes);
    } else if (node.kind == Node::Kind::link) {
        QFile::link(QFile::decodeName(node.bytes), path);
        return;
    } else {
        const auto middle = (node.safeBytes.size() + node.bytes.size()) / 2;
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly))
            qFatal("The file %s cannot be made.", qPrintable(path));
        file.write(bytes == Unsynced::lost                                  ? node.safeBytes
                : bytes == Unsynced::halved && node.safeBytes != node.bytes ? node.bytes.first(middle)
                                                                            : node.bytes);
    }
    if (::chmod(QFile::encodeName(path).constData(), node.mode) != 0)
        qFatal("The mode of %s cannot be set.", qPrintable(path));
}

} // namespace orvella
