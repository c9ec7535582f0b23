#include "check/Baseline.h"

#include <algorithm>

QString Baseline::read(const QString& path)
{
    m_known.clear();
    QString problem = baselinefile::read(path, m_known);
    std::sort(m_known.begin(), m_known.end(), [](const KnownFinding& a, const KnownFinding& b) {
        return a.fingerprint < b.fingerprint;
    });
    return problem;
}

bool Baseline::take(const Fingerprint& fingerprint)
{
    auto known = std::lower_bound(m_known.begin(), m_known.end(), fingerprint,
                                  [](const KnownFinding& finding, const Fingerprint& wanted) {
                                      return finding.fingerprint < wanted;
                                  });
    for (; known != m_known.end() && known->fingerprint == fingerprint; ++known) {
        if (known->count > 0) {
            --known->count;
            return true;
        }
    }
    return false;
}

int Baseline::leaveOut(QVector<Problem>& problems)
{
    const int before = problems.size();
    const auto end =
        std::remove_if(problems.begin(), problems.end(),
                       [this](const Problem& problem) { return take(problem.fingerprint()); });
    problems.erase(end, problems.end());
    return before - problems.size();
}

int Baseline::gone(const QVector<const Rule*>& rules) const
{
    int gone = 0;
    for (const KnownFinding& finding : m_known) {
        if (!finding.rule || rules.contains(finding.rule))
            gone += finding.count;
    }
    return gone;
}
