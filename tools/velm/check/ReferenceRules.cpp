#include "check/CheckedSet.h"
#include "check/EmptyTable.h"
#include "check/FoldedNames.h"
#include "check/MissingDictionaries.h"
#include "check/Rules.h"
#include "check/RuleTable.h"

#include <QRegularExpression>

namespace {

constexpr const Rule& kUnknownGisTable = rules::named("unknown-gis-table");
constexpr const Rule& kUnknownExtensionTable = rules::named("unknown-extension-table");
constexpr const Rule& kUnknownDictionary = rules::named("unknown-dictionary");
constexpr const Rule& kUnknownPipeField = rules::named("unknown-pipe-field");

/// What may be meant by a name that no GIS table has.
QString hintFor(const Rule& rule, const QString& name, const QStringList& known, Problems& problems)
{
    static const QRegularExpression separator(QStringLiteral("[,，；、]"));
    return &rule == &kUnknownExtensionTable && name.contains(separator)
               ? QStringLiteral("; names are separated by \";\"")
               : problems.suggestionAmong(rule, name, known);
}

/// The names in a column that are no GIS tables.
FoldedNames unknownTables(const CheckedSet& set, const CheckedTable& table,
                          const ColumnSchema& column)
{
    const bool isList = column.holds == Holds::TableReferences;
    FoldedNames unknown;
    for (int row = 0; row < table.size(); ++row) {
        const QString text = table.plain(row, column.name);
        QStringList names = isList ? text.split(QLatin1Char(';')) : QStringList{text};
        names.removeAll(QString());
        for (const QString& name : qAsConst(names)) {
            if (!set.gisTables().contains(name))
                unknown.add(name.toUpper(), name, table.place(row, column.name),
                            names.size() > 1 ? QStringLiteral("has \"%1\", which ").arg(name)
                                             : QString());
        }
    }
    return unknown;
}

void checkTableNames(const CheckedSet& set, const CheckedTable& table, const ColumnSchema& column,
                     Problems& problems)
{
    const FoldedNames unknown = unknownTables(set, table, column);
    if (unknown.all().isEmpty() || tellIfNoTables(set, problems))
        return;
    const Rule& rule =
        column.holds == Holds::TableReferences ? kUnknownExtensionTable : kUnknownGisTable;
    const QStringList known = set.gisTables().tableNames();
    for (const FoldedNames::Missing& missing : unknown.all())
        problems.add(rule, missing.place,
                     missing.what + QStringLiteral("names no GIS table")
                         + alsoBy(missing.others, QStringLiteral("row"))
                         + hintFor(rule, missing.name, known, problems));
}

/// Looks for dictionaries that do not exist. Of default values only some name one.
void checkDictionaryNames(const CheckedTable& table, const ColumnSchema& column,
                          MissingDictionaries& missing)
{
    const bool isDefault = column.holds == Holds::Default;
    for (int row = 0; row < table.size(); ++row) {
        const QString name =
            isDefault ? table.text(row, column.name) : table.plain(row, column.name);
        const bool refers = isDefault
                                ? table.isSound(row, column.name)
                                      && name.startsWith(QLatin1String("TBL_"), Qt::CaseInsensitive)
                                : !name.isEmpty();
        if (refers)
            missing.check(table.place(row, column.name), name);
    }
}

/// Reports numbers that are no pipe fields.
void checkPipeFields(const CheckedSet& set, const CheckedTable& table, const ColumnSchema& column,
                     Problems& problems)
{
    static const QRegularExpression decimalInteger(QStringLiteral("^\\s*[+-]?[0-9]+\\s*$"));
    QSet<int> numbers;
    const CheckedTable& fields = set.table("PIP_SysConfig");
    for (int row = 0; row < fields.size(); ++row)
        numbers.insert(fields.value(row, QStringLiteral("FIELDTYPE")).toInt());
    for (int row = 0; row < table.size(); ++row) {
        const QString text = table.text(row, column.name);
        bool fits = false;
        const int number = text.toInt(&fits);
        if (!decimalInteger.match(text).hasMatch() || (fits && numbers.contains(number)))
            continue;
        if (tellIfEmpty(fields, problems))
            return;
        problems.add(kUnknownPipeField, table.place(row, column.name),
                     QStringLiteral("is the number of no pipe field"));
    }
}

void checkColumn(const CheckedSet& set, const CheckedTable& table, const ColumnSchema& column,
                 MissingDictionaries& missing, Problems& problems)
{
    switch (column.holds) {
    case Holds::TableReference:
    case Holds::TableReferences:
        if (set.knowsGisTables())
            checkTableNames(set, table, column, problems);
        return;
    case Holds::Default:
    case Holds::DictionaryReference:
        checkDictionaryNames(table, column, missing);
        return;
    case Holds::RecordField:
        if (set.has({"PIP_SysConfig"}))
            checkPipeFields(set, table, column, problems);
        return;
    default:
        return;
    }
}

}  // namespace

void rules::checkReferences(const CheckedSet& set, Problems& problems)
{
    MissingDictionaries missing(set, kUnknownDictionary, QStringLiteral("field"));
    for (const CheckedTable& table : set.tables()) {
        for (const ColumnSchema& column : table.schema().columns)
            checkColumn(set, table, column, missing, problems);
    }
    missing.report(problems);
}
