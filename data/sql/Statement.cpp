#include "data/sql/Statement.h"

#include <QSqlDriver>

#include <mutex>

namespace velm::detail {

namespace {

/// The last error text, shared by all connections of the process.
struct LastError
{
    std::mutex mutex;  // not a QMutex: ThreadSanitizer sees no lock within Qt
    QString text;
};

LastError& lastError()
{
    static LastError error;
    return error;
}

// Result codes of SQLite, without their extensions.
constexpr int kNoCode = -1;  // an error of Access
constexpr int kError = 1;
constexpr int kBusy = 5;
constexpr int kLocked = 6;
constexpr int kNoMemory = 7;
constexpr int kTooBig = 18;
constexpr int kConstraint = 19;
constexpr int kMismatch = 20;

int sqliteCode(const QSqlError& error)
{
    bool isNumber = false;
    const int code = error.nativeErrorCode().toInt(&isNumber);
    return isNumber ? code & 0xFF : kNoCode;
}

/// SQLite's driver binds a float as text.
QVariant bindable(const QVariant& value)
{
    return value.userType() == QMetaType::Float && !value.isNull() ? value.toDouble() : value;
}

/// Why a statement is not handed to the driver; no error if it is.
QSqlError refusal(const QSqlQuery& query, const QString& sql)
{
    if (!query.driver()->isOpen())
        return sqlFailure(QStringLiteral("the database is not open"));
    if (sql.contains(QChar::Null))
        return sqlFailure(QStringLiteral("a statement cannot hold a NUL character"));
    return QSqlError();
}

}  // namespace

QSqlQuery forwardQuery(const QSqlDatabase& database)
{
    // Made from an invalid handle, a query would go to the default connection of the process.
    QSqlQuery query =
        database.isValid() ? QSqlQuery(database) : QSqlQuery(static_cast<QSqlResult*>(nullptr));
    query.setForwardOnly(true);
    return query;
}

QSqlError execute(QSqlQuery& query, const QString& sql)
{
    QSqlError refused = refusal(query, sql);
    if (refused.isValid() || query.exec(sql))
        return refused;
    const QSqlError error = query.lastError();
    return error.isValid() ? error : sqlFailure(error.text());
}

QSqlError execute(const QSqlDatabase& database, const QString& sql)
{
    QSqlQuery query = forwardQuery(database);
    return execute(query, sql);
}

Velm::ErrorStatus runStatement(QSqlQuery& query, const QString& sql)
{
    if (query.isValid())
        return Velm::VelmQueryBusy;
    return keepResult(execute(query, sql));
}

Velm::ErrorStatus runBound(QSqlQuery& query, const QString& sql, const QVariantList& values)
{
    const QSqlError refused = refusal(query, sql);
    if (refused.isValid())
        return keepResult(refused);
    bool succeeded = query.prepare(sql);
    if (succeeded) {
        // By position: Qt finds no placeholder by a name that is not ASCII.
        for (int i = 0; i < values.size(); ++i)
            query.bindValue(i, bindable(values.at(i)));
        succeeded = query.exec();
    }
    return keepResult(succeeded ? QSqlError() : query.lastError());
}

Velm::ErrorStatus keepResult(const QSqlError& error)
{
    const std::lock_guard<std::mutex> lock(lastError().mutex);
    lastError().text = error.isValid() ? error.text() : QString();
    return error.isValid() ? Velm::VelmSqlExecFailed : Velm::VelmOk;
}

QSqlError sqlFailure(const QString& text)
{
    return QSqlError(QString(), text, QSqlError::UnknownError);
}

QSqlError outOfMemory()
{
    return sqlFailure(QStringLiteral("out of memory"));
}

QString lastErrorText()
{
    const std::lock_guard<std::mutex> lock(lastError().mutex);
    return lastError().text;
}

bool isLock(const QSqlError& error)
{
    return sqliteCode(error) == kBusy || sqliteCode(error) == kLocked;
}

bool isOutOfMemory(const QSqlError& error)
{
    return sqliteCode(error) == kNoMemory;
}

bool isRefusal(const QSqlError& error)
{
    switch (sqliteCode(error)) {
    case kNoCode:
    case kError:
    case kTooBig:
    case kConstraint:
    case kMismatch:
        return true;
    default:
        return false;
    }
}

}  // namespace velm::detail
