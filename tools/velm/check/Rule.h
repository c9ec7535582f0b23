#pragma once

#include <QString>

#include <stdexcept>
#include <string_view>

/// How much a finding weighs.
enum class Severity
{
    Error,    ///< something does not work
    Warning,  ///< something is lost or ambiguous
    Note,     ///< advice
};

/// What the check looks for. The id is stable: scripts and people name rules by it.
struct Rule
{
    const char* id;
    Severity severity;
    const char* explanation;  ///< what is wrong, and what follows from it
    const char* advice;       ///< what to do about it
};

namespace rules {

/// The rule of that id; null if there is none.
const Rule* find(const QString& id);

/// "error", "warning" or "note".
QString nameOf(Severity severity);

}  // namespace rules
