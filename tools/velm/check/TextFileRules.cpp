#include "check/CheckedSet.h"
#include "check/Rules.h"
#include "check/RuleTable.h"

namespace {

constexpr const Rule& kTextFileLines = rules::named("text-file-lines");
constexpr const Rule& kTextFileField = rules::named("text-file-field");

/// Reports a file whose reader takes one line of it, and gets another number.
void checkLineCount(const StandIn& file, Problems& problems)
{
    if (file.lineCount() > 1)
        problems.add(kTextFileLines, file.place(0),
                     QStringLiteral("has more than one line, so none is read"));
    else if (file.lineCount() == 0)
        problems.add(kTextFileLines, file.place(0),
                     QStringLiteral("is empty, and read as a record without a code"));
}

/// Reports what is wrong with the fields of the lines, by the rules of the tables.
void checkLines(const CheckedSet& set, const StandIn& file, Problems& problems)
{
    QSet<QString> ids;
    for (const Rule& rule : rules::kAll)
        ids.insert(QLatin1String(rule.id));
    Problems found(ids);
    for (const char* name : {"indexini", "Workdef", "Attributetable", "Attributefield"}) {
        const CheckedTable table = file.table(QLatin1String(name));
        rules::checkTexts(table, found);
        rules::checkNumbers(table, found);
        if (table.name() == QLatin1String("Attributefield"))
            rules::checkFields(set, table, found);
    }
    for (const Problem& problem : found.all()) {
        Place place = problem.place;
        place.table.clear();  // it is a line
        problems.add(
            *problem.rule, place,
            QString(problem.message).replace(QLatin1String("in row "), QLatin1String("in line ")));
    }
}

}  // namespace

void rules::checkTextFiles(const CheckedSet& set, Problems& problems)
{
    for (const StandIn& file : set.standIns()) {
        if (file.takesOneLine())
            checkLineCount(file, problems);
        for (const UnusedLine& line : file.unused())
            problems.add(kTextFileField, file.place(line.line), line.reason);
        if (file.isTaken())
            checkLines(set, file, problems);
    }
}
