#include "CVelmSaveUserData.h"

#include "common/platform/Platform.h"
#include "common/Singleton.h"
#include "CVelmMessage.h"
#include "CVelmString.h"

#include <QSqlError>
#include <QSqlQuery>

namespace {

/// The first column of the first row; invalid if there is none.
QVariant firstValue(QSqlQuery& query)
{
    return query.next() ? query.value(0) : QVariant();
}

velm::detail::Singleton<CVelmSaveUserData>& holder()
{
    // Brings Qt's list of connections into being first, so that it outlives the store.
    static const bool listed = QSqlDatabase::contains();
    static velm::detail::Singleton<CVelmSaveUserData> instance;
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

}  // namespace

CVelmSaveUserData* CVelmSaveUserData::Instance()
{
    return holder().get([] { return new CVelmSaveUserData(fileName()); });
}

void CVelmSaveUserData::prepareInstance()
{
    holder();
}

QString CVelmSaveUserData::fileName()
{
    QString path = velm::detail::platform::modulePath(nullptr);
    if (path.endsWith(QLatin1String(".exe"), Qt::CaseInsensitive))
        path.chop(4);
    return path + QStringLiteral(".dat");
}

CVelmSaveUserData::CVelmSaveUserData(const QString& file)
{
    initSaveUserData(file);
}

CVelmSaveUserData::~CVelmSaveUserData()
{
    const QString connection = m_database.connectionName();
    m_database = QSqlDatabase();
    QSqlDatabase::removeDatabase(connection);
}

bool CVelmSaveUserData::initSaveUserData(const QString& file)
{
    m_database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), CVelmString().makeGuid());
    m_database.setUserName(QStringLiteral("velmgis"));  // SQLite ignores name and password
    m_database.setPassword(QStringLiteral("KelpoRIX"));
    m_database.setDatabaseName(file);
    if (!m_database.open()) {
        CVelmMessage::errorMsg(QStringLiteral("初始化文件失败！！！"), nullptr,
                               QStringLiteral("错误"));
        return false;
    }
    createIfMissing(userInputTable());
    createIfMissing(pathRecordTable());
    return true;
}

void CVelmSaveUserData::createIfMissing(const QString& table)
{
    QSqlQuery query(m_database);
    query.exec(QStringLiteral("SELECT COUNT(*) FROM sqlite_master where type='table' and name='%1'")
                   .arg(table));
    if (firstValue(query) != QVariant(0))
        return;
    query.exec(
        QStringLiteral("CREATE TABLE [%1]([%2] CHAR(255, 0), [%3] CHAR(255, 0) NOT NULL, "
                       "[%4] CHAR(255, 0) NOT NULL)")
            .arg(table, QStringLiteral("类型"), QStringLiteral("名称"), QStringLiteral("输入")));
}

QString CVelmSaveUserData::userInput(const QString& type, const QString& name)
{
    QString value;
    readUserInput(type, name, value);
    return value;
}

bool CVelmSaveUserData::readUserInput(const QString& type, const QString& name, QString& value)
{
    return read(userInputTable(), type, name, value);
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
    if (!m_database.isOpen())
        return false;  // the user knows since the opening
    QSqlQuery query(m_database);
    const QString statement =
        QStringLiteral("select [输入] from %1 where [类型] = '%2' and [名称] = '%3'")
            .arg(table, type, name);
    if (!query.exec(statement)) {
        CVelmMessage::warnMsg(query.lastError().text(), nullptr, QStringLiteral("警告"));
        return false;
    }
    value = firstValue(query).toString();
    return true;
}

bool CVelmSaveUserData::write(const QString& table, const QString& type, const QString& name,
                              const QString& value)
{
    if (!m_database.isOpen()) {
        CVelmMessage::errorMsg(QStringLiteral("文件未打开，写入数据失败！！！"), nullptr,
                               QStringLiteral("错误"));
        return false;
    }
    QSqlQuery query(m_database);
    if (!query.exec(QStringLiteral("select count(*) from %1 where 类型 = '%2' and 名称 = '%3'")
                        .arg(table, type, name)))
        return false;
    const bool isNew = firstValue(query).toInt() == 0;
    query.finish();
    if (isNew)
        return query.exec(
            QStringLiteral("insert into %1 (类型, 名称, 输入) VALUES('%2', '%3', '%4')")
                .arg(table, type, name, value));
    return query.exec(QStringLiteral("update %1 set 输入 = '%2' where 类型 = '%3' and 名称 = '%4'")
                          .arg(table, value, type, name));
}
