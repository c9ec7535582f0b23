#include "set/Readable.h"

#include "set/HeldDatabase.h"

#include "common/files/DatabasePath.h"

#include <QFileInfo>

namespace {

/// Whether this process may see what is in a folder, or in the one above if there is none.
bool canLookInto(const QString& folder)
{
    const QFileInfo info(folder);
    if (info.exists())
        return !info.isDir() || info.isExecutable();
    return info.path() == folder || canLookInto(info.path());
}

}  // namespace

QString whyNoFile(const QString& path)
{
    const QFileInfo file(path);
    if (!file.exists() && !canLookInto(file.path()))
        return QStringLiteral("permission denied");
    if (!file.exists())
        return QStringLiteral("there is no such file (\"velm init DIR\" makes a sample set)");
    if (!file.isFile())
        return QStringLiteral("it is no file");
    if (!file.isReadable())
        return QStringLiteral("permission denied");
    if (file.size() == 0)  // SQLite takes it for a database without tables
        return QStringLiteral("the file is empty");
    if (file.size() > velm::detail::kGreatestDatabase)
        return QStringLiteral("larger than 1 GiB, which the library does not read");
    return velm::detail::databasePathProblem(path);
}

QString whyUnreadable(const QString& path, const QStringList& tables)
{
    QString problem = whyNoFile(path);
    if (!problem.isEmpty() || tables.isEmpty())
        return problem;
    HeldDatabase database(path);
    problem = database.hold();
    for (const QString& table : tables) {
        if (!problem.isEmpty())
            return problem;
        problem = database.problemOf(schema::table(table));
        if (!problem.isEmpty())
            return QStringLiteral("table \"%1\": ").arg(table) + problem;
    }
    return problem;
}
