#include "sandbox/Devices.h"

#include "sandbox/Credentials.h"

namespace orvella::sandbox {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr auto kColumns = "id, name, appVersion, language, anonymousMode, appSignalConsent, autoOpenAds, categories,"
                          " activationCode, registeredAt, seenAt, viewer";

Moment momentOf(const QVariant& stored)
{
    return Moment(std::chrono::milliseconds(stored.toLongLong()));
}

QVariant stored(Moment moment)
{
    return qint64 {moment.time_since_epoch().count()};
}

Device deviceOf(const Database::Row& row)
{
    Device device;
    device.id = row[0].toString();
    device.name = row[1].toString();
    device.appVersion = row[2].toString();
    device.language = row[3].toString();
    device.settings = {row[4].toBool(), row[5].toBool(), row[6].toBool()};
    device.categories = row[7].toString().split(u' ', Qt::SkipEmptyParts);
    device.activationCode = row[8].toString();
    device.registeredAt = momentOf(row[9]);
    device.seenAt = momentOf(row[10]);
    device.viewer = row[11].toString();
    return device;
}

} // namespace

Devices::Devices(Database& database)
    : m_database(database)
{
}

Devices::Registration Devices::add(Device device, Moment now)
{
    auto token = makeToken();
    device.id = makeIdentifier(u"dev"_s);
    device.activationCode = makeActivationCode();
    device.registeredAt = now;
    device.seenAt = now;
    m_database.run(u"INSERT INTO device (id, tokenHash, name, appVersion, language, anonymousMode, appSignalConsent,"
                   " autoOpenAds, activationCode, registeredAt, seenAt) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"_s,
        {device.id, hashOf(token), device.name, device.appVersion, device.language, device.settings.anonymousMode,
            device.settings.appSignalConsent, device.settings.autoOpenAds, device.activationCode, stored(now),
            stored(now)});
    return {std::move(device), std::move(token)};
}

std::optional<Device> Devices::findByToken(const Secret& token)
{
    return findWhere(u"tokenHash = ?"_s, hashOf(token));
}

std::optional<Device> Devices::find(const QString& deviceId)
{
    return findWhere(u"id = ?"_s, deviceId);
}

std::vector<Device> Devices::ofViewer(const QString& viewer)
{
    const auto rows = m_database.run(
        u"SELECT %1 FROM device WHERE viewer = ? ORDER BY rowid DESC"_s.arg(QLatin1StringView(kColumns)), {viewer});
    std::vector<Device> devices;
    for (const auto& row : rows)
        devices.push_back(deviceOf(row));
    return devices;
}

void Devices::update(const Device& device)
{
    m_database.run(u"UPDATE device SET language = ?, anonymousMode = ?, appSignalConsent = ?, autoOpenAds = ?,"
                   " categories = ?, seenAt = ? WHERE id = ?"_s,
        {device.language, device.settings.anonymousMode, device.settings.appSignalConsent, device.settings.autoOpenAds,
            device.categories.join(u' '), stored(device.seenAt), device.id});
}

Devices::Linking Devices::link(const QString& typedCode, const QString& viewer, Moment now)
{
    using Outcome = Linking::Outcome;
    const auto code = readActivationCode(typedCode);
    auto device = code ? findWhere(u"activationCode = ?"_s, *code) : std::nullopt;
    if (!device)
        return {Outcome::unknownCode, std::nullopt};
    if (device->isLinked())
        return {Outcome::usedCode, std::move(device)};
    if (now - device->registeredAt >= kCodeLifetime)
        return {Outcome::expiredCode, std::move(device)};
    device->viewer = viewer;
    m_database.run(u"UPDATE device SET viewer = ?, linkedAt = ? WHERE id = ?"_s, {viewer, stored(now), device->id});
    return {Outcome::linked, std::move(device)};
}

std::optional<Device> Devices::findWhere(const QString& condition, const QVariant& value)
{
    const auto rows =
        m_database.run(u"SELECT %1 FROM device WHERE %2"_s.arg(QLatin1StringView(kColumns), condition), {value});
    return rows.empty() ? std::nullopt : std::optional(deviceOf(rows.front()));
}

} // namespace orvella::sandbox
