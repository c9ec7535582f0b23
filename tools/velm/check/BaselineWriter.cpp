#include "check/BaselineFile.h"
#include "check/Report.h"
#include "cli/FileCause.h"
#include "cli/JsonArray.h"

#include "common/files/StagedFile.h"

#include <QFile>

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

bool writeList(const QVector<Problem>& problems, QFile& file)
{
    const std::vector<Entry> entries = sorted(problems);
    QByteArray before = "{\"known\": [\n";
    for (auto first = entries.begin(); first != entries.end();) {
        const auto next = std::find_if(first, entries.end(), [first](const Entry& entry) {
            return entry.fingerprint != first->fingerprint;
        });
        file.write(before + lineOf(*first, static_cast<int>(next - first)));
        before = ",\n";
        first = next;
    }
    file.write(entries.empty() ? "{\"known\": []}\n" : "\n]}\n");
    return file.flush() && file.error() == QFileDevice::NoError;
}

}  // namespace

QString baselinefile::write(const QVector<Problem>& problems, const QString& path)
{
    velm::detail::StagedFile file(path);
    if (!file.open().isEmpty() || !writeList(problems, file.file()))
        return path + QStringLiteral(": ") + whyNotWritten(path);
    return file.commit();
}
