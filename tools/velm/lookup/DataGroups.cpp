#include "lookup/CardGroups.h"
#include "lookup/TypeNames.h"

#include "CVelmAttribute.h"
#include "CVelmConfigManager.h"
#include "CVelmRecordManager.h"
#include "CVelmTBLManager.h"

namespace {

constexpr int kMostCharacters = 1000000;  // of the values in one card

/// The values of a field's dictionary, "1 沥青, 2 混凝土"; its default value if it has none. Takes
/// their characters from @p room; where that is too small, the name has to do.
QString valuesOf(const VelmFieldItem& field, const CVelmTBLManager& dictionaries, int& room)
{
    QVector<QPair<QString, QString>> entries;
    if (field.m_fieldDict.isEmpty() || !dictionaries.GetDictByTable(field.m_fieldDict, entries))
        return field.m_fieldDict.isEmpty() ? field.m_defaultValue
                                           : field.m_fieldDict + QStringLiteral(" (unknown)");
    QString values;
    for (const auto& entry : qAsConst(entries)) {
        const QString separator = values.isEmpty() ? QString() : QStringLiteral(", ");
        if (values.size() + entry.first.size() + entry.second.size() > room)
            return field.m_fieldDict + QStringLiteral(" (%1 values)").arg(entries.size());
        values += separator + entry.first + QLatin1Char(' ') + entry.second;
    }
    room -= values.size();
    return values;
}

}  // namespace

std::optional<CardGroup> groups::tableGroup(const QString& name, const CVelmConfigManager& manager)
{
    VelmTableItem table;
    if (manager.GetVelmAttribute()->getGisTableItem(name, table, VelmAttParam()) != Velm::VelmOk)
        return std::nullopt;
    CardGroup group(QStringLiteral("table"), QStringLiteral("GIS table ") + table.tableName);
    group.add("name", "name", table.tableName);
    group.add("text", "text", table.tableText);
    group.add("gisName", "GIS name", table.gisTable);
    group.add("type", "type", table._tableType, tableTypeName(table._tableType));
    QVector<QStringList> rows;
    int room = kMostCharacters;
    for (const VelmFieldItem& field : qAsConst(table.fields)) {
        QString size = field.m_fieldLength > 0 ? QString::number(field.m_fieldLength) : QString();
        if (field.m_fieldDecimal > 0)
            size += QLatin1Char('.') + QString::number(field.m_fieldDecimal);
        rows.append({field.m_fieldName, field.m_fieldText, fieldTypeName(field.m_fieldType), size,
                     field.m_fieldMust ? QStringLiteral("yes") : QString(),
                     valuesOf(field, *manager.GetVelmTBLManager(), room)});
    }
    group.addRows("fields",
                  {QStringLiteral("field"), QStringLiteral("text"), QStringLiteral("type"),
                   QStringLiteral("size"), QStringLiteral("must"), QStringLiteral("values")},
                  rows);
    return group;
}

std::optional<CardGroup> groups::recordGroup(const QString& code, const CVelmRecordManager& records)
{
    VelmRecordConfigType type;
    const bool hasType = records.getRecordConfigType(code, type);
    QVector<VelmRecordConfig> fields;
    if (!records.getRecordConfig(code, fields) && !hasType)
        return std::nullopt;
    CardGroup group(QStringLiteral("record"), QStringLiteral("record"));
    if (hasType) {
        group.add("name", "name", type.name);
        group.add("extend", "extension", type.extend);
        group.add("table", "table", type.table);
        group.add("type", "type", type.type);
    }
    QVector<QStringList> rows;
    for (const VelmRecordConfig& field : qAsConst(fields))
        rows.append({field.showField, field.writeTable, field.actualField});
    group.addRows("fields",
                  {QStringLiteral("shown"), QStringLiteral("table"), QStringLiteral("field")},
                  rows);
    return group;
}
