#include "check/CheckedSet.h"
#include "check/ConversionRules.h"
#include "check/JsonFailure.h"
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
constexpr const Rule& kLayoutLists = rules::named("layout-lists");

QJsonObject objectIn(const QString& text)
{
    return QJsonDocument::fromJson(text.toUtf8()).object();
}

/// Reports lists of the layout of records that are shorter or longer than the list of headers.
/// Beside keys that are not known, one that is not there is mistyped, and told as that.
void checkLayout(const QJsonObject& document, bool hasUnknownKeys, const Place& place,
                 Problems& problems)
{
    if (hasUnknownKeys && !document.contains(QStringLiteral("HeaderList")))
        return;
    const int headers = document.value(QStringLiteral("HeaderList")).toArray().size();
    for (const char* name : {"FieldType", "FieldDecimal"}) {
        const int size = document.value(QLatin1String(name)).toArray().size();
        if (size != headers && !(hasUnknownKeys && !document.contains(QLatin1String(name))))
            problems.add(kLayoutLists, place,
                         QStringLiteral("%1 has %2 elements, HeaderList %3")
                             .arg(QLatin1String(name))
                             .arg(size)
                             .arg(headers));
    }
}

QString unknownKey(const VelmUnknownKey& unknown)
{
    return QStringLiteral("the key \"%1\" is not known").arg(unknown.path)
           + suggestionAmong(unknown.key, unknown.known);
}

/// Reports the members of another type than the library reads. @return whether there are such
bool checkTypes(const QString& key, const Place& place, Problems& problems)
{
    const QString fieldMap = QStringLiteral("FieldMap");
    const bool isNameless = key == documents::fieldConversion()
                            && rules::tellNamelessFields(objectIn(place.value), place, problems);
    const QVector<VelmMistypedMember> members = Velm::mistypedDocumentMembers(key, place.value);
    for (const VelmMistypedMember& member : members) {
        if (isNameless && member.path == fieldMap)
            continue;  // a list is one, if its fields have names
        problems.add(kJsonType, place,
                     (member.path.isEmpty() ? QString() : member.path + QLatin1Char(' '))
                         + QStringLiteral("is to be ") + member.wanted);
    }
    return !members.isEmpty();
}

/// Reports a document that the library does not read as a whole.
void checkDefinition(const CheckedSet& set, const QString& key, const Place& place,
                     Problems& problems)
{
    if (!Velm::checkDocument(key, place.value).parses)
        return problems.add(kJsonSyntax, place, jsonFailure(place.value));
    const bool isMistyped = checkTypes(key, place, problems);
    const QVector<VelmUnknownKey> unknownKeys = Velm::unknownDocumentKeys(key, place.value);
    for (const VelmUnknownKey& unknown : unknownKeys)
        problems.add(kJsonKey, place, unknownKey(unknown));
    if (isMistyped || place.value.isEmpty())
        return;
    if (key == documents::fieldConversion())
        rules::checkConversion(set, objectIn(place.value), place, problems);
    if (key == documents::genusLayout())
        checkLayout(objectIn(place.value), !unknownKeys.isEmpty(), place, problems);
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
            problems.add(kJsonKey, place, unknownKey({mode.key(), known, mode.key()}));
        else if (!isInteger(*mode))
            problems.add(kJsonType, place,
                         QStringLiteral("%1 is to be a whole number").arg(mode.key()));
    }
}

/// Reports the tags of a frame that are no objects.
void checkFrameTags(const Place& place, Problems& problems)
{
    const QJsonObject tags = objectIn(place.value);
    for (auto tag = tags.begin(); tag != tags.end(); ++tag) {
        if (!tag->isObject())
            problems.add(kJsonType, place,
                         QStringLiteral("the tag \"%1\" is to be an object").arg(tag.key()));
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
            if ((isSystem || (key == documents::fieldConversion() && !hasConversion))
                && table.isSound(row, place.column))
                checkDefinition(set, key, place, problems);
            hasConversion =
                hasConversion
                || (isSystem && key == documents::fieldConversion() && !place.value.isEmpty());
        }
    }
    const CheckedTable& frames = set.table("VelmFrame");
    for (int row = 0; row < frames.size(); ++row) {
        const Place modes = frames.place(row, QStringLiteral("FRAMEMODE"));
        const Place tags = frames.place(row, QStringLiteral("FRAMETAG"));
        if (frames.isSound(row, modes.column))
            checkFrameModes(modes, problems);
        if (frames.isSound(row, tags.column))
            checkFrameTags(tags, problems);
    }
}
