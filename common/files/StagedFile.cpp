#include "common/files/StagedFile.h"

#include "common/platform/FileCalls.h"
#include "common/platform/FileSystem.h"
#include "common/platform/SystemError.h"

#include <QDir>
#include <QFileInfo>

namespace velm::detail {

namespace {

/// A path by the folder that really holds the file.
QString inRealFolder(const QString& path)
{
    const QFileInfo file(path);
    const QString folder = QDir(file.path()).canonicalPath();
    return folder.isEmpty() || file.fileName().isEmpty() ? file.absoluteFilePath()
                                                         : QDir(folder).filePath(file.fileName());
}

/// What a path leads to. A link that leads nowhere stands for the file that it names.
QString behindLinks(const QString& path)
{
    constexpr int kMostLinks = 40;
    QString end = inRealFolder(path);
    QString next = platform::linkTarget(end);
    for (int i = 0; i < kMostLinks && !next.isEmpty(); ++i) {
        end = inRealFolder(next);
        next = platform::linkTarget(end);
    }
    return end;
}

/// Whether @p target can be replaced by another file: it is an ordinary one under its own name.
/// What the system calls an open pipe, in /proc say, is no path.
bool isReplaceable(const QString& path, const QString& target)
{
    return !QFileInfo::exists(path)
           || (QFileInfo(target).isFile()
               && platform::fileIdentity(path) == platform::fileIdentity(target));
}

/// @return what went wrong; empty if nothing did
QString copyAll(QFile& from, QFile& to)
{
    QByteArray part(1 << 16, Qt::Uninitialized);
    qint64 got = from.seek(0) ? from.read(part.data(), part.size()) : -1;
    for (; got > 0; got = from.read(part.data(), part.size())) {
        if (to.write(part.constData(), got) != got)
            return to.errorString();
    }
    return got < 0 ? from.errorString() : QString();
}

}  // namespace

StagedFile::StagedFile(const QString& target) : m_target(target) {}

StagedFile::~StagedFile()
{
    m_file.close();  // before its folder goes
    m_staging.reset();
}

QString StagedFile::told(const QString& problem) const
{
    return QStringLiteral("\"%1\": ").arg(m_target) + problem;
}

QString StagedFile::open()
{
    if (m_target.isEmpty())
        return QStringLiteral("a file has no name");
    const QString end = behindLinks(m_target);
    const bool isReplaced = isReplaceable(m_target, end);
    if (isReplaced)
        m_target = end;
    const QFileInfo target(m_target);
    if (target.isDir())
        return told(QStringLiteral("it is a folder"));
    if (!target.exists() && !target.dir().exists())
        return told(QStringLiteral("there is no such folder"));
    if (target.exists() && !target.isWritable())
        return told(QStringLiteral("it is not to be written"));
    QString folder = isReplaced ? target.path() : QDir::tempPath();
    int error = makeIn(folder);
    m_isBeside = isReplaced && error == 0;
    if (isReplaced && platform::isRefusal(error) && target.exists()) {
        folder = QDir::tempPath();
        error = makeIn(folder);
    }
    return error == 0 ? QString()
                      : QStringLiteral("no file can be made in \"%1\": ").arg(folder)
                            + platform::errorText(error);
}

/// @return platform::lastError(); 0 if nothing went wrong
int StagedFile::makeIn(const QString& folder)
{
    StagingFolder::removeLeftOver(folder);
    m_staging = std::make_unique<StagingFolder>();
    if (!m_staging->make(folder))
        return m_staging->error();
    m_file.setFileName(m_staging->path(QStringLiteral("file")));
    return m_file.open(QIODevice::ReadWrite | QIODevice::NewOnly) ? 0 : m_file.systemError();
}

QString StagedFile::write(const char* bytes, qint64 size)
{
    return m_file.write(bytes, size) == size ? QString() : told(m_file.errorString());
}

QString StagedFile::commit(Replace replace)
{
    if (m_isBeside)
        return moveIntoPlace(replace);
    m_isTaken = replace == Replace::No;
    return m_isTaken ? told(QStringLiteral("it is there already")) : copyIntoPlace();
}

QString StagedFile::moveIntoPlace(Replace replace)
{
    // Some file systems tell what went wrong only to the one who wrote.
    if (!platform::syncOpenFile(m_file.handle()))
        return told(platform::lastErrorText());
    m_file.close();
    if (!m_accessOf.isEmpty())
        platform::limitAccess(m_accessOf, m_file.fileName());
    AtomicFile file(m_target, m_file.fileName());
    QString problem;
    const bool isPlaced = file.commit(problem, replace);
    m_isTaken = file.isTaken();
    return isPlaced ? QString() : told(problem);
}

QString StagedFile::copyIntoPlace()
{
    const qint64 size = m_file.size();
    const bool isOrdinary = QFileInfo(m_target).isFile();
    SystemFile target(m_target);
    if (!target.open(QIODevice::WriteOnly))
        return told(target.errorString());
    if (isOrdinary && !platform::growFile(target.handle(), size))
        return told(platform::lastErrorText());
    QString problem = copyAll(m_file, target);
    if (problem.isEmpty() && isOrdinary
        && !(platform::resizeFile(target.handle(), size)
             && platform::syncOpenFile(target.handle())))
        problem = platform::lastErrorText();
    return problem.isEmpty() ? problem : told(QStringLiteral("it is written in part: ") + problem);
}

}  // namespace velm::detail
