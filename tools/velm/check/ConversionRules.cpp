#include "check/ConversionRules.h"

#include "check/CheckedSet.h"
#include "check/EmptyTable.h"
#include "check/FieldTypes.h"
#include "check/MissingDictionaries.h"
#include "check/RuleTable.h"

#include <QJsonArray>

namespace {

constexpr const Rule& kJsonType = rules::named("json-type");
constexpr const Rule& kFieldTypeRange = rules::named("field-type-range");
constexpr const Rule& kUnknownDictionary = rules::named("unknown-dictionary");
constexpr const Rule& kConversionTable = rules::named("conversion-table");
constexpr const Rule& kConversionField = rules::named("conversion-field");

const QString kFieldName = QStringLiteral("FieldName");

QJsonValue fieldMapOf(const QJsonObject& document)
{
    return document.value(QStringLiteral("FieldMap"));
}

/// A field that the conversion tells about.
struct ConvertedField
{
    QString path;
    QString name;
    QJsonValue values;
};

/// The keys of an object, or the names in an array.
QVector<ConvertedField> convertedFields(const QJsonValue& fieldMap)
{
    QVector<ConvertedField> fields;
    const QJsonObject byName = fieldMap.toObject();
    for (auto field = byName.begin(); field != byName.end(); ++field)
        fields.append({QStringLiteral("FieldMap.") + field.key(), field.key(), *field});
    const QJsonArray list = fieldMap.toArray();
    for (int i = 0; i < list.size(); ++i)
        fields.append(
            {QStringLiteral("FieldMap[%1]").arg(i), list[i][kFieldName].toString(), list[i]});
    return fields;
}

/// Reports a type that no field has, and keeps a dictionary that does not exist.
void checkValues(const ConvertedField& field, const Place& place, MissingDictionaries& missing,
                 Problems& problems)
{
    const QJsonValue type = field.values[QStringLiteral("FieldType")];
    if (type.isDouble() && !fieldtypes::isKnown(type.toInt()))
        problems.add(
            kFieldTypeRange, place,
            QStringLiteral("%1.FieldType is %2, not one of ").arg(field.path).arg(type.toInt())
                + fieldtypes::names());
    const QString dictionary = field.values[QStringLiteral("FieldDict")].toString();
    if (!dictionary.isEmpty())
        missing.check(place, dictionary,
                      QStringLiteral("%1.FieldDict is \"%2\", which ").arg(field.path, dictionary));
}

void checkField(const CheckedSet& set, const QString& table, const ConvertedField& field,
                const Place& place, Problems& problems)
{
    if (set.gisTables().hasField(table, field.name) || tellIfWithoutFields(set, table, problems))
        return;
    const bool isNamed = field.path.endsWith(QLatin1Char('.') + field.name);
    problems.add(kConversionField, place,
                 field.path + QStringLiteral(" is for ")
                     + (isNamed ? QString() : QStringLiteral("\"%1\", ").arg(field.name))
                     + QStringLiteral("a field that the table \"%1\" does not have").arg(table)
                     + problems.suggestionAmong(kConversionField, field.name,
                                                set.gisTables().fieldNames(table)));
}

/// Whether the table that the document names is there; reports it if it is not.
bool checkTable(const CheckedSet& set, const QString& table, const Place& place, Problems& problems)
{
    if (set.gisTables().contains(table))
        return true;
    if (table.isEmpty())
        problems.add(kConversionTable, place, QStringLiteral("TableInfo has no TableName"));
    else if (!tellIfNoTables(set, problems))
        problems.add(
            kConversionTable, place,
            QStringLiteral("TableInfo.TableName is \"%1\", which names no GIS table").arg(table)
                + problems.suggestionAmong(kConversionTable, table, set.gisTables().tableNames()));
    return false;
}

}  // namespace

bool rules::tellNamelessFields(const QJsonObject& document, const Place& place, Problems& problems)
{
    bool found = false;
    const QJsonArray list = fieldMapOf(document).toArray();
    for (int i = 0; i < list.size(); ++i) {
        if (list[i][kFieldName].isString())
            continue;
        const QString path = QStringLiteral("FieldMap[%1]").arg(i);
        problems.add(kJsonType, place,
                     !list[i].isObject() ? path + QStringLiteral(" is to be an object")
                     : list[i][kFieldName].isUndefined()
                         ? path + QStringLiteral(" has no FieldName")
                         : path + QStringLiteral(".FieldName is to be a text"));
        found = true;
    }
    return found;
}

void rules::checkConversion(const CheckedSet& set, const QJsonObject& document, const Place& place,
                            Problems& problems)
{
    MissingDictionaries missing(set, kUnknownDictionary, QStringLiteral("field"));
    const QVector<ConvertedField> fields = convertedFields(fieldMapOf(document));
    for (const ConvertedField& field : fields)
        checkValues(field, place, missing, problems);
    missing.report(problems);
    const QString table =
        document.value(QStringLiteral("TableInfo"))[QStringLiteral("TableName")].toString();
    if (!set.knowsGisTables() || !checkTable(set, table, place, problems))
        return;
    for (const ConvertedField& field : fields)
        checkField(set, table, field, place, problems);
}
