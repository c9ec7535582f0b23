#pragma once

#include "check/Rule.h"

#include <array>

/// All rules, in the order in which they are listed. Ids are stable; what a rule says of itself is
/// shown by the tool, in SARIF and in docs/checks.md.
namespace rules {

inline constexpr std::array kAll{
    // What must be there.
    Rule{"missing-database", Severity::Error,
         "A database that the library reads is not there. Faults that follow from it are not "
         "listed.",
         "Put the file into the folder \"config\"; \"velm init\" makes a sample of it."},
    Rule{"missing-table", Severity::Error,
         "A table that the library reads is not in the database. Faults that follow from it are "
         "not listed.",
         "Create the table, if need be without rows; docs/configuration.md has its columns."},
    Rule{"view-for-table", Severity::Error,
         "Something that stores no rows of its own, a view, a virtual table or a table with "
         "computed columns, stands in the place of a table. The library does not read it.",
         "Store its rows in a table of that name."},
    Rule{"missing-column", Severity::Error,
         "A column that the library reads is not in the table, so its values are empty or 0; a "
         "dictionary without one is not known.",
         "Add the column; docs/configuration.md tells its type."},
    Rule{"empty-table", Severity::Error,
         "A table has no rows, or a GIS table no fields, and other tables refer to it. Faults that "
         "follow from it are not listed.",
         "Fill the table, or remove what refers to it."},
    Rule{"key-type", Severity::Warning,
         "A column of codes or names has a type that makes numbers of texts, so that a code as 007 "
         "or 1e5 is stored as another one.",
         "Give the column the type TEXT: make the table anew and copy its rows."},
    Rule{"missing-index", Severity::Note,
         "A column by which rows are looked up has no database index, so every query reads the "
         "whole table.",
         "Run the statement that the finding names."},
    Rule{"trigger", Severity::Warning,
         "A trigger changes rows behind the back of whoever writes to the database, and may keep "
         "the writer busy without end.",
         "Remove it with \"drop trigger NAME\"; a configuration needs none."},
    // What any value must keep.
    Rule{"not-a-number", Severity::Error,
         "A value that is read as a number does not convert, and counts as 0.",
         "Write a number that fits, with \".\" as decimal point."},
    Rule{"not-finite", Severity::Error, "A number is infinite (\"inf\") or undefined (\"nan\").",
         "Write an ordinary number."},
    Rule{"fraction", Severity::Warning,
         "A value of a column of integers has a fraction, and counts as another number.",
         "Write the whole number that is meant."},
    Rule{"json-syntax", Severity::Error, "A text that is to be JSON does not parse.",
         "Mend the text at the character that is named, or just before it: a comma or a quote too "
         "many or missing, most often."},
    Rule{"json-type", Severity::Error,
         "A JSON text, or a member of it, has another type than the library reads.",
         "Give the member the type that the message names."},
    Rule{"invalid-utf8", Severity::Error,
         "The bytes of a text are no valid UTF-8, so characters of it are lost on reading; the "
         "program that wrote it took another code page, GBK perhaps.",
         "Write the text anew with a program that writes UTF-8."},
    Rule{"embedded-nul", Severity::Error,
         "A text holds a NUL character, at which many programs take it for ended.",
         "Take the character out."},
    Rule{"control-character", Severity::Warning,
         "A code or a name holds a tab, a line break or another character that nobody sees and "
         "nobody types: a control character, or one such as U+FEFF.",
         "Take the character out."},
    Rule{"blank-at-end", Severity::Warning,
         "A code or a name begins or ends with a blank, also a wide one, so that it is not found "
         "under the name that is read.",
         "Take the blanks out; \"velm check --fix\" does, unless two rows would then have one "
         "code."},
    Rule{"single-quote", Severity::Error,
         "A text holds a single quote, which breaks the statements that store it or look it up.",
         "Write another character, \u2019 for instance."},
    Rule{"comma", Severity::Note,
         "A text holds a comma, which parts the fields of the text files of the older set, so "
         "that its row cannot be written there.",
         "If the text files matter, write another character, “，” for instance."},
    Rule{"not-in-gbk", Severity::Warning,
         "A text holds characters that GBK does not have, so they are lost in text files and "
         "reports.",
         "Write other characters in place of those that the finding names."},
    // Codes.
    Rule{"empty-code", Severity::Warning,
         "A row has no code, or no name, by which it could be found, or one of blanks only.",
         "Give it one, or remove the row; \"velm check --fix\" removes it."},
    Rule{"duplicate-code", Severity::Error,
         "A code, or a name by which rows are found, stands in more than one row, and only one of "
         "them counts: the first of VelmAnnotate, VelmFrame, VelmCmdSetting, globaldefines and "
         "SYS_GISTABLE, the last of the other tables. A field that is defined twice is shown "
         "twice.",
         "Remove the rows that do not count, or the doubled field."},
    Rule{"code-differs-in-case", Severity::Warning,
         "Two codes differ in letter case only; codes are compared exactly, so these are two "
         "features.",
         "If they are one feature, remove one; if they are two, give one another code."},
    Rule{"code-without-drawing", Severity::Warning,
         "A feature code of the index has no work definition, so it cannot be drawn.",
         "Add a row to Workdef, or remove the code from indexini."},
    Rule{"drawing-without-code", Severity::Warning,
         "A work definition belongs to no feature code of the index.",
         "Add the code to indexini, or remove the row."},
    Rule{"unknown-code", Severity::Warning,
         "A row belongs to a feature code that the index does not have, so nothing asks for it.",
         "Add the code to indexini, or remove the row."},
    Rule{"duplicate-user-code", Severity::Warning,
         "Two feature codes have the same user code, letter case ignored, and typing it finds the "
         "first only.",
         "Give one of them another user code."},
    Rule{"user-code-is-code", Severity::Warning,
         "The user code of a feature is the code of another one, so that typing it may find "
         "either.",
         "Choose another user code."},
    Rule{"special-line-type", Severity::Error,
         "A feature whose line type begins with \"gc\" is a special line, and its work definition "
         "says another entity type.",
         "Write 5 as ENTTYPE in Workdef, or another LTYPE in indexini."},
    // Numbers and layers.
    Rule{"entity-type-range", Severity::Error,
         "An entity type is not one of 0 to 8; in Workdef it may be -1 too, \"not given\", and in "
         "QuobAreaLine nothing.",
         "Write 1 for general, 3 for text or 5 for special lines."},
    Rule{"annotation-type-range", Severity::Error, "An annotation type is not one of 0 to 5.",
         "Write one of 0 to 5."},
    Rule{"input-type-range", Severity::Error, "An input type is not one of 0 to 2.",
         "Write one of 0 to 2."},
    Rule{"colour-range", Severity::Error,
         "A colour index is outside 0 to 256; the colour of a work definition may be -1, \"not "
         "given\".",
         "Write the index of a colour, 0 for by block, 256 for by layer."},
    Rule{"negative-width", Severity::Error,
         "The boundary of an area has a negative width. In the index a negative width has a "
         "meaning, here it has none.",
         "Write the width, or 0."},
    Rule{"not-positive", Severity::Error, "A height or a factor is not above 0.",
         "Write a number above 0; a factor or scale of 1 changes nothing."},
    Rule{"layer-name", Severity::Error,
         "A layer has no name, or one with characters that drawings do not take: < > / \\ : ; ? * "
         "| =, a "
         "quotation mark or a grave accent, or more than 255 characters.",
         "Write a name of letters, digits, _ and -."},
    Rule{"layer-differs-in-case", Severity::Warning,
         "Two layer names differ in letter case only; in drawings they are one layer.",
         "Write both alike; \"velm check --fix\" takes the spelling that most rows have."},
    // GIS tables and fields.
    Rule{"unknown-gis-table", Severity::Error,
         "A GIS table that is named here is not defined. It is told once for each column, at the "
         "first row.",
         "Define the table in Attributetable or in PipeConfig.db, or correct the name."},
    Rule{"unknown-extension-table", Severity::Error,
         "An extension table that is named here is not defined as a GIS table. It is told once, at "
         "the "
         "first row.",
         "Define the table in Attributetable, or correct the name; names are separated by \";\" "
         "without blanks."},
    Rule{"table-type-range", Severity::Error, "The type of a GIS table is not one of 0 to 5.",
         "Write 0 point, 1 line, 2 area, 3 annotation, 4 pipe point or 5 pipe line."},
    Rule{"empty-field-name", Severity::Error, "A field has no name.",
         "Name it, or remove the row."},
    Rule{"field-type-range", Severity::Error,
         "The type of a field is not one of 0 to 4, nor, of a hidden field, of 10 to 14.",
         "Write 0 text, 1 integer, 2 long, 3 real or 4 date, and 10 more for a hidden field."},
    Rule{"field-length", Severity::Error,
         "The length of a text or real field is not one of 1 to 65,535.",
         "Write how many characters or digits the field takes."},
    Rule{"field-decimals", Severity::Error,
         "The decimals of a field are not one of 0 to 15, or more than its length.",
         "Write fewer decimals, or a greater length."},
    Rule{"default-does-not-fit", Severity::Error,
         "The default value of a field does not fit its type or its length, or is no code of its "
         "dictionary.",
         "Write a value that one could type into the field."},
    Rule{"in-both-databases", Severity::Warning,
         "A GIS table, a field or a dictionary is defined in both databases. Of a table that of "
         "peltaconfig.db counts, of a dictionary that of PipeConfig.db; a field is shown twice.",
         "Remove it from the database that does not count, a field from either."},
    // What refers to fields and dictionaries.
    Rule{"unknown-dictionary", Severity::Error,
         "A field refers to a dictionary that does not exist. It is told once, at the first field.",
         "Correct the name, of which letter case counts, or add it: a table TBL_..., or a row of "
         "SYS_DICTIONARY."},
    Rule{"unknown-pipe-field", Severity::Error,
         "A record field refers to a pipe field by a number that does not exist.",
         "Write a number of PIP_SysConfig, or the name of a field."},
    Rule{"unknown-record-field", Severity::Error,
         "A record shows or writes a field that its table does not have; a field that is shown may "
         "be of the GIS table of the code, too.",
         "Correct the name, or add the field to the table."},
    Rule{"unknown-template-field", Severity::Error,
         "\"[FIELD]\" in an annotation or a rule names a field that the GIS table of the code does "
         "not have.",
         "Correct the name, or add the field to the table."},
    Rule{"unknown-annotation-field", Severity::Error,
         "EXTDATA of an annotation names a field that the GIS table of the code does not have.",
         "Correct the name, or add the field to the table."},
    Rule{"unknown-annotation-dictionary", Severity::Error,
         "EXTDATA of an annotation names a dictionary that does not exist. It is told once, at the "
         "first annotation.",
         "Correct the name, or add the dictionary."},
    // Dictionaries.
    Rule{"dictionary-name", Severity::Warning,
         "The name of a table that is meant as a dictionary has other characters than letters, "
         "digits, _ and $, so the library leaves the table out.",
         "Rename the table."},
    Rule{"dictionary-without-entries", Severity::Warning, "A dictionary has no entries.",
         "Add entries, or remove the dictionary."},
    Rule{"dictionary-empty-entry", Severity::Warning,
         "An entry of a dictionary has no code or no value.",
         "Complete the entry, or remove it. In SYS_DICTIONARY write a value in its place: removing "
         "one changes the codes of those behind it."},
    Rule{"dictionary-duplicate-entry", Severity::Warning,
         "A code, or a value, stands in a dictionary more than once.",
         "Remove all entries but one. In SYS_DICTIONARY write another value instead: removing one "
         "changes the codes of those behind it."},
    // Documents.
    Rule{"json-key", Severity::Warning,
         "A document has a key that the library does not know, so its value has no effect.",
         "Correct the key, or remove it."},
    Rule{"conversion-table", Severity::Error,
         "The field conversion, the key 字段转换 in globaldefines, names a table that is not "
         "defined.",
         "Correct TableName."},
    Rule{"conversion-field", Severity::Error,
         "The field conversion names a field that its table does not have.",
         "Correct the name of the field in FieldMap."},
    Rule{"layout-lists", Severity::Error,
         "The lists of the layout of records are not of one length, so that fields have no type or "
         "no decimals.",
         "Give each header its type and its decimals."},
    // The older set.
    Rule{"text-file-lines", Severity::Note,
         "A text file of the older set stands in for a table without rows, and its reader takes "
         "files of one line only; \"velm import-text\" brings it into a database.",
         "Run \"velm import-text\" and put the database that it makes in the place of "
         "peltaconfig.db."},
    Rule{"text-file-field", Severity::Warning,
         "A line of a text file of the older set cannot be used as it is.", "Correct the line."},
};

/// The rule of that id. A constant that names none does not compile.
constexpr const Rule& named(std::string_view id)
{
    for (const Rule& rule : kAll) {
        if (id == rule.id)
            return rule;
    }
    throw std::logic_error("no such rule");
}

}  // namespace rules
