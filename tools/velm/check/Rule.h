#pragma once

#include <QString>
#include <QVector>

/// How much a finding weighs.
enum class Severity
{
    Error,    ///< something does not work
    Warning,  ///< something is lost or ambiguous
    Note,     ///< advice
};

/// What the check looks for. The id is stable: scripts and people name rules by it.
struct Rule
{
    const char* id;
    Severity severity;
    const char* explanation;  ///< one sentence
};

namespace rules {

extern const Rule kMissingTable;
extern const Rule kMissingColumn;
extern const Rule kCodeWithoutDrawing;
extern const Rule kDrawingWithoutCode;
extern const Rule kEmptyCode;
extern const Rule kDuplicateCode;
extern const Rule kCodeDiffersInCase;
extern const Rule kDuplicateUserCode;
extern const Rule kUnknownGisTable;
extern const Rule kUnknownExtensionTable;
extern const Rule kUnknownDictionary;
extern const Rule kEntityTypeRange;
extern const Rule kAnnotationTypeRange;
extern const Rule kInputTypeRange;
extern const Rule kNotANumber;
extern const Rule kJsonSyntax;
extern const Rule kJsonType;
extern const Rule kConversionTable;
extern const Rule kConversionField;
extern const Rule kUnknownPipeField;
extern const Rule kLayerDiffersInCase;
extern const Rule kSingleQuote;
extern const Rule kNotInGbk;
extern const Rule kTextFileLines;
extern const Rule kTextFileField;
extern const Rule kMissingIndex;

/// All of them, in the order in which they are listed.
const QVector<const Rule*>& all();

/// The rule of that id; null if there is none.
const Rule* find(const QString& id);

/// "error", "warning" or "note".
QString nameOf(Severity severity);

}  // namespace rules
