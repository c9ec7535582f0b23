#include "CVelmCompress.h"

#include "archive/CompressSettings.h"
#include "archive/Extraction.h"
#include "archive/ReadLimits.h"
#include "archive/SourceTree.h"
#include "archive/ZipReader.h"
#include "archive/ZipWriter.h"
#include "common/files/StagedFile.h"
#include "common/files/SystemFile.h"
#include "common/platform/FolderContent.h"

#include <QFileInfo>

#include <algorithm>
#include <limits>
#include <new>

using namespace velm::detail;

namespace {

constexpr int kUsualLevel = 6;
constexpr int kBestLevel = 9;

/// Why a path is not opened: a pipe would be waited for.
QString whyNoArchive(const QString& path)
{
    const platform::EntryKind kind = platform::lookAt(path).kind;
    return kind == platform::EntryKind::Other
               ? QStringLiteral("is no ordinary file, as an archive has to be")
               : QString();
}

/// An archive that is open, and its entries.
struct OpenArchive
{
    SystemFile file;
    ZipReader reader{file};
    QVector<ZipEntry> entries;

    /// @return what is wrong; empty if nothing is
    QString open(const QString& path)
    {
        const QString unfit = whyNoArchive(path);
        if (!unfit.isEmpty())
            return aboutEntry(path, unfit);
        file.setFileName(path);
        if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
            return aboutEntry(path, file.errorString());
        QString problem = reader.open();
        if (problem.isEmpty())
            problem = reader.readEntries(entries);
        return told(problem.isEmpty() ? problem : aboutEntry(path, problem));
    }

    /// What is wrong: the disk, if that has failed.
    QString told(const QString& problem) const
    {
        return problem.isEmpty() || file.systemError() == 0
                   ? problem
                   : aboutEntry(file.fileName(), file.errorString());
    }
};

/// Adds one file or folder, and tells the progress of all.
QString addSource(ZipWriter& archive, const Source& source, const ZipWriter::Progress& progress)
{
    if (source.isFolder)
        return archive.addFolder(source.name, source.modified);
    SystemFile file(source.path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return file.errorString();
    return archive.addFile(source.name, source.modified, file, source.size, progress);
}

QString writeArchive(const SourceTree& tree, const CompressSettings& settings, QFile& file)
{
    ZipWriter archive(file, settings.level);
    QString problem = archive.open();
    qint64 done = 0;
    for (const Source& source : tree.sources()) {
        const auto goOn = [&](qint64 bytes) {
            done += bytes;
            const bool goesOn =
                !settings.progress || settings.progress(source.name, done, tree.size());
            return goesOn ? QString() : QStringLiteral("cancelled");
        };
        if (!problem.isEmpty())
            break;
        problem = goOn(0);
        if (problem.isEmpty())
            problem = addSource(archive, source, goOn);
        if (!problem.isEmpty())
            problem = aboutEntry(source.path, problem);
    }
    return problem.isEmpty() ? archive.close() : problem;
}

QString testEntry(OpenArchive& archive, const ZipEntry& entry, ReadLimits& limits)
{
    QString problem = limits.admit(entry);
    if (problem.isEmpty())
        problem = limits.take(entry, 0);  // asks whether to go on
    if (problem.isEmpty())
        problem = archive.reader.read(
            entry, [&](const char*, int size) { return limits.take(entry, size); });
    return problem.isEmpty() ? problem : aboutEntry(entry.name, problem);
}

QString readContent(OpenArchive& archive, const ZipEntry& entry, ReadLimits& limits,
                    QByteArray& content)
{
    constexpr qint64 kMost = std::numeric_limits<int>::max() - 64;
    QString problem = limits.admit(entry);
    if (problem.isEmpty() && entry.size > kMost)
        problem = QStringLiteral("it is too large to be read into memory");
    if (problem.isEmpty())
        problem = limits.take(entry, 0);
    if (problem.isEmpty())
        problem = archive.reader.read(entry, [&](const char* bytes, int size) {
            if (size > kMost - content.size())
                return QStringLiteral("it is too large to be read into memory");
            content.append(bytes, size);
            return limits.take(entry, size);
        });
    return problem.isEmpty() ? problem : aboutEntry(entry.name, problem);
}

}  // namespace

CVelmCompress::CVelmCompress() : m_settings(std::make_unique<CompressSettings>()) {}

CVelmCompress::~CVelmCompress() = default;

void CVelmCompress::setProgress(const Progress& progress)
{
    m_settings->progress = progress;
}

void CVelmCompress::setLevel(int level)
{
    m_settings->level = level >= 0 && level <= kBestLevel ? level : kUsualLevel;
}

void CVelmCompress::setOverwrites(bool overwrites)
{
    m_settings->overwrites = overwrites;
}

void CVelmCompress::setMostBytes(qint64 bytes)
{
    m_settings->mostBytes = std::max<qint64>(0, bytes);
}

void CVelmCompress::setMostRatio(int ratio)
{
    m_settings->mostRatio = std::max(1, ratio);
}

QStringList CVelmCompress::leftOut() const
{
    return m_leftOut;
}

QString CVelmCompress::errorText() const
{
    return m_errorText;
}

/// Does something that answers what went wrong.
template<class Operation>
bool CVelmCompress::run(const Operation& operation)
{
    m_errorText.clear();
    try {
        m_errorText = operation();
    } catch (const std::bad_alloc&) {
        m_errorText = QStringLiteral("out of memory");
    }
    return m_errorText.isEmpty();
}

bool CVelmCompress::compress(const QStringList& paths, const QString& archive)
{
    m_leftOut.clear();
    return run([&]() -> QString {
        if (paths.isEmpty())
            return QStringLiteral("nothing is given to be compressed");
        if (archive.isEmpty())
            return QStringLiteral("no name is given for the archive");
        if (!m_settings->overwrites && QFileInfo::exists(archive))
            return aboutEntry(archive, QStringLiteral("is there already"));
        SourceTree tree(archive, *m_settings);
        for (const QString& path : paths) {
            QString problem = tree.add(path);
            if (!problem.isEmpty())
                return problem;
        }
        m_leftOut = tree.leftOut();
        StagedFile file(archive);
        QString problem = file.open();
        if (problem.isEmpty())
            problem = writeArchive(tree, *m_settings, file.file());
        if (!problem.isEmpty())
            return problem;
        return file.commit(m_settings->overwrites ? Replace::Yes : Replace::No);
    });
}

bool CVelmCompress::extract(const QString& archive, const QString& folder, const QStringList& names)
{
    return run([&]() -> QString {
        if (folder.isEmpty())
            return QStringLiteral("no folder is given to extract into");
        OpenArchive from;
        QString problem = from.open(archive);
        if (!problem.isEmpty())
            return problem;
        Extraction extraction(from.reader, *m_settings, folder);
        problem = extraction.choose(from.entries, names);
        return from.told(problem.isEmpty() ? extraction.extract() : problem);
    });
}

bool CVelmCompress::list(const QString& archive, QVector<VelmArchiveEntry>& entries)
{
    return run([&]() -> QString {
        OpenArchive from;
        QString problem = from.open(archive);
        if (!problem.isEmpty())
            return problem;
        QVector<VelmArchiveEntry> found;
        found.reserve(from.entries.size());
        for (const ZipEntry& entry : qAsConst(from.entries)) {
            found.append({entry.name, entry.size, entry.compressedSize,
                          entry.modified.toLocalTime(), entry.crc, entry.isFolder,
                          entry.isEncrypted});
        }
        entries = found;
        return QString();
    });
}

bool CVelmCompress::test(const QString& archive)
{
    return run([&]() -> QString {
        OpenArchive from;
        QString problem = from.open(archive);
        ReadLimits limits(*m_settings);
        for (const ZipEntry& entry : qAsConst(from.entries)) {
            if (problem.isEmpty())
                problem = testEntry(from, entry, limits);
        }
        return from.told(problem);
    });
}

bool CVelmCompress::readEntry(const QString& archive, const QString& name, QByteArray& content)
{
    return run([&]() -> QString {
        OpenArchive from;
        QString problem = from.open(archive);
        if (!problem.isEmpty())
            return problem;
        const auto entry =
            std::find_if(from.entries.cbegin(), from.entries.cend(),
                         [&name](const ZipEntry& candidate) { return candidate.name == name; });
        if (entry == from.entries.cend())
            return aboutEntry(name, QStringLiteral("there is no such entry"));
        QByteArray bytes;
        ReadLimits limits(*m_settings);
        QString unread = readContent(from, *entry, limits, bytes);
        if (unread.isEmpty())
            content = bytes;
        return from.told(unread);
    });
}
