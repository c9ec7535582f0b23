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

/// The first 100 keys of such a document whose values have no effect, since the library does not
/// know them; none if it cannot be read.
VELMCOMMON_EXPORT QVector<VelmUnknownKey> unknownDocumentKeys(const QString& key,
                                                              const QString& text);

}  // namespace Velm
