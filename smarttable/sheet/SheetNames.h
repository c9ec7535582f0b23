#pragma once

#include <QString>

namespace SmartTable::detail {

/// Why a sheet cannot have that name; empty if it can. Others of the workbook are not looked at.
QString sheetNameProblem(const QString& name);

}  // namespace SmartTable::detail
