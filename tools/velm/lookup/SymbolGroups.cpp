#include "lookup/CardGroups.h"
#include "lookup/FeatureCards.h"
#include "lookup/TypeNames.h"

#include "CVelmAnnotate.h"
#include "CVelmAreaLine.h"
#include "CVelmIndex.h"
#include "CVelmWork.h"

#include <QJsonDocument>

namespace {

void addTypes(CardGroup& group, const VelmAnnItem& item)
{
    group.add("inputType", "input type", item.inputtype);
    group.add("annotationType", "annotation type", item.anntype);
    group.add("entityType", "entity type", item.enttype, entityTypeName(item.enttype));
}

/// Where one of the types is none, the library reads no further.
void addUnknownTypes(CardGroup& group)
{
    group.addValue("inputType", "input type", QJsonValue(), QString());
    group.addValue("annotationType", "annotation type", QJsonValue(), QString());
    group.addValue("entityType", "entity type", QJsonValue(), QString());
}

}  // namespace

std::optional<CardGroup> groups::indexGroup(const QString& code, const CVelmIndex& index)
{
    VelmIndexItem item;
    if (index.getItem(code, item) != Velm::VelmOk)
        return std::nullopt;
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

std::optional<CardGroup> groups::workGroup(const QString& code, const CVelmWork& work)
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

std::optional<CardGroup> groups::areaGroup(const QString& code, const CVelmAreaLine& areas)
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

std::optional<CardGroup> groups::annotationGroup(const AnnotationAnswer& annotation)
{
    const bool isOutOfRange = annotation.status == Velm::VelmInvalidValue;
    if (annotation.status != Velm::VelmOk && !isOutOfRange)
        return std::nullopt;
    const VelmAnnItem& item = annotation.item;
    CardGroup group(QStringLiteral("annotation"), QStringLiteral("annotation"));
    group.add("font", "font", item.font);
    group.add("place", "place", item.place);
    group.add("text", "text", item.text);
    group.add("decimals", "decimals", item.decimal);
    group.add("height", "height", item.height);
    group.add("rotation", "rotation", item.rotate);
    group.add("factor", "factor", item.factor);
    group.add("lineType", "line type", item.linetype);
    if (isOutOfRange)
        addUnknownTypes(group);
    else
        addTypes(group, item);
    const QJsonObject data = QJsonObject::fromVariantMap(item.extdata);
    group.addValue("data", "data", data,
                   data.isEmpty()
                       ? QString()
                       : QString::fromUtf8(QJsonDocument(data).toJson(QJsonDocument::Compact)));
    QStringList problems;
    if (isOutOfRange)
        problems.append(QStringLiteral("INPUT, ANNTYPE or ENTTYPE is out of range"));
    if (annotation.hasBrokenData)
        problems.append(QStringLiteral("EXTDATA is no JSON object"));
    if (!problems.isEmpty())
        group.add("problem", "problem", problems.join(QStringLiteral("; ")));
    return group;
}
