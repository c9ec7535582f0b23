#include "check/CheckedSet.h"
#include "check/Rules.h"
#include "check/RuleTable.h"

#include "cli/Suggestions.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

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
            m_tables.insert(index.text(row, kCode), index.text(row, QStringLiteral("TABLE")));
        const CheckedTable& extensions = set.table("IndexiniExtend");
        for (int row = 0; row < extensions.size(); ++row)
            m_extensions.insert(
                extensions.text(row, kCode),
                extensions.text(row, QStringLiteral("EXTTABLE")).split(QLatin1Char(';')));
    }

    /// The GIS table of a code; empty if it has none that is defined, which is told elsewhere.
    QString tableOf(const QString& code) const
    {
        const QString table = m_tables.value(code);
        return m_set.gisTables().contains(table) ? table : QString();
    }

    /// Reports a field that neither @p table nor an extension table of @p code has.
    void check(const Rule& rule, const Place& place, const QString& code, const QString& table,
               const QString& field) const
    {
        const GisTables& tables = m_set.gisTables();
        if (tables.hasField(table, field))
            return;
        const QStringList extensions = m_extensions.value(code);
        for (const QString& extension : extensions) {
            if (tables.hasField(extension, field))
                return;
        }
        m_problems.add(rule, place,
                       QStringLiteral("table \"%1\" has no field \"%2\"").arg(table, field)
                           + suggestionAmong(field, tables.fieldNames(table)));
    }

private:
    const CheckedSet& m_set;
    Problems& m_problems;
    QHash<QString, QString> m_tables;  // by code
    QHash<QString, QStringList> m_extensions;
};

void checkTemplate(const CheckedTable& table, int row, const QString& column,
                   const FieldFinder& finder)
{
    static const QRegularExpression name(QStringLiteral("\\[([^\\[\\]]+)\\]"));
    const QString code = table.text(row, kCode);
    const QString gisTable = finder.tableOf(code);
    auto names = name.globalMatch(table.text(row, column));
    while (!gisTable.isEmpty() && names.hasNext())
        finder.check(kUnknownTemplateField, table.place(row, column), code, gisTable,
                     names.next().captured(1));
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

void checkAnnotationData(const CheckedSet& set, const CheckedTable& table, int row,
                         const QString& column, const FieldFinder& finder, Problems& problems)
{
    const Place place = table.place(row, column);
    const QJsonObject data = QJsonDocument::fromJson(place.value.toUtf8()).object();
    const QString code = table.text(row, kCode);
    const QString gisTable = finder.tableOf(code);
    const QStringList fields = fieldsIn(data);
    for (const QString& field : fields) {
        if (!gisTable.isEmpty())
            finder.check(kUnknownAnnotationField, place, code, gisTable, field);
    }
    const QJsonObject dictionaries = data.value(QStringLiteral("Dictionary")).toObject();
    for (const auto& dictionary : dictionaries) {
        if (set.has({"SYS_DICTIONARY"}) && !set.dictionaries().contains(dictionary.toString()))
            problems.add(
                kUnknownAnnotationDictionary, place,
                QStringLiteral("there is no dictionary \"%1\"").arg(dictionary.toString()));
    }
}

/// Reports the fields of records that their table does not have. A number is another matter.
void checkRecordFields(const CheckedSet& set, const FieldFinder& finder)
{
    const CheckedTable& records = set.table("RecordConfig");
    for (int row = 0; row < records.size(); ++row) {
        const QString code = records.text(row, kCode);
        const QString written = records.text(row, QStringLiteral("WRITETABLE"));
        const QString own = finder.tableOf(code);
        const QString table = written.isEmpty() ? own : written;
        for (const QString& column : {QStringLiteral("SHOWFIELD"), QStringLiteral("ACTUALFIELD")}) {
            const QString field = records.text(row, column);
            bool isNumber = false;
            field.toLongLong(&isNumber);
            // What is shown may come from the feature's own table.
            const bool isShown = column == QLatin1String("SHOWFIELD");
            if (isShown && (own.isEmpty() || set.gisTables().hasField(own, field)))
                continue;
            if (!isNumber && !field.isEmpty() && set.gisTables().contains(table))
                finder.check(kUnknownRecordField, records.place(row, column), code, table, field);
        }
    }
}

}  // namespace

void rules::checkFieldReferences(const CheckedSet& set, Problems& problems)
{
    if (!set.knowsGisTables() || !set.has({"indexini"})
        || !set.table("indexini").has(QStringLiteral("TABLE")))
        return;
    const FieldFinder finder(set, problems);
    for (const CheckedTable& table : set.tables()) {
        for (const ColumnSchema& column : table.schema().columns) {
            for (int row = 0; row < table.size(); ++row) {
                if (column.holds == Holds::FieldTemplate)
                    checkTemplate(table, row, column.name, finder);
                else if (column.holds == Holds::AnnotationData)
                    checkAnnotationData(set, table, row, column.name, finder, problems);
            }
        }
    }
    checkRecordFields(set, finder);
}
