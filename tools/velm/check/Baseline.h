#pragma once

#include "check/Problems.h"

/// Findings that are known and not to be told again, kept in a JSON file that people can read and
/// keep under version control. Alike findings are counted, so that one more is told.
class Baseline
{
public:
    /// Reads a file that write() has made. @return what is wrong with it; empty if nothing is
    QString read(const QString& path);

    /// Those of @p problems that are not known.
    QVector<Problem> unknown(const QVector<Problem>& problems) const;

    /// Writes @p problems to a file, which is replaced as a whole. @return what went wrong; empty
    /// if nothing did
    static QString write(const QVector<Problem>& problems, const QString& path);

private:
    QHash<QString, int> m_known;  // how many of a fingerprint
};
