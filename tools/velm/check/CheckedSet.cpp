#include "check/CheckedSet.h"

#include "CVelmDatabase.h"
#include "CVelmSystemGlobal.h"
#include "CVelmTBLManager.h"

#include <QFileInfo>

#include <algorithm>

namespace {

/// Whether the rows with a text in a column are found without reading the whole table.
bool isSearched(CVelmDatabase& database, const QString& table, const QString& column)
{
    QVector<QMap<QString, QVariant>> plan;
    database.executeSql(
        QStringLiteral("explain query plan select * from [%1] where [%2] = 'x'").arg(table, column),
        plan);
    return std::any_of(plan.begin(), plan.end(), [](const auto& step) {
        return step.value(QStringLiteral("DETAIL")).toString().startsWith(QLatin1String("SEARCH"));
    });
}

bool open(CVelmDatabase& database, const QString& path)
{
    return QFileInfo(path).isFile() && database.initDatabase(path, QString()) == Velm::VelmOk;
}

}  // namespace

CheckedTable::CheckedTable(const TableSchema& schema) : m_schema(schema)
{
    for (ColumnSchema& column : m_schema.columns)
        column.name = column.name.toUpper();
    for (QString& column : m_schema.key)
        column = column.toUpper();
}

QString CheckedTable::read(CVelmDatabase& database)
{
    const QStringList columns = database.allFieldName(name());
    for (const QString& column : columns)
        m_stored.append(column.toUpper());
    m_exists = !m_stored.isEmpty();
    if (!m_exists)
        return QString();
    m_rows = database.readTable(QLatin1Char('[') + name() + QLatin1Char(']'));
    return database.getLastErrorText();
}

Place CheckedTable::place(int row, const QString& column) const
{
    return {m_schema.database, name(), row + 1, column,
            row < 0 || column.isEmpty() ? QString() : text(row, column)};
}

CheckedSet::CheckedSet()
{
    for (const TableSchema& table : schema::tables())
        m_tables.append(CheckedTable(table));
    readSystem();
    readPipe();
    findDictionaries();
    collectGisTables();
}

const CheckedTable& CheckedSet::table(const char* name) const
{
    return *std::find_if(m_tables.begin(), m_tables.end(), [name](const CheckedTable& table) {
        return table.name() == QLatin1String(name);
    });
}

void CheckedSet::readTables(CVelmDatabase& database, const QString& fileName)
{
    QVector<QMap<QString, QVariant>> rows;
    database.executeSql(QStringLiteral("select count(*) from sqlite_master"), rows);
    QString problem = database.getLastErrorText();
    for (CheckedTable& table : m_tables) {
        if (problem.isEmpty() && table.schema().database == fileName)
            problem = table.read(database);
    }
    if (m_problem.isEmpty() && !problem.isEmpty())
        m_problem = fileName + QStringLiteral(": ") + problem;
}

void CheckedSet::readSystem()
{
    CVelmDatabase database;
    if (!open(database, CVelmSystemGlobal::Instance()->getSystemConfigDb()))
        return;
    addDictionaryTables(database);
    readTables(database, schema::kSystemFile);
    for (const CheckedTable& table : qAsConst(m_tables)) {
        const TableSchema& schema = table.schema();
        if (schema.queried && table.has(schema.key.first())
            && !isSearched(database, schema.name, schema.key.first()))
            m_withoutIndex.append(schema.name + QLatin1Char('.') + schema.key.first());
    }
}

void CheckedSet::addDictionaryTables(CVelmDatabase& database)
{
    const QStringList names = database.tableName();
    for (const QString& name : names) {
        if (schema::isDictionary(name))
            m_tables.append(CheckedTable(schema::dictionary(name)));
    }
}

void CheckedSet::readPipe()
{
    CVelmDatabase database;
    if (!open(database, CVelmSystemGlobal::Instance()->getPipeConfigDb()))
        return;
    readTables(database, schema::kPipeFile);
}

void CheckedSet::findDictionaries()
{
    const CVelmTBLManager loaded;
    const CheckedTable& pipe = table("SYS_DICTIONARY");
    QStringList names;
    for (int row = 0; row < pipe.size(); ++row)
        names.append(pipe.text(row, QStringLiteral("NAME")));
    for (const CheckedTable& table : qAsConst(m_tables)) {
        if (schema::isDictionary(table.name()))
            names.append(table.name());
    }
    QMap<QString, QString> entries;
    for (const QString& name : qAsConst(names)) {
        if (loaded.GetDictByTable(name, entries))
            m_dictionaries.append(name);
    }
}

void CheckedSet::collectGisTables()
{
    const auto addTables = [this](const CheckedTable& table, const QString& column) {
        for (int row = 0; row < table.size(); ++row)
            m_gisTables.insert(table.text(row, column).toUpper(), QStringList());
    };
    const auto addFields = [this](const CheckedTable& table, const QString& owner,
                                  const QString& column) {
        for (int row = 0; row < table.size(); ++row) {
            const auto found = m_gisTables.find(table.text(row, owner).toUpper());
            if (found != m_gisTables.end())
                found->append(table.text(row, column).toUpper());
        }
    };
    addTables(table("Attributetable"), QStringLiteral("TABLE"));
    addTables(table("SYS_GISTABLE"), QStringLiteral("LAYERNAME"));
    addTables(table("SYS_ATTRIBUTEDEF"), QStringLiteral("TABLENAME"));
    addFields(table("Attributefield"), QStringLiteral("TABLE"), QStringLiteral("NAME"));
    addFields(table("SYS_ATTRIBUTEDEF"), QStringLiteral("TABLENAME"), QStringLiteral("FIELDNAME"));
}
