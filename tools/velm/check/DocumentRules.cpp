#include "CheckedSet.h"
#include "Rules.h"

#include "VelmDocumentCheck.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>

namespace {

QJsonObject objectIn(const QString& text)
{
    return QJsonDocument::fromJson(text.toUtf8()).object();
}

/// The fields that the conversion tells about: keys of an object, or names in an array.
QStringList convertedFields(const QJsonValue& fieldMap)
{
    if (fieldMap.isObject())
        return fieldMap.toObject().keys();
    QStringList names;
    const QJsonArray fields = fieldMap.toArray();
    for (const auto& field : fields)
        names.append(field[QStringLiteral("FieldName")].toString());
    return names;
}

void checkConversion(const CheckedSet& set, const QJsonObject& document, const Place& place,
                     Problems& problems)
{
    const QJsonValue info = document.value(QStringLiteral("TableInfo"));
    const QString table = info[QStringLiteral("TableName")].toString();
    const auto fields = set.gisTables().constFind(table.toUpper());
    if (fields == set.gisTables().constEnd()) {
        problems.add(rules::kConversionTable, place,
                     QStringLiteral("there is no GIS table \"%1\"").arg(table));
        return;
    }
    const QStringList converted = convertedFields(document.value(QStringLiteral("FieldMap")));
    for (const QString& field : converted) {
        if (!fields->contains(field.toUpper()))
            problems.add(rules::kConversionField, place,
                         QStringLiteral("table \"%1\" has no field \"%2\"").arg(table, field));
    }
}

/// Reports a document that the library does not read as a whole.
void checkDefinition(const CheckedSet& set, const QString& key, const Place& place,
                     Problems& problems)
{
    const VelmDocumentCheck check = Velm::checkDocument(key, place.value);
    for (const QString& problem : check.problems)
        problems.add(check.parses ? rules::kJsonType : rules::kJsonSyntax, place,
                     key + QStringLiteral(": ") + problem);
    if (check.parses && key == QStringLiteral("字段转换") && !place.value.isEmpty())
        checkConversion(set, objectIn(place.value), place, problems);
}

bool isInteger(const QJsonValue& value)
{
    return value.isDouble() && value.toDouble() == std::floor(value.toDouble());
}

/// Reports the modes of a frame that are no integers.
void checkFrameModes(const Place& place, Problems& problems)
{
    const QJsonObject modes = objectIn(place.value);
    for (const char* name :
         {"SelMode", "TrimMode", "FrameStyle", "FrameSave", "FrameScaleType", "FrameSizeType"}) {
        const QJsonValue mode = modes.value(QLatin1String(name));
        if (!mode.isUndefined() && !isInteger(mode))
            problems.add(rules::kJsonType, place,
                         QStringLiteral("%1 is to be an integer").arg(QLatin1String(name)));
    }
}

/// Reports the tags of a frame that are no objects.
void checkFrameTags(const Place& place, Problems& problems)
{
    const QJsonObject tags = objectIn(place.value);
    for (auto tag = tags.begin(); tag != tags.end(); ++tag) {
        if (!tag->isObject())
            problems.add(rules::kJsonType, place,
                         QStringLiteral("the tag \"%1\" is to be a JSON object").arg(tag.key()));
    }
}

}  // namespace

void rules::checkDocuments(const CheckedSet& set, Problems& problems)
{
    for (const CheckedTable& table : set.tables()) {
        for (int row = 0; table.name() == QLatin1String("globaldefines") && row < table.size();
             ++row)
            checkDefinition(set, table.text(row, QStringLiteral("KEY")),
                            table.place(row, QStringLiteral("VALUE")), problems);
    }
    const CheckedTable& frames = set.table("VelmFrame");
    for (int row = 0; row < frames.size(); ++row) {
        checkFrameModes(frames.place(row, QStringLiteral("FRAMEMODE")), problems);
        checkFrameTags(frames.place(row, QStringLiteral("FRAMETAG")), problems);
    }
}
