#pragma once

#include "set/TableSet.h"

/// Reads the sample configuration that the program carries. What is wrong with it ends up in @p
/// problem.
QVector<DatabaseTables> readSampleSet(QString& problem);
