#include "platform/linux/secrets/SecretFile.h"
#include "platform/linux/settings/FileSettingsStore.h"

#include <QFile>
#include <QStringList>

#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

/// Says that all that came before is over. Read by those who record the calls of this program.
void tell(const QString& text)
{
    const auto line = text.toUtf8() + '\n';
    if (::write(STDOUT_FILENO, line.constData(), static_cast<size_t>(line.size())) != line.size())
        qFatal("Nobody listens.");
}

void run(const QString& command)
{
    if (std::system(command.toLocal8Bit().constData()) != 0)
        qFatal("The command has failed.");
}

void change(FileSettingsStore& settings, const QString& key, const QString& value)
{
    settings.setBoolean(key, value == u"true");
}

void change(const SecretFile& secrets, const QString& service, const QString& value)
{
    const auto isDone = value.isEmpty() ? secrets.remove(service, u"default"_s)
                                        : secrets.put(service, u"default"_s, Secret(value.toUtf8()));
    if (!isDone)
        qFatal("The secret is not stored.");
}

template <class Store> void perform(Store& store, const QStringList& changes)
{
    tell(u"begin"_s);
    for (const auto& wanted : changes) {
        if (wanted.startsWith(u'!')) {
            run(wanted.sliced(1));
            continue;
        }
        change(store, wanted.section(u'=', 0, 0), wanted.section(u'=', 1));
        tell(wanted);
    }
}

} // namespace

/// Makes changes with a real store, one after the other, and tells of each when the store says that it is made:
/// `settings FILE key=true …` or `secrets FOLDER service=token …`; `!command` runs one in between.
int main(int argc, char** argv)
{
    QStringList arguments;
    for (int place = 1; place < argc; ++place)
        arguments.append(QFile::decodeName(argv[place]));
    const auto place = arguments.value(1);
    if (arguments.value(0) == u"settings") {
        FileSettingsStore settings(place);
        perform(settings, arguments.sliced(2));
    } else {
        const SecretFile secrets(place);
        perform(secrets, arguments.sliced(2));
    }
    return EXIT_SUCCESS;
}
