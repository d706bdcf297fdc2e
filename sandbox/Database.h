#pragma once

#include "base/Result.h"

#include <QSqlDatabase>
#include <QString>
#include <QVariant>

#include <memory>
#include <vector>

namespace orvella::sandbox {

/// The service's SQLite database. All work on it is done between `begin` and `end`, one call of a client at a time.
class Database final {
public:
    using Row = std::vector<QVariant>;

    /// Opens the file, or a database in memory where the path is empty, and makes the tables.
    [[nodiscard]] static Result<std::unique_ptr<Database>> open(const QString& path);

    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;
    ~Database();

    void begin();
    /// Keeps what was done, or undoes all of it where any statement has failed. Answers whether it was kept.
    [[nodiscard]] bool end();

    /// Runs one statement and answers its rows: none where it failed.
    std::vector<Row> run(const QString& statement, const Row& values = {});

    /// The first column of the first row, or an invalid value.
    [[nodiscard]] QVariant value(const QString& statement, const Row& values = {});

private:
    explicit Database(QString connection);

    Result<void> prepareTables();

    QString m_connection;
    QSqlDatabase m_database;
    QString m_problem;
};

} // namespace orvella::sandbox
