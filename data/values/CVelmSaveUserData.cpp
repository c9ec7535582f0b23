#include "CVelmSaveUserData.h"

#include "common/files/DatabasePath.h"
#include "common/host/HostCalls.h"
#include "common/host/Singleton.h"
#include "common/platform/Platform.h"
#include "CVelmMessage.h"
#include "CVelmString.h"
#include "data/sql/Connection.h"
#include "data/sql/RowReading.h"
#include "data/sql/WriteTransaction.h"

using namespace velm::detail;

namespace {

Singleton<CVelmSaveUserData>& holder()
{
    // Brings Qt's list of connections into being first, so that it outlives the store.
    static const bool listed = QSqlDatabase::contains();
    static Singleton<CVelmSaveUserData> instance;
    Q_UNUSED(listed)
    return instance;
}

QString userInputTable()
{
    return QStringLiteral("UserInput");
}

QString pathRecordTable()
{
    return QStringLiteral("PathRecord");
}

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

QSqlError put(const QSqlDatabase& database, const QString& table, const QString& type,
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

CVelmSaveUserData* CVelmSaveUserData::Instance()
{
    return holder().get([] { return new CVelmSaveUserData(fileName()); },
                        [](CVelmSaveUserData& data) { data.isReady(); });
}

void CVelmSaveUserData::prepareInstance()
{
    holder();
}

QString CVelmSaveUserData::fileName()
{
    QString path = platform::modulePath(nullptr);
    if (path.endsWith(QLatin1String(".exe"), Qt::CaseInsensitive))
        path.chop(4);
    return path + QStringLiteral(".dat");
}

CVelmSaveUserData::CVelmSaveUserData(const QString& file) : m_file(file) {}

CVelmSaveUserData::~CVelmSaveUserData()
{
    forget();
}

/// Lets go of the connection.
void CVelmSaveUserData::forget()
{
    const QString connection = m_database.connectionName();
    m_database = QSqlDatabase();
    QSqlDatabase::removeDatabase(connection);
}

bool CVelmSaveUserData::isReady()
{
    if (m_database.isOpen())
        return true;
    const QSqlError error = initSaveUserData();
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

QSqlError CVelmSaveUserData::initSaveUserData()
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
QSqlError CVelmSaveUserData::makeTables()
{
    int inputs = 0;
    int paths = 0;
    QSqlError error = countTable(m_database, userInputTable(), inputs);
    if (!error.isValid())
        error = countTable(m_database, pathRecordTable(), paths);
    if (error.isValid() || (inputs > 0 && paths > 0))
        return error;
    WriteTransaction transaction(m_database);
    error = transaction.error();
    if (!error.isValid())
        error = createIfMissing(m_database, userInputTable());
    if (!error.isValid())
        error = createIfMissing(m_database, pathRecordTable());
    return error.isValid() ? error : transaction.commit();
}

QString CVelmSaveUserData::userInput(const QString& type, const QString& name)
{
    QString value;
    read(userInputTable(), type, name, value);
    return value;
}

bool CVelmSaveUserData::readUserInput(const QString& type, const QString& name, QString& value)
{
    return isReady() && !select(m_database, userInputTable(), type, name, value).isValid();
}

bool CVelmSaveUserData::putUserInput(const QString& type, const QString& name, const QString& value)
{
    return isReady() && !put(m_database, userInputTable(), type, name, value).isValid();
}

QString CVelmSaveUserData::pathRecord(const QString& type, const QString& name)
{
    QString value;
    read(pathRecordTable(), type, name, value);
    return value;
}

bool CVelmSaveUserData::setUserInput(const QString& type, const QString& name, const QString& value)
{
    return write(userInputTable(), type, name, value);
}

bool CVelmSaveUserData::setPathRecord(const QString& type, const QString& name,
                                      const QString& value)
{
    return write(pathRecordTable(), type, name, value);
}

bool CVelmSaveUserData::read(const QString& table, const QString& type, const QString& name,
                             QString& value)
{
    if (!isReady())
        return false;
    const QSqlError error = select(m_database, table, type, name, value);
    if (error.isValid())
        callHost([=] { CVelmMessage::warnMsg(error.text(), nullptr, QStringLiteral("警告")); });
    return !error.isValid();
}

bool CVelmSaveUserData::write(const QString& table, const QString& type, const QString& name,
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
    return !transaction.error().isValid() && !put(m_database, table, type, name, value).isValid()
           && !transaction.commit().isValid();
}
