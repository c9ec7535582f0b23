#include "config/tables/CVelmAttributeDef.h"

#include "config/tables/DefinitionFile.h"
#include "config/tables/FieldDefinition.h"

using namespace velm::detail;

// T,table,text,GIS table,type
// F,table,name,text,type,length,decimals,default or dictionary,must be filled,exported,editable

Velm::ErrorStatus CVelmAttributeDef::initVelmAttribute()
{
    return readDefinitionLines(QStringLiteral("attribute.def"), [this](const QStringList& fields) {
        if (fields.first() == QLatin1String("T"))
            addTable(fields.mid(1));
        else if (fields.first() == QLatin1String("F"))
            addField(fields.mid(1));
    });
}

void CVelmAttributeDef::addTable(const QStringList& fields)
{
    VelmTableItem item;
    item.tableName = fields.value(0);
    item.tableText = fields.value(1);
    item.gisTable = fields.value(2);
    item._tableType = static_cast<Velm::TableType>(fields.value(3).toInt());
    if (!item.tableName.isEmpty())
        m_gisTables.insert(item.tableName.toUpper(), item);
}

/// The field of a table that no line before has defined is left out.
void CVelmAttributeDef::addField(const QStringList& fields)
{
    const auto owner = m_gisTables.find(fields.value(0).toUpper());
    if (owner == m_gisTables.end())
        return;
    VelmFieldItem field;
    field.m_tableName = fields.value(0);
    field.m_fieldName = fields.value(1);
    field.m_fieldText = fields.value(2);
    setFieldType(field, fields.value(3).toInt());
    field.m_fieldLength = fields.value(4).toInt();
    field.m_fieldDecimal = fields.value(5).toInt();
    setDefaultOrDictionary(field, fields.value(6));
    field.m_fieldMust = fields.value(7).toInt() != 0;
    field.m_fieldExport = fields.value(8).toInt() != 0;
    if (fields.size() > 9)
        field.m_fieldEdit = fields.at(9).toInt() != 0;
    owner->fields.append(field);
}
