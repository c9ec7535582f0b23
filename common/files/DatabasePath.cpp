#include "common/files/DatabasePath.h"

#include "common/platform/FileSystem.h"

#include <QFileInfo>

namespace velm::detail {

QString databaseName(const QString& path)
{
    return platform::longPath(path);
}

QString databasePathProblem(const QString& path)
{
    const QFileInfo file(path);
    if (!platform::canNameFile(file.fileName() + QLatin1String("-journal")))
        return QStringLiteral("the name is too long: SQLite puts \"-journal\" behind it");
    const int length = databaseName(file.absoluteFilePath()).toUtf8().size();
    const int longest = platform::longestDatabasePath();
    return length <= longest
               ? QString()
               : QStringLiteral("the path has %1 bytes of UTF-8, and SQLite takes %2 at most")
                     .arg(length)
                     .arg(longest);
}

}  // namespace velm::detail
