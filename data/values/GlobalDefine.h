#pragma once

#include "VelmTypes.h"

#include <QString>

#include <functional>
#include <optional>

/// Values by key in the table "globaldefines" of the system configuration database, with a true
/// answer to what could not be read.
namespace velm::detail {

/// The value of a key; empty if there is none. @p value stays unless the answer is VelmOk.
/// @return VelmOk; VelmDatabaseOpenFailed; VelmTableNotExist; VelmSqlExecFailed
Velm::ErrorStatus readGlobalDefine(const QString& key, QString& value);

/// Gets the stored value, empty if there is none, and answers the new one; nothing to leave it.
using MergeValue = std::function<std::optional<QString>(const QString& stored)>;

/// Replaces the value of a key by what @p merge makes of it, or adds one. No other program can
/// change it in between. Values with a single quote cannot be stored.
/// @return as above, or the failure of the write
Velm::ErrorStatus updateGlobalDefine(const QString& key, const MergeValue& merge);

}  // namespace velm::detail
