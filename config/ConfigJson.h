#pragma once

#include "common/JsonBinding.h"

#include <optional>

/// Reading JSON that people have written into the configuration: what is wrong with it is logged,
/// and the rest counts.
namespace velm::detail {

/// The JSON object that @p text holds, if it is one. An empty text is none; why another one is not
/// is logged, with @p what in front.
std::optional<json::Document> parseConfigObject(const QString& text, const QString& what);

void logProblems(const json::Error& error, const QString& what);

/// Reads @p object into @p record; members that fail are logged and stay as they are.
template<class Record>
void readConfigObject(const json::Value& object, const QString& what, Record& record)
{
    try {
        json::read(object, record);
    } catch (const json::Error& error) {
        logProblems(error, what);
    }
}

}  // namespace velm::detail
