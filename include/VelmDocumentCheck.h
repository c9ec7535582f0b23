#pragma once

#include "VelmCommonGlobal.h"

#include <QString>
#include <QStringList>
#include <QVector>

/// A key of a JSON document whose value has no effect.
struct VelmUnknownKey
{
    QString key;        ///< as it is written
    QStringList known;  ///< the keys that are known in its place
    QString path;       ///< the keys that lead to it, and this one, as of VelmMistypedMember
};

/// A member of a JSON document that has another type than the library reads.
struct VelmMistypedMember
{
    QString path;  ///< the keys that lead to it, "ScriptParam.ScriptData[2].BuiltIn", elements from
                   ///< 0; empty for the document as a whole
    QString wanted;  ///< what it is to be, "a whole number"
};

/// What is wrong with a JSON document of the configuration.
struct VelmDocumentCheck
{
    bool parses = true;    ///< whether the text is JSON at all
    QStringList problems;  ///< one message each, with the path of the member; empty if all is well
};

namespace Velm {

/// Reads @p text as the library reads the value of @p key in "globaldefines", and tells what it
/// would log. What is wrong in a field conversion makes all of it count for nothing; of the others
/// only the members concerned are left out. The documents are "GlobalParam", the field conversion
/// "字段转换" and the layout of the graphic-attribute library "图属库"; of another key's value
/// nothing is known, and an empty text is no document.
VELMCOMMON_EXPORT VelmDocumentCheck checkDocument(const QString& key, const QString& text);

/// The members of such a document that checkDocument() tells of, 100 at most, by their keys; none
/// if the text is no JSON.
VELMCOMMON_EXPORT QVector<VelmMistypedMember> mistypedDocumentMembers(const QString& key,
                                                                      const QString& text);

/// The first 100 keys of such a document whose values have no effect, since the library does not
/// know them; none if it cannot be read.
VELMCOMMON_EXPORT QVector<VelmUnknownKey> unknownDocumentKeys(const QString& key,
                                                              const QString& text);

/// The place of the character, from 0, at which a text stops being JSON: its length if something is
/// missing at the end. -1 if it is JSON.
VELMCOMMON_EXPORT int jsonFailureAt(const QString& text);

}  // namespace Velm
