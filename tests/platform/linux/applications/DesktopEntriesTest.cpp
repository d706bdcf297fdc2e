#include "platform/linux/applications/DesktopEntries.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <chrono>
#include <filesystem>

using namespace orvella;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

class DesktopEntriesTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder.emplace();
        QVERIFY(QDir(m_folder->path()).mkpath(u"home/vendor"_s));
        QVERIFY(QDir(m_folder->path()).mkpath(u"system"_s));
    }

    void aWindowIsFoundByTheClassThatTheEntryNames()
    {
        write(u"system/org.example.Editor.desktop"_s, u"Editor"_s, u"Edit-Window"_s);
        auto entries = refreshed();

        QCOMPARE(idOf(entries, u"x"_s, u"edit-window"_s), u"org.example.Editor"_s);
        QCOMPARE(idOf(entries, u"Edit-Window"_s, u"x"_s), u"org.example.Editor"_s);
        QCOMPARE(idOf(entries, u"x"_s, u"y"_s), u"(none)"_s);
        QCOMPARE(idOf(entries, u""_s, u""_s), u"(none)"_s);
    }

    void aWindowIsFoundByTheNameOfTheFile()
    {
        write(u"system/firefox.desktop"_s, u"Browser"_s, {});
        write(u"home/vendor/Paint.desktop"_s, u"Paint"_s, {});
        auto entries = refreshed();

        QCOMPARE(idOf(entries, u"Navigator"_s, u"Firefox"_s), u"firefox"_s);
        QCOMPARE(idOf(entries, u"vendor-paint"_s, u""_s), u"vendor-Paint"_s);
    }

    void theClassThatAnEntryNamesComesBeforeTheNameOfAFile()
    {
        write(u"system/editor.desktop"_s, u"Other"_s, {});
        write(u"system/org.example.Editor.desktop"_s, u"Editor"_s, u"editor"_s);
        auto entries = refreshed();

        QCOMPARE(idOf(entries, u"editor"_s, u"Editor"_s), u"org.example.Editor"_s);
    }

    void aMoreImportantFolderHidesTheSameFileOfAnother()
    {
        write(u"system/editor.desktop"_s, u"System"_s, u"old"_s);
        write(u"home/editor.desktop"_s, u"Home"_s, {});
        auto entries = refreshed();

        const auto* const found = entries.find(u"editor"_s, u""_s);

        QVERIFY(found != nullptr);
        QCOMPARE(found->entry.string(u"Name"_s), u"Home"_s);
        QCOMPARE(idOf(entries, u"old"_s, u""_s), u"(none)"_s);
    }

    void whatIsInstalledLaterIsFoundAfterTheNextLook()
    {
        auto entries = refreshed();
        write(u"system/editor.desktop"_s, u"Editor"_s, {});
        touchSystemFolder(1s);

        entries.refresh();

        QCOMPARE(idOf(entries, u"editor"_s, u""_s), u"editor"_s);
        QVERIFY(QFile::remove(m_folder->filePath(u"system/editor.desktop"_s)));
        touchSystemFolder(2s);
        entries.refresh();
        QCOMPARE(idOf(entries, u"editor"_s, u""_s), u"(none)"_s);
    }

    void missingFoldersAndBrokenFilesAreNoApplications()
    {
        QFile file(m_folder->filePath(u"system/broken.desktop"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("\xff\xfe not an entry");
        file.close();
        DesktopEntries entries({u"/nowhere/applications"_s, m_folder->filePath(u"system"_s)});

        entries.refresh();

        QCOMPARE(idOf(entries, u"broken"_s, u"broken"_s), u"(none)"_s);
    }

private:
    /// The clock of a file system is too coarse for a test that does not wait.
    void touchSystemFolder(std::chrono::seconds later) const
    {
        const std::filesystem::path folder(m_folder->filePath(u"system"_s).toStdString());
        std::filesystem::last_write_time(folder, std::filesystem::file_time_type::clock::now() + later);
    }

    DesktopEntries refreshed() const
    {
        DesktopEntries entries({m_folder->filePath(u"home"_s), m_folder->filePath(u"system"_s)});
        entries.refresh();
        return entries;
    }

    static QString idOf(DesktopEntries& entries, const QString& instance, const QString& windowClass)
    {
        const auto* const found = entries.find(instance, windowClass);
        return found != nullptr ? found->id : u"(none)"_s;
    }

    void write(const QString& path, const QString& name, const QString& windowClass) const
    {
        QFile file(m_folder->filePath(path));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write((u"[Desktop Entry]\nType=Application\nName="_s + name + u"\nStartupWMClass="_s + windowClass + u'\n')
                .toUtf8());
    }

    std::optional<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(DesktopEntriesTest)

#include "DesktopEntriesTest.moc"
