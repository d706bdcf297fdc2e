#include "support/VisibleWindows.h"

#include <QProcess>

namespace orvella {

using namespace Qt::StringLiterals;

int visibleWindowsOf(qint64 process, const QString& display)
{
    auto environment = QProcessEnvironment::systemEnvironment();
    if (!display.isEmpty())
        environment.insert(u"DISPLAY"_s, display);
    QProcess search;
    search.setProcessEnvironment(environment);
    search.start(u"xdotool"_s, {u"search"_s, u"--onlyvisible"_s, u"--pid"_s, QString::number(process)});
    search.waitForFinished();
    return static_cast<int>(search.readAllStandardOutput().count('\n'));
}

} // namespace orvella
