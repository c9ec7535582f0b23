#include "FileSet.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

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

}  // namespace

FileSet::FileSet(const QString& folder) : m_folder(QDir(folder).absolutePath()) {}

FileSet::~FileSet()
{
    m_staging.reset();
    if (m_committed)
        return;
    for (int i = m_madeFolders.size() - 1; i >= 0; --i)
        QDir().rmdir(m_madeFolders.at(i));
}

bool FileSet::prepare(QString& problem)
{
    if (!makeFolders(m_folder)) {
        problem = QStringLiteral("the folder cannot be made");
        return false;
    }
    m_staging = std::make_unique<QTemporaryDir>(m_folder + QStringLiteral("/.velm-XXXXXX"));
    problem = m_staging->errorString();
    return m_staging->isValid();
}

QString FileSet::stage(const QString& relative)
{
    m_files.append(relative);
    QString path = m_staging->filePath(QStringLiteral("new/") + relative);
    QDir().mkpath(QFileInfo(path).path());
    return path;
}

void FileSet::drop(const QString& relative)
{
    m_files.append(relative);
}

QStringList FileSet::existing() const
{
    QStringList names;
    for (const QString& file : m_files) {
        if (isTaken(QFileInfo(target(file))))
            names.append(file);
    }
    return names;
}

bool FileSet::commit(QString& failed)
{
    QStringList moved;
    for (const QString& file : qAsConst(m_files)) {
        if (!move(file)) {
            failed = file;
            putBack(moved);
            return false;
        }
        moved.append(file);
    }
    m_committed = true;
    return true;
}

bool FileSet::makeFolders(const QString& folder)
{
    const QStringList missing = missingFolders(folder);
    for (const QString& path : missing) {
        if (!QDir().mkdir(path))
            return false;
        m_madeFolders.append(path);
    }
    return true;
}

QString FileSet::target(const QString& relative) const
{
    return m_folder + QLatin1Char('/') + relative;
}

bool FileSet::move(const QString& relative)
{
    const QString destination = target(relative);
    const QFileInfo there(destination);
    if (there.isSymLink() || (there.exists() && !there.isFile()))
        return false;  // what is behind it is not ours to replace
    if (!makeFolders(QFileInfo(destination).path()))
        return false;
    const QString backup = m_staging->filePath(QStringLiteral("old/") + relative);
    QDir().mkpath(QFileInfo(backup).path());
    const bool replaces = there.exists();
    if (replaces && !QFile::rename(destination, backup))
        return false;
    const QString staged = m_staging->filePath(QStringLiteral("new/") + relative);
    if (!QFileInfo::exists(staged) || QFile::rename(staged, destination))
        return true;
    if (replaces)
        QFile::rename(backup, destination);
    return false;
}

void FileSet::putBack(const QStringList& moved)
{
    for (int i = moved.size() - 1; i >= 0; --i) {
        const QString destination = target(moved.at(i));
        QFile::remove(destination);
        const QString backup = m_staging->filePath(QStringLiteral("old/") + moved.at(i));
        if (QFileInfo::exists(backup) && !QFile::rename(backup, destination))
            m_staging->setAutoRemove(false);  // it holds the only copy
    }
}
