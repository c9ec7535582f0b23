#include "archive/Extraction.h"

#include "archive/EntryName.h"
#include "common/platform/FileSystem.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace velm::detail {

namespace {

/// Whether an entry is one that was asked for, or lies in a folder that was.
bool isNamed(const QString& entry, const QString& name)
{
    if (!entry.startsWith(name))
        return false;
    return entry.size() == name.size() || name.endsWith(QLatin1Char('/'))
           || entry.at(name.size()) == QLatin1Char('/');
}

/// The part of a name before its last "/"; empty if there is none.
QString folderOf(const QString& name)
{
    return name.left(std::max(0, name.lastIndexOf(QLatin1Char('/'))));
}

QString isThere(const QString& path)
{
    return aboutEntry(path, QStringLiteral("is there already"));
}

}  // namespace

Extraction::Extraction(ZipReader& archive, const CompressSettings& settings, const QString& folder)
    : m_archive(archive), m_settings(settings), m_limits(settings),
      m_folder(QDir::cleanPath(QFileInfo(folder).absoluteFilePath()))
{
    if (QFileInfo::exists(m_folder))
        m_there.insert(QString());
}

Extraction::~Extraction()
{
    m_staging.reset();
    for (int i = m_madeFolders.size() - 1; !m_isDone && i >= 0; --i)
        QDir().rmdir(m_madeFolders.at(i));
}

QString Extraction::choose(const QVector<ZipEntry>& entries, const QStringList& names)
{
    QVector<bool> found(names.size(), false);
    for (const ZipEntry& entry : entries) {
        bool isWanted = names.isEmpty();
        for (int i = 0; i < names.size(); ++i) {
            if (isNamed(entry.name, names.at(i)))
                isWanted = found[i] = true;
        }
        QString problem = isWanted ? admit(entry) : QString();
        if (!problem.isEmpty())
            return aboutEntry(entry.name, problem);
    }
    const int missing = found.indexOf(false);
    return missing < 0 ? QString()
                       : aboutEntry(names.at(missing), QStringLiteral("there is no such entry"));
}

QString Extraction::admit(const ZipEntry& entry)
{
    if (entry.isLink)
        return QStringLiteral("it is a link, which is not extracted");
    if (entry.isEncrypted)
        return QStringLiteral("it is encrypted, which is not read");
    QString problem = entryNameProblem(entry.name);
    if (!problem.isEmpty())
        return QStringLiteral("its name ") + problem;
    problem = m_limits.admit(entry);
    if (problem.isEmpty())
        problem = addFolders(entry.name);
    if (!problem.isEmpty())
        return problem;
    if (!entry.isFolder) {
        const QString key = entryNameKey(entry.name);
        if (m_files.contains(key) || m_folders.contains(key))
            return QStringLiteral("another entry has this name, at least on Windows");
        m_files.insert(key);
        problem = placeProblem(entry.name);
    }
    m_chosen.append(entry);
    return problem;
}

/// Notes the folders of a name and looks at the places that they will have.
QString Extraction::addFolders(const QString& name)
{
    const QString last = folderOf(name);
    if (last == m_lastAdded)
        return QString();
    for (int end = name.indexOf(QLatin1Char('/')); end >= 0;
         end = name.indexOf(QLatin1Char('/'), end + 1)) {
        QString problem = addFolder(name.left(end));
        if (!problem.isEmpty())
            return problem;
    }
    m_lastAdded = last;
    return QString();
}

QString Extraction::addFolder(const QString& folder)
{
    const QString key = entryNameKey(folder);
    if (m_files.contains(key))
        return QStringLiteral("a file of the archive has the name of its folder");
    if (m_folders.contains(key))
        return QString();
    m_folders.insert(key);
    if (!mayBeThere(folder))
        return QString();
    const QFileInfo place(m_folder + QLatin1Char('/') + folder);
    if (place.isSymLink())
        return QStringLiteral("a link is in the place of its folder \"%1\"").arg(folder);
    if (place.exists() && !place.isDir())
        return QStringLiteral("a file is in the place of its folder \"%1\"").arg(folder);
    if (place.exists())
        m_there.insert(key);
    return QString();
}

/// Whether the folder is there in which something of that name will lie.
bool Extraction::mayBeThere(const QString& name) const
{
    return m_there.contains(entryNameKey(folderOf(name)));
}

QString Extraction::placeProblem(const QString& name) const
{
    if (!mayBeThere(name))
        return QString();
    const QFileInfo place(m_folder + QLatin1Char('/') + name);
    if (place.isDir() && !place.isSymLink())
        return QStringLiteral("a folder is in its place");
    const bool isFree = !place.exists() && !place.isSymLink();
    return isFree || m_settings.overwrites ? QString() : QStringLiteral("is there already");
}

QString Extraction::extract()
{
    QString problem = makeFolder();
    for (const ZipEntry& entry : qAsConst(m_chosen)) {
        if (!problem.isEmpty())
            return problem;
        problem = make(entry);
        if (!problem.isEmpty())
            problem = aboutEntry(entry.name, problem);
    }
    if (problem.isEmpty())
        problem = moveAll(m_content, m_folder);
    m_isDone = problem.isEmpty();
    return problem;
}

/// Makes the folder to extract into, if it is not there, and one within it for what is not
/// finished.
QString Extraction::makeFolder()
{
    QStringList missing;
    QString folder = m_folder;
    for (; !QFileInfo::exists(folder); folder = QFileInfo(folder).path())
        missing.prepend(folder);
    for (const QString& path : qAsConst(missing)) {
        if (!QDir().mkdir(path) && !QFileInfo(path).isDir())
            return aboutEntry(path, QStringLiteral("the folder cannot be made"));
        m_madeFolders.append(path);
    }
    if (!QFileInfo(m_folder).isDir())
        return aboutEntry(m_folder, QStringLiteral("is no folder"));
    StagingFolder::removeLeftOver(m_folder);
    m_staging = std::make_unique<StagingFolder>();
    if (!m_staging->make(m_folder))
        return aboutEntry(m_folder, QStringLiteral("no file can be made there"));
    m_content = m_staging->path(QStringLiteral("content"));
    return QDir().mkdir(m_content) ? QString()
                                   : aboutEntry(m_content, QStringLiteral("cannot be made"));
}

QString Extraction::make(const ZipEntry& entry)
{
    const QString path = m_content + QLatin1Char('/') + entry.name;
    const QString folder = entry.isFolder ? path : QFileInfo(path).path();
    if (folder != m_lastFolder && !QDir().mkpath(folder))
        return QStringLiteral("its folder cannot be made");
    m_lastFolder = folder;
    return entry.isFolder ? QString() : makeFile(entry, path);
}

QString Extraction::makeFile(const ZipEntry& entry, const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered))
        return QStringLiteral("it cannot be made: ") + file.errorString();
    const auto write = [&](const char* bytes, int size) {
        QString problem = m_limits.take(entry, size);
        if (!problem.isEmpty() || file.write(bytes, size) == size)
            return problem;
        return QStringLiteral("it cannot be written: ") + file.errorString();
    };
    QString problem = m_archive.read(entry, write);
    if (problem.isEmpty() && entry.modified.isValid())
        file.setFileTime(entry.modified, QFileDevice::FileModificationTime);
    return problem;
}

/// Moves what is in a folder into another, where folders of that name may be.
QString Extraction::moveAll(const QString& from, const QString& to)
{
    const QStringList names = QDir(from).entryList(
        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Unsorted);
    for (const QString& name : names) {
        QString problem = moveEntry(from + QLatin1Char('/') + name, to + QLatin1Char('/') + name);
        if (!problem.isEmpty())
            return problem;
    }
    return QString();
}

QString Extraction::moveEntry(const QString& from, const QString& to)
{
    const QFileInfo place(to);
    const bool isLink = place.isSymLink();
    if (QFileInfo(from).isDir()) {
        if (place.isDir() && !isLink)
            return moveAll(from, to);
        if (place.exists() || isLink)
            return isThere(to);
        return platform::moveFolder(from, to) ? QString()
                                              : aboutEntry(to, QStringLiteral("cannot be made"));
    }
    if ((place.exists() || isLink) && !m_settings.overwrites)
        return isThere(to);
    if (place.isDir() && !isLink)
        return isThere(to);
    return platform::replaceFile(from, to)
               ? QString()
               : aboutEntry(to, QStringLiteral("cannot be put into its place; is it in use?"));
}

}  // namespace velm::detail
