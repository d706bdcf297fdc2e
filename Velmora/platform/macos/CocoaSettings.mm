#include "platform/macos/CocoaSettings.h"

#include "platform/macos/CocoaObjects.h"

namespace orvella {

namespace {

class Settings final : public CocoaSettings {
public:
    explicit Settings(NSUserDefaults* defaults)
        : m_defaults(defaults)
    {
    }

    PropertyValue value(const std::string& key) const override
    {
        return propertyValue([m_defaults objectForKey:textObject(key)]);
    }

    void setBoolean(const std::string& key, bool value) override { [m_defaults setBool:value forKey:textObject(key)]; }

    void setInteger(const std::string& key, std::int64_t value) override
    {
        [m_defaults setInteger:value forKey:textObject(key)];
    }

private:
    NSUserDefaults* m_defaults;
};

} // namespace

std::unique_ptr<CocoaSettings> CocoaSettings::make(const std::optional<std::string>& suite)
{
    NSUserDefaults* const named = suite ? [[NSUserDefaults alloc] initWithSuiteName:textObject(*suite)] : nil;
    return std::make_unique<Settings>(named != nil ? named : NSUserDefaults.standardUserDefaults);
}

} // namespace orvella
