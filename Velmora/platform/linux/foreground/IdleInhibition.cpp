#include "platform/linux/foreground/IdleInhibition.h"

#include "base/ApplicationId.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <array>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

namespace {

// Names and reasons are short; of a longer one the beginning tells enough.
constexpr qsizetype kMostCharacters = 200;

/// Words of the names of programs whose inhibitions tell of nothing to look at: switches, and what the desktop's own
/// switches are called; players of sound; downloads.
constexpr std::array kProgramsToListenTo {"amarok"_L1, "amberol"_L1, "audacious"_L1, "audacity"_L1, "clementine"_L1,
    "deadbeef"_L1, "elisa"_L1, "exaile"_L1, "gapless"_L1, "lollypop"_L1, "mpd"_L1, "music"_L1, "podcasts"_L1,
    "quodlibet"_L1, "rhythmbox"_L1, "shortwave"_L1, "spotify"_L1, "strawberry"_L1, "tauon"_L1};
constexpr std::array kSwitches {"amphetamine"_L1, "caffeinate"_L1, "caffeine"_L1, "caffeinated"_L1, "espresso"_L1,
    "keepawake"_L1, "nosleep"_L1, "plasmashell"_L1, "stayawake"_L1, "wakepy"_L1};
constexpr std::array kDownloads {
    "deluge"_L1, "fragments"_L1, "ktorrent"_L1, "packagekit"_L1, "qbittorrent"_L1, "transmission"_L1};

/// Parts of reasons that tell of sound, where they tell of no picture. What "musi" begins is music in many languages.
constexpr std::array kSounds {"audio"_L1, "musi"_L1, "podcast"_L1, "sound"_L1};
constexpr std::array kPictures {"film"_L1, "movie"_L1, "video"_L1};
/// Of work that goes on by itself, of connections that a page may keep all day, and of switches.
constexpr std::array kOccupations {"backup"_L1, "backing up"_L1, "battery applet"_L1, "burning"_L1, "caffeine"_L1,
    "copying"_L1, "download"_L1, "install"_L1, "keep awake"_L1, "peerconnection"_L1, "seeding"_L1, "stay awake"_L1,
    "synchroni"_L1, "torrent"_L1, "transfer"_L1, "updating"_L1, "upgrad"_L1, "upload"_L1};

/// In small letters and without accents.
QString plain(const QString& text)
{
    QString letters;
    for (const auto character : text.left(kMostCharacters).normalized(QString::NormalizationForm_KD)) {
        if (!character.isMark())
            letters += character;
    }
    return letters.toCaseFolded().simplified();
}

bool contains(const QString& text, const auto& parts)
{
    return std::ranges::any_of(parts, [&text](QLatin1StringView part) { return text.contains(part); });
}

bool isNamed(const QString& who, const auto& words)
{
    static const QRegularExpression separators(u"[^\\p{L}\\p{N}]+"_s, QRegularExpression::UseUnicodePropertiesOption);
    const auto parts = who.split(separators, Qt::SkipEmptyParts);
    return std::ranges::any_of(words, [&parts](QLatin1StringView word) { return parts.contains(word); });
}

/// Whether there is nothing in it. Tools that are told nothing write these words.
bool saysNothing(const QString& text)
{
    return text.isEmpty() || text == u"unknown" || text == u"unknown reason" || text == u"not specified";
}

} // namespace

bool IdleInhibition::isForViewing() const
{
    const auto name = plain(who);
    const auto reason = plain(why);
    if (saysNothing(name) && saysNothing(reason))
        return false;
    if (name == plain(kApplicationId) || name == u"orvella")
        return false;
    if (isNamed(name, kProgramsToListenTo) || isNamed(name, kSwitches) || isNamed(name, kDownloads))
        return false;
    const bool isSound = contains(reason, kSounds) && !contains(reason, kPictures);
    return !isSound && !contains(reason, kOccupations);
}

} // namespace orvella
