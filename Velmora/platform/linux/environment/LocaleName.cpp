#include "platform/linux/environment/LocaleName.h"

namespace orvella {

using namespace Qt::Literals::StringLiterals;

QString localeName(const QProcessEnvironment& environment, LocaleCategory category)
{
    const auto own = category == LocaleCategory::messages ? u"LC_MESSAGES"_s : u"LC_MONETARY"_s;
    for (const auto& variable : {u"LC_ALL"_s, own, u"LANG"_s}) {
        auto name = environment.value(variable);
        if (!name.isEmpty())
            return name;
    }
    return u"C"_s;
}

} // namespace orvella
