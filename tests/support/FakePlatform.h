#pragma once

#include "platform/Browser.h"
#include "platform/Device.h"
#include "platform/LoginItem.h"
#include "platform/Platform.h"
#include "platform/RunningApplications.h"
#include "platform/SecretStore.h"
#include "platform/SettingsStore.h"
#include "platform/StatusItem.h"
#include "platform/ViewerLocale.h"
#include "support/FakeClock.h"

#include "base/Json.h"

#include <QStringList>

namespace orvella {

/// Settings in memory; a value of any type may be put there.
class FakeSettings final : public SettingsStore {
public:
    [[nodiscard]] std::optional<bool> boolean(const QString& key) const override;
    [[nodiscard]] std::optional<QString> string(const QString& key) const override;
    void setBoolean(const QString& key, bool value) override;

    std::map<QString, Json> values;
    /// The keys in the order in which they were written.
    QStringList writes;
};

/// A keyring in memory. Never suspends unless it is locked.
class FakeSecrets final : public SecretStore {
public:
    QCoro::Task<std::optional<Secret>> read(QString service, QString account, std::stop_token stop) override;
    QCoro::Task<> add(QString service, QString account, Secret value) override;
    QCoro::Task<> remove(QString service, QString account) override;

    struct Item {
        QString service;
        QString account;
        QByteArray value;
    };

    [[nodiscard]] std::vector<QByteArray> items(const QString& service) const;
    void put(const QString& service, const QByteArray& value);

    /// While the keyring is locked every read waits for `unlock` or for the stop of its flow.
    bool isLocked = false;
    /// Whether a read waits on when its flow is stopped, as one does that is under way on another thread.
    bool ignoresStops = false;
    /// Called by `unlock`, in the order of the reads.
    void unlock();
    bool refusesWrites = false;
    /// What was done, for example "remove orvella.device-token".
    QStringList operations;

private:
    struct Reader;
    class Unlocked;

    std::vector<Item> m_items;
    std::vector<std::shared_ptr<Reader>> m_readers;
};

class FakeLoginItem final : public LoginItem {
public:
    Result<void> registerItem() override;
    Result<void> unregisterItem() override;
    [[nodiscard]] Status status() const override { return current; }

    Status current = Status::notRegistered;
    std::optional<Failure> failure;
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
    void show(std::function<void()> clicked) override { click = std::move(clicked); }

    void setAppearance(const StatusAppearance& appearance) override { appearances.push_back(appearance); }

    [[nodiscard]] std::optional<QPoint> lastClick() const override { return clickedAt; }

    std::function<void()> click;
    std::optional<QPoint> clickedAt;
    std::vector<StatusAppearance> appearances;
};

/// Every service of the system, under the test's control.
struct FakePlatform {
    FakeClock clock;
    FakeSettings settings;
    FakeSecrets secrets;
    FakeLoginItem loginItem;
    FakeLocale locale;
    FakeDevice device;
    FakeApplications applications;
    FakeBrowser browser;
    FakeStatusItem statusItem;

    [[nodiscard]] Platform lend()
    {
        return {clock, settings, secrets, loginItem, locale, device, applications, browser, statusItem};
    }
};

} // namespace orvella
