#include "common/files/AtomicFile.h"

#include "common/platform/FileSystem.h"
#include "common/platform/SystemError.h"

#include <QFile>
#include <QFileInfo>

namespace velm::detail {

bool AtomicFile::canReplace(const QString& path)
{
    const QFileInfo there(path);
    return !there.isSymLink() && (!there.exists() || there.isFile());
}

AtomicFile::AtomicFile(const QString& target, const QString& made, const QString& spare)
    : m_target(target), m_made(made), m_spare(spare)
{}

bool AtomicFile::commit(QString& problem, Replace replace)
{
    problem.clear();
    const bool isPlaced = replace == Replace::No ? claim(problem) : place(problem);
    if (isPlaced)
        platform::syncFolder(QFileInfo(m_target).path());
    return isPlaced;
}

/// Puts the file into its place, whatever ordinary file is there.
bool AtomicFile::place(QString& problem)
{
    m_replaced = QFileInfo::exists(m_target);
    if (!canReplace(m_target))
        problem = QStringLiteral("it is a link, a folder or a device");
    else if (m_replaced && !keepOld())
        problem = QStringLiteral("the file that is there cannot be kept for the case of a failure");
    if (!problem.isEmpty())
        return false;
    if (!sync(problem))
        return false;
    if (m_replaced)
        platform::copyAccess(m_target, m_made);
    if (platform::replaceFile(m_made, m_target))
        return true;
    problem = QStringLiteral("it cannot be moved into its place: ") + platform::lastErrorText();
    return false;
}

/// Puts the file into its place if that is free.
bool AtomicFile::claim(QString& problem)
{
    if (!sync(problem))
        return false;
    const platform::Placed placed = platform::placeFile(m_made, m_target);
    if (placed == platform::Placed::Failed)
        problem = QStringLiteral("it cannot be moved into its place: ") + platform::lastErrorText();
    m_isTaken = placed == platform::Placed::ThereAlready;
    if (m_isTaken)
        problem = QStringLiteral("it is there already");
    return placed == platform::Placed::Yes;
}

bool AtomicFile::sync(QString& problem) const
{
    const bool isOnDisk = platform::syncFile(m_made);
    if (!isOnDisk)
        problem = QStringLiteral("its content cannot be brought to the disk: ")
                  + platform::lastErrorText();
    return isOnDisk;
}

bool AtomicFile::undo()
{
    return m_replaced ? platform::replaceFile(m_spare, m_target) : platform::removeFile(m_target);
}

bool AtomicFile::keepOld() const
{
    return m_spare.isEmpty() || platform::linkFile(m_target, m_spare)
           || (QFile::copy(m_target, m_spare) && platform::syncFile(m_spare));
}

}  // namespace velm::detail
