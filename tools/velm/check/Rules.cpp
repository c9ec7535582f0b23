#include "check/Rules.h"

QVector<Problem> rules::findProblems(const CheckedSet& set, const QVector<const Rule*>& selected)
{
    QSet<QString> ids;
    for (const Rule* rule : selected)
        ids.insert(QLatin1String(rule->id));
    Problems problems(ids);
    checkSchema(set, problems);
    checkTexts(set, problems);
    checkNumbers(set, problems);
    checkCodes(set, problems);
    checkFields(set, problems);
    checkReferences(set, problems);
    checkFieldReferences(set, problems);
    checkDictionaries(set, problems);
    checkDocuments(set, problems);
    checkTextFiles(set, problems);
    return problems.all();
}
