#include "CVelmCompress.h"
#include "fuzz/Expect.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QTemporaryDir>
#include <QTextCodec>

#include <algorithm>
#include <map>

#include <zlib.h>

namespace {

using Tree = std::map<QString, QByteArray>;

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeFile(const QString& path, const QByteArray& content)
{
    QFile file(path);
    expect(file.open(QIODevice::WriteOnly) && file.write(content) == content.size(), "a disk");
}

/// What lies below a folder, but not behind links; the names of folders end with "/".
Tree treeOf(const QString& folder)
{
    Tree found;
    QDirIterator entries(folder,
                         QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        const QString path = entries.next(), name = path.mid(folder.size() + 1);
        const QFileInfo entry = entries.fileInfo();
        if (entry.isSymLink())
            found[name] = "-> " + entry.symLinkTarget().toUtf8();
        else if (entry.isDir())
            found[name + u'/'] = QByteArray();
        else
            found[name] = contentOf(path);
    }
    return found;
}

/// A folder to extract into, with what an archive may come upon in it, and folders around it that
/// no archive is to reach.
class Place
{
public:
    Place()
    {
        QDir().mkpath(m_root.filePath(QStringLiteral("beside")));
        makeTarget();
        writeFile(m_archive, QByteArray());
        m_untouched = treeOf(m_target);
        m_untouchedAround = around();
    }

    QString archive() const { return m_archive; }
    QString target() const { return m_target; }
    const Tree& untouched() const { return m_untouched; }
    const QStringList& untouchedAround() const { return m_untouchedAround; }

    void makeTarget() const
    {
        QDir(m_target).removeRecursively();
        QDir().mkpath(m_target + QStringLiteral("/folder"));
        QFile::link(m_root.filePath(QStringLiteral("beside")), m_target + QStringLiteral("/link"));
        writeFile(m_target + QStringLiteral("/kept"), "kept");
    }

    /// The names outside of the target.
    QStringList around() const
    {
        QStringList names;
        for (const char* folder : {".", "beside", "deep", "deep/deeper"})
            names += QDir(m_root.filePath(QLatin1String(folder)))
                         .entryList(QDir::AllEntries | QDir::Hidden | QDir::System
                                    | QDir::NoDotAndDotDot)
                     + QStringList(QStringLiteral("|"));
        return names;
    }

private:
    QTemporaryDir m_root;
    QString m_archive = m_root.filePath(QStringLiteral("archive.zip"));
    QString m_target = m_root.filePath(QStringLiteral("deep/deeper/target"));
    Tree m_untouched;
    QStringList m_untouchedAround;
};

bool isWhole(const VelmArchiveEntry& entry, const QByteArray& content)
{
    const uLong crc = crc32(0, reinterpret_cast<const Bytef*>(content.constData()),
                            static_cast<uInt>(content.size()));
    return content.size() == entry.size && crc == entry.crc;
}

/// The first entry of that name, which readEntry() reads.
const VelmArchiveEntry& firstOf(const QVector<VelmArchiveEntry>& entries, const QString& name)
{
    return *std::find_if(entries.begin(), entries.end(),
                         [&name](const VelmArchiveEntry& entry) { return entry.name == name; });
}

void checkReading(CVelmCompress& zip, const QString& archive,
                  const QVector<VelmArchiveEntry>& entries, bool isSound)
{
    constexpr int kMostRead = 4;
    for (int i = 0; i < std::min(kMostRead, entries.size()); ++i) {
        const VelmArchiveEntry& entry = firstOf(entries, entries.at(i).name);
        QByteArray content;
        const bool isRead = zip.readEntry(archive, entry.name, content);
        expect(isRead || !isSound, "what test() finds good can be read");
        expect(!isRead || isWhole(entry, content), "what is read is what was stored");
    }
}

/// What is in the folder and was not there before is an entry, and the other way round.
void checkExtracted(const QString& folder, const Tree& before,
                    const QVector<VelmArchiveEntry>& entries, bool isAll)
{
    Tree made = treeOf(folder);
    for (const auto& [name, content] : before) {
        const auto file = made.find(name);
        if (file != made.end() && file->second == content)
            made.erase(file);
    }
    for (const VelmArchiveEntry& entry : entries) {
        const auto file = made.find(entry.name);
        const bool isThere = file != made.end() || before.count(entry.name) > 0;
        expect(isThere || !isAll, "every entry is there");
        if (file == made.end() || entry.isFolder)
            continue;
        expect(isWhole(entry, file->second), "what is extracted is what was stored");
        made.erase(file);
    }
    for (const auto& file : made)
        expect(file.first.endsWith(u'/'), "only entries and their folders are there");
}

/// Extracts all or one, over files or not, into the folder or one that is to be made in it.
void checkExtraction(CVelmCompress& zip, const Place& place,
                     const QVector<VelmArchiveEntry>& entries, size_t choice)
{
    const bool isAll = choice % 4 < 3 || entries.isEmpty();
    const bool isNew = choice % 8 < 2;
    const QString folder = place.target() + (isNew ? QStringLiteral("/new/one") : QString());
    zip.setOverwrites(choice % 2 == 1);
    const bool isDone = zip.extract(place.archive(), folder,
                                    isAll ? QStringList() : QStringList(entries.constLast().name));
    expect(place.around() == place.untouchedAround(), "nothing is written around the folder");
    if (!isDone) {
        expect(treeOf(place.target()) == place.untouched(),
               "what fails leaves the folder as it was");
        return;
    }
    checkExtracted(folder, isNew ? Tree() : place.untouched(), entries, isAll);
    if (isNew || !entries.isEmpty())
        place.makeTarget();
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));  // of file names
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const Place place;
    writeFile(place.archive(),
              QByteArray::fromRawData(reinterpret_cast<const char*>(data), static_cast<int>(size)));
    CVelmCompress zip;
    zip.setMostBytes(2 << 20);
    QVector<VelmArchiveEntry> entries;
    const bool isListed = zip.list(place.archive(), entries);
    const bool isSound = zip.test(place.archive());
    expect(isListed || !isSound, "what test() finds good can be listed");
    checkReading(zip, place.archive(), entries, isSound);
    checkExtraction(zip, place, entries, size);
    return 0;
}
