#include "data/values/UserStore.h"

#include "common/files/DatabasePath.h"
#include "common/host/HostCalls.h"
#include "CVelmMessage.h"
#include "CVelmString.h"
#include "data/sql/Connection.h"
#include "data/sql/RowReading.h"
#include "data/sql/WriteTransaction.h"

namespace velm::detail {

namespace {

QSqlError countTable(const QSqlDatabase& database, const QString& table, int& count)
{
    QVariant value;
    const ReadOutcome outcome = readFirstValue(
        database,
        QStringLiteral("SELECT COUNT(*) FROM sqlite_master where type='table' and name='%1'")
            .arg(table),
        value);
    count = value.toInt();
    return outcome.error;
}

QSqlError createIfMissing(const QSqlDatabase& database, const QString& table)
{
    int count = 0;
    QSqlError error = countTable(database, table, count);
    if (error.isValid() || count > 0)
        return error;
    return execute(
        database,
        QStringLiteral("CREATE TABLE [%1]([%2] CHAR(255, 0), [%3] CHAR(255, 0) NOT NULL, "
                       "[%4] CHAR(255, 0) NOT NULL)")
            .arg(table, QStringLiteral("类型"), QStringLiteral("名称"), QStringLiteral("输入")));
}

QSqlError select(const QSqlDatabase& database, const QString& table, const QString& type,
                 const QString& name, QString& value)
{
    QVariant found;
    const ReadOutcome outcome =
        readFirstValue(database,
                       QStringLiteral("select [输入] from %1 where [类型] = '%2' and [名称] = '%3'")
                           .arg(table, type, name),
                       found);
    if (outcome.isComplete())
        value = found.toString();
    return outcome.error;
}

QSqlError write(const QSqlDatabase& database, const QString& table, const QString& type,
                const QString& name, const QString& value)
{
    QVariant count;
    const ReadOutcome outcome =
        readFirstValue(database,
                       QStringLiteral("select count(*) from %1 where 类型 = '%2' and 名称 = '%3'")
                           .arg(table, type, name),
                       count);
    if (!outcome.isComplete())
        return outcome.error;
    if (count.toInt() == 0)
        return execute(database,
                       QStringLiteral("insert into %1 (类型, 名称, 输入) VALUES('%2', '%3', '%4')")
                           .arg(table, type, name, value));
    return execute(database,
                   QStringLiteral("update %1 set 输入 = '%2' where 类型 = '%3' and 名称 = '%4'")
                       .arg(table, value, type, name));
}

}  // namespace

UserStore::UserStore(const QString& file) : m_file(file) {}

UserStore::~UserStore()
{
    forget();
}

QString UserStore::inputs()
{
    return QStringLiteral("UserInput");
}

QString UserStore::paths()
{
    return QStringLiteral("PathRecord");
}

/// Lets go of the connection.
void UserStore::forget()
{
    const QString connection = m_database.connectionName();
    m_database = QSqlDatabase();
    QSqlDatabase::removeDatabase(connection);
}

bool UserStore::isReady()
{
    if (m_database.isOpen())
        return true;
    const QSqlError error = open();
    if (!error.isValid())
        return true;
    forget();  // a driver that is not there yet is looked for anew
    if (m_isFailureShown)
        return false;
    m_isFailureShown = true;
    VELM_WARN(cannotOpen(m_file, error.text()));
    callHost([] {
        CVelmMessage::errorMsg(QStringLiteral("初始化文件失败！！！"), nullptr,
                               QStringLiteral("错误"));
    });
    return false;
}

QSqlError UserStore::open()
{
    const QString problem = databasePathProblem(m_file);
    if (!problem.isEmpty())
        return sqlFailure(problem);
    m_database = addConnection(QStringLiteral("QSQLITE"), CVelmString().makeGuid());
    m_database.setUserName(QStringLiteral("velmgis"));  // SQLite ignores name and password
    m_database.setPassword(QStringLiteral("KelpoRIX"));
    m_database.setDatabaseName(databaseName(m_file));
    if (m_database.open())
        return makeTables();
    const QSqlError error = m_database.lastError();
    return error.isValid() ? error : sqlFailure(QStringLiteral("the driver tells no reason"));
}

/// Makes the tables unless they are there; of two programs that come at once, one.
QSqlError UserStore::makeTables()
{
    int inputTables = 0;
    int pathTables = 0;
    QSqlError error = countTable(m_database, inputs(), inputTables);
    if (!error.isValid())
        error = countTable(m_database, paths(), pathTables);
    if (error.isValid() || (inputTables > 0 && pathTables > 0))
        return error;
    WriteTransaction transaction(m_database);
    error = transaction.error();
    if (!error.isValid())
        error = createIfMissing(m_database, inputs());
    if (!error.isValid())
        error = createIfMissing(m_database, paths());
    return error.isValid() ? error : transaction.commit();
}

bool UserStore::read(const QString& table, const QString& type, const QString& name, QString& value)
{
    return isReady() && !select(m_database, table, type, name, value).isValid();
}

bool UserStore::put(const QString& table, const QString& type, const QString& name,
                    const QString& value)
{
    return isReady() && !write(m_database, table, type, name, value).isValid();
}

QString UserStore::value(const QString& table, const QString& type, const QString& name)
{
    QString value;
    if (!isReady())
        return value;
    const QSqlError error = select(m_database, table, type, name, value);
    if (error.isValid())
        callHost([=] { CVelmMessage::warnMsg(error.text(), nullptr, QStringLiteral("警告")); });
    return value;
}

bool UserStore::setValue(const QString& table, const QString& type, const QString& name,
                         const QString& value)
{
    if (!isReady()) {
        callHost([] {
            CVelmMessage::errorMsg(QStringLiteral("文件未打开，写入数据失败！！！"), nullptr,
                                   QStringLiteral("错误"));
        });
        return false;
    }
    WriteTransaction transaction(m_database);
    return !transaction.error().isValid() && put(table, type, name, value)
           && !transaction.commit().isValid();
}

}  // namespace velm::detail
