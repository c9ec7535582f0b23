#include "check/CheckedSet.h"
#include "check/JsonFailure.h"
#include "check/PlainName.h"
#include "check/Rules.h"
#include "check/RuleTable.h"

#include "set/OlderSet.h"

#include <QJsonDocument>
#include <QRegularExpression>
#include <QTextCodec>

#include <algorithm>

namespace {

constexpr const Rule& kJsonSyntax = rules::named("json-syntax");
constexpr const Rule& kJsonType = rules::named("json-type");
constexpr const Rule& kInvalidUtf8 = rules::named("invalid-utf8");
constexpr const Rule& kEmbeddedNul = rules::named("embedded-nul");
constexpr const Rule& kControlCharacter = rules::named("control-character");
constexpr const Rule& kBlankAtEnd = rules::named("blank-at-end");
constexpr const Rule& kSingleQuote = rules::named("single-quote");
constexpr const Rule& kComma = rules::named("comma");
constexpr const Rule& kNotInGbk = rules::named("not-in-gbk");
constexpr const Rule& kLayerName = rules::named("layer-name");

void checkJson(const QString& text, ColumnType type, const Place& place, Problems& problems)
{
    if (text.isEmpty())
        return;
    const QJsonDocument document = QJsonDocument::fromJson(text.toUtf8());
    if (document.isNull())
        problems.add(kJsonSyntax, place, jsonFailure(text));
    else if (type == ColumnType::JsonObject && !document.isObject())
        problems.add(kJsonType, place, QStringLiteral("is to be a JSON object"));
}

bool fitsGbk(const QString& text)
{
    // Not every codec counts what it cannot encode.
    static QTextCodec* codec = QTextCodec::codecForName("GBK");
    return codec->toUnicode(codec->fromUnicode(text)) == text;
}

bool isAscii(const QString& text)
{
    return std::all_of(text.begin(), text.end(), [](QChar ch) { return ch.unicode() < 0x80; });
}

/// Whether a column's texts are typed and compared, and not read as a whole.
bool isName(Holds holds)
{
    return holds != Holds::Values && holds != Holds::FieldTemplate && holds != Holds::AnnotationData
           && holds != Holds::Default;
}

/// "U+FEFF".
QString codePoint(uint character)
{
    return QStringLiteral("U+%1").arg(character, 4, 16, QLatin1Char('0')).toUpper();
}

/// A character as messages show it: quoted, or by its number if nobody sees it.
QString nameOf(uint character)
{
    return character < 0x10000 && isControl(QChar(character))
               ? codePoint(character)
               : QLatin1Char('"') + QString::fromUcs4(&character, 1) + QLatin1Char('"');
}

/// Up to three characters of a text that something is true of.
template<class Predicate>
QString namesOf(const QString& text, const Predicate& isMeant)
{
    constexpr int kMost = 3;
    QStringList names;
    const QVector<uint> characters = text.toUcs4();
    for (const uint character : characters) {
        if (names.size() == kMost)
            break;
        if (isMeant(character) && !names.contains(nameOf(character)))
            names.append(nameOf(character));
    }
    return names.join(QStringLiteral(", "));
}

/// "a tab", "a line break" or "U+FEFF, which nobody sees".
QString nameOfControl(const QString& text)
{
    if (text.contains(QLatin1Char('\t')))
        return QStringLiteral("a tab");
    return text.contains(QLatin1Char('\n')) || text.contains(QLatin1Char('\r'))
               ? QStringLiteral("a line break")
               : codePoint(std::find_if(text.begin(), text.end(), isControl)->unicode())
                     + QStringLiteral(", which nobody sees");
}

/// Whether another rule tells of a name that it is empty.
bool isToldEmpty(const CheckedTable& table, const ColumnSchema& column, const QString& text)
{
    return isBlank(text)
           && (column.holds == Holds::Layer || table.schema().key.contains(column.name)
               || (table.name() == QLatin1String("PIP_SysConfig")
                   && column.name == QLatin1String("FIELDNAME")));
}

void checkName(const QString& text, const Place& place, Problems& problems)
{
    if (std::any_of(text.begin(), text.end(), isControl))
        problems.add(kControlCharacter, place, QStringLiteral("holds ") + nameOfControl(text));
    else if (text.trimmed() != text)
        problems.add(kBlankAtEnd, place, QStringLiteral("begins or ends with a blank"));
}

void checkLayer(const QString& text, const Place& place, Problems& problems)
{
    static const QRegularExpression forbidden(QStringLiteral("[<>/\\\\\":;?*|=`]"));
    constexpr int kLongest = 255;
    if (isBlank(text))
        problems.add(kLayerName, place, QStringLiteral("is empty"));
    else if (text.contains(forbidden))
        problems.add(kLayerName, place,
                     QStringLiteral("holds %1, which no layer may have")
                         .arg(namesOf(text, [](uint character) {
                             return forbidden.match(QString::fromUcs4(&character, 1)).hasMatch();
                         })));
    else if (text.trimmed().size() > kLongest)
        problems.add(kLayerName, place, QStringLiteral("is longer than 255 characters"));
}

/// The columns that are written into the text files of the older set, as "table.column".
const QSet<QString>& columnsOfTextFiles()
{
    static const QSet<QString> columns = [] {
        QSet<QString> all;
        const auto add = [&all](const char* table, const QStringList& names) {
            for (const QString& name : names)
                all.insert(QLatin1String(table) + QLatin1Char('.') + name);
        };
        add("indexini", older::indexColumns());
        add("Workdef", older::workColumns());
        add("Attributetable", older::attributeTableColumns());
        add("Attributefield", older::attributeFieldColumns());
        return all;
    }();
    return columns;
}

/// Whether the library puts the texts of a column into statements.
bool goesIntoStatements(const CheckedTable& table, const ColumnSchema& column)
{
    const TableSchema& schema = table.schema();
    return schema.written || (schema.queried && schema.key.contains(column.name));
}

QString notUtf8(const QString& gbk)
{
    const QString problem = QStringLiteral("is no valid UTF-8");
    return gbk.isEmpty() ? problem
                         : problem + QStringLiteral("; as GBK it reads \"%1\"").arg(excerpt(gbk));
}

void checkGbk(const QString& text, const Place& place, Problems& problems)
{
    if (!isAscii(text) && !fitsGbk(text))
        problems.add(kNotInGbk, place,
                     QStringLiteral("holds %1, which GBK does not have")
                         .arg(namesOf(text, [](uint character) {
                             return !fitsGbk(QString::fromUcs4(&character, 1));
                         })));
}

void checkText(const CheckedTable& table, int row, const ColumnSchema& column, Problems& problems)
{
    const Place place = table.place(row, column.name);
    const QString& text = place.value;
    if (table.isDamaged(row, column.name))
        return problems.add(kInvalidUtf8, place, notUtf8(table.asGbk(row, column.name)));
    if (text.contains(QChar::Null))
        return problems.add(kEmbeddedNul, place,
                            QStringLiteral("holds a NUL character, the character %1 of it")
                                .arg(text.indexOf(QChar::Null) + 1));
    if (column.type != ColumnType::Text)
        checkJson(text, column.type, place, problems);
    const bool isLayer = column.holds == Holds::Layer;
    const bool isNamed = isName(column.holds);
    if (isNamed && !isToldEmpty(table, column, text))
        checkName(text, place, problems);
    if (isLayer)
        checkLayer(text, place, problems);
    if (text.contains(QLatin1Char('\'')) && goesIntoStatements(table, column))
        problems.add(kSingleQuote, place, QStringLiteral("holds a single quote"));
    if (text.contains(QLatin1Char(','))
        && columnsOfTextFiles().contains(table.name() + QLatin1Char('.') + column.name))
        problems.add(kComma, place, QStringLiteral("holds a comma"));
    // What is wrong with a name for its blanks need not be told again.
    checkGbk(isNamed ? plainName(text) : text, place, problems);
}

}  // namespace

void rules::checkTexts(const CheckedSet& set, Problems& problems)
{
    for (const CheckedTable& table : set.tables())
        checkTexts(table, problems);
}

void rules::checkTexts(const CheckedTable& table, Problems& problems)
{
    for (const ColumnSchema& column : table.schema().columns) {
        const bool isText = column.type != ColumnType::Integer && column.type != ColumnType::Real;
        for (int row = 0; isText && table.has(column.name) && row < table.size(); ++row)
            checkText(table, row, column, problems);
    }
}
