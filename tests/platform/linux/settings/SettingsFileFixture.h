#pragma once

#include "core/AppState.h"
#include "platform/linux/settings/FileSettingsStore.h"
#include "support/FakePlatform.h"
#include "support/FakeTransport.h"

#include <QTemporaryDir>
#include <QTest>

#include <array>
#include <memory>

namespace orvella {

/// A settings file that the program wrote, for a test to derive from.
class SettingsFileFixture {
protected:
    /// The state as the program makes it, over a settings file.
    struct Run {
        FakePlatform platform;
        FakeTransport transport;
        FileSettingsStore settings;
        std::unique_ptr<AppState> state;

        explicit Run(const QString& path)
            : settings(path)
        {
            const auto fake = platform.lend();
            const Platform lent {fake.clock, settings, fake.secrets, fake.loginItem, fake.locale, fake.device,
                fake.applications, fake.browser, fake.statusItem, fake.windows, fake.look, fake.foreground,
                fake.updater, fake.report, fake.proxies};
            state = std::make_unique<AppState>(lent, transport);
        }
    };

    /// The five settings of the viewer as the state has them.
    using Settings = std::array<bool, 5>;

    static constexpr Settings kDefaults {true, false, false, false, true};
    static constexpr Settings kStored {false, true, true, true, false};

    void start()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_path = m_folder->filePath(QStringLiteral("settings.json"));
        Run run(m_path);
        run.state->ageConfirmed = true;
        run.state->anonymousMode = false;
        run.state->appSignalConsent = true;
        run.state->autoOpenAds = true;
        run.state->showLaunchWindowAtStartup = false;
        m_whole = contentOf(m_path);
    }

    static Settings settingsOf(const AppState& state)
    {
        return {state.anonymousMode(), state.appSignalConsent(), state.ageConfirmed(), state.autoOpenAds(),
            state.showLaunchWindowAtStartup()};
    }

    static QByteArray contentOf(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(absent)");
    }

    static void write(const QString& path, const QByteArray& text)
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            qFatal("The file cannot be written.");
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
    /// What the program itself wrote.
    QByteArray m_whole;
};

} // namespace orvella
