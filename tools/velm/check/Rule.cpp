#include "check/Rule.h"

namespace rules {

const Rule kMissingTable{"missing-table", Severity::Error,
                         "A table that the library reads is not in the database."};
const Rule kMissingColumn{"missing-column", Severity::Error,
                          "A column that the library reads is not in the table, so its values are "
                          "empty or 0; a dictionary without one is not known."};
const Rule kCodeWithoutDrawing{
    "code-without-drawing", Severity::Warning,
    "A feature code of the index has no work definition, so it cannot be "
    "drawn."};
const Rule kDrawingWithoutCode{"drawing-without-code", Severity::Warning,
                               "A work definition belongs to no feature code of the index."};
const Rule kEmptyCode{"empty-code", Severity::Warning,
                      "A row has no code, or no name, by which it could be found."};
const Rule kDuplicateCode{"duplicate-code", Severity::Error,
                          "A code, or a name by which rows are found, has more than one row, and "
                          "only one of them counts."};
const Rule kCodeDiffersInCase{
    "code-differs-in-case", Severity::Warning,
    "Two codes differ in letter case only; codes are compared exactly, so "
    "these are two features."};
const Rule kDuplicateUserCode{"duplicate-user-code", Severity::Warning,
                              "Two feature codes have the same user code, letter case ignored, and "
                              "typing it finds the first only."};
const Rule kUnknownGisTable{"unknown-gis-table", Severity::Error,
                            "A GIS table that is named here is not defined."};
const Rule kUnknownExtensionTable{"unknown-extension-table", Severity::Error,
                                  "An extension table that is named here is not defined as a GIS "
                                  "table."};
const Rule kUnknownDictionary{"unknown-dictionary", Severity::Error,
                              "A field refers to a dictionary that does not exist."};
const Rule kEntityTypeRange{"entity-type-range", Severity::Error,
                            "An entity type is not one of 0 to 8."};
const Rule kAnnotationTypeRange{"annotation-type-range", Severity::Error,
                                "An annotation type is not one of 0 to 5."};
const Rule kInputTypeRange{"input-type-range", Severity::Error,
                           "An input type is not one of 0 to 2."};
const Rule kNotANumber{"not-a-number", Severity::Error,
                       "A value that is read as a number does not convert, and counts as 0."};
const Rule kJsonSyntax{"json-syntax", Severity::Error, "A text that is to be JSON does not parse."};
const Rule kJsonType{"json-type", Severity::Error,
                     "A JSON text, or a member of it, has another type than the library reads."};
const Rule kConversionTable{"conversion-table", Severity::Error,
                            "The field conversion names a table that is not defined."};
const Rule kConversionField{"conversion-field", Severity::Error,
                            "The field conversion names a field that its table does not have."};
const Rule kUnknownPipeField{"unknown-pipe-field", Severity::Error,
                             "A record field refers to a pipe field by a number that does not "
                             "exist."};
const Rule kLayerDiffersInCase{"layer-differs-in-case", Severity::Warning,
                               "Two layer names differ in letter case only."};
const Rule kSingleQuote{"single-quote", Severity::Error,
                        "A text holds a single quote, which breaks the statements that store it."};
const Rule kNotInGbk{
    "not-in-gbk", Severity::Warning,
    "A text holds characters that GBK does not have, so they are lost in text files "
    "and reports."};
const Rule kTextFileLines{
    "text-file-lines", Severity::Note,
    "A text file of the older set has more than one line, and its reader takes "
    "files of one line only, so its table stays empty; \"velm import-text\" "
    "brings it into a database."};
const Rule kTextFileField{"text-file-field", Severity::Warning,
                          "A line of a text file of the older set cannot be used as it is."};
const Rule kMissingIndex{
    "missing-index", Severity::Note,
    "A column by which rows are looked up has no database index, so every query "
    "reads the whole table."};

const QVector<const Rule*>& all()
{
    static const QVector<const Rule*> rules{&kMissingTable,
                                            &kMissingColumn,
                                            &kCodeWithoutDrawing,
                                            &kDrawingWithoutCode,
                                            &kEmptyCode,
                                            &kDuplicateCode,
                                            &kCodeDiffersInCase,
                                            &kDuplicateUserCode,
                                            &kUnknownGisTable,
                                            &kUnknownExtensionTable,
                                            &kUnknownDictionary,
                                            &kEntityTypeRange,
                                            &kAnnotationTypeRange,
                                            &kInputTypeRange,
                                            &kNotANumber,
                                            &kJsonSyntax,
                                            &kJsonType,
                                            &kConversionTable,
                                            &kConversionField,
                                            &kUnknownPipeField,
                                            &kLayerDiffersInCase,
                                            &kSingleQuote,
                                            &kNotInGbk,
                                            &kTextFileLines,
                                            &kTextFileField,
                                            &kMissingIndex};
    return rules;
}

const Rule* find(const QString& id)
{
    for (const Rule* rule : all()) {
        if (id == QLatin1String(rule->id))
            return rule;
    }
    return nullptr;
}

QString nameOf(Severity severity)
{
    switch (severity) {
    case Severity::Error:
        return QStringLiteral("error");
    case Severity::Warning:
        return QStringLiteral("warning");
    default:
        return QStringLiteral("note");
    }
}

}  // namespace rules
