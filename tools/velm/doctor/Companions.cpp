#include "doctor/Companions.h"

#include "common/platform/OdbcDrivers.h"

#include <QSettings>
#include <QStandardPaths>
#include <QStringList>
#include <QSysInfo>

namespace {

bool onWindows()
{
    return QSysInfo::kernelType() == QLatin1String("winnt");
}

/// The value of a key of the registry; the key's default value is called ".".
QString registryValue(const QString& key, const QString& name)
{
    if (!onWindows())
        return QString();
    return QSettings(key, QSettings::NativeFormat).value(name).toString();
}

}  // namespace

QString companions::accessDriver()
{
    const QString name = QStringLiteral("Microsoft Access Driver (*.mdb, *.accdb)");
    return velm::detail::platform::odbcDrivers().contains(name) ? name : QString();
}

QString companions::microsoftOffice()
{
    QStringList servers;
    for (const QString& name : {QStringLiteral("Word"), QStringLiteral("Excel")}) {
        const QString key = QStringLiteral("HKEY_CLASSES_ROOT\\%1.Application\\CLSID").arg(name);
        if (!registryValue(key, QStringLiteral(".")).isEmpty())
            servers.append(name);
    }
    return servers.join(QStringLiteral(", "));
}

QString companions::libreOffice()
{
    for (const QString& name : {QStringLiteral("libreoffice"), QStringLiteral("soffice")}) {
        QString path = QStandardPaths::findExecutable(name);
        if (!path.isEmpty())
            return path;
    }
    return registryValue(
        QStringLiteral("HKEY_LOCAL_MACHINE\\SOFTWARE\\LibreOffice\\UNO\\InstallPath"),
        QStringLiteral("."));
}
