#include "signals/CategoryRules.h"

namespace orvella {

namespace {

constexpr CategoryKey kDeveloperToolsKeys[] {u"xcode", u"visual-studio-code", u"vscode", u"cursor", u"terminal",
    u"iterm", u"warp", u"postman", u"github", u"tower", u"sublime", u"jetbrains", u"zed"};
constexpr CategoryKey kCloudInfrastructureKeys[] {u"docker", u"kubernetes", u"lens", u"tableplus", u"datagrip",
    u"sequel", u"mongodb", u"redis", u"aws", u"azure", u"google cloud"};
constexpr CategoryKey kDataAnalyticsKeys[] {u"excel", u"numbers", u"tableau", u"power bi", u"looker", u"metabase",
    u"supabase", u"postgres", u"mysql", u"sqlite"};
constexpr CategoryKey kDesignToolsKeys[] {u"figma", u"sketch", u"principle", u"framer", u"photoshop", u"illustrator",
    u"indesign", u"fusion360", u"fusion 360", u"blender", u"cinema 4d"};
constexpr CategoryKey kMediaCreationKeys[] {u"final cut", u"premiere", u"after effects", u"davinci", u"resolve",
    u"audition", u"garageband", u"logic pro", u"obs", u"screenflow"};
constexpr CategoryKey kProductivityKeys[] {
    u"obsidian", u"notion", u"notes", u"calendar", u"reminders", u"things", u"todoist", u"bear", u"craft", u"evernote"};
constexpr CategoryKey kProjectManagementKeys[] {
    u"linear", u"jira", u"trello", u"asana", u"clickup", u"monday", u"basecamp"};
constexpr CategoryKey kCommunicationKeys[] {
    u"whatsapp", u"telegram", u"slack", u"discord", u"messages", u"mail", u"outlook", u"zoom", u"meet", u"teams"};
constexpr CategoryKey kCustomerSupportKeys[] {u"zendesk", u"intercom", u"helpscout", u"freshdesk", u"front"};
constexpr CategoryKey kSalesMarketingKeys[] {
    u"salesforce", u"hubspot", u"mailchimp", u"klaviyo", u"pipedrive", u"apollo", u"instantly"};
constexpr CategoryKey kWritingContentKeys[] {
    u"pages", u"word", u"ulysses", u"ia writer", u"grammarly", u"scrivener", u"ghost", u"substack"};
constexpr CategoryKey kEducationResearchKeys[] {u"zotero", u"mendeley", u"kindle", u"books", u"skim", u"devonthink"};
constexpr CategoryKey kSecurityPrivacyKeys[] {u"surfshark", u"nordvpn", u"proton", u"1password", u"bitwarden",
    u"dashlane", u"little snitch", u"tailscale", u"wireshark"};
constexpr CategoryKey kFinanceBusinessKeys[] {
    u"quickbooks", u"xero", u"stripe", u"wise", u"revolut", u"bank", u"wallet"};
constexpr CategoryKey kLegalComplianceKeys[] {u"docusign", u"panda doc", u"pandadoc", u"adobe acrobat", u"preview"};
constexpr CategoryKey kHrRecruitingKeys[] {u"greenhouse", u"lever", u"workday", u"bamboohr", u"deel", u"rippling"};
constexpr CategoryKey kEcommerceKeys[] {u"shopify", u"woocommerce", u"amazon seller", u"etsy", u"square"};
constexpr CategoryKey kAiToolsKeys[] {u"chatgpt", u"claude", u"openai", u"perplexity", u"poe", u"raycast"};

constexpr QStringView kDeveloperToolsCategories[] {u"developer_tools"};
constexpr QStringView kCloudInfrastructureCategories[] {u"cloud_infrastructure", u"developer_tools"};
constexpr QStringView kDataAnalyticsCategories[] {u"data_analytics"};
constexpr QStringView kDesignToolsCategories[] {u"design_tools"};
constexpr QStringView kMediaCreationCategories[] {u"media_creation"};
constexpr QStringView kProductivityCategories[] {u"productivity"};
constexpr QStringView kProjectManagementCategories[] {u"project_management"};
constexpr QStringView kCommunicationCategories[] {u"communication"};
constexpr QStringView kCustomerSupportCategories[] {u"customer_support"};
constexpr QStringView kSalesMarketingCategories[] {u"sales_marketing"};
constexpr QStringView kWritingContentCategories[] {u"writing_content"};
constexpr QStringView kEducationResearchCategories[] {u"education_research"};
constexpr QStringView kSecurityPrivacyCategories[] {u"security_privacy"};
constexpr QStringView kFinanceBusinessCategories[] {u"finance_business"};
constexpr QStringView kLegalComplianceCategories[] {u"legal_compliance"};
constexpr QStringView kHrRecruitingCategories[] {u"hr_recruiting"};
constexpr QStringView kEcommerceCategories[] {u"ecommerce"};
constexpr QStringView kAiToolsCategories[] {u"ai_tools"};

constexpr CategoryRule kRules[] {
    {kDeveloperToolsKeys, kDeveloperToolsCategories},
    {kCloudInfrastructureKeys, kCloudInfrastructureCategories},
    {kDataAnalyticsKeys, kDataAnalyticsCategories},
    {kDesignToolsKeys, kDesignToolsCategories},
    {kMediaCreationKeys, kMediaCreationCategories},
    {kProductivityKeys, kProductivityCategories},
    {kProjectManagementKeys, kProjectManagementCategories},
    {kCommunicationKeys, kCommunicationCategories},
    {kCustomerSupportKeys, kCustomerSupportCategories},
    {kSalesMarketingKeys, kSalesMarketingCategories},
    {kWritingContentKeys, kWritingContentCategories},
    {kEducationResearchKeys, kEducationResearchCategories},
    {kSecurityPrivacyKeys, kSecurityPrivacyCategories},
    {kFinanceBusinessKeys, kFinanceBusinessCategories},
    {kLegalComplianceKeys, kLegalComplianceCategories},
    {kHrRecruitingKeys, kHrRecruitingCategories},
    {kEcommerceKeys, kEcommerceCategories},
    {kAiToolsKeys, kAiToolsCategories},
};

} // namespace

std::span<const CategoryRule> categoryRules()
{
    return kRules;
}

} // namespace orvella
