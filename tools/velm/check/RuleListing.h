#pragma once

#include <QString>

class Arguments;

/// What the check tells of its rules.
namespace rulelisting {

/// Prints all rules. @return the exit code
int list(bool json);

/// Prints the rule that --explain names. @return the exit code
int explain(const Arguments& args);

/// That there is no rule of that id, and which may have been meant.
QString unknown(const QString& id);

}  // namespace rulelisting
