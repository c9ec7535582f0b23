#include "common/platform/OdbcDrivers.h"

#include <QDir>
#include <QSettings>

namespace velm::detail::platform {

QStringList odbcDrivers()
{
    // The files in which unixODBC keeps its drivers.
    const QString folder = qEnvironmentVariable("ODBCSYSINI", QStringLiteral("/etc"));
    QStringList names;
    for (const QString& file : {QDir::homePath() + QStringLiteral("/.odbcinst.ini"),
                                folder + QStringLiteral("/odbcinst.ini")})
        names += QSettings(file, QSettings::IniFormat).childGroups();
    return names;
}

}  // namespace velm::detail::platform
