#include "config/DefinitionFile.h"

#include "CVelmFindFile.h"

#include <QFile>
#include <QTextStream>

namespace velm::detail {

namespace {

constexpr qint64 kGreatestSize = 64 * 1024 * 1024;  // bytes; far beyond any such file

}  // namespace

Velm::ErrorStatus readDefinitionFile(const QString& fileName, int fieldCount,
                                     const std::function<void(const QStringList&)>& store)
{
    const QString path = CVelmFindFile::Instance()->findFile(fileName, true);
    if (!QFile::exists(path))
        return Velm::VelmNotFound;
    QFile file(path);
    if (file.size() > kGreatestSize || !file.open(QIODevice::ReadOnly | QIODevice::Text))
        return Velm::VelmFileOpenFailed;

    QTextStream stream(&file);
    const QString line = stream.readLine().trimmed();
    if (stream.atEnd()) {
        const QStringList fields = line.split(QLatin1Char(','));
        store(fields.size() > fieldCount ? QStringList() : fields);
    }
    return Velm::VelmOk;
}

}  // namespace velm::detail
