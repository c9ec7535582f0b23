#pragma once

#include "smarttable/package/SmallXml.h"

#include <QHash>
#include <QString>

namespace SmartTable::detail {

/// What kind each part of a package is: its own entry, or that of the ending of its name. A value;
/// one thread at a time for each.
class ContentTypes
{
public:
    /// Those of every new package: relations and XML.
    ContentTypes();

    /// Takes the content of "[Content_Types].xml".
    /// @return what is wrong, and nothing is taken then; empty if nothing is
    QString read(const QByteArray& xml);
    QByteArray xml() const { return m_xml.text(); }

    /// Empty if none is told.
    QString of(const QString& part) const;

    // False if nothing changes.

    bool set(const QString& part, const QString& type);
    /// Takes the part's own entry away.
    bool remove(const QString& part);

private:
    QString take(pugi::xml_node element);

    SmallXml m_xml;                       // in step with both
    QHash<QString, QString> m_ofEndings;  // in small letters
    QHash<QString, QString> m_ofParts;    // by the keys of their names
};

}  // namespace SmartTable::detail
