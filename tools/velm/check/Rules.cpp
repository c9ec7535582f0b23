#include "check/Rules.h"

QVector<Problem> rules::findProblems(const CheckedSet& set, const QVector<const Rule*>& selected)
{
    QSet<QString> ids;
    for (const Rule* rule : selected)
        ids.insert(QLatin1String(rule->id));
    Problems problems(ids);
    checkSchema(set, problems);
    checkValues(set, problems);
    checkRanges(set, problems);
    checkCodes(set, problems);
    checkReferences(set, problems);
    checkDocuments(set, problems);
    checkTextFiles(problems);
    return problems.all();
}
