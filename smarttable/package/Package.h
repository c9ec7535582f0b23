#pragma once

#include "smarttable/package/ContentTypes.h"
#include "smarttable/package/PackagePart.h"
#include "smarttable/package/Relations.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>
#include <QVector>

namespace velm::detail {
class StagedFile;
}

namespace SmartTable::detail {

class PackageReader;
class Packer;

/// A package of the Open Packaging Conventions (ECMA-376-2), held in memory: parts that nobody
/// touched stay as the compressed bytes of the file they came from. Names of parts begin with "/"
/// ("/xl/workbook.xml") and are compared without regard to ASCII letter case and to
/// percent-encoding. A package without a file has no parts. Digital signatures go with the first
/// change: they would be wrong. A value, copied at little cost; one thread at a time for each,
/// save() and read() included.
class Package
{
public:
    /// No parts.
    Package();

    // What went wrong is answered; nothing if nothing did. Out of memory is told like the rest.

    /// Takes a file. It is not kept open. A failure leaves the package as it was.
    QString load(const QString& file);
    /// Writes a file, which takes its place whole: a failure leaves what was there. Parts keep
    /// their order, new ones come last. Untouched ones are copied as they are, others packed, each
    /// once for a level as long as it does not change. @p level is 0 (stored) to 12.
    QString save(const QString& file, int level) const;
    /// The content of a part, unpacked, its checksum compared. @p content is written on success
    /// only.
    QString read(const QString& part, QByteArray& content) const;

    bool has(const QString& part) const { return find(part) != nullptr; }
    /// In the order of the file, those with relations included.
    QStringList parts() const;
    /// Empty if there is none.
    QString contentType(const QString& part) const { return m_types.of(part); }

    // These throw std::bad_alloc.

    /// Replaces a part or adds one, whose name is sound. An empty type leaves the one it has.
    void write(const QString& part, const QByteArray& content, const QString& contentType);
    /// Removes a part, its relations and its content type; relations that lead to it stay.
    void remove(const QString& part);

    /// Those of a part, or for "/" of the package. None if there are none.
    Relations relations(const QString& source) const;
    /// Replaces them all; no relations remove their part.
    void setRelations(const QString& source, const Relations& relations);

private:
    friend class PackageReader;

    static bool holds(const PackagePart& part, const QByteArray& content);

    const PackagePart* find(const QString& part) const;
    void insert(const PackagePart& part);
    void erase(const QString& part);
    void change();
    void dropSignatures();
    void putTypes();
    QString read(PackagePart& part, QByteArray& content) const;
    QString writeTo(velm::detail::StagedFile& file, const Packer& packer) const;

    mutable QVector<PackagePart> m_parts;  // reading and saving note what they did
    QHash<QString, int> m_places;          // in it, by the keys of the names
    ContentTypes m_types;
    mutable PackagePart m_typesPart;  // the same as a part
    bool m_isChanged = false;
    mutable qint64 m_readBytes = 0;  // unpacked
};

}  // namespace SmartTable::detail
