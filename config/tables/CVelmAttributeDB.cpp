#include "config/tables/CVelmAttributeDB.h"

#include "config/documents/DocumentNames.h"
#include "config/documents/FieldConversion.h"
#include "config/tables/FieldDefinition.h"
#include "CVelmDatabase.h"
#include "data/access/ConfigDatabase.h"
#include "data/access/SystemConfig.h"
#include "data/access/TableReader.h"

#include <new>

using namespace velm::detail;

namespace {

/// What both tables of fields tell of a field.
class FieldColumns
{
public:
    /// The names of the columns that differ.
    struct Names
    {
        const char *table, *name, *text, *type, *length, *decimals;
    };

    FieldColumns(const TableReader& rows, const Names& names)
        : m_table(rows.column(QLatin1String(names.table))),
          m_name(rows.column(QLatin1String(names.name))),
          m_text(rows.column(QLatin1String(names.text))),
          m_type(rows.column(QLatin1String(names.type))),
          m_length(rows.column(QLatin1String(names.length))),
          m_decimals(rows.column(QLatin1String(names.decimals))),
          m_must(rows.column(QStringLiteral("NOTNULL")))
    {}

    /// The field in the current row.
    VelmFieldItem field(const TableReader& rows) const
    {
        VelmFieldItem field;
        field.m_tableName = rows.text(m_table);
        field.m_fieldName = rows.text(m_name);
        field.m_fieldText = rows.text(m_text);
        setFieldType(field, rows.value(m_type).toInt());
        field.m_fieldLength = rows.value(m_length).toInt();
        field.m_fieldDecimal = rows.value(m_decimals).toInt();
        field.m_fieldMust = rows.value(m_must).toInt() != 0;
        return field;
    }

private:
    int m_table, m_name, m_text, m_type, m_length, m_decimals, m_must;
};

}  // namespace

Velm::ErrorStatus CVelmAttributeDB::initVelmAttribute(CVelmDatabase& db)
{
    CVelmDatabase pipe;
    openPipeConfig(pipe);
    return load(db, pipe);
}

Velm::ErrorStatus CVelmAttributeDB::load(const CVelmDatabase& db, const CVelmDatabase& pipe)
{
    loadTables(db);
    loadFields(db);
    loadPipeTables(pipe);
    loadPipeFields(pipe);
    if (!loadConversion(db))
        loadConversion(pipe);
    return m_gisTables.isEmpty() ? Velm::VelmNoData : Velm::VelmOk;
}

void CVelmAttributeDB::loadTables(const CVelmDatabase& db)
{
    TableReader rows(db, QStringLiteral("Attributetable"));
    const int table = rows.column(QStringLiteral("TABLE"));
    const int text = rows.column(QStringLiteral("TEXT"));
    const int gisTable = rows.column(QStringLiteral("GISTABLE"));
    const int type = rows.column(QStringLiteral("TYPE"));
    QVector<VelmTableItem> tables;
    while (rows.next()) {
        VelmTableItem item;
        item.tableName = rows.text(table);
        item.tableText = rows.text(text);
        item.gisTable = rows.text(gisTable);
        item._tableType = static_cast<Velm::TableType>(rows.value(type).toInt());
        tables.append(item);
    }
    if (rows.brokeOff())
        return;
    for (const VelmTableItem& item : qAsConst(tables))
        m_gisTables.insert(item.tableName.toUpper(), item);
}

void CVelmAttributeDB::loadFields(const CVelmDatabase& db)
{
    TableReader rows(db, QStringLiteral("Attributefield"));
    const FieldColumns columns(rows, {"TABLE", "NAME", "TEXT", "TYPE", "LENGTH", "DECIMAL"});
    const int value = rows.column(QStringLiteral("DEFAULT"));
    const int exported = rows.column(QStringLiteral("BEXPORT"));
    const int edit = rows.column(QStringLiteral("ENABLEEDIT"));
    QVector<VelmFieldItem> fields;
    while (rows.next()) {
        VelmFieldItem field = columns.field(rows);
        setDefaultOrDictionary(field, rows.text(value));
        field.m_fieldExport = rows.value(exported).toInt() != 0;
        if (edit >= 0)
            field.m_fieldEdit = rows.value(edit).toInt() != 0;
        fields.append(field);
    }
    if (rows.brokeOff())
        return;
    for (const VelmFieldItem& field : qAsConst(fields)) {
        const auto owner = m_gisTables.find(field.m_tableName.toUpper());
        if (owner != m_gisTables.end())
            owner->fields.append(field);
    }
}

void CVelmAttributeDB::loadPipeTables(const CVelmDatabase& pipe)
{
    TableReader rows(pipe, QStringLiteral("SYS_GISTABLE"));
    const int name = rows.column(QStringLiteral("LAYERNAME"));
    const int text = rows.column(QStringLiteral("ALIASNAME"));
    const int type = rows.column(QStringLiteral("LAYERTYPE"));
    QVector<VelmTableItem> tables;
    while (rows.next()) {
        VelmTableItem item;
        item.tableName = rows.text(name);
        item.tableText = rows.text(text);
        item._tableType = static_cast<Velm::TableType>(rows.value(type).toInt());
        tables.append(item);
    }
    if (rows.brokeOff())
        return;
    for (const VelmTableItem& item : qAsConst(tables)) {
        if (!existTable(item.tableName))
            m_gisTables.insert(item.tableName.toUpper(), item);
    }
}

void CVelmAttributeDB::loadPipeFields(const CVelmDatabase& pipe)
{
    TableReader rows(pipe, QStringLiteral("SYS_ATTRIBUTEDEF"));
    const FieldColumns columns(
        rows, {"TABLENAME", "FIELDNAME", "FIELDTEXT", "FIELDTYPE", "FIELDLENGTH", "FIELDDECIMAL"});
    const int value = rows.column(QStringLiteral("DEFAULTVALUE"));
    const int dictionary = rows.column(QStringLiteral("DICTIONARY"));
    QVector<VelmFieldItem> fields;
    while (rows.next()) {
        VelmFieldItem field = columns.field(rows);
        field.m_defaultValue = rows.text(value);
        field.m_fieldDict = rows.text(dictionary);
        fields.append(field);
    }
    if (rows.brokeOff())
        return;
    for (const VelmFieldItem& field : qAsConst(fields)) {
        VelmTableItem& owner = m_gisTables[field.m_tableName.toUpper()];
        if (owner.tableName.isEmpty())
            owner.tableName = field.m_tableName;
        owner.fields.append(field);
    }
}

/// False if the database holds none, or it cannot be read.
bool CVelmAttributeDB::loadConversion(const CVelmDatabase& db)
{
    if (!db.isOpen())
        return false;
    const QString table = QStringLiteral("globaldefines");
    QMap<QString, QVariant> row;
    const ReadOutcome outcome =
        readConfigRow(db, table, {{QStringLiteral("KEY"), documents::fieldConversion()}}, row);
    if (!outcome.isComplete())
        addReadProblem(db, table, describe(outcome.error));
    const QString text = row.value(QStringLiteral("VALUE")).toString();
    if (text.isEmpty())
        return false;
    const auto tell = [&](const json::Error& error) {
        if (dynamic_cast<const json::OutOfMemory*>(&error))
            throw std::bad_alloc();
        for (const QString& problem : error.messages())
            addReadProblem(db, table, QStringLiteral("field conversion: ") + problem);
    };
    if (const auto conversion = parseFieldConversion(text, tell)) {
        const QString name = conversion->tableInfo.tableName.value_or(QString());
        m_overlay.insert(name.toUpper(), std::make_shared<const FieldConversion>(*conversion));
    }
    return true;
}
