#include "config/CVelmAttributeDB.h"

#include "config/FieldConversion.h"
#include "config/FieldDefinition.h"
#include "config/SystemConfig.h"
#include "CVelmDatabase.h"
#include "data/Statement.h"

#include <QSqlDatabase>

using namespace velm::detail;

Velm::ErrorStatus CVelmAttributeDB::initVelmAttribute(CVelmDatabase& db)
{
    loadTables(db);
    loadFields(db);
    CVelmDatabase pipe;
    const bool hasPipe = openPipeConfig(pipe) == Velm::VelmOk;
    if (hasPipe) {
        loadPipeTables(pipe);
        loadPipeFields(pipe);
    }
    if (!loadConversion(db) && hasPipe)
        loadConversion(pipe);
    return m_gisTables.isEmpty() ? Velm::VelmNoData : Velm::VelmOk;
}

void CVelmAttributeDB::loadTables(CVelmDatabase& db)
{
    TableReader rows(db.getQSqlDatabase(), QStringLiteral("Attributetable"));
    const int table = rows.column(QStringLiteral("TABLE"));
    const int text = rows.column(QStringLiteral("TEXT"));
    const int gisTable = rows.column(QStringLiteral("GISTABLE"));
    const int type = rows.column(QStringLiteral("TYPE"));
    while (rows.next()) {
        VelmTableItem item;
        item.tableName = rows.text(table);
        item.tableText = rows.text(text);
        item.gisTable = rows.text(gisTable);
        item._tableType = static_cast<Velm::TableType>(rows.value(type).toInt());
        m_gisTables.insert(item.tableName.toUpper(), item);
    }
}

void CVelmAttributeDB::loadFields(CVelmDatabase& db)
{
    TableReader rows(db.getQSqlDatabase(), QStringLiteral("Attributefield"));
    const int table = rows.column(QStringLiteral("TABLE"));
    const int name = rows.column(QStringLiteral("NAME"));
    const int text = rows.column(QStringLiteral("TEXT"));
    const int type = rows.column(QStringLiteral("TYPE"));
    const int length = rows.column(QStringLiteral("LENGTH"));
    const int decimal = rows.column(QStringLiteral("DECIMAL"));
    const int value = rows.column(QStringLiteral("DEFAULT"));
    const int must = rows.column(QStringLiteral("NOTNULL"));
    const int exported = rows.column(QStringLiteral("BEXPORT"));
    const int edit = rows.column(QStringLiteral("ENABLEEDIT"));
    while (rows.next()) {
        const auto owner = m_gisTables.find(rows.text(table).toUpper());
        if (owner == m_gisTables.end())
            continue;
        VelmFieldItem field;
        field.m_tableName = rows.text(table);
        field.m_fieldName = rows.text(name);
        field.m_fieldText = rows.text(text);
        setFieldType(field, rows.value(type).toInt());
        field.m_fieldLength = rows.value(length).toInt();
        field.m_fieldDecimal = rows.value(decimal).toInt();
        setDefaultOrDictionary(field, rows.text(value));
        field.m_fieldMust = rows.value(must).toInt() != 0;
        field.m_fieldExport = rows.value(exported).toInt() != 0;
        if (edit >= 0)
            field.m_fieldEdit = rows.value(edit).toInt() != 0;
        owner->fields.append(field);
    }
}

void CVelmAttributeDB::loadPipeTables(CVelmDatabase& pipe)
{
    TableReader rows(pipe.getQSqlDatabase(), QStringLiteral("SYS_GISTABLE"));
    const int name = rows.column(QStringLiteral("LAYERNAME"));
    const int text = rows.column(QStringLiteral("ALIASNAME"));
    const int type = rows.column(QStringLiteral("LAYERTYPE"));
    while (rows.next()) {
        VelmTableItem item;
        item.tableName = rows.text(name);
        item.tableText = rows.text(text);
        item._tableType = static_cast<Velm::TableType>(rows.value(type).toInt());
        if (!existTable(item.tableName))
            m_gisTables.insert(item.tableName.toUpper(), item);
    }
}

void CVelmAttributeDB::loadPipeFields(CVelmDatabase& pipe)
{
    TableReader rows(pipe.getQSqlDatabase(), QStringLiteral("SYS_ATTRIBUTEDEF"));
    const int table = rows.column(QStringLiteral("TABLENAME"));
    const int name = rows.column(QStringLiteral("FIELDNAME"));
    const int text = rows.column(QStringLiteral("FIELDTEXT"));
    const int type = rows.column(QStringLiteral("FIELDTYPE"));
    const int length = rows.column(QStringLiteral("FIELDLENGTH"));
    const int decimal = rows.column(QStringLiteral("FIELDDECIMAL"));
    const int value = rows.column(QStringLiteral("DEFAULTVALUE"));
    const int dictionary = rows.column(QStringLiteral("DICTIONARY"));
    const int must = rows.column(QStringLiteral("NOTNULL"));
    while (rows.next()) {
        VelmFieldItem field;
        field.m_tableName = rows.text(table);
        field.m_fieldName = rows.text(name);
        field.m_fieldText = rows.text(text);
        setFieldType(field, rows.value(type).toInt());
        field.m_fieldLength = rows.value(length).toInt();
        field.m_fieldDecimal = rows.value(decimal).toInt();
        field.m_defaultValue = rows.text(value);
        field.m_fieldDict = rows.text(dictionary);
        field.m_fieldMust = rows.value(must).toInt() != 0;
        VelmTableItem& owner = m_gisTables[field.m_tableName.toUpper()];
        if (owner.tableName.isEmpty())
            owner.tableName = field.m_tableName;
        owner.fields.append(field);
    }
}

/// False if the database holds none.
bool CVelmAttributeDB::loadConversion(CVelmDatabase& db)
{
    const QString text = db.readRecord(QStringLiteral("globaldefines"), QStringLiteral("VALUE"),
                                       {{QStringLiteral("KEY"), QStringLiteral("字段转换")}}, true)
                             .toString();
    if (text.isEmpty())
        return false;
    if (const auto conversion = parseFieldConversion(text)) {
        const QString table = conversion->tableInfo.tableName.value_or(QString());
        m_overlay.insert(table.toUpper(), std::make_shared<const FieldConversion>(*conversion));
    }
    return true;
}
