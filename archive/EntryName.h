#pragma once

#include <QByteArray>
#include <QString>

namespace velm::detail {

/// The name of an entry as text: that of the extra field for names (APPNOTE 4.6.9) if it belongs to
/// @p bytes, else UTF-8 if they are valid as such, else GBK. Bytes that are marked as UTF-8 and are
/// none are a fault of their program, and read as those that are not marked. "\" becomes "/" after
/// decoding: in GBK the byte of a "\" may be half of a character. "./" at its beginning is left
/// out.
QString decodedEntryName(const QByteArray& bytes, const QByteArray& fields = QByteArray());

/// Why a file of that name is not to be made; empty if it may be. What one system cannot name is
/// refused on every one, so that an archive is good everywhere or nowhere.
QString entryNameProblem(const QString& name);

/// Under what all spellings of a name are one that some system takes for the same file.
QString entryNameKey(const QString& name);

}  // namespace velm::detail
