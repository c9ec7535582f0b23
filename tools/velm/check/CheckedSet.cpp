#include "check/CheckedSet.h"

#include "CVelmDatabase.h"
#include "CVelmSystemGlobal.h"
#include "CVelmTBLManager.h"

#include <QFileInfo>

#include <algorithm>

namespace {

using Column = CheckedColumn;

Column text(const char* name)
{
    return {QLatin1String(name), Column::Text, false};
}

Column integer(const char* name)
{
    return {QLatin1String(name), Column::Integer, false};
}

Column real(const char* name)
{
    return {QLatin1String(name), Column::Real, false};
}

Column object(const char* name)
{
    return {QLatin1String(name), Column::JsonObject, false};
}

Column json(const char* name)
{
    return {QLatin1String(name), Column::Json, false};
}

Column optional(Column column)
{
    column.optional = true;
    return column;
}

const QString kSystem = QStringLiteral("peltaconfig.db");
const QString kPipe = QStringLiteral("PipeConfig.db");

QVector<CheckedTable> systemTables()
{
    const auto table = [](const char* name, const QVector<Column>& columns) {
        return CheckedTable(kSystem, QLatin1String(name), columns);
    };
    return {
        table("indexini", {text("CODE"), text("NAME"), text("LTYPE"), real("WIDTH"), text("TABLE"),
                           text("USECODE")}),
        table("IndexiniExtend", {text("CODE"), text("EXTTABLE")}),
        table("Workdef", {text("CODE"), text("LAYER"), integer("ENTTYPE"), text("PAR1"),
                          text("PAR2"), text("TEXT"), optional(integer("COLOR"))}),
        table("QuobAreaLine", {text("CODE"), real("LINEWIDTH"), text("ENTTYPE"), text("ANNRULE"),
                               text("AREARULE"), text("GROUPNAME"), real("LINETYPESCALE"),
                               integer("HATCHCOLOR"), integer("HATCHBKCOLOR")}),
        table("VelmAnnotate",
              {text("CODE"), text("FONT"), text("PLACE"), integer("DECIMAL"), text("TEXT"),
               object("EXTDATA"), real("HEIGHT"), real("ROTATE"), real("FACTOR"), real("LINETYPE"),
               integer("INPUT"), integer("ANNTYPE"), integer("ENTTYPE")}),
        table("Attributetable", {text("TABLE"), text("TEXT"), text("GISTABLE"), integer("TYPE")}),
        table("Attributefield",
              {text("TABLE"), text("NAME"), text("TEXT"), integer("TYPE"), integer("LENGTH"),
               integer("DECIMAL"), text("DEFAULT"), integer("NOTNULL"), integer("BEXPORT"),
               optional(integer("ENABLEEDIT"))}),
        table("VelmFrame", {text("CONFIGNAME"), text("FRAMENAME"), object("FRAMEMODE"),
                            object("FRAMETAG"), object("ENTDEPLOY"), object("EXTAND")}),
        table("VelmCmdSetting", {text("CMDNAME"), json("CMDTEXT")}),
        table("RecordConfigType",
              {text("CODE"), text("NAME"), text("EXTEND"), text("TABLE"), text("TYPE")}),
        table("RecordConfig",
              {text("CODE"), text("SHOWFIELD"), text("WRITETABLE"), text("ACTUALFIELD")}),
        table("globaldefines", {text("KEY"), text("VALUE")})};
}

QVector<CheckedTable> pipeTables()
{
    const auto table = [](const char* name, const QVector<Column>& columns) {
        return CheckedTable(kPipe, QLatin1String(name), columns);
    };
    return {table("SYS_GISTABLE", {text("LAYERNAME"), text("ALIASNAME"), integer("LAYERTYPE")}),
            table("SYS_ATTRIBUTEDEF",
                  {text("TABLENAME"), text("FIELDNAME"), text("FIELDTEXT"), integer("FIELDTYPE"),
                   integer("FIELDLENGTH"), integer("FIELDDECIMAL"), text("DEFAULTVALUE"),
                   text("DICTIONARY"), integer("NOTNULL")}),
            table("SYS_DICTIONARY", {text("NAME"), text("LISTVALUE")}),
            table("PIP_SysConfig", {integer("FIELDTYPE"), text("FIELDNAME")})};
}

/// Where the library looks for a field conversion that the system configuration does not have.
CheckedTable pipeDefines()
{
    CheckedTable table(kPipe, QStringLiteral("globaldefines"), {text("KEY"), text("VALUE")});
    table.setOptional();
    return table;
}

struct KeyColumn
{
    const char* table;
    const char* column;
};

constexpr KeyColumn kKeys[] = {{"indexini", "CODE"},        {"Workdef", "CODE"},
                               {"QuobAreaLine", "CODE"},    {"VelmAnnotate", "CODE"},
                               {"VelmFrame", "CONFIGNAME"}, {"VelmCmdSetting", "CMDNAME"},
                               {"globaldefines", "KEY"}};

/// Whether the rows with a text in a column are found without reading the whole table.
bool isSearched(CVelmDatabase& database, const KeyColumn& key)
{
    QVector<QMap<QString, QVariant>> plan;
    database.executeSql(QStringLiteral("explain query plan select * from [%1] where [%2] = 'x'")
                            .arg(QLatin1String(key.table), QLatin1String(key.column)),
                        plan);
    return std::any_of(plan.begin(), plan.end(), [](const auto& step) {
        return step.value(QStringLiteral("DETAIL")).toString().startsWith(QLatin1String("SEARCH"));
    });
}

/// Whether @p table is named as a dictionary.
bool isDictionary(const QString& table)
{
    return table.startsWith(QLatin1String("TBL_"), Qt::CaseInsensitive)
           || table.startsWith(QLatin1String("TB_"), Qt::CaseInsensitive);
}

bool open(CVelmDatabase& database, const QString& path)
{
    return QFileInfo(path).isFile() && database.initDatabase(path, QString()) == Velm::VelmOk;
}

}  // namespace

CheckedTable::CheckedTable(const QString& database, const QString& name,
                           const QVector<CheckedColumn>& columns)
    : m_database(database), m_name(name), m_columns(columns)
{}

QString CheckedTable::read(CVelmDatabase& database)
{
    const QStringList columns = database.allFieldName(m_name);
    for (const QString& column : columns)
        m_stored.append(column.toUpper());
    m_exists = !m_stored.isEmpty();
    if (!m_exists)
        return QString();
    m_rows = database.readTable(QLatin1Char('[') + m_name + QLatin1Char(']'));
    return database.getLastErrorText();
}

Place CheckedTable::place(int row, const QString& column) const
{
    return {m_database, m_name, row + 1, column,
            row < 0 || column.isEmpty() ? QString() : text(row, column)};
}

CheckedSet::CheckedSet() : m_tables(systemTables() + pipeTables())
{
    m_tables.append(pipeDefines());
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
        if (problem.isEmpty() && table.database() == fileName)
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
    readTables(database, kSystem);
    for (const KeyColumn& key : kKeys) {
        if (table(key.table).has(QLatin1String(key.column)) && !isSearched(database, key))
            m_withoutIndex.append(QLatin1String(key.table) + QLatin1Char('.')
                                  + QLatin1String(key.column));
    }
}

void CheckedSet::addDictionaryTables(CVelmDatabase& database)
{
    const QStringList names = database.tableName();
    for (const QString& name : names) {
        if (isDictionary(name))
            m_tables.append(CheckedTable(kSystem, name, {text("CODE"), text("VALUE")}));
    }
}

void CheckedSet::readPipe()
{
    CVelmDatabase database;
    if (!open(database, CVelmSystemGlobal::Instance()->getPipeConfigDb()))
        return;
    readTables(database, kPipe);
}

void CheckedSet::findDictionaries()
{
    const CVelmTBLManager loaded;
    const CheckedTable& pipe = table("SYS_DICTIONARY");
    QStringList names;
    for (int row = 0; row < pipe.size(); ++row)
        names.append(pipe.text(row, QStringLiteral("NAME")));
    for (const CheckedTable& table : qAsConst(m_tables)) {
        if (isDictionary(table.name()))
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
