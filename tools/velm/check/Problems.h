#pragma once

#include "check/Rule.h"

#include <QSet>
#include <QString>
#include <QVector>

#include <algorithm>

/// Where in the configuration something is.
struct Place
{
    QString database;  ///< its file, as seen from the folder of the configuration
    QString table;
    int row = 0;  ///< from 1, in stored order; 0 for the table as a whole
    QString column;
    QString value;
};

struct Problem
{
    const Rule* rule;
    Place place;
    QString message;
};

/// Collects what the rules find.
class Problems
{
public:
    /// Keeps the rules of these ids only; all of them for none.
    explicit Problems(const QSet<QString>& ids) : m_ids(ids) {}

    void add(const Rule& rule, const Place& place, const QString& message)
    {
        if (m_ids.isEmpty() || m_ids.contains(QLatin1String(rule.id)))
            m_problems.append({&rule, place, message});
    }

    const QVector<Problem>& all() const { return m_problems; }
    int count(Severity severity) const
    {
        const auto weighsSo = [severity](const Problem& problem) {
            return problem.rule->severity == severity;
        };
        return static_cast<int>(std::count_if(m_problems.begin(), m_problems.end(), weighsSo));
    }

private:
    QSet<QString> m_ids;
    QVector<Problem> m_problems;
};
