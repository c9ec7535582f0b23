#pragma once

#include "common/json/JsonBinding.h"

#include <functional>
#include <optional>

/// Reading JSON that people have written into the configuration: what is wrong with it is told, and
/// the rest counts.
namespace velm::detail {

/// Gets what is wrong with a document.
using ProblemSink = std::function<void(const json::Error&)>;
/// Gets the keys of a document that are not known; null for a reader that does not ask.
using UnknownKeys = QVector<json::UnknownKey>;

/// Logs each problem, with @p what in front.
ProblemSink logAs(const QString& what);

/// The JSON object that @p text holds, if it is one. An empty text is none; why another one is not
/// is told.
std::optional<json::Document> parseConfigObject(const QString& text, const ProblemSink& tell);

/// Reads @p object into @p record; members that fail are told and stay as they are.
/// @return whether all could be read
template<class Record>
bool readConfigObject(const json::Value& object, Record& record, const ProblemSink& tell,
                      UnknownKeys* unknown = nullptr)
{
    try {
        json::read(object, record, unknown);
        return true;
    } catch (const json::Error& error) {
        tell(error);
    }
    return false;
}

}  // namespace velm::detail
