#include "CVelmFindFile.h"

#include "common/Singleton.h"
#include "CVelmSystemGlobal.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>

#include <functional>

namespace {

/// Gets one entry; true ends the walk.
using Visit = std::function<bool(const QFileInfo& entry)>;

/// Walks folders in listing order, entering a folder where it is met.
class FolderWalk
{
public:
    FolderWalk(const Visit& visit, bool recursive) : m_visit(visit), m_recursive(recursive) {}

    /// True if a visit ended the walk.
    bool walk(const QString& folder)
    {
        const QString canonical = QDir(folder).canonicalPath();
        if (folder.isEmpty() || canonical.isEmpty() || m_entered.contains(canonical))
            return false;
        m_entered.insert(canonical);
        return visitEntries(folder);
    }

private:
    bool visitEntries(const QString& folder)
    {
        const QFileInfoList entries = QDir(folder).entryInfoList(
            QDir::Dirs | QDir::Files | QDir::NoDot | QDir::NoDotDot, QDir::Name | QDir::IgnoreCase);
        for (const QFileInfo& entry : entries) {
            if (m_visit(entry))
                return true;
            if (m_recursive && entry.isDir() && walk(entry.absoluteFilePath()))
                return true;
        }
        return false;
    }

    const Visit& m_visit;
    bool m_recursive;
    QSet<QString> m_entered;  // canonical paths: links lead to no folder twice
};

using Test = std::function<bool(const QFileInfo& entry)>;

QStringList collect(const QString& folder, bool recursive, const Test& wanted)
{
    QStringList paths;
    const Visit visit = [&](const QFileInfo& entry) {
        if (wanted(entry))
            paths.append(entry.absoluteFilePath());
        return false;
    };
    FolderWalk(visit, recursive).walk(folder);
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
    const QStringList paths = CVelmSystemGlobal::Instance()->getSearchPaths();
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
    const Visit visit = [&](const QFileInfo& entry) {
        if (!entry.isFile() || !same(entry.fileName(), name))
            return false;
        found = entry.absoluteFilePath();
        return true;
    };
    FolderWalk(visit, recursive).walk(folder);
    return found;
}

QStringList CVelmFindFile::findFileNoSuffix(const QString& name, bool recursive)
{
    QStringList files;
    const QStringList paths = CVelmSystemGlobal::Instance()->getSearchPaths();
    for (const QString& path : paths)
        files += findFileNoSuffix(path, name, recursive);
    return files;
}

QStringList CVelmFindFile::findFileNoSuffix(const QString& folder, const QString& name,
                                            bool recursive)
{
    return collect(folder, recursive, [&](const QFileInfo& entry) {
        return entry.isFile() && same(entry.completeBaseName(), name);
    });
}

QStringList CVelmFindFile::findFileBySuffix(const QString& folder, const QString& suffixes,
                                            bool recursive)
{
    const QStringList wanted = splitSuffixes(suffixes);
    return collect(folder, recursive, [&](const QFileInfo& entry) {
        return entry.isFile() && wanted.contains(entry.suffix(), Qt::CaseInsensitive);
    });
}

QStringList CVelmFindFile::fuzzyQueryFile(const QString& folder, const QString& text,
                                          const QString& suffix, bool recursive)
{
    const QStringList wanted = splitSuffixes(suffix);
    return collect(folder, recursive, [&](const QFileInfo& entry) {
        return entry.isFile() && entry.fileName().contains(text, Qt::CaseInsensitive)
               && (wanted.isEmpty() || wanted.contains(entry.suffix(), Qt::CaseInsensitive));
    });
}

QStringList CVelmFindFile::findAll(const QString& folder, bool recursive)
{
    return collect(folder, recursive, [](const QFileInfo&) { return true; });
}

QStringList CVelmFindFile::findAllFile(const QString& folder, bool recursive)
{
    return collect(folder, recursive, [](const QFileInfo& entry) { return entry.isFile(); });
}

QStringList CVelmFindFile::findAllFile(const QString& folder, const QString& name, bool recursive)
{
    return collect(folder, recursive, [&](const QFileInfo& entry) {
        return entry.isFile() && same(entry.fileName(), name);
    });
}

QStringList CVelmFindFile::findFolder(const QString& folder, bool recursive)
{
    return collect(folder, recursive, [](const QFileInfo& entry) { return entry.isDir(); });
}

QStringList CVelmFindFile::findFolder(const QString& folder, const QString& name, bool recursive)
{
    return collect(folder, recursive, [&](const QFileInfo& entry) {
        return entry.isDir() && same(entry.fileName(), name);
    });
}
