#pragma once

#include "check/Problems.h"

#include <vector>

struct KnownFinding
{
    Fingerprint fingerprint;
    int count;         ///< how many alike
    const Rule* rule;  ///< null for a rule that is no more
};

/// The file of known findings: JSON that people can read and keep under version control. Both ways
/// take little memory beside the findings themselves.
namespace baselinefile {

/// Appends what a file knows, in its order. @return what is wrong with it; empty if nothing is
QString read(const QString& path, std::vector<KnownFinding>& known);

/// Writes @p problems to a file, which is replaced as a whole: a line for those that are alike,
/// sorted by place, without the numbers of rows, so that it changes where findings do. @return what
/// went wrong; empty if nothing did
QString write(const QVector<Problem>& problems, const QString& path);

}  // namespace baselinefile
