#pragma once

#include "set/TableSet.h"

#include <QByteArray>

/// The text files of the older configuration set, made from the same tables. GBK, one record a
/// line, fields separated by ",", no header.
namespace older {

/// Code, line type, width, name, user code, table.
QByteArray indexIni(const DatabaseTables& system);
/// Code, layer, entity type, two parameters, text, colour.
QByteArray workDef(const DatabaseTables& system);
/// "T", table, text, GIS table, type; and for every field of it "F", table, name, text, type,
/// length, decimals, default or dictionary, mandatory, exported, editable.
QByteArray attributeDef(const DatabaseTables& system);

// The columns of the database in the order of the fields of a line. Those of "attribute.def" stand
// behind the letter that tells what the line is.
QStringList indexColumns();
QStringList workColumns();
QStringList attributeTableColumns();
QStringList attributeFieldColumns();

}  // namespace older
