#pragma once

#include "check/Problems.h"

class CheckedSet;
class CheckedTable;

/// The rules, by what they look at.
namespace rules {

/// What the @p selected rules find, by subject, tables in the order of the schema.
QVector<Problem> findProblems(const CheckedSet& set, const QVector<const Rule*>& selected);

/// Databases, tables and columns that must be there, indexes that should, what should not.
void checkSchema(const CheckedSet& set, Problems& problems);
/// Every value for itself: JSON and the characters of texts.
void checkTexts(const CheckedSet& set, Problems& problems);
void checkTexts(const CheckedTable& table, Problems& problems);
/// Numbers and their ranges.
void checkNumbers(const CheckedSet& set, Problems& problems);
void checkNumbers(const CheckedTable& table, Problems& problems);
/// Codes, user codes and layers.
void checkCodes(const CheckedSet& set, Problems& problems);
/// Fields of GIS tables.
void checkFields(const CheckedSet& set, Problems& problems);
/// Those of a table that has the columns of Attributefield.
void checkFields(const CheckedSet& set, const CheckedTable& fields, Problems& problems);
/// What one table says of another.
void checkReferences(const CheckedSet& set, Problems& problems);
/// Fields and dictionaries that annotations, rules and records name.
void checkFieldReferences(const CheckedSet& set, Problems& problems);
/// The entries of dictionaries.
void checkDictionaries(const CheckedSet& set, Problems& problems);
/// The JSON documents of "globaldefines" and of frames.
void checkDocuments(const CheckedSet& set, Problems& problems);
/// The text files of the older set.
void checkTextFiles(const CheckedSet& set, Problems& problems);

}  // namespace rules
