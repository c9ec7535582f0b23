#include "CVelmFindFile.h"

#include "common/files/FolderWalk.h"
#include "common/files/SearchPaths.h"
#include "common/host/Singleton.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <functional>

using velm::detail::FolderWalk;
using velm::detail::isFile;
using velm::detail::isFolder;
using velm::detail::SearchPaths;

namespace {

using Test = std::function<bool(const QFileInfo& entry)>;

QStringList collect(const QString& folder, bool recursive, const Test& wanted)
{
    QStringList paths;
    FolderWalk(recursive).walk(folder, [&](const QFileInfo& entry) {
        if (wanted(entry))
            paths.append(entry.absoluteFilePath());
        return false;
    });
    return paths;
}

bool same(const QString& a, const QString& b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

QStringList splitSuffixes(const QString& suffixes)
{
    static const QRegularExpression separators(QStringLiteral("[;,|\\s]+"));
    QStringList list = suffixes.split(separators, Qt::SkipEmptyParts);
    for (QString& suffix : list) {
        if (suffix.startsWith(QLatin1String("*.")))
            suffix.remove(0, 2);
        else if (suffix.startsWith(QLatin1Char('.')))
            suffix.remove(0, 1);
    }
    return list;
}

}  // namespace

CVelmFindFile* CVelmFindFile::Instance()
{
    static velm::detail::Singleton<CVelmFindFile> instance;
    return instance.get([] { return new CVelmFindFile; });
}

CVelmFindFile::CVelmFindFile() = default;

CVelmFindFile::~CVelmFindFile() = default;

QString CVelmFindFile::findFile(const QString& name, bool recursive)
{
    const QStringList paths = SearchPaths::instance().folders();
    for (const QString& path : paths) {
        QString found = findFile(path, name, recursive);
        if (!found.isEmpty())
            return found;
    }
    return QString();
}

QString CVelmFindFile::findFile(const QString& folder, const QString& name, bool recursive)
{
    QString found;
    FolderWalk(recursive).walk(folder, [&](const QFileInfo& entry) {
        if (!isFile(entry) || !same(entry.fileName(), name))
            return false;
        found = entry.absoluteFilePath();
        return true;
    });
    return found;
}

QStringList CVelmFindFile::findFileNoSuffix(const QString& name, bool recursive)
{
    QStringList files;
    const QStringList paths = SearchPaths::instance().folders();
    for (const QString& path : paths)
        files += findFileNoSuffix(path, name, recursive);
    return files;
}

QStringList CVelmFindFile::findFileNoSuffix(const QString& folder, const QString& name,
                                            bool recursive)
{
    return collect(folder, recursive, [&](const QFileInfo& entry) {
        return isFile(entry) && same(entry.completeBaseName(), name);
    });
}

QStringList CVelmFindFile::findFileBySuffix(const QString& folder, const QString& suffixes,
                                            bool recursive)
{
    const QStringList wanted = splitSuffixes(suffixes);
    return collect(folder, recursive, [&](const QFileInfo& entry) {
        return isFile(entry) && wanted.contains(entry.suffix(), Qt::CaseInsensitive);
    });
}

QStringList CVelmFindFile::fuzzyQueryFile(const QString& folder, const QString& text,
                                          const QString& suffix, bool recursive)
{
    const QStringList wanted = splitSuffixes(suffix);
    return collect(folder, recursive, [&](const QFileInfo& entry) {
        return isFile(entry) && entry.fileName().contains(text, Qt::CaseInsensitive)
               && (wanted.isEmpty() || wanted.contains(entry.suffix(), Qt::CaseInsensitive));
    });
}

QStringList CVelmFindFile::findAll(const QString& folder, bool recursive)
{
    return collect(folder, recursive, [](const QFileInfo&) { return true; });
}

QStringList CVelmFindFile::findAllFile(const QString& folder, bool recursive)
{
    return collect(folder, recursive, [](const QFileInfo& entry) { return isFile(entry); });
}

QStringList CVelmFindFile::findAllFile(const QString& folder, const QString& name, bool recursive)
{
    return collect(folder, recursive, [&](const QFileInfo& entry) {
        return isFile(entry) && same(entry.fileName(), name);
    });
}

QStringList CVelmFindFile::findFolder(const QString& folder, bool recursive)
{
    return collect(folder, recursive, [](const QFileInfo& entry) { return isFolder(entry); });
}

QStringList CVelmFindFile::findFolder(const QString& folder, const QString& name, bool recursive)
{
    return collect(folder, recursive, [&](const QFileInfo& entry) {
        return isFolder(entry) && same(entry.fileName(), name);
    });
}
