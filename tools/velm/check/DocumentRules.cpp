#include "check/CheckedSet.h"
#include "check/Rules.h"
#include "check/RuleTable.h"
#include "cli/Suggestions.h"

#include "config/documents/DocumentNames.h"
#include "config/documents/FrameModes.h"
#include "VelmDocumentCheck.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>
#include <limits>

namespace documents = velm::detail::documents;

namespace {

constexpr const Rule& kJsonSyntax = rules::named("json-syntax");
constexpr const Rule& kJsonType = rules::named("json-type");
constexpr const Rule& kJsonKey = rules::named("json-key");
constexpr const Rule& kConversionTable = rules::named("conversion-table");
constexpr const Rule& kConversionField = rules::named("conversion-field");
constexpr const Rule& kLayoutLists = rules::named("layout-lists");

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
    if (!set.knowsGisTables())
        return;
    if (!set.gisTables().contains(table))
        return problems.add(kConversionTable, place,
                            QStringLiteral("there is no GIS table \"%1\"").arg(table));
    const QStringList converted = convertedFields(document.value(QStringLiteral("FieldMap")));
    for (const QString& field : converted) {
        if (!set.gisTables().hasField(table, field))
            problems.add(kConversionField, place,
                         QStringLiteral("table \"%1\" has no field \"%2\"").arg(table, field));
    }
}

/// Reports lists of the layout of records that are shorter or longer than the list of headers.
void checkLayout(const QJsonObject& document, const Place& place, Problems& problems)
{
    const int headers = document.value(QStringLiteral("HeaderList")).toArray().size();
    for (const char* name : {"FieldType", "FieldDecimal"}) {
        const int size = document.value(QLatin1String(name)).toArray().size();
        if (size != headers)
            problems.add(kLayoutLists, place,
                         QStringLiteral("%1 has %2 elements, HeaderList %3")
                             .arg(QLatin1String(name))
                             .arg(size)
                             .arg(headers));
    }
}

QString unknownKey(const QString& key, const QStringList& known)
{
    return QStringLiteral("the key \"%1\" is not known").arg(key) + suggestionAmong(key, known);
}

/// Reports a document that the library does not read as a whole.
void checkDefinition(const CheckedSet& set, const QString& key, const Place& place,
                     Problems& problems)
{
    const VelmDocumentCheck check = Velm::checkDocument(key, place.value);
    for (const QString& problem : check.problems)
        problems.add(check.parses ? kJsonType : kJsonSyntax, place,
                     key + QStringLiteral(": ") + problem);
    const QVector<VelmUnknownKey> unknownKeys = Velm::unknownDocumentKeys(key, place.value);
    for (const VelmUnknownKey& unknown : unknownKeys)
        problems.add(kJsonKey, place,
                     key + QStringLiteral(": ") + unknownKey(unknown.key, unknown.known));
    if (check.problems.isEmpty() && key == documents::fieldConversion() && !place.value.isEmpty())
        checkConversion(set, objectIn(place.value), place, problems);
    if (check.problems.isEmpty() && key == documents::genusLayout() && !place.value.isEmpty())
        checkLayout(objectIn(place.value), place, problems);
}

bool isInteger(const QJsonValue& value)
{
    const double number = value.toDouble();
    return value.isDouble() && number == std::floor(number)
           && std::abs(number) <= std::numeric_limits<int>::max();
}

/// Reports the modes of a frame that are no integers, and those that nothing is known of.
void checkFrameModes(const Place& place, Problems& problems)
{
    QStringList known;
    for (const char* mode : velm::detail::framemodes::kAll)
        known.append(QLatin1String(mode));
    const QJsonObject modes = objectIn(place.value);
    for (auto mode = modes.begin(); mode != modes.end(); ++mode) {
        if (!known.contains(mode.key()))
            problems.add(kJsonKey, place, unknownKey(mode.key(), known));
        else if (!isInteger(*mode))
            problems.add(kJsonType, place,
                         QStringLiteral("%1 is to be an integer").arg(mode.key()));
    }
}

/// Reports the tags of a frame that are no objects.
void checkFrameTags(const Place& place, Problems& problems)
{
    const QJsonObject tags = objectIn(place.value);
    for (auto tag = tags.begin(); tag != tags.end(); ++tag) {
        if (!tag->isObject())
            problems.add(kJsonType, place,
                         QStringLiteral("the tag \"%1\" is to be a JSON object").arg(tag.key()));
    }
}

}  // namespace

void rules::checkDocuments(const CheckedSet& set, Problems& problems)
{
    bool hasConversion = false;  // in the system configuration; then the other one is not read
    for (const CheckedTable& table : set.tables()) {
        if (table.name() != QLatin1String("globaldefines"))
            continue;
        const bool isSystem = &table == &set.table("globaldefines");
        for (int row = 0; row < table.size(); ++row) {
            const QString key = table.text(row, QStringLiteral("KEY"));
            const Place place = table.place(row, QStringLiteral("VALUE"));
            if (isSystem || (key == documents::fieldConversion() && !hasConversion))
                checkDefinition(set, key, place, problems);
            hasConversion =
                hasConversion
                || (isSystem && key == documents::fieldConversion() && !place.value.isEmpty());
        }
    }
    const CheckedTable& frames = set.table("VelmFrame");
    for (int row = 0; row < frames.size(); ++row) {
        checkFrameModes(frames.place(row, QStringLiteral("FRAMEMODE")), problems);
        checkFrameTags(frames.place(row, QStringLiteral("FRAMETAG")), problems);
    }
}
