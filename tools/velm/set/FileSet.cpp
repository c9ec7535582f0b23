#include "set/FileSet.h"

#include "set/OldDatabase.h"

#include "common/files/AtomicFile.h"
#include "common/platform/FileSystem.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using velm::detail::AtomicFile;
using velm::detail::FileLock;
using velm::detail::StagingFolder;
namespace platform = velm::detail::platform;

namespace {

constexpr int kOtherRunMs = 60000;

/// The folders that have to be made so that @p folder exists, the outermost first.
QStringList missingFolders(const QString& folder)
{
    QStringList missing;
    QString path = folder;
    while (!QFileInfo::exists(path)) {
        missing.prepend(path);
        const QString parent = QFileInfo(path).absolutePath();
        if (parent == path)
            break;  // a drive that does not exist
        path = parent;
    }
    return missing;
}

/// Whether a name is in use, if only by a link to nothing.
bool isTaken(const QFileInfo& file)
{
    return file.exists() || file.isSymLink();
}

QString inFile(const QString& file, const QString& problem)
{
    return QLatin1Char('"') + QDir::toNativeSeparators(file) + QStringLiteral("\": ") + problem;
}

}  // namespace

FileSet::FileSet(const QString& folder) : m_folder(QDir(folder).absolutePath()) {}

FileSet::~FileSet()
{
    m_oldDatabases.clear();
    m_staging.reset();
    m_lock.reset();
    if (m_committed)
        return;
    for (int i = m_madeFolders.size() - 1; i >= 0; --i)
        QDir().rmdir(m_madeFolders.at(i));
}

bool FileSet::prepare(QString& problem)
{
    const QString parent = QFileInfo(m_folder).absolutePath();
    StagingFolder::removeLeftOver(parent);
    StagingFolder::removeLeftOver(m_folder);
    const QString place = QFileInfo(m_folder).isDir() ? m_folder : parent;
    m_staging = std::make_unique<StagingFolder>();
    problem.clear();
    if (isTaken(QFileInfo(m_folder)) && !QFileInfo(m_folder).isDir())
        problem = inFile(m_folder, QStringLiteral("it is no folder"));
    else if (!makeFolders(place))
        problem = inFile(place, QStringLiteral("the folder cannot be made"));
    else if (!m_staging->make(place))
        problem = inFile(place, QStringLiteral("the folder cannot be written"));
    return problem.isEmpty();
}

QString FileSet::stage(const QString& name)
{
    m_files.append(name);
    return staged(name);
}

QString FileSet::stageDatabase(const QString& name)
{
    m_databases.append(name);
    m_sideFiles += OldDatabase::sideFiles(name);
    return stage(name);
}

bool FileSet::lock(QString& problem)
{
    do {  // another run may make the folder while this one waits
        m_isNew = !QFileInfo::exists(m_folder);
        const QString file =
            StagingFolder::commitLock(m_isNew ? QFileInfo(m_folder).absolutePath() : m_folder);
        m_lock = std::make_unique<FileLock>(file);
        if (!m_lock->lock(kOtherRunMs)) {
            problem = inFile(file, m_lock->isBusy() ? QStringLiteral("another run holds it")
                                                    : QStringLiteral("it cannot be made"));
            return false;
        }
    } while (m_isNew == QFileInfo::exists(m_folder));
    return true;
}

QStringList FileSet::existing() const
{
    QStringList names;
    for (const QString& file : m_files + m_sideFiles) {
        if (isTaken(QFileInfo(target(file))))
            names.append(file);
    }
    return names;
}

bool FileSet::commit(QString& problem)
{
    m_committed = m_isNew ? commitFolder(problem) : commitFiles(problem);
    m_oldDatabases.clear();
    return m_committed;
}

bool FileSet::makeFolders(const QString& folder)
{
    const QStringList missing = missingFolders(folder);
    for (const QString& path : missing) {
        if (!QDir().mkdir(path) && !QFileInfo(path).isDir())
            return false;
        m_madeFolders.append(path);
    }
    return true;
}

QString FileSet::target(const QString& name) const
{
    return m_folder + QLatin1Char('/') + name;
}

QString FileSet::staged(const QString& name) const
{
    return m_staging->path(QStringLiteral("new/") + name);
}

QString FileSet::spare(const QString& name) const
{
    return m_staging->path(QStringLiteral("old/") + name);
}

bool FileSet::commitFolder(QString& problem)
{
    for (const QString& file : qAsConst(m_files)) {
        if (!platform::syncFile(staged(file))) {
            problem = inFile(target(file), QStringLiteral("it cannot be brought to the disk"));
            return false;
        }
    }
    const QString made = m_staging->path(QStringLiteral("new"));
    platform::syncFolder(made);
    if (!platform::moveFolder(made, m_folder)) {
        problem = inFile(m_folder, QStringLiteral("the folder cannot be made"));
        return false;
    }
    platform::syncFolder(QFileInfo(m_folder).absolutePath());
    return true;
}

bool FileSet::commitFiles(QString& problem)
{
    if (!mayReplace(problem))
        return false;
    if (!platform::replacesOpenFiles())
        m_oldDatabases.clear();  // a program that comes between now keeps it from being replaced
    if (moveSideFiles(problem) && moveFiles(problem))
        return true;
    putBack(problem);
    return false;
}

bool FileSet::mayReplace(QString& problem)
{
    for (const QString& file : m_files + m_sideFiles) {
        if (!AtomicFile::canReplace(target(file))) {
            problem = inFile(target(file), QStringLiteral("it is a link, a folder or a device"));
            return false;
        }
    }
    for (const QString& file : qAsConst(m_databases)) {
        m_oldDatabases.push_back(std::make_unique<OldDatabase>(target(file)));
        const QString reason = m_oldDatabases.back()->settle();
        if (!reason.isEmpty()) {
            problem = inFile(target(file), reason);
            return false;
        }
    }
    return true;
}

bool FileSet::moveSideFiles(QString& problem)
{
    for (const QString& file : qAsConst(m_sideFiles)) {
        if (!QFileInfo::exists(target(file)))
            continue;
        if (!platform::replaceFile(target(file), spare(file))) {
            problem = inFile(target(file), QStringLiteral("it cannot be removed"));
            return false;
        }
        m_movedAway.append(file);
    }
    return true;
}

bool FileSet::moveFiles(QString& problem)
{
    for (const QString& file : qAsConst(m_files)) {
        AtomicFile replacement(target(file), staged(file), spare(file));
        if (!replacement.commit(problem)) {
            problem = inFile(target(file), problem);
            return false;
        }
        m_replaced.push_back(replacement);
    }
    return true;
}

void FileSet::putBack(QString& problem)
{
    bool whole = true;
    for (auto it = m_replaced.rbegin(); it != m_replaced.rend(); ++it)
        whole = it->undo() && whole;
    for (const QString& file : qAsConst(m_movedAway))
        whole = platform::replaceFile(spare(file), target(file)) && whole;
    if (whole)
        return;
    m_staging->keep();  // it holds the only copy
    problem += QStringLiteral("; files that were there are left in \"%1\"")
                   .arg(QDir::toNativeSeparators(m_staging->path(QStringLiteral("old"))));
}
