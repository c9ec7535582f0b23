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
    const int length = databaseName(QFileInfo(path).absoluteFilePath()).toUtf8().size();
    const int longest = platform::longestDatabasePath();
    return length <= longest
               ? QString()
               : QStringLiteral("the path has %1 bytes of UTF-8, and SQLite takes %2 at most")
                     .arg(length)
                     .arg(longest);
}

}  // namespace velm::detail
