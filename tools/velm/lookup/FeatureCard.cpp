#include "lookup/FeatureCard.h"

#include "cli/Console.h"
#include "set/Configuration.h"

#include "CVelmAnnotate.h"
#include "CVelmAreaLine.h"
#include "CVelmAttribute.h"
#include "CVelmConfigManager.h"
#include "CVelmIndex.h"
#include "CVelmRecordManager.h"
#include "CVelmTBLManager.h"
#include "CVelmWork.h"

#include <QJsonDocument>

#include <initializer_list>
#include <optional>
#include <utility>

namespace {

using Group = std::optional<CardGroup>;

/// The name of a number; the number itself if it has none.
QString nameOf(int number, std::initializer_list<std::pair<int, const char*>> names)
{
    for (const auto& name : names) {
        if (name.first == number)
            return QLatin1String(name.second);
    }
    return QString::number(number);
}

QString tableTypeName(int type)
{
    return nameOf(type, {{Velm::TablePoint, "point"},
                         {Velm::TableLine, "line"},
                         {Velm::TableArea, "area"},
                         {Velm::TableAnnotation, "annotation"},
                         {Velm::TablePipePoint, "pipe point"},
                         {Velm::TablePipeLine, "pipe line"}});
}

QString fieldTypeName(int type)
{
    return nameOf(type, {{Velm::FieldText, "text"},
                         {Velm::FieldInt, "integer"},
                         {Velm::FieldLong, "long"},
                         {Velm::FieldReal, "real"},
                         {Velm::FieldDate, "date"}});
}

Group indexGroup(const QString& code, const CVelmIndex& index, QString& name)
{
    VelmIndexItem item;
    if (index.getItem(code, item) != Velm::VelmOk)
        return std::nullopt;
    name = item.name;
    Velm::EntityType type = Velm::EntityUnset;
    index.getEntType(code, type);
    CardGroup group(QStringLiteral("index"), QStringLiteral("feature"));
    group.add("name", "name", item.name);
    group.add("entityType", "entity type", type, entityTypeName(type));
    group.add("lineType", "line type", item.ltype);
    group.add("width", "width", item.width);
    group.add("userCode", "user code", item.usecode);
    group.add("gisTable", "GIS table", item.table);
    group.add("extensionTables", "extension tables", item.exttable);
    return group;
}

Group workGroup(const QString& code, const CVelmWork& work)
{
    VelmWorkItem item;
    if (work.getWorkItem(code, item) != Velm::VelmOk)
        return std::nullopt;
    CardGroup group(QStringLiteral("work"), QStringLiteral("drawing"));
    group.add("layer", "layer", item.layer);
    group.addColour("colour", "colour", item.color);
    group.add("entityType", "entity type", item.enttype, entityTypeName(item.enttype));
    group.add("parameter1", "parameter 1", item.par1);
    group.add("parameter2", "parameter 2", item.par2);
    group.add("text", "text", item.text);
    return group;
}

Group areaGroup(const QString& code, const CVelmAreaLine& areas)
{
    VelmAreaLineItem item;
    if (!areas.GetAreaLineItem(item, code))
        return std::nullopt;
    CardGroup group(QStringLiteral("area"), QStringLiteral("area"));
    group.addColour("hatchColour", "hatch colour", item.hatchcolor);
    group.addColour("hatchBackground", "hatch background", item.hatchbkcolor);
    group.add("lineWidth", "line width", item.linewidth);
    group.add("lineTypeScale", "line type scale", item.linetypescale);
    group.add("entityType", "entity type", item.enttype);
    group.add("annotationRule", "annotation rule", item.annrule);
    group.add("areaRule", "area rule", item.arearule);
    group.add("groupName", "group", item.groupname);
    return group;
}

/// The library reads annotations with a non-const object only.
Group annotationGroup(const QString& code)
{
    VelmAnnItem item;
    CVelmAnnotate* annotate = CVelmConfigManager::Instance()->GetVelmAnnotate();
    const Velm::ErrorStatus status = annotate->getAnnotateItem(code, item);
    if (status != Velm::VelmOk && status != Velm::VelmInvalidValue)
        return std::nullopt;
    CardGroup group(QStringLiteral("annotation"), QStringLiteral("annotation"));
    group.add("font", "font", item.font);
    group.add("place", "place", item.place);
    group.add("text", "text", item.text);
    group.add("decimals", "decimals", item.decimal);
    group.add("height", "height", item.height);
    group.add("rotation", "rotation", item.rotate);
    group.add("factor", "factor", item.factor);
    group.add("lineType", "line type", item.linetype);
    group.add("inputType", "input type", item.inputtype);
    group.add("annotationType", "annotation type", item.anntype);
    group.add("entityType", "entity type", item.enttype, entityTypeName(item.enttype));
    const QJsonObject data = QJsonObject::fromVariantMap(item.extdata);
    group.addValue("data", "data", data,
                   data.isEmpty()
                       ? QString()
                       : QString::fromUtf8(QJsonDocument(data).toJson(QJsonDocument::Compact)));
    if (status == Velm::VelmInvalidValue)
        group.add("problem", "problem", QStringLiteral("a type is out of range"));
    return group;
}

/// The values of a field's dictionary, "1 沥青, 2 混凝土"; its default value if it has none.
QString valuesOf(const VelmFieldItem& field, const CVelmTBLManager& dictionaries)
{
    QVector<QPair<QString, QString>> entries;
    if (field.m_fieldDict.isEmpty() || !dictionaries.GetDictByTable(field.m_fieldDict, entries))
        return field.m_fieldDict.isEmpty() ? field.m_defaultValue
                                           : field.m_fieldDict + QStringLiteral(" (unknown)");
    QStringList values;
    for (const auto& entry : qAsConst(entries))
        values.append(entry.first + QLatin1Char(' ') + entry.second);
    return values.join(QStringLiteral(", "));
}

Group tableGroup(const QString& code, const CVelmConfigManager& manager)
{
    QString name;
    VelmTableItem table;
    if (manager.GetVelmIndex()->getGisTableName(code, name) != Velm::VelmOk
        || manager.GetVelmAttribute()->getGisTableItem(name, table, VelmAttParam()) != Velm::VelmOk)
        return std::nullopt;
    CardGroup group(QStringLiteral("table"), QStringLiteral("GIS table ") + table.tableName);
    group.add("name", "name", table.tableName);
    group.add("text", "text", table.tableText);
    group.add("gisName", "GIS name", table.gisTable);
    group.add("type", "type", table._tableType, tableTypeName(table._tableType));
    QVector<QStringList> rows;
    for (const VelmFieldItem& field : qAsConst(table.fields)) {
        QString size = field.m_fieldLength > 0 ? QString::number(field.m_fieldLength) : QString();
        if (field.m_fieldDecimal > 0)
            size += QLatin1Char('.') + QString::number(field.m_fieldDecimal);
        rows.append({field.m_fieldName, field.m_fieldText, fieldTypeName(field.m_fieldType), size,
                     field.m_fieldMust ? QStringLiteral("yes") : QString(),
                     valuesOf(field, *manager.GetVelmTBLManager())});
    }
    group.addRows("fields",
                  {QStringLiteral("field"), QStringLiteral("text"), QStringLiteral("type"),
                   QStringLiteral("size"), QStringLiteral("must"), QStringLiteral("values")},
                  rows);
    return group;
}

Group recordGroup(const QString& code, const CVelmRecordManager& records)
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

}  // namespace

QString entityTypeName(int type)
{
    return nameOf(type, {{Velm::EntityGeneral, "general"},
                         {Velm::EntityText, "text"},
                         {Velm::EntitySpecialLine, "special line"}});
}

FeatureCard::FeatureCard(const QString& code, const Configuration& configuration) : m_code(code)
{
    const CVelmConfigManager& manager = configuration.manager();
    for (const Group& group :
         {indexGroup(code, *manager.GetVelmIndex(), m_name),
          workGroup(code, *manager.GetVelmWork()), areaGroup(code, *manager.GetVelmAreaLine()),
          annotationGroup(code), tableGroup(code, manager),
          recordGroup(code, *manager.GetVelmRecordManager())}) {
        if (group)
            m_groups.append(*group);
    }
    m_found = manager.GetVelmIndex()->getName(code, m_name) == Velm::VelmOk
              || manager.GetVelmWork()->isValidCode(code);
}

void FeatureCard::print() const
{
    const QString title = m_name.isEmpty() ? m_code : m_code + QLatin1Char(' ') + m_name;
    console::print(console::heading(console::plain(title)));
    for (const CardGroup& group : m_groups)
        group.print();
}

QJsonObject FeatureCard::toJson() const
{
    QJsonObject card{{QStringLiteral("code"), m_code}, {QStringLiteral("found"), m_found}};
    for (const char* key : {"index", "work", "area", "annotation", "table", "record"})
        card.insert(QLatin1String(key), QJsonValue());
    for (const CardGroup& group : m_groups)
        card.insert(group.key(), group.toJson());
    return card;
}
