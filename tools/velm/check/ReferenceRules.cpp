#include "check/CheckedSet.h"
#include "check/Rules.h"

#include <QRegularExpression>
#include <QSet>

namespace {

constexpr const Rule& kUnknownGisTable = rules::named("unknown-gis-table");
constexpr const Rule& kUnknownExtensionTable = rules::named("unknown-extension-table");
constexpr const Rule& kUnknownDictionary = rules::named("unknown-dictionary");
constexpr const Rule& kUnknownPipeField = rules::named("unknown-pipe-field");

/// Reports the names in a column that are no GIS tables. Only extension tables are a list,
/// separated by ";".
void checkTableNames(const CheckedSet& set, const char* tableName, const char* columnName,
                     const Rule& rule, Problems& problems)
{
    const CheckedTable& table = set.table(tableName);
    const QString column = QLatin1String(columnName);
    for (int row = 0; row < table.size(); ++row) {
        const QString text = table.text(row, column);
        QStringList names{text};
        if (&rule == &kUnknownExtensionTable)
            names = text.split(QLatin1Char(';'));
        names.removeAll(QString());
        for (const QString& name : names) {
            if (!set.gisTables().contains(name.toUpper()))
                problems.add(rule, table.place(row, column),
                             QStringLiteral("there is no GIS table \"%1\"").arg(name));
        }
    }
}

/// Reports dictionaries that do not exist. In "Attributefield" only some values name one.
void checkDictionaries(const CheckedSet& set, const char* tableName, const char* columnName,
                       bool onlyWithPrefix, Problems& problems)
{
    const CheckedTable& table = set.table(tableName);
    const QString column = QLatin1String(columnName);
    for (int row = 0; row < table.size(); ++row) {
        const QString name = table.text(row, column);
        const bool refers = onlyWithPrefix
                                ? name.startsWith(QLatin1String("TBL_"), Qt::CaseInsensitive)
                                : !name.isEmpty();
        if (refers && !set.dictionaries().contains(name))
            problems.add(kUnknownDictionary, table.place(row, column),
                         QStringLiteral("there is no dictionary \"%1\"").arg(name));
    }
}

void checkPipeFields(const CheckedSet& set, Problems& problems)
{
    static const QRegularExpression decimalInteger(QStringLiteral("^\\s*[+-]?[0-9]+\\s*$"));
    QSet<int> numbers;
    const CheckedTable& fields = set.table("PIP_SysConfig");
    for (int row = 0; row < fields.size(); ++row)
        numbers.insert(fields.value(row, QStringLiteral("FIELDTYPE")).toInt());
    const CheckedTable& records = set.table("RecordConfig");
    for (int row = 0; row < records.size(); ++row) {
        for (const QString& column : {QStringLiteral("SHOWFIELD"), QStringLiteral("ACTUALFIELD")}) {
            const QString text = records.text(row, column);
            bool fits = false;
            const int number = text.toInt(&fits);
            if (decimalInteger.match(text).hasMatch() && !(fits && numbers.contains(number)))
                problems.add(kUnknownPipeField, records.place(row, column),
                             QStringLiteral("there is no pipe field %1").arg(text));
        }
    }
}

}  // namespace

void rules::checkReferences(const CheckedSet& set, Problems& problems)
{
    checkTableNames(set, "indexini", "TABLE", kUnknownGisTable, problems);
    checkTableNames(set, "RecordConfigType", "TABLE", kUnknownGisTable, problems);
    checkTableNames(set, "RecordConfig", "WRITETABLE", kUnknownGisTable, problems);
    checkTableNames(set, "Attributefield", "TABLE", kUnknownGisTable, problems);
    checkTableNames(set, "IndexiniExtend", "EXTTABLE", kUnknownExtensionTable, problems);
    checkDictionaries(set, "Attributefield", "DEFAULT", true, problems);
    checkDictionaries(set, "SYS_ATTRIBUTEDEF", "DICTIONARY", false, problems);
    checkPipeFields(set, problems);
}
