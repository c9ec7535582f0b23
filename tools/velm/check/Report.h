#pragma once

#include "check/Problems.h"

/// The forms in which findings are told, on standard output.
namespace report {

/// A line a finding, "error single-quote: peltaconfig.db Workdef row 3 TEXT \"O'Brien\": ...", and
/// a line that counts them.
void printText(const QVector<Problem>& problems);

/// An array of objects.
void printJson(const QVector<Problem>& problems);

/// SARIF 2.1.0, the static analysis format of OASIS. @p rules are those that were looked for.
void printSarif(const QVector<Problem>& problems, const QVector<const Rule*>& rules);

}  // namespace report
