#include "archive/Extraction.h"

#include "archive/EntryName.h"
#include "common/platform/FolderHandle.h"
#include "common/platform/SystemError.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <new>

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
    try {
        m_content.close();  // on Windows, what is held is not removed
        m_staging.reset();
        for (int i = m_madeFolders.size() - 1; !m_isDone && i >= 0; --i)
            QDir().rmdir(m_madeFolders.at(i));
    } catch (const std::bad_alloc&) {  // an empty folder stays
        return;
    }
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
    const auto known = m_folders.constFind(key);
    if (known != m_folders.constEnd())
        return *known == folder
                   ? QString()
                   : QStringLiteral("another entry spells its folder \"%1\"").arg(*known);
    m_folders.insert(key, folder);
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
    if (problem.isEmpty())
        problem = makeStaging();
    for (const ZipEntry& entry : qAsConst(m_chosen)) {
        if (!problem.isEmpty())
            return problem;
        problem = make(entry);
        if (!problem.isEmpty())
            problem = aboutEntry(entry.name, problem);
    }
    if (problem.isEmpty())
        problem = m_content.moveInto(m_folder, m_settings.overwrites);
    m_isDone = problem.isEmpty();
    return problem;
}

/// Makes the folder to extract into, if it is not there.
QString Extraction::makeFolder()
{
    QStringList missing;
    for (QString folder = m_folder; !QFileInfo::exists(folder);) {
        missing.prepend(folder);
        const QString parent = QFileInfo(folder).path();
        if (parent == folder)
            return aboutEntry(m_folder, QStringLiteral("there is no such drive or folder"));
        folder = parent;
    }
    for (const QString& path : qAsConst(missing)) {
        const int error = platform::makeFolder(path);
        if (error != 0 && !QFileInfo(path).isDir())
            return aboutEntry(path, QStringLiteral("the folder cannot be made: ")
                                        + platform::errorText(error));
        m_madeFolders.append(path);
    }
    return QFileInfo(m_folder).isDir() ? QString()
                                       : aboutEntry(m_folder, QStringLiteral("is no folder"));
}

/// Makes the folder within it for what is not finished.
QString Extraction::makeStaging()
{
    StagingFolder::removeLeftOver(m_folder);
    m_staging = std::make_unique<StagingFolder>();
    if (!m_staging->make(m_folder))
        return aboutEntry(m_folder, QStringLiteral("no file can be made there: ")
                                        + platform::errorText(m_staging->error()));
    const QString content = m_staging->path(QStringLiteral("content"));
    const int error = platform::makeFolder(content);
    if (error != 0)
        return aboutEntry(m_folder, QStringLiteral("no folder can be made there: ")
                                        + platform::errorText(error));
    return m_content.open(content);
}

QString Extraction::make(const ZipEntry& entry)
{
    QString problem = m_limits.take(entry, 0);  // asks whether to go on
    if (!problem.isEmpty())
        return problem;
    return entry.isFolder ? m_content.addFolder(entry.name, entry.modified) : makeFile(entry);
}

QString Extraction::makeFile(const ZipEntry& entry)
{
    const auto unwritten = [](int error) {
        return error == 0 ? QString()
                          : QStringLiteral("it cannot be written: ") + platform::errorText(error);
    };
    platform::NewFile file;
    QString problem = m_content.addFile(entry.name, file);
    if (!problem.isEmpty())
        return problem;
    problem = m_archive.read(entry, [&](const char* bytes, int size) {
        QString refused = m_limits.take(entry, size);
        return refused.isEmpty() ? unwritten(file.write(bytes, size)) : refused;
    });
    if (problem.isEmpty() && entry.modified.isValid())
        file.setTime(entry.modified);
    const int error = file.close();
    return problem.isEmpty() ? unwritten(error) : problem;
}

}  // namespace velm::detail
