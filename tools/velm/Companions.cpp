#include "Companions.h"

#include <QDir>
#include <QFileInfo>
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

QString accessDriverName()
{
    return QStringLiteral("Microsoft Access Driver (*.mdb, *.accdb)");
}

/// The files in which unixODBC keeps its drivers.
QStringList odbcDriverFiles()
{
    const QString folder = qEnvironmentVariable("ODBCSYSINI", QStringLiteral("/etc"));
    return {QDir::homePath() + QStringLiteral("/.odbcinst.ini"),
            folder + QStringLiteral("/odbcinst.ini")};
}

}  // namespace

QString companions::accessDriver()
{
    const QString name = accessDriverName();
    const QString drivers =
        QStringLiteral("HKEY_LOCAL_MACHINE\\SOFTWARE\\ODBC\\ODBCINST.INI\\ODBC Drivers");
    bool found = !registryValue(drivers, name).isEmpty();
    if (!onWindows()) {
        for (const QString& file : odbcDriverFiles())
            found = found || QSettings(file, QSettings::IniFormat).childGroups().contains(name);
    }
    return found ? name : QString();
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
