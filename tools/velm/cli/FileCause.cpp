#include "cli/FileCause.h"

#include <QFileInfo>

QString whyNotRead(const QString& path)
{
    const QFileInfo file(path);
    if (!file.exists())
        return QStringLiteral("there is no such file");
    if (file.isDir())
        return QStringLiteral("it is a folder");
    if (!file.isReadable())
        return QStringLiteral("permission denied");
    return QStringLiteral("it cannot be read; does another program use it?");
}

QString whyNotWritten(const QString& path)
{
    const QFileInfo folder(QFileInfo(path).absolutePath());
    if (!folder.isDir())
        return QStringLiteral("there is no such folder");
    if (!folder.isWritable())
        return QStringLiteral("its folder may not be written");
    return QStringLiteral("it cannot be written; is the disk full?");
}
