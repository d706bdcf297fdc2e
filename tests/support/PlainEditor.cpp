#include "support/PlainEditor.h"

#include <QApplication>
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
    return QTest::qWaitFor([this] { return m_process.readAllStandardOutput().contains("active"); }, kPatienceMs);
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
    QPlainTextEdit editor;
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
    if (!QTest::qWaitForWindowActive(&editor, kPatienceMs))
        return 1;
    std::puts("active");
    std::fflush(stdout);
    return QApplication::exec();
}

} // namespace orvella
