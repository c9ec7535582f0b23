#pragma once

#include "smarttable/package/SmallXml.h"

#include <QHash>
#include <QString>
#include <QVector>

namespace SmartTable::detail {

/// That a part, or the package, needs another part or something outside.
struct Relation
{
    QString id;        ///< by which the source names it, e.g. "rId1"
    QString type;      ///< a URI
    QString target;    ///< the name of a part, "/xl/styles.xml"; of what is outside, its URI
    QString fragment;  ///< of a part, what followed "#" in the target; mostly empty
    bool isExternal = false;
};

/// The relations of one source, a part or "/", the package. Attributes and elements that are not
/// known are kept. A value; one thread at a time for each.
class Relations
{
public:
    /// None.
    explicit Relations(const QString& source = QStringLiteral("/"));

    /// Takes the content of a part of relations. Refuses a relation without id, type or target, ids
    /// that stand twice, and targets that lead out of the package.
    /// @return what is wrong, and nothing is taken then; empty if nothing is
    QString read(const QByteArray& xml);
    /// As the content of a part.
    QByteArray xml() const;

    const QString& source() const { return m_source; }
    /// Makes them those of another source, with the same targets.
    void setSource(const QString& source);

    /// In the order of the part.
    const QVector<Relation>& all() const { return m_all; }
    bool isEmpty() const { return m_all.isEmpty(); }
    /// Null if there is none. Valid until the next change.
    const Relation* find(const QString& id) const;
    /// Those of exactly that type.
    QVector<Relation> ofType(const QString& type) const;
    /// Those that lead to a part, in any letter case.
    QVector<Relation> leadingTo(const QString& part) const;

    /// @p target is the name of a part. @return the id of the new relation, "rId" and a number that
    /// none had
    QString add(const QString& type, const QString& target);
    /// @p target is a URI.
    QString addExternal(const QString& type, const QString& target);
    /// False if there is none of that id.
    bool remove(const QString& id);

private:
    QString take(pugi::xml_node element);
    QString append(const Relation& relation);

    QString m_source;
    SmallXml m_xml;  // in step with the list
    QVector<Relation> m_all;
    QHash<QString, int> m_byId;
    int m_lastNumber = 0;  // that a fresh id had, or may have had
};

}  // namespace SmartTable::detail
