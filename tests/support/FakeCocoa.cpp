#include "support/FakeCocoa.h"

#include <algorithm>

namespace orvella {

namespace {

// Of Keychain Services.
constexpr CocoaSecrets::Status kSuccess = 0;
constexpr CocoaSecrets::Status kDuplicateItem = -25299;
constexpr CocoaSecrets::Status kItemNotFound = -25300;

} // namespace

std::optional<std::string> FakeCocoaLoginItem::registerItem()
{
    ++registrations;
    if (!failure)
        current = Status::enabled;
    return failure;
}

std::optional<std::string> FakeCocoaLoginItem::unregisterItem()
{
    if (!failure)
        current = Status::notRegistered;
    return failure;
}

/// Holds the mutex, and notes the thread.
struct FakeCocoaSecrets::Step {
    explicit Step(FakeCocoaSecrets& secrets)
        : lock(secrets.m_mutex)
    {
        if (QThread::currentThread() == secrets.mainThread)
            secrets.wasAskedOnMainThread = true;
    }

    std::lock_guard<std::mutex> lock;
};

CocoaSecrets::Answer FakeCocoaSecrets::read(const std::string& service, const std::string& account)
{
    const Step step(*this);
    if (refusal)
        return {*refusal, std::nullopt};
    for (const auto& item : m_items) {
        if (item.service == service && item.account == account)
            return {kSuccess, item.bytes};
    }
    return {kItemNotFound, std::nullopt};
}

CocoaSecrets::Status FakeCocoaSecrets::look(const std::string& service, const std::string& account)
{
    return read(service, account).status;
}

CocoaSecrets::Status FakeCocoaSecrets::add(
    const std::string& service, const std::string& account, const std::string& bytes)
{
    const Step step(*this);
    m_changed.push_back(service);
    if (refusal)
        return *refusal;
    const auto isIt = [&](const Item& item) { return item.service == service && item.account == account; };
    if (std::ranges::any_of(m_items, isIt))
        return kDuplicateItem;
    m_items.push_back({service, account, bytes});
    return kSuccess;
}

CocoaSecrets::Status FakeCocoaSecrets::remove(const std::string& service, const std::string& account)
{
    const Step step(*this);
    m_changed.push_back(service);
    if (refusal)
        return *refusal;
    const auto removed =
        std::erase_if(m_items, [&](const Item& item) { return item.service == service && item.account == account; });
    return removed == 0 ? kItemNotFound : kSuccess;
}

std::vector<FakeCocoaSecrets::Item> FakeCocoaSecrets::items() const
{
    const std::lock_guard lock(m_mutex);
    return m_items;
}

std::vector<std::string> FakeCocoaSecrets::changed() const
{
    const std::lock_guard lock(m_mutex);
    return m_changed;
}

void FakeCocoaSecrets::put(Item item)
{
    const std::lock_guard lock(m_mutex);
    m_items.push_back(std::move(item));
}

PropertyValue FakeCocoaSettings::value(const std::string& key) const
{
    used.push_back(key);
    const auto found = values.find(key);
    return found == values.end() ? PropertyValue() : found->second;
}

void FakeCocoaSettings::setBoolean(const std::string& key, bool value)
{
    used.push_back(key);
    values.insert_or_assign(key, value ? 1.0 : 0.0);
}

void FakeCocoaSettings::setInteger(const std::string& key, std::int64_t value)
{
    used.push_back(key);
    values.insert_or_assign(key, static_cast<double>(value));
}

void FakeCocoaStatusItem::show(std::function<void()> listener)
{
    clicked = std::move(listener);
    hasButton = hasRoom;
    if (onShow)
        onShow();
}

void FakeCocoaStatusItem::setAppearance(const Appearance& appearance)
{
    appearances.push_back(appearance);
}

std::unique_ptr<CocoaPopover> FakeCocoaStatusItem::makePopover(
    CocoaPopover::Behaviour behaviour, std::function<void()> closed)
{
    return std::make_unique<FakeCocoaPopover>(*this, behaviour, std::move(closed));
}

FakeCocoaPopover::FakeCocoaPopover(FakeCocoaStatusItem& item, Behaviour behaviour, std::function<void()> closed)
    : m_item(item)
    , m_behaviour(behaviour)
    , m_closed(std::move(closed))
{
    m_item.popovers.push_back(this);
}

FakeCocoaPopover::~FakeCocoaPopover()
{
    std::erase(m_item.popovers, this);
}

void FakeCocoaPopover::show(const Content& content, const std::optional<Anchor>& anchor)
{
    if (!anchor && !m_item.hasButton)
        return;
    shown = content;
    below = anchor;
    ++openings;
    m_isShown = true;
}

void FakeCocoaPopover::performClose()
{
    const auto& others = m_item.popovers;
    if (std::ranges::none_of(others, [this](const auto* other) { return other->hangsFrom(*this); }))
        close();
}

void FakeCocoaPopover::close()
{
    if (!std::exchange(m_isShown, false))
        return;
    m_isClosing = true;
    const auto others = m_item.popovers;
    for (auto* const other : others) {
        if (other->hangsFrom(*this))
            other->close();
    }
    if (!m_item.hasMotion)
        finishClosing();
}

void FakeCocoaPopover::finishClosing()
{
    if (std::exchange(m_isClosing, false))
        m_closed();
}

bool FakeCocoaPopover::hangsFrom(const FakeCocoaPopover& other) const
{
    return (m_isShown || m_isClosing) && below && below->view == other.shown.view;
}

bool FakeCocoaWorkspace::open(const std::string& address)
{
    opened.push_back(address);
    return opens;
}

std::optional<std::string> FakeCocoaWorkspace::currencyText(double dollars) const
{
    if (!canFormat)
        return std::nullopt;
    return QStringLiteral("US$%1").arg(dollars, 0, 'f', 2).toStdString();
}

} // namespace orvella
