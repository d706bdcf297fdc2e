#include "Claim.h"
#include "JsonTwins.h"
#include "platform/linux/settings/FileSettingsStore.h"
#include "platform/linux/settings/SettingsText.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

const auto kAnonymousMode = u"anonymousMode"_s;

/// Anonymous mode is off only where another reader, one that takes more for JSON than ours, finds it off as well.
void anonymousModeIsOffOnlyWhereTheTextSaysSo(const FileSettingsStore& store, const QByteArray& text)
{
    if (store.boolean(kAnonymousMode).value_or(true))
        return;
    auto clear = text;
    // Qt drops U+FEFF at the start of a name; its neighbour it keeps.
    clear.replace("\xef\xbb\xbf", "\xef\xbb\xbe").replace(0, text.startsWith("\xef\xbb\xbf") ? 3 : 0, "");
    QJsonParseError trouble;
    const auto value = QJsonDocument::fromJson(clear, &trouble).object().value(kAnonymousMode);
    // It refuses numbers that a double cannot come near, as 1e-400.
    claim(trouble.error == QJsonParseError::IllegalNumber || (value.isBool() && !value.toBool()),
        "anonymous mode is off only where the text says so");
}

/// A text that was cut off somewhere is no settings at all, so it cannot hold half of them.
void aPartOfWhatWasWrittenIsNotReadable(const QByteArray& written, qsizetype length)
{
    const auto whole = written.trimmed();
    claim(!SettingsText::parse(whole.first(length % whole.size())), "a part of what was written is not readable");
}

void whatWasWrittenReadsTheSame(const Json::Object& settings, qsizetype size)
{
    const auto written = SettingsText::of(settings);
    const auto again = SettingsText::parse(written);
    claim(again && isSameWhenWritten(settings, *again), "what was written reads the same");
    aPartOfWhatWasWrittenIsNotReadable(written, size);
}

class Folder final {
public:
    [[nodiscard]] QString settings() const { return m_folder.filePath(u"settings.json"_s); }

    [[nodiscard]] QString setAside() const { return settings() + u".unreadable-1"_s; }

    void begin(const QByteArray& text) const
    {
        QFile::remove(setAside());
        QFile file(settings());
        claim(file.open(QIODevice::WriteOnly) && file.write(text) == text.size(), "the folder can be written to");
    }

    [[nodiscard]] static QByteArray content(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private:
    QTemporaryDir m_folder;
};

/// A change of one setting leaves all others as they were, or the unreadable text as a whole under its new name.
void aChangeKeepsWhatWasThere(const QByteArray& text, const Folder& folder)
{
    folder.begin(text);
    FileSettingsStore store(folder.settings());
    anonymousModeIsOffOnlyWhereTheTextSaysSo(store, text);
    claim(Folder::content(folder.settings()) == text, "reading changes nothing");

    store.setBoolean(u"autoOpenAds"_s, true);

    const auto before = SettingsText::parse(text);
    auto expected = before.value_or(Json::Object());
    expected.insert_or_assign(u"autoOpenAds"_s, Json(true));
    const auto after = SettingsText::parse(Folder::content(folder.settings()));
    claim(after && isSameWhenWritten(expected, *after), "a change keeps every other setting");
    claim(Folder::content(folder.setAside()) == (before ? QByteArray() : text), "what is unreadable is set aside");
    const FileSettingsStore next(folder.settings());
    claim(next.boolean(kAnonymousMode) == store.boolean(kAnonymousMode), "the next run finds the same anonymous mode");
    claim(next.boolean(u"autoOpenAds"_s) == true, "the next run finds the change");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const Folder folder;
    const QByteArray text(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    if (const auto settings = SettingsText::parse(text))
        whatWasWrittenReadsTheSame(*settings, text.size());
    aChangeKeepsWhatWasThere(text, folder);
    return 0;
}
