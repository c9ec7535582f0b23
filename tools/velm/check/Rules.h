#pragma once

#include "check/Problems.h"

class CheckedSet;

/// The rules, by what they look at.
namespace rules {

/// What the @p selected rules find, by subject, tables in the order of the schema.
QVector<Problem> findProblems(const CheckedSet& set, const QVector<const Rule*>& selected);

/// Tables and columns that must be there, and indexes that should.
void checkSchema(const CheckedSet& set, Problems& problems);
/// Every value for itself: numbers, JSON, texts.
void checkValues(const CheckedSet& set, Problems& problems);
/// Types within their ranges.
void checkRanges(const CheckedSet& set, Problems& problems);
/// Codes, user codes and layers.
void checkCodes(const CheckedSet& set, Problems& problems);
/// What one table says of another.
void checkReferences(const CheckedSet& set, Problems& problems);
/// The JSON documents of "globaldefines" and of frames.
void checkDocuments(const CheckedSet& set, Problems& problems);
/// The text files of the older set.
void checkTextFiles(Problems& problems);

}  // namespace rules
