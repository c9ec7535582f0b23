#pragma once

#include <QString>

/// Names of parts, "/xl/workbook.xml", and what relations say instead of them.
namespace SmartTable::detail {

/// Under what all spellings of a name are one: letter case of ASCII and percent-encoding do not
/// count.
QString partKey(const QString& name);

/// Why no part may have that name; empty if one may. What leads out of the package or could be no
/// file is refused, however it is encoded.
QString partNameProblem(const QString& name);

/// The part with the relations of a part, or for "/" of the package.
QString relationsPartOf(const QString& source);
/// The part whose relations are in that part; null if it is none with relations.
QString sourceOfRelationsPart(const QString& part);

/// The part that a target leads to, which is told from the folder of @p source; null if it leads
/// out of the package.
QString resolvedTarget(const QString& source, const QString& target);
/// A target that leads from @p source to @p part.
QString relativeTarget(const QString& source, const QString& part);

}  // namespace SmartTable::detail
