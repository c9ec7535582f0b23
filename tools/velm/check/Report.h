#pragma once

#include "check/Problems.h"

/// The forms in which findings are told, on standard output.
namespace report {

/// A line a finding, "error single-quote: peltaconfig.db Workdef row 3 (CODE 310301) TEXT
/// "O'Brien": ...", and a line that counts them, with @p notes behind. Of each rule the first
/// @p mostOfARule, and how many more there are.
void printText(const QVector<Problem>& problems, int mostOfARule, const QStringList& notes);

/// An array of objects, all of them.
void printJson(const QVector<Problem>& problems);

/// SARIF 2.1.0, the static analysis format of OASIS. @p rules are those that were looked for.
void printSarif(const QVector<Problem>& problems, const QVector<const Rule*>& rules);

/// "peltaconfig.db Workdef row 3 (CODE 310301) TEXT", "index.ini line 2".
QString textOf(const Place& place);
/// "1 error", "2 errors".
QString counted(int count, const QString& what);
/// What is wrong, with the value.
QString messageOf(const Problem& problem);
/// Whether the place is a line of a text file.
bool isLine(const Place& place);

}  // namespace report
