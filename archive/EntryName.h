#pragma once

#include <QByteArray>
#include <QString>

namespace velm::detail {

/// The name of an entry as text: UTF-8 if it is marked or valid as such, else GBK. "\" becomes "/",
/// after decoding: in GBK the byte of a "\" may be half of a character.
QString decodedEntryName(const QByteArray& bytes, bool isUtf8);

/// Why a file of that name is not to be made; empty if it may be. What one system cannot name is
/// refused on every one, so that an archive is good everywhere or nowhere.
QString entryNameProblem(const QString& name);

/// Under what all spellings of a name are one that some system takes for the same file.
QString entryNameKey(const QString& name);

}  // namespace velm::detail
