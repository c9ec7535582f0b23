#include "common/files/StagingFolder.h"

#include "common/platform/FolderRemoval.h"
#include "common/platform/SystemError.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QUuid>

#include <utility>

namespace velm::detail {

namespace {

constexpr int kOtherLookMs = 2000;  // another run may look just now whether it is left over

QString lockSuffix()
{
    return QStringLiteral(".lock");
}

}  // namespace

StagingFolder::StagingFolder() = default;

StagingFolder::~StagingFolder()
{
    if (m_lock && !platform::removeFolder(m_path))  // while the lock is held
        m_lock->abandon();                          // the next run finds both
}

QString StagingFolder::commitLock(const QString& folder)
{
    return folder + QStringLiteral("/.velm-commit") + lockSuffix();
}

bool StagingFolder::isStagingName(const QString& name)
{
    static const QRegularExpression ours(
        QStringLiteral("\\A\\.velm-([0-9a-f]{8}(\\.lock)?|commit\\.lock)\\z"));
    return ours.match(name).hasMatch();
}

void StagingFolder::removeLeftOver(const QString& folder)
{
    const QFileInfoList locks = QDir(folder).entryInfoList(
        {QStringLiteral(".velm-*") + lockSuffix()}, QDir::Files | QDir::Hidden | QDir::NoSymLinks);
    for (const QFileInfo& file : locks) {
        QString path = file.absoluteFilePath();
        FileLock lock(path);
        if (!isStagingName(file.fileName()) || !platform::isOwn(path) || !lock.tryLock())
            continue;
        path.chop(lockSuffix().size());
        if (!platform::removeFolder(path))
            lock.abandon();
    }
}

bool StagingFolder::make(const QString& folder)
{
    m_path =
        folder + QStringLiteral("/.velm-") + QUuid::createUuid().toString(QUuid::Id128).left(8);
    auto lock = std::make_unique<FileLock>(m_path + lockSuffix());
    if (!lock->lock(kOtherLookMs)) {
        m_error = lock->error();
        return false;
    }
    m_lock = std::move(lock);
    if (platform::makePrivateFolder(m_path))
        return true;
    m_error = platform::lastError();
    return false;
}

QString StagingFolder::path(const QString& relative) const
{
    QString path = m_path + QLatin1Char('/') + relative;
    QDir().mkpath(QFileInfo(path).path());
    return path;
}

void StagingFolder::keep()
{
    m_lock.reset();
}

}  // namespace velm::detail
