#include "sandbox/Database.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QUuid>

#include <utility>

namespace orvella::sandbox {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kVersion = 2;

/// Amounts are millionths of a cent, dates milliseconds since 1970, lists are separated by blanks.
const char* const kTables[] = {
    "CREATE TABLE device ("
    " id TEXT PRIMARY KEY, tokenHash BLOB NOT NULL UNIQUE, name TEXT NOT NULL, appVersion TEXT NOT NULL,"
    " language TEXT NOT NULL, anonymousMode INTEGER NOT NULL, appSignalConsent INTEGER NOT NULL,"
    " autoOpenAds INTEGER NOT NULL, categories TEXT NOT NULL DEFAULT '', activationCode TEXT NOT NULL UNIQUE,"
    " registeredAt INTEGER NOT NULL, seenAt INTEGER NOT NULL, viewer TEXT, linkedAt INTEGER)",
    "CREATE TABLE offer ("
    " device TEXT NOT NULL REFERENCES device(id), creative TEXT NOT NULL, matchedCategories TEXT NOT NULL,"
    " PRIMARY KEY (device, creative))",
    // The number orders the sessions: two may begin in the same millisecond.
    "CREATE TABLE session ("
    " number INTEGER PRIMARY KEY AUTOINCREMENT, id TEXT NOT NULL UNIQUE, device TEXT NOT NULL REFERENCES device(id),"
    " campaign TEXT NOT NULL, creative TEXT NOT NULL, advertiserName TEXT NOT NULL, matchedCategories TEXT NOT NULL,"
    " anonymousMode INTEGER NOT NULL, startedAt INTEGER NOT NULL, requiredSeconds INTEGER NOT NULL,"
    " viewerEarn INTEGER NOT NULL, platformFee INTEGER NOT NULL, replaced INTEGER NOT NULL DEFAULT 0,"
    " refusals INTEGER NOT NULL DEFAULT 0, clicks INTEGER NOT NULL DEFAULT 0)",
    "CREATE INDEX sessionOfDevice ON session (device, campaign)",
    // A session is credited once: the database itself sees to it.
    "CREATE TABLE credit ("
    " number INTEGER PRIMARY KEY AUTOINCREMENT, session TEXT NOT NULL UNIQUE REFERENCES session(id),"
    " device TEXT NOT NULL REFERENCES device(id), creditedAt INTEGER NOT NULL, viewerEarn INTEGER NOT NULL,"
    " platformFee INTEGER NOT NULL, advertiserCharge INTEGER NOT NULL,"
    " CHECK (advertiserCharge = viewerEarn + platformFee))",
    "CREATE INDEX creditOfDevice ON credit (device)",
};

/// A null string would be stored as NULL; here it is a text like any other empty one.
QVariant bindable(const QVariant& value)
{
    return value.typeId() == QMetaType::QString && value.toString().isNull() ? QVariant(u""_s) : value;
}

} // namespace

Result<std::unique_ptr<Database>> Database::open(const QString& path)
{
    auto database = std::unique_ptr<Database>(new Database(QUuid::createUuid().toString()));
    database->m_database.setDatabaseName(path.isEmpty() ? u":memory:"_s : path);
    if (!database->m_database.open())
        return failed(Failure::Kind::refused, database->m_database.lastError().text());
    if (const auto prepared = database->prepareTables(); !prepared)
        return std::unexpected(prepared.error());
    return database;
}

Database::Database(QString connection)
    : m_connection(std::move(connection))
    , m_database(QSqlDatabase::addDatabase(u"QSQLITE"_s, m_connection))
{
}

Database::~Database()
{
    m_database.close();
    m_database = {};
    QSqlDatabase::removeDatabase(m_connection);
}

void Database::begin()
{
    m_problem.clear();
    run(u"BEGIN IMMEDIATE"_s);
}

bool Database::end()
{
    if (m_problem.isEmpty())
        run(u"COMMIT"_s);
    if (m_problem.isEmpty())
        return true;
    qWarning("The database refused: %s", qUtf8Printable(m_problem));
    QSqlQuery(m_database).exec(u"ROLLBACK"_s);
    return false;
}

std::vector<Database::Row> Database::run(const QString& statement, const Row& values)
{
    // What follows a failure would be done outside of the transaction, or on half of what it needs.
    if (!m_problem.isEmpty())
        return {};
    QSqlQuery query(m_database);
    query.setForwardOnly(true);
    auto done = query.prepare(statement);
    for (const auto& value : values)
        query.addBindValue(bindable(value));
    done = done && query.exec();
    if (!done) {
        m_problem = query.lastError().text();
        return {};
    }
    std::vector<Row> rows;
    while (query.next()) {
        Row row;
        for (int column = 0; column < query.record().count(); ++column)
            row.push_back(query.value(column));
        rows.push_back(std::move(row));
    }
    return rows;
}

QVariant Database::value(const QString& statement, const Row& values)
{
    const auto rows = run(statement, values);
    return rows.empty() || rows.front().empty() ? QVariant() : rows.front().front();
}

Result<void> Database::prepareTables()
{
    run(u"PRAGMA foreign_keys = ON"_s);
    begin();
    const auto version = value(u"PRAGMA user_version"_s).toInt();
    if (version != 0 && version != kVersion) {
        std::ignore = end();
        return failed(Failure::Kind::refused, u"The database was made by another version of this program."_s);
    }
    if (version == 0) {
        for (const auto* const table : kTables)
            run(QString::fromLatin1(table));
        run(u"PRAGMA user_version = %1"_s.arg(kVersion));
    }
    if (!end())
        return failed(Failure::Kind::refused, m_problem);
    return {};
}

} // namespace orvella::sandbox
