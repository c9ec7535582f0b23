#include "config/tables/DefinitionFile.h"

#include "CVelmFindFile.h"

#include <QFile>
#include <QTextStream>

namespace velm::detail {

namespace {

constexpr qint64 kGreatestSize = 64 * 1024 * 1024;  // bytes; far beyond any such file

/// Opens the first file of that name on the search paths.
Velm::ErrorStatus open(const QString& fileName, QFile& file)
{
    const QString path = CVelmFindFile::Instance()->findFile(fileName, true);
    if (!QFile::exists(path))
        return Velm::VelmNotFound;
    file.setFileName(path);
    const bool opened =
        file.size() <= kGreatestSize && file.open(QIODevice::ReadOnly | QIODevice::Text);
    return opened ? Velm::VelmOk : Velm::VelmFileOpenFailed;
}

}  // namespace

Velm::ErrorStatus readDefinitionFile(const QString& fileName, int fieldCount,
                                     const std::function<void(const QStringList&)>& store)
{
    QFile file;
    const Velm::ErrorStatus status = open(fileName, file);
    if (status != Velm::VelmOk)
        return status;
    QTextStream stream(&file);
    const QString line = stream.readLine().trimmed();
    if (stream.atEnd()) {
        const QStringList fields = line.split(QLatin1Char(','));
        store(fields.size() > fieldCount ? QStringList() : fields);
    }
    return Velm::VelmOk;
}

Velm::ErrorStatus readDefinitionLines(const QString& fileName,
                                      const std::function<void(const QStringList&)>& store)
{
    QFile file;
    const Velm::ErrorStatus status = open(fileName, file);
    if (status != Velm::VelmOk)
        return status;
    QTextStream stream(&file);
    while (!stream.atEnd()) {
        const QString line = stream.readLine().trimmed();
        if (!line.isEmpty())
            store(line.split(QLatin1Char(',')));
    }
    return Velm::VelmOk;
}

}  // namespace velm::detail
