#include "check/CheckedSet.h"
#include "check/EmptyTable.h"
#include "check/MissingDictionaries.h"
#include "check/Rules.h"
#include "check/RuleTable.h"

#include <QCache>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include <algorithm>

namespace {

constexpr const Rule& kUnknownRecordField = rules::named("unknown-record-field");
constexpr const Rule& kUnknownTemplateField = rules::named("unknown-template-field");
constexpr const Rule& kUnknownAnnotationField = rules::named("unknown-annotation-field");
constexpr const Rule& kUnknownAnnotationDictionary = rules::named("unknown-annotation-dictionary");

const QString kCode = QStringLiteral("CODE");

/// Looks for fields in the GIS tables of feature codes.
class FieldFinder
{
public:
    FieldFinder(const CheckedSet& set, Problems& problems) : m_set(set), m_problems(problems)
    {
        const CheckedTable& index = set.table("indexini");
        for (int row = 0; row < index.size(); ++row)
            m_tables.insert(index.plain(row, kCode), index.plain(row, QStringLiteral("TABLE")));
        const CheckedTable& extensions = set.table("IndexiniExtend");
        for (int row = 0; row < extensions.size(); ++row)
            m_extensions.insert(extensions.plain(row, kCode),
                                extensions.plain(row, QStringLiteral("EXTTABLE")));
    }

    /// The GIS table of a code; empty if it has none that is defined, which is told elsewhere.
    QString tableOf(const QString& code) const
    {
        const QString table = m_tables.value(code);
        return m_set.gisTables().contains(table) ? table : QString();
    }

    /// Whether @p table or an extension table of @p code has a field.
    bool has(const QString& code, const QString& table, const QString& field) const
    {
        return m_set.gisTables().hasField(table, field)
               || extensionFields(code).contains(field.toUpper());
    }

    /// Reports a field that neither @p table nor an extension table of @p code has. @p how tells in
    /// which way the place names it.
    void check(const Rule& rule, const Place& place, const QString& code, const QString& table,
               const QString& field, const QString& how) const
    {
        if (has(code, table, field) || tellIfWithoutFields(m_set, table, m_problems))
            return;
        const QStringList known = m_set.gisTables().fieldNames(table);
        m_problems.add(
            rule, place,
            how + QStringLiteral(" a field that the table \"%1\" does not have").arg(table)
                + m_problems.suggestionAmong(rule, field, known));
    }

private:
    /// The fields of all extension tables of a code, in upper case.
    QSet<QString> extensionFields(const QString& code) const
    {
        if (const QSet<QString>* known = m_fields.object(code))
            return *known;
        QSet<QString> fields;
        const QStringList tables = m_extensions.value(code).split(QLatin1Char(';'));
        for (const QString& table : tables)
            fields += m_set.gisTables().fieldsOf(table);
        m_fields.insert(code, new QSet<QString>(fields), std::min(fields.size() + 1, kMostFields));
        return fields;
    }

    static constexpr int kMostFields = 1000000;  // of all codes whose fields are kept

    const CheckedSet& m_set;
    Problems& m_problems;
    QHash<QString, QString> m_tables;      // by code
    QHash<QString, QString> m_extensions;  // lists of tables
    mutable QCache<QString, QSet<QString>> m_fields{kMostFields};
};

QString naming(const QString& field)
{
    return QStringLiteral("names \"%1\",").arg(field);
}

void checkTemplate(const CheckedTable& table, int row, const QString& column,
                   const FieldFinder& finder)
{
    static const QRegularExpression name(QStringLiteral("\\[([^\\[\\]]+)\\]"));
    const QString code = table.plain(row, kCode);
    const QString gisTable = finder.tableOf(code);
    auto names = name.globalMatch(table.text(row, column));
    while (!gisTable.isEmpty() && names.hasNext()) {
        const QString field = names.next().captured(1);
        finder.check(kUnknownTemplateField, table.place(row, column), code, gisTable, field,
                     naming(field));
    }
}

/// The fields that the data of an annotation name, under the keys that have a meaning.
QStringList fieldsIn(const QJsonObject& data)
{
    QStringList fields = data.value(QStringLiteral("Dictionary")).toObject().keys();
    for (const char* key : {"Fields", "HideWhenOne"}) {
        const QJsonArray names = data.value(QLatin1String(key)).toArray();
        for (const auto& name : names)
            fields.append(name.toString());
    }
    for (const char* key : {"Upper", "Lower", "Left", "Right"})
        fields.append(data.value(QLatin1String(key)).toString());
    fields.append(data.value(QStringLiteral("Owner"))[QStringLiteral("Field")].toString());
    fields.removeAll(QString());
    fields.removeDuplicates();
    return fields;
}

/// The dictionaries that the data of an annotation name: that of all fields, or of each its own.
QStringList dictionariesIn(const QJsonObject& data)
{
    const QJsonValue value = data.value(QStringLiteral("Dictionary"));
    QStringList names{value.toString()};
    const QJsonObject ofFields = value.toObject();
    for (const auto& name : ofFields)
        names.append(name.toString());
    names.removeAll(QString());
    return names;
}

void checkAnnotationData(const CheckedTable& table, int row, const QString& column,
                         const FieldFinder& finder, MissingDictionaries& missing)
{
    const Place place = table.place(row, column);
    const QJsonObject data = QJsonDocument::fromJson(place.value.toUtf8()).object();
    const QString code = table.plain(row, kCode);
    const QString gisTable = finder.tableOf(code);
    const QStringList fields = fieldsIn(data);
    for (const QString& field : fields) {
        if (!gisTable.isEmpty())
            finder.check(kUnknownAnnotationField, place, code, gisTable, field, naming(field));
    }
    const QStringList dictionaries = dictionariesIn(data);
    for (const QString& name : dictionaries)
        missing.check(place, name, QStringLiteral("has \"%1\", which ").arg(name));
}

/// The fields that records show and write. A number stands for a pipe field.
class RecordFields
{
public:
    RecordFields(const CheckedSet& set, const FieldFinder& finder, Problems& problems)
        : m_set(set), m_finder(finder), m_problems(problems)
    {
        const CheckedTable& fields = set.table("PIP_SysConfig");
        for (int row = 0; row < fields.size(); ++row)
            m_pipeFields.insert(fields.value(row, QStringLiteral("FIELDTYPE")).toInt(),
                                fields.plain(row, QStringLiteral("FIELDNAME")));
    }

    /// Reports the fields of a row that its table does not have. What is shown may come from the
    /// feature's own table.
    void check(const CheckedTable& records, int row) const
    {
        const QString code = records.plain(row, kCode);
        const QString written = records.plain(row, QStringLiteral("WRITETABLE"));
        const QString own = m_finder.tableOf(code);
        const QString table = written.isEmpty() ? own : written;
        const QString shown = QStringLiteral("SHOWFIELD");
        if (!own.isEmpty() && !m_finder.has(code, own, fieldOf(records.plain(row, shown)))
            && !tellIfWithoutFields(m_set, own, m_problems))
            checkField(records.place(row, shown), records.plain(row, shown), code, table);
        const QString actual = QStringLiteral("ACTUALFIELD");
        checkField(records.place(row, actual), records.plain(row, actual), code, table);
    }

private:
    QString fieldOf(const QString& text) const
    {
        static const QRegularExpression decimalInteger(QStringLiteral("^[+-]?[0-9]+$"));
        if (!decimalInteger.match(text).hasMatch())
            return text;
        bool fits = false;
        const int number = text.toInt(&fits);
        return fits ? m_pipeFields.value(number) : QString();
    }

    void checkField(const Place& place, const QString& text, const QString& code,
                    const QString& table) const
    {
        const QString field = fieldOf(text);
        if (!field.isEmpty() && m_set.gisTables().contains(table))
            m_finder.check(kUnknownRecordField, place, code, table, field,
                           field == text ? QStringLiteral("is")
                                         : QStringLiteral("stands for \"%1\",").arg(field));
    }

    const CheckedSet& m_set;
    const FieldFinder& m_finder;
    Problems& m_problems;
    QHash<int, QString> m_pipeFields;
};

}  // namespace

void rules::checkFieldReferences(const CheckedSet& set, Problems& problems)
{
    if (!set.knowsGisTables() || !set.has({"indexini"})
        || !set.table("indexini").has(QStringLiteral("TABLE")))
        return;
    const FieldFinder finder(set, problems);
    MissingDictionaries missing(set, kUnknownAnnotationDictionary, QStringLiteral("annotation"));
    for (const CheckedTable& table : set.tables()) {
        for (const ColumnSchema& column : table.schema().columns) {
            for (int row = 0; row < table.size(); ++row) {
                if (!table.isSound(row, column.name))
                    continue;
                if (column.holds == Holds::FieldTemplate)
                    checkTemplate(table, row, column.name, finder);
                else if (column.holds == Holds::AnnotationData)
                    checkAnnotationData(table, row, column.name, finder, missing);
            }
        }
    }
    missing.report(problems);
    const CheckedTable& records = set.table("RecordConfig");
    const RecordFields fields(set, finder, problems);
    for (int row = 0; row < records.size(); ++row)
        fields.check(records, row);
}
