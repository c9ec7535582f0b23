#include "cli/Root.h"

#include "cli/Arguments.h"
#include "cli/Console.h"

#include "CVelmSystemGlobal.h"

#include <QFileInfo>

int selectRoot(const Arguments& arguments)
{
    const bool named = arguments.isSet(QStringLiteral("root"));
    const QString root =
        named ? arguments.value(QStringLiteral("root")) : qEnvironmentVariable("VELM_ROOT");
    if (named && root.isEmpty())
        return arguments.usageError(QStringLiteral("--root names no folder"));
    if (root.isEmpty())
        return arguments.usageError(
            QStringLiteral("no configuration: give --root DIR or set VELM_ROOT"));
    const bool exists =
        named ? CVelmSystemGlobal::Instance()->setSystemRootRoute(root) : QFileInfo(root).isDir();
    if (!exists) {
        console::tell(QStringLiteral("cannot open the configuration \"%1\": ").arg(root)
                      + (QFileInfo::exists(root) ? QStringLiteral("it is no folder")
                                                 : QStringLiteral("there is no such folder")));
        return ExitCannotOpen;
    }
    return ExitFine;
}
