#pragma once

#include "platform/macos/CocoaApplication.h"
#include "platform/macos/CocoaForeground.h"
#include "platform/macos/CocoaLoginItem.h"
#include "platform/macos/CocoaSecrets.h"
#include "platform/macos/CocoaSettings.h"
#include "platform/macos/CocoaStatusItem.h"
#include "platform/macos/CocoaUpdater.h"
#include "platform/macos/CocoaWorkspace.h"

#include <QThread>

#include <atomic>
#include <map>
#include <mutex>

namespace orvella {

// The frameworks of macOS as a test plays them.

class FakeCocoaApplication final : public CocoaApplication {
public:
    [[nodiscard]] bool isThere() const override { return true; }

    void becomeAccessory() override { isAccessory = true; }

    void watchReopening(std::function<void()> listener) override { reopened = std::move(listener); }

    void activate() override { ++activations; }

    bool isAccessory = false;
    int activations = 0;
    std::function<void()> reopened;
};

class FakeCocoaForeground final : public CocoaForeground {
public:
    [[nodiscard]] PropertyValue screenLock() const override { return lock; }

    [[nodiscard]] std::optional<std::int64_t> frontProcess() const override { return front; }

    [[nodiscard]] std::optional<std::vector<Window>> windows() const override { return onScreen; }

    [[nodiscard]] std::vector<Size> screens() const override { return screenSizes; }

    PropertyValue lock;
    std::optional<std::int64_t> front;
    std::optional<std::vector<Window>> onScreen = std::vector<Window>();
    std::vector<Size> screenSizes {{1440, 900}};
};

class FakeCocoaLoginItem final : public CocoaLoginItem {
public:
    std::optional<std::string> registerItem() override;
    std::optional<std::string> unregisterItem() override;

    [[nodiscard]] Status status() const override { return current; }

    Status current = Status::notRegistered;
    std::optional<std::string> failure;
    int registrations = 0;
};

/// Called on whatever thread.
class FakeCocoaSecrets final : public CocoaSecrets {
public:
    struct Item {
        std::string service;
        std::string account;
        std::string bytes;

        friend bool operator==(const Item&, const Item&) = default;
    };

    [[nodiscard]] Answer read(const std::string& service, const std::string& account) override;
    [[nodiscard]] Status look(const std::string& service, const std::string& account) override;
    Status add(const std::string& service, const std::string& account, const std::string& bytes) override;
    Status remove(const std::string& service, const std::string& account) override;

    [[nodiscard]] std::vector<Item> items() const;
    /// The services that were added to or removed from.
    [[nodiscard]] std::vector<std::string> changed() const;
    void put(Item item);

    /// What every call answers instead of doing something.
    std::optional<Status> refusal;
    /// Whether a call came in on this thread.
    QThread* mainThread = QThread::currentThread();
    std::atomic<bool> wasAskedOnMainThread = false;

private:
    struct Step;

    mutable std::mutex m_mutex;
    std::vector<Item> m_items;
    std::vector<std::string> m_changed;
};

class FakeCocoaSettings final : public CocoaSettings {
public:
    [[nodiscard]] PropertyValue value(const std::string& key) const override;
    void setBoolean(const std::string& key, bool value) override;
    void setInteger(const std::string& key, std::int64_t value) override;

    std::map<std::string, PropertyValue> values;
    /// What was asked for or written.
    mutable std::vector<std::string> used;
};

class FakeCocoaPopover;

class FakeCocoaStatusItem final : public CocoaStatusItem {
public:
    void show(std::function<void()> listener) override;
    void setAppearance(const Appearance& appearance) override;
    [[nodiscard]] std::unique_ptr<CocoaPopover> makePopover(
        CocoaPopover::Behaviour behaviour, std::function<void()> closed) override;

    std::function<void()> clicked;
    /// Whether the menu bar has room for it, as soon as it is shown.
    bool hasRoom = true;
    bool hasButton = false;
    /// Whether popovers take until finishClosing() to go.
    bool hasMotion = false;
    std::vector<Appearance> appearances;
    /// Those that are there, in the order in which they were made.
    std::vector<FakeCocoaPopover*> popovers;
    /// Called when the item comes into the menu bar.
    std::function<void()> onShow;
};

class FakeCocoaPopover final : public CocoaPopover {
public:
    FakeCocoaPopover(FakeCocoaStatusItem& item, Behaviour behaviour, std::function<void()> closed);
    FakeCocoaPopover(const FakeCocoaPopover&) = delete;
    FakeCocoaPopover& operator=(const FakeCocoaPopover&) = delete;
    ~FakeCocoaPopover() override;

    void show(const Content& content, const std::optional<Anchor>& anchor) override;
    /// Closes it as the program does, or as the system does by itself. Refused while another one hangs from it.
    void performClose() override;
    void close() override;
    /// The motion with which it closed is over.
    void finishClosing();

    [[nodiscard]] bool isShown() const override { return m_isShown; }

    [[nodiscard]] Behaviour behaviour() const { return m_behaviour; }

    Content shown;
    std::optional<Anchor> below;
    int openings = 0;

private:
    FakeCocoaStatusItem& m_item;
    Behaviour m_behaviour;
    std::function<void()> m_closed;
    [[nodiscard]] bool hangsFrom(const FakeCocoaPopover& other) const;

    bool m_isShown = false;
    bool m_isClosing = false;
};

class FakeCocoaUpdater final : public CocoaUpdater {
public:
    void start() override { ++starts; }

    void checkForUpdates() override { ++checks; }

    [[nodiscard]] bool isThere() const override { return isInBundle; }

    bool isInBundle = true;
    int starts = 0;
    int checks = 0;
};

class FakeCocoaWorkspace final : public CocoaWorkspace {
public:
    [[nodiscard]] std::vector<Application> runningApplications() const override { return running; }

    bool open(const std::string& address) override;

    [[nodiscard]] std::optional<std::string> computerName() const override { return name; }

    [[nodiscard]] std::optional<std::string> applicationVersion() const override { return version; }

    [[nodiscard]] std::optional<std::string> languageCode() const override { return language; }

    [[nodiscard]] std::optional<std::string> currencyText(double dollars) const override;

    [[nodiscard]] Look look() const override { return current; }

    void watchDisplayOptions(std::function<void()> listener) override { displayOptionsChanged = std::move(listener); }

    std::vector<Application> running;
    bool opens = true;
    std::vector<std::string> opened;
    std::optional<std::string> name = "Anna's Mac";
    std::optional<std::string> version = "1.2.3";
    std::optional<std::string> language = "de";
    bool canFormat = true;
    Look current;
    std::function<void()> displayOptionsChanged;
};

} // namespace orvella
