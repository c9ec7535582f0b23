#include "common/files/StagedFile.h"

#include <QDir>
#include <QFileInfo>

namespace velm::detail {

namespace {

/// What a path leads to. A link that leads nowhere stands for the file that it names.
QString behindLinks(const QString& path)
{
    constexpr int kMostLinks = 40;
    QFileInfo file(path);
    for (int i = 0; i < kMostLinks && file.isSymbolicLink(); ++i)
        file.setFile(file.symLinkTarget());
    return file.absoluteFilePath();
}

QString told(const QFile& file)
{
    return QStringLiteral("\"%1\": ").arg(file.fileName()) + file.errorString();
}

}  // namespace

StagedFile::StagedFile(const QString& target) : m_target(behindLinks(target)) {}

StagedFile::~StagedFile()
{
    m_file.close();  // before its folder goes
    m_staging.reset();
}

QString StagedFile::open()
{
    const QFileInfo target(m_target);
    if (target.isDir())
        return QStringLiteral("\"%1\" is a folder").arg(m_target);
    if (!target.dir().exists())
        return QStringLiteral("there is no folder \"%1\"").arg(target.path());
    if (target.exists() && !target.isWritable())
        return QStringLiteral("\"%1\" is not to be written").arg(m_target);
    m_isBeside = (!target.exists() || target.isFile()) && makeIn(target.path());
    if (m_isBeside || (target.exists() && makeIn(QDir::tempPath())))
        return QString();
    return QStringLiteral("no file can be made in \"%1\"").arg(target.path());
}

bool StagedFile::makeIn(const QString& folder)
{
    StagingFolder::removeLeftOver(folder);
    m_staging = std::make_unique<StagingFolder>();
    if (!m_staging->make(folder))
        return false;
    m_file.setFileName(m_staging->path(QStringLiteral("file")));
    return m_file.open(QIODevice::ReadWrite | QIODevice::NewOnly);
}

QString StagedFile::write(const char* bytes, qint64 size)
{
    return m_file.write(bytes, size) == size ? QString() : told(m_file);
}

QString StagedFile::commit(Replace replace)
{
    if (!m_file.flush())
        return told(m_file);
    QString problem;
    if (!m_isBeside) {
        m_isTaken = replace == Replace::No;
        if (!m_isTaken)
            return copyIntoPlace();
        problem = QStringLiteral("it is there already");
    } else {
        m_file.close();
        AtomicFile file(m_target, m_file.fileName());
        file.commit(problem, replace);
        m_isTaken = file.isTaken();
    }
    return problem.isEmpty() ? problem : QStringLiteral("\"%1\": ").arg(m_target) + problem;
}

QString StagedFile::copyIntoPlace()
{
    QFile target(m_target);
    if (!target.open(QIODevice::WriteOnly | QIODevice::Truncate) || !m_file.seek(0))
        return told(target);
    QByteArray part(1 << 16, Qt::Uninitialized);
    for (qint64 got = m_file.read(part.data(), part.size()); got != 0;
         got = m_file.read(part.data(), part.size())) {
        if (got < 0)
            return told(m_file);
        if (target.write(part.constData(), got) != got)
            return told(target);
    }
    return target.flush() ? QString() : told(target);
}

}  // namespace velm::detail
