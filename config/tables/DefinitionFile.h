#pragma once

#include "VelmTypes.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace velm::detail {

/// Reads a text file of the older configuration set from the search paths: local 8-bit text, one
/// record a line, fields separated by ",", empty ones kept. @p store gets the fields of each
/// record; a line of more than @p fieldCount fields counts as one without any.
///
/// Records are read only while the text is at its end, so a file of two or more lines yields none.
/// Hosts that switch to the text files have known their tables so; "velm import-text" reads every
/// line. A file of one line yields that line, an empty file a record without fields.
/// @return VelmOk; VelmNotFound if no search path has the file; VelmFileOpenFailed, also above 64
/// MB
Velm::ErrorStatus readDefinitionFile(const QString& fileName, int fieldCount,
                                     const std::function<void(const QStringList& fields)>& store);

/// Reads a file of the same kind to its end; lines without any text are skipped. @p store gets at
/// least one field.
/// @return as above
Velm::ErrorStatus readDefinitionLines(const QString& fileName,
                                      const std::function<void(const QStringList& fields)>& store);

}  // namespace velm::detail
