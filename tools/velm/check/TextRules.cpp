#include "check/CheckedSet.h"
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
    QJsonParseError error{};
    const QByteArray bytes = text.toUtf8();
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    // Qt's words for it are in the language of the library, and a fingerprint is to be in none.
    if (error.error != QJsonParseError::NoError)
        problems.add(kJsonSyntax, place,
                     QStringLiteral("is no JSON at character %1")
                         .arg(QString::fromUtf8(bytes.left(error.offset)).size() + 1));
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

/// Up to three characters of a text, quoted, that something is true of.
template<class Predicate>
QString namesOf(const QString& text, const Predicate& isMeant)
{
    constexpr int kMost = 3;
    QStringList names;
    const QVector<uint> characters = text.toUcs4();
    for (const uint character : characters) {
        const QString name = QLatin1Char('"') + QString::fromUcs4(&character, 1) + QLatin1Char('"');
        if (isMeant(character) && !names.contains(name) && names.size() < kMost)
            names.append(name);
    }
    return names.join(QStringLiteral(", "));
}

/// "a tab", "a line break" or "a control character".
QString nameOfControl(const QString& text)
{
    if (text.contains(QLatin1Char('\t')))
        return QStringLiteral("a tab");
    return text.contains(QLatin1Char('\n')) || text.contains(QLatin1Char('\r'))
               ? QStringLiteral("a line break")
               : QStringLiteral("a control character");
}

bool isControl(QChar ch)
{
    return ch.category() == QChar::Other_Control || ch == QChar::LineSeparator
           || ch == QChar::ParagraphSeparator;
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
    if (text.trimmed().isEmpty())
        problems.add(kLayerName, place, QStringLiteral("is empty"));
    else if (text.contains(forbidden))
        problems.add(kLayerName, place,
                     QStringLiteral("holds %1, which no layer may have")
                         .arg(namesOf(text, [](uint character) {
                             return forbidden.match(QString::fromUcs4(&character, 1)).hasMatch();
                         })));
    else if (text.size() > kLongest)
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

void checkText(const CheckedTable& table, int row, const ColumnSchema& column, Problems& problems)
{
    const Place place = table.place(row, column.name);
    const QString& text = place.value;
    if (table.isDamaged(row, column.name))
        return problems.add(kInvalidUtf8, place, QStringLiteral("is no valid UTF-8"));
    if (column.type != ColumnType::Text)
        checkJson(text, column.type, place, problems);
    if (text.contains(QChar::Null))
        return problems.add(kEmbeddedNul, place, QStringLiteral("holds a NUL character"));
    if (isName(column.holds))
        checkName(text, place, problems);
    if (column.holds == Holds::Layer)
        checkLayer(text, place, problems);
    if (text.contains(QLatin1Char('\'')) && goesIntoStatements(table, column))
        problems.add(kSingleQuote, place, QStringLiteral("holds a single quote"));
    if (text.contains(QLatin1Char(','))
        && columnsOfTextFiles().contains(table.name() + QLatin1Char('.') + column.name))
        problems.add(kComma, place, QStringLiteral("holds a comma"));
    if (!isAscii(text) && !fitsGbk(text))
        problems.add(kNotInGbk, place,
                     QStringLiteral("holds %1, which GBK does not have")
                         .arg(namesOf(text, [](uint character) {
                             return !fitsGbk(QString::fromUcs4(&character, 1));
                         })));
}

}  // namespace

void rules::checkTexts(const CheckedSet& set, Problems& problems)
{
    for (const CheckedTable& table : set.tables()) {
        for (const ColumnSchema& column : table.schema().columns) {
            const bool isText =
                column.type != ColumnType::Integer && column.type != ColumnType::Real;
            for (int row = 0; isText && table.has(column.name) && row < table.size(); ++row)
                checkText(table, row, column, problems);
        }
    }
}
