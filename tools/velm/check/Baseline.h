#pragma once

#include "check/BaselineFile.h"
#include "check/Problems.h"

#include <vector>

/// Findings that are known and not to be told again. Alike ones are counted, so that one more is
/// told.
class Baseline
{
public:
    /// Reads a file of baselinefile::write(). @return what is wrong with it; empty if nothing is
    QString read(const QString& path);

    /// Takes those out of @p problems that are known. @return how many
    int leaveOut(QVector<Problem>& problems);

    /// After that, how many are known and were not found, of these rules and of rules that are no
    /// more.
    int gone(const QVector<const Rule*>& rules) const;

private:
    bool take(const Fingerprint& fingerprint);

    std::vector<KnownFinding> m_known;  // sorted by fingerprint
};
