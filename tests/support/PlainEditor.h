#pragma once

#include <QProcess>
#include <QRect>
#include <QString>
#include <QTemporaryDir>

namespace orvella {

/// A text editor that is another program: the test's own program, started once more. Its `main` asks `isWanted` first.
class PlainEditor final {
public:
    PlainEditor() = default;
    PlainEditor(const PlainEditor&) = delete;
    PlainEditor& operator=(const PlainEditor&) = delete;
    ~PlainEditor();

    /// Opens its window there, which takes the keyboard. False where it does not come up.
    [[nodiscard]] bool start(const QRect& place);

    /// Whether it has the keyboard.
    [[nodiscard]] bool isActive();
    /// What has been typed into it.
    [[nodiscard]] QString text() const;

    [[nodiscard]] static bool isWanted(const QStringList& arguments);
    static int run(const QStringList& arguments);

private:
    QProcess m_process;
    QByteArray m_told;
    QTemporaryDir m_folder;
};

} // namespace orvella
