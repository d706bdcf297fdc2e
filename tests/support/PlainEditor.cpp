#include "support/PlainEditor.h"

#include <QApplication>
#include <QEvent>
#include <QFile>
#include <QPlainTextEdit>
#include <QSaveFile>
#include <QTest>

#include <cstdio>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString kOption = u"--plain-editor"_s;
constexpr int kPatienceMs = 20'000;
constexpr auto kActive = "active";
constexpr auto kInactive = "inactive";

/// Tells on its standard output, a line each time, whether it has the keyboard.
class TellingEdit final : public QPlainTextEdit {
protected:
    void changeEvent(QEvent* event) override
    {
        QPlainTextEdit::changeEvent(event);
        if (event->type() != QEvent::ActivationChange)
            return;
        std::puts(isActiveWindow() ? kActive : kInactive);
        std::fflush(stdout);
    }
};

} // namespace

PlainEditor::~PlainEditor()
{
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.terminate();
    m_process.waitForFinished();
}

bool PlainEditor::start(const QRect& place)
{
    QStringList arguments {kOption, m_folder.filePath(u"text"_s)};
    for (const int number : {place.x(), place.y(), place.width(), place.height()})
        arguments.append(QString::number(number));
    m_process.start(QApplication::applicationFilePath(), arguments);
    return QTest::qWaitFor([this] { return isActive(); }, kPatienceMs);
}

bool PlainEditor::isActive()
{
    m_told += m_process.readAllStandardOutput();
    const auto lines = m_told.split('\n');
    // Behind the last of them is nothing.
    return lines.size() > 1 && lines.at(lines.size() - 2) == kActive;
}

QString PlainEditor::text() const
{
    QFile file(m_folder.filePath(u"text"_s));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

bool PlainEditor::isWanted(const QStringList& arguments)
{
    return arguments.value(1) == kOption;
}

int PlainEditor::run(const QStringList& arguments)
{
    TellingEdit editor;
    QObject::connect(&editor, &QPlainTextEdit::textChanged, &editor, [&editor, path = arguments.value(2)] {
        QSaveFile file(path);
        if (file.open(QIODevice::WriteOnly)) {
            file.write(editor.toPlainText().toUtf8());
            file.commit();
        }
    });
    editor.setGeometry(
        arguments.value(3).toInt(), arguments.value(4).toInt(), arguments.value(5).toInt(), arguments.value(6).toInt());
    editor.show();
    editor.activateWindow();
    return QApplication::exec();
}

} // namespace orvella
