#include "config/tables/CVelmAttributeDB.h"

#include "config/documents/DocumentNames.h"
#include "config/documents/FieldConversion.h"
#include "config/tables/FieldDefinition.h"
#include "config/tables/RecordColumns.h"
#include "CVelmDatabase.h"
#include "data/access/ConfigDatabase.h"
#include "data/access/TableReader.h"

#include <new>

using namespace velm::detail;

namespace {

void readTableType(const QVariant& value, VelmTableItem& table)
{
    table._tableType = static_cast<Velm::TableType>(integerOf(value));
}

void readFieldType(const QVariant& value, VelmFieldItem& field)
{
    setFieldType(field, integerOf(value));
}

void readDefault(const QVariant& value, VelmFieldItem& field)
{
    setDefaultOrDictionary(field, value.toString());
}

constexpr Columns<VelmTableItem, 4> kTables{{{"TABLE", &VelmTableItem::tableName},
                                             {"TEXT", &VelmTableItem::tableText},
                                             {"GISTABLE", &VelmTableItem::gisTable},
                                             {"TYPE", &readTableType}}};

constexpr Columns<VelmTableItem, 3> kPipeTables{{{"LAYERNAME", &VelmTableItem::tableName},
                                                 {"ALIASNAME", &VelmTableItem::tableText},
                                                 {"LAYERTYPE", &readTableType}}};

constexpr Columns<VelmFieldItem, 10> kFields{{{"TABLE", &VelmFieldItem::m_tableName},
                                              {"NAME", &VelmFieldItem::m_fieldName},
                                              {"TEXT", &VelmFieldItem::m_fieldText},
                                              {"TYPE", &readFieldType},
                                              {"LENGTH", &VelmFieldItem::m_fieldLength},
                                              {"DECIMAL", &VelmFieldItem::m_fieldDecimal},
                                              {"NOTNULL", &VelmFieldItem::m_fieldMust},
                                              {"DEFAULT", &readDefault},
                                              {"BEXPORT", &VelmFieldItem::m_fieldExport},
                                              {"ENABLEEDIT", &VelmFieldItem::m_fieldEdit, true}}};

constexpr Columns<VelmFieldItem, 9> kPipeFields{{{"TABLENAME", &VelmFieldItem::m_tableName},
                                                 {"FIELDNAME", &VelmFieldItem::m_fieldName},
                                                 {"FIELDTEXT", &VelmFieldItem::m_fieldText},
                                                 {"FIELDTYPE", &readFieldType},
                                                 {"FIELDLENGTH", &VelmFieldItem::m_fieldLength},
                                                 {"FIELDDECIMAL", &VelmFieldItem::m_fieldDecimal},
                                                 {"NOTNULL", &VelmFieldItem::m_fieldMust},
                                                 {"DEFAULTVALUE", &VelmFieldItem::m_defaultValue},
                                                 {"DICTIONARY", &VelmFieldItem::m_fieldDict}}};

}  // namespace

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
    const auto tables = recordsOf(db, QStringLiteral("Attributetable"), kTables);
    for (const VelmTableItem& table : tables)
        m_gisTables.insert(table.tableName.toUpper(), table);
}

void CVelmAttributeDB::loadFields(const CVelmDatabase& db)
{
    const auto fields = recordsOf(db, QStringLiteral("Attributefield"), kFields);
    for (const VelmFieldItem& field : fields) {
        const auto owner = m_gisTables.find(field.m_tableName.toUpper());
        if (owner != m_gisTables.end())
            owner->fields.append(field);
    }
}

void CVelmAttributeDB::loadPipeTables(const CVelmDatabase& pipe)
{
    const auto tables = recordsOf(pipe, QStringLiteral("SYS_GISTABLE"), kPipeTables);
    for (const VelmTableItem& table : tables) {
        if (!existTable(table.tableName))
            m_gisTables.insert(table.tableName.toUpper(), table);
    }
}

void CVelmAttributeDB::loadPipeFields(const CVelmDatabase& pipe)
{
    const auto fields = recordsOf(pipe, QStringLiteral("SYS_ATTRIBUTEDEF"), kPipeFields);
    for (const VelmFieldItem& field : fields) {
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
        const QString name = conversion->tableInfo.values().tableName;
        m_overlay.insert(name.toUpper(), std::make_shared<const FieldConversion>(*conversion));
    }
    return true;
}
