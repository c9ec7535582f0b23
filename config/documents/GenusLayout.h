#pragma once

#include "config/documents/ConfigJson.h"
#include "CVelmRecordManager.h"

#include <QString>

#include <optional>

namespace velm::detail {

/// The layout of the graphic-attribute library that @p text holds. What cannot be read is told and
/// stays as a new record has it; a text that is no JSON object is none.
std::optional<VelmRecordGenusDatabase>
parseGenusLayout(const QString& text, const ProblemSink& tell, UnknownKeys* unknown = nullptr);

}  // namespace velm::detail
