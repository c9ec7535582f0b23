#pragma once

#include <QString>

/// The number of feature codes of the benchmarks.
constexpr int kCodeCount = 100000;

/// The code of a number below kCodeCount. Codes ascend with their numbers.
QString codeOf(int number);

/// A configuration database with kCodeCount rows in "indexini" and "Workdef", made on the first
/// call and removed at the end of the process.
const QString& configFile();
