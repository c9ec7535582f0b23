#pragma once

#include "archive/ZipReader.h"
#include "smarttable/package/Package.h"

#include <utility>

namespace SmartTable::detail {

/// Reads a package from a file: looks at what is claimed of all entries first, then takes their
/// bytes as they lie, and looks at what every package needs.
class PackageReader
{
public:
    /// Parts go into @p package, which has none. Throws std::bad_alloc.
    explicit PackageReader(Package& package) : m_package(package) {}

    /// @return what went wrong; empty if nothing did
    QString read(QIODevice& file);

private:
    QString takeAll(velm::detail::ZipReader& archive,
                    const QVector<velm::detail::ZipEntry>& entries);
    QString take(velm::detail::ZipReader& archive, const velm::detail::ZipEntry& entry);
    QString takeTypes();
    QString checkRelations();
    QString readSmall(const PackagePart& part, QByteArray& xml);

    Package& m_package;
    qint64 m_smallBytes = 0;  // of relations and content types
};

}  // namespace SmartTable::detail
