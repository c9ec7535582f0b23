#pragma once

#include <QString>

#include <array>
#include <stdexcept>
#include <string_view>

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

/// All of them, in the order in which they are listed.
inline constexpr std::array<Rule, 26> kAll{{
    {"missing-table", Severity::Error, "A table that the library reads is not in the database."},
    {"missing-column", Severity::Error,
     "A column that the library reads is not in the table, so its values are empty or 0; a "
     "dictionary without one is not known."},
    {"code-without-drawing", Severity::Warning,
     "A feature code of the index has no work definition, so it cannot be drawn."},
    {"drawing-without-code", Severity::Warning,
     "A work definition belongs to no feature code of the index."},
    {"empty-code", Severity::Warning, "A row has no code, or no name, by which it could be found."},
    {"duplicate-code", Severity::Error,
     "A code, or a name by which rows are found, has more than one row, and only one of them "
     "counts."},
    {"code-differs-in-case", Severity::Warning,
     "Two codes differ in letter case only; codes are compared exactly, so these are two "
     "features."},
    {"duplicate-user-code", Severity::Warning,
     "Two feature codes have the same user code, letter case ignored, and typing it finds the "
     "first only."},
    {"unknown-gis-table", Severity::Error, "A GIS table that is named here is not defined."},
    {"unknown-extension-table", Severity::Error,
     "An extension table that is named here is not defined as a GIS table."},
    {"unknown-dictionary", Severity::Error, "A field refers to a dictionary that does not exist."},
    {"entity-type-range", Severity::Error, "An entity type is not one of 0 to 8."},
    {"annotation-type-range", Severity::Error, "An annotation type is not one of 0 to 5."},
    {"input-type-range", Severity::Error, "An input type is not one of 0 to 2."},
    {"not-a-number", Severity::Error,
     "A value that is read as a number does not convert, and counts as 0."},
    {"json-syntax", Severity::Error, "A text that is to be JSON does not parse."},
    {"json-type", Severity::Error,
     "A JSON text, or a member of it, has another type than the library reads."},
    {"conversion-table", Severity::Error,
     "The field conversion names a table that is not defined."},
    {"conversion-field", Severity::Error,
     "The field conversion names a field that its table does not have."},
    {"unknown-pipe-field", Severity::Error,
     "A record field refers to a pipe field by a number that does not exist."},
    {"layer-differs-in-case", Severity::Warning, "Two layer names differ in letter case only."},
    {"single-quote", Severity::Error,
     "A text holds a single quote, which breaks the statements that store it."},
    {"not-in-gbk", Severity::Warning,
     "A text holds characters that GBK does not have, so they are lost in text files and reports."},
    {"text-file-lines", Severity::Note,
     "A text file of the older set has more than one line, and its reader takes files of one line "
     "only, so its table stays empty; \"velm import-text\" brings it into a database."},
    {"text-file-field", Severity::Warning,
     "A line of a text file of the older set cannot be used as it is."},
    {"missing-index", Severity::Note,
     "A column by which rows are looked up has no database index, so every query reads the whole "
     "table."},
}};

/// The rule of that id. A constant that names none does not compile.
constexpr const Rule& named(std::string_view id)
{
    for (const Rule& rule : kAll) {
        if (id == rule.id)
            return rule;
    }
    throw std::logic_error("no such rule");
}

/// The rule of that id; null if there is none.
const Rule* find(const QString& id);

/// "error", "warning" or "note".
QString nameOf(Severity severity);

}  // namespace rules
