#pragma once

#include "platform/Browser.h"
#include "platform/DesktopLook.h"
#include "platform/Device.h"
#include "platform/ForegroundFacts.h"
#include "platform/LoginItem.h"
#include "platform/Platform.h"
#include "platform/Proxies.h"
#include "platform/RunningApplications.h"
#include "platform/SecretStore.h"
#include "platform/SettingsStore.h"
#include "platform/StatusItem.h"
#include "platform/SystemReport.h"
#include "platform/Updater.h"
#include "platform/ViewerLocale.h"
#include "platform/WindowSystem.h"
#include "support/FakeClock.h"
#include "support/HeldFlow.h"

#include "base/Json.h"

#include <QRegion>
#include <QStringList>

#include <mutex>

namespace orvella {

/// Settings in memory; a value of any type may be put there.
class FakeSettings final : public SettingsStore {
public:
    [[nodiscard]] std::optional<bool> boolean(const QString& key) const override;
    [[nodiscard]] std::optional<QString> string(const QString& key) const override;
    [[nodiscard]] bool contains(const QString& key) const override { return values.contains(key); }
    void setBoolean(const QString& key, bool value) override;
    void setInteger(const QString& key, qint64 value) override;

    std::map<QString, Json> values;
    /// The keys in the order in which they were written.
    QStringList writes;
};

/// A keyring in memory. Never suspends unless it is locked.
class FakeSecrets final : public SecretStore {
public:
    QCoro::Task<std::optional<Secret>> read(QString service, QString account, std::stop_token stop) override;
    QCoro::Task<Finding> look(QString service, QString account) override;
    QCoro::Task<> add(QString service, QString account, Secret value) override;
    QCoro::Task<> remove(QString service, QString account) override;

    struct Item {
        QString service;
        QString account;
        QByteArray value;
    };

    [[nodiscard]] std::vector<QByteArray> items(const QString& service) const;
    void put(const QString& service, const QByteArray& value);

    /// What a look finds, whatever there is.
    std::optional<Finding> finding;
    /// While the keyring is locked every read waits for `unlock` or for the stop of its flow.
    bool isLocked = false;
    /// Whether a read waits on when its flow is stopped, as one does that is under way on another thread.
    bool ignoresStops = false;
    /// Whether every write waits for `unlock`, too.
    bool writesWait = false;
    /// Called by `unlock`, in the order of the reads.
    void unlock();
    bool refusesWrites = false;
    /// What was done, for example "remove orvella.device-token".
    QStringList operations;

private:
    HeldFlow::Wait unlocked(std::stop_token stop);

    std::vector<Item> m_items;
    std::vector<std::shared_ptr<HeldFlow>> m_waiting;
};

class FakeLoginItem final : public LoginItem {
public:
    Result<void> registerItem() override;
    Result<void> unregisterItem() override;
    [[nodiscard]] Status status() const override { return current; }

    void watch(std::function<void(const Result<void>&)> listener) override { answered = std::move(listener); }

    Status current = Status::notRegistered;
    /// Whether the status stays until the test has it answer.
    bool isSlow = false;
    std::optional<Failure> failure;
    std::function<void(const Result<void>&)> answered;
    int registrations = 0;
    int unregistrations = 0;
};

class FakeLocale final : public ViewerLocale {
public:
    [[nodiscard]] std::optional<QString> languageCode() const override { return language; }

    [[nodiscard]] QString usDollars(qint64 cents) const override;

    std::optional<QString> language = QStringLiteral("de");
};

class FakeDevice final : public Device {
public:
    [[nodiscard]] std::optional<QString> name() const override { return deviceName; }

    [[nodiscard]] std::optional<QString> applicationVersion() const override { return version; }

    std::optional<QString> deviceName = QStringLiteral("Desk");
    std::optional<QString> version = QStringLiteral("1.2.3");
};

class FakeApplications final : public RunningApplications {
public:
    [[nodiscard]] std::vector<RunningApplication> list() const override;

    std::vector<RunningApplication> running;
    mutable int readings = 0;
};

class FakeBrowser final : public Browser {
public:
    bool open(const QUrl& page) override;

    bool succeeds = true;
    std::vector<QUrl> opened;
};

class FakeStatusItem final : public StatusItem {
public:
    [[nodiscard]] bool keepsPlaceInSettings() const override { return placeIsASetting; }

    void show(Handlers given) override { handlers = std::move(given); }

    void setAppearance(const StatusAppearance& appearance) override { appearances.push_back(appearance); }

    [[nodiscard]] std::optional<QRect> place() const override { return placed; }

    Handlers handlers;
    bool placeIsASetting = false;
    std::optional<QRect> placed;
    std::vector<StatusAppearance> appearances;
};

/// A window system that puts windows where they want to be, without a compositor.
class FakeWindows final : public WindowSystem {
public:
    [[nodiscard]] bool isCompositing() const override { return composites; }

    [[nodiscard]] bool placesWindows() const override { return places; }

    void activate(QWindow& window) override;
    void setInputRegion(QWindow& window, const QRegion& region) override;
    [[nodiscard]] std::unique_ptr<PressWatch> watchPresses(std::function<void(QPoint)> pressed) override;

    /// Presses a button of the pointer there.
    void press(QPoint place);
    [[nodiscard]] std::size_t watches() const { return m_listeners->size(); }

    bool composites = false;
    bool places = true;
    /// In the order in which they were given the keyboard.
    std::vector<QWindow*> activated;
    QRegion inputRegion;

private:
    using Listeners = std::map<int, std::function<void(QPoint)>>;
    class Watch;

    std::shared_ptr<Listeners> m_listeners = std::make_shared<Listeners>();
    int m_nextListener = 0;
};

class FakeLook final : public DesktopLook {
public:
    [[nodiscard]] Scheme scheme() const override { return current; }

    [[nodiscard]] bool isHighContrast() const override { return highContrast; }

    [[nodiscard]] bool isMotionReduced() const override { return motionReduced; }

    [[nodiscard]] double textScale() const override { return scale; }

    [[nodiscard]] QString fontFamily() const override { return family; }

    [[nodiscard]] QString fixedFontFamily() const override { return fixedFamily; }

    void watch(std::function<void()> listener) override { changed = std::move(listener); }

    Scheme current = Scheme::light;
    bool highContrast = false;
    bool motionReduced = true;
    double scale = 1;
    QString family;
    QString fixedFamily;
    std::function<void()> changed;
};

class FakeForeground final : public ForegroundFacts {
public:
    [[nodiscard]] std::optional<bool> isScreenLocked() const override;

    [[nodiscard]] std::optional<bool> isKeptAwakeForViewing() const override { return keptAwake; }

    [[nodiscard]] std::optional<qint64> frontApplication() const override { return front; }

    [[nodiscard]] std::optional<std::vector<ScreenWindow>> windows() const override { return onScreen; }

    [[nodiscard]] std::vector<QSizeF> screens() const override { return screenSizes; }

    std::optional<bool> locked;
    std::optional<bool> keptAwake;
    std::optional<qint64> front;
    std::optional<std::vector<ScreenWindow>> onScreen = std::vector<ScreenWindow>();
    std::vector<QSizeF> screenSizes {{1440, 900}};
    /// How often a decision began.
    mutable int readings = 0;
};

class FakeReport final : public SystemReport {
public:
    [[nodiscard]] std::vector<Fact> facts() const override { return told; }

    std::vector<Fact> told;
};

class FakeUpdater final : public Updater {
public:
    void start() override { ++starts; }

    void checkForUpdates() override { ++checks; }

    int starts = 0;
    int checks = 0;
};

/// A desktop that wants the same for every address. What it wants may change while nobody asks.
class FakeProxies final : public Proxies {
public:
    [[nodiscard]] std::optional<QUrl> wantedFor(QUrl address, std::stop_token stop) const override;

    /// What was asked about so far.
    [[nodiscard]] std::vector<QUrl> questions() const;

    std::optional<QUrl> wanted;
    /// Whether questions are answered only when they are stopped.
    bool isSilent = false;

private:
    mutable std::mutex m_mutex;
    mutable std::vector<QUrl> m_questions;
};

/// Every service of the system except for time and what is stored, under the test's control.
struct FakeDesktop {
    FakeLoginItem loginItem;
    FakeLocale locale;
    FakeDevice device;
    FakeApplications applications;
    FakeBrowser browser;
    FakeStatusItem statusItem;
    FakeWindows windows;
    FakeLook look;
    FakeForeground foreground;
    FakeUpdater updater;
    FakeReport report;
    FakeProxies proxies;

    /// Together with these, a whole system.
    [[nodiscard]] Platform lend(Clock& clock, SettingsStore& settings, SecretStore& secrets)
    {
        return {clock, settings, secrets, loginItem, locale, device, applications, browser, statusItem, windows, look,
            foreground, updater, report, proxies};
    }
};

/// Every service of the system, under the test's control.
struct FakePlatform : FakeDesktop {
    FakeClock clock;
    FakeSettings settings;
    FakeSecrets secrets;

    [[nodiscard]] Platform lend() { return FakeDesktop::lend(clock, settings, secrets); }
};

} // namespace orvella
