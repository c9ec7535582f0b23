#include "check/BaselineFile.h"
#include "check/Report.h"
#include "cli/JsonArray.h"

#include "common/files/StagedFile.h"

#include <algorithm>
#include <tuple>

namespace {

struct Entry
{
    const Problem* problem;
    Fingerprint fingerprint;
};

bool operator<(const Entry& a, const Entry& b)
{
    const auto order = [](const Entry& entry) {
        const Place& place = entry.problem->place;
        return std::tie(place.database, place.table, place.key, place.column, entry.problem->rule,
                        place.value, entry.fingerprint);
    };
    return order(a) < order(b);
}

std::vector<Entry> sorted(const QVector<Problem>& problems)
{
    std::vector<Entry> entries;
    entries.reserve(static_cast<std::size_t>(problems.size()));
    for (const Problem& problem : problems)
        entries.push_back({&problem, problem.fingerprint()});
    std::sort(entries.begin(), entries.end());
    return entries;
}

QByteArray lineOf(const Entry& entry, int count)
{
    Place place = entry.problem->place;
    place.row = 0;  // it changes with other rows
    return "{\"place\": " + json::textOf(report::textOf(place))
           + ", \"rule\": " + json::textOf(QLatin1String(entry.problem->rule->id)) + ", \"value\": "
           + json::textOf(excerpt(place.value)) + ", \"count\": " + QByteArray::number(count)
           + ", \"fingerprint\": \"" + textOf(entry.fingerprint) + "\"}";
}

/// @return what went wrong; empty if nothing did
QString writeList(const QVector<Problem>& problems, velm::detail::StagedFile& file)
{
    constexpr int kAtOnce = 65536;  // bytes; a write for each line takes its time
    const std::vector<Entry> entries = sorted(problems);
    QByteArray text = entries.empty() ? "{\"known\": [" : "{\"known\": [\n";
    for (auto first = entries.begin(); first != entries.end();) {
        const auto next = std::find_if(first, entries.end(), [first](const Entry& entry) {
            return entry.fingerprint != first->fingerprint;
        });
        text += lineOf(*first, static_cast<int>(next - first));
        text += next == entries.end() ? "\n" : ",\n";
        first = next;
        if (text.size() < kAtOnce)
            continue;
        QString problem = file.write(text.constData(), text.size());
        if (!problem.isEmpty())
            return problem;
        text.resize(0);
    }
    text += "]}\n";
    return file.write(text.constData(), text.size());
}

}  // namespace

QString baselinefile::write(const QVector<Problem>& problems, const QString& path)
{
    velm::detail::StagedFile file(path);
    QString problem = file.open();
    if (problem.isEmpty())
        problem = writeList(problems, file);
    return problem.isEmpty() ? file.commit() : problem;
}
