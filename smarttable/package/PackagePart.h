#pragma once

#include "archive/ZipPacked.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace SmartTable::detail {

/// A part of a package: packed, or as it was written until it is packed.
struct PackagePart
{
    QString name;
    velm::detail::ZipPacked packed;
    QByteArray content;
    bool isPacked = false;
    std::optional<int> level;  ///< with which it was packed; none in the file
    bool isRead = false;       ///< and counts among what was read
};

}  // namespace SmartTable::detail
