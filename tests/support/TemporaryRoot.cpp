#include "support/TemporaryRoot.h"

#include "set/Schema.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

namespace {

constexpr char kRootVariable[] = "VELM_ROOT";

/// A connection by plain Qt, so that what is tested does not prepare its own input.
class Connection
{
public:
    explicit Connection(const QString& file)
        : m_database(QSqlDatabase::addDatabase(u"QSQLITE"_s, kName))
    {
        m_database.setDatabaseName(file);
        EXPECT_TRUE(m_database.open()) << file.toStdString();
    }
    ~Connection()
    {
        m_database = QSqlDatabase();  // closes it
        QSqlDatabase::removeDatabase(kName);
    }

    QSqlQuery run(const QString& statement) const
    {
        QSqlQuery query(m_database);
        EXPECT_TRUE(query.exec(statement))
            << statement.toStdString() << ": " << query.lastError().text().toStdString();
        return query;
    }

private:
    inline static const QString kName = u"test fixture"_s;

    QSqlDatabase m_database;
};

}  // namespace

TemporaryRoot::TemporaryRoot()
    : m_root(QFileInfo(m_folder.path()).canonicalFilePath() + u"/测绘 root"_s),
      m_previousRoot(qgetenv(kRootVariable))
{
    EXPECT_TRUE(QDir().mkpath(path(u"config"_s)));
    EXPECT_TRUE(qputenv(kRootVariable, QFile::encodeName(m_root)));
}

TemporaryRoot::~TemporaryRoot()
{
    if (m_previousRoot.isEmpty())
        qunsetenv(kRootVariable);
    else
        qputenv(kRootVariable, m_previousRoot);
}

void TemporaryRoot::writeFile(const QString& relative, const QByteArray& content) const
{
    const QString target = path(relative);
    ASSERT_TRUE(QDir().mkpath(QFileInfo(target).path()));
    QFile file(target);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << target.toStdString();
    ASSERT_EQ(file.write(content), content.size());
}

void TemporaryRoot::runSql(const QStringList& statements, const QString& relative) const
{
    const Connection connection(path(relative));
    for (const QString& statement : statements)
        connection.run(statement);
}

QString TemporaryRoot::created(const QString& table)
{
    QStringList columns;
    for (const ColumnSchema& column : schema::table(table).columns)
        columns.append(u"[%1] %2"_s.arg(column.name, column.sqlType()));
    return u"create table [%1] (%2)"_s.arg(table, columns.join(u", "_s));
}

void TemporaryRoot::createTables() const
{
    for (const TableSchema& table : schema::tables()) {
        if (!table.optional)
            runSql({created(table.name)}, u"config/"_s + table.database);
    }
}

QStringList TemporaryRoot::querySql(const QString& statement, const QString& relative) const
{
    const Connection connection(path(relative));
    QStringList values;
    QSqlQuery query = connection.run(statement);
    while (query.next())
        values.append(query.value(0).toString());
    return values;
}
