#pragma once

#include "VelmCommonGlobal.h"

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>
#include <memory>

namespace velm::detail {
struct CompressSettings;
}

/// What an archive says about one of its entries.
struct VelmArchiveEntry
{
    QString name;               ///< with "/" between folders, at the end of a folder's name, too
    qint64 size = 0;            ///< in bytes
    qint64 compressedSize = 0;  ///< in bytes
    QDateTime modified;         ///< in local time; invalid if the archive does not tell
    quint32 crc = 0;            ///< CRC-32 of the content
    bool isFolder = false;      ///< a folder, which has no content
    bool isEncrypted = false;   ///< such an entry is listed, and not read
};

/// Zip archives: makes, lists, tests and extracts them. Names are written as UTF-8, marked so;
/// they are read as UTF-8 if they are valid as such, else as GBK, or as the field for such names
/// tells. Archives and entries may be larger than 4 GiB, and there may be more than 65,535 entries;
/// 1,000,000 is the most. Memory depends on their number and names, not on sizes, but for
/// readEntry().
///
/// An archive takes its place when it is finished and has reached the disk; what is extracted when
/// all of it is there, file by file, without waiting for the disk: a power failure soon afterwards
/// may take some of it, and the archive is still there.
/// One operation at a time for each object; objects are independent of each other.
class VELMCOMMON_EXPORT CVelmCompress
{
public:
    CVelmCompress();
    virtual ~CVelmCompress();
    Q_DISABLE_COPY(CVelmCompress)

    /// Called at least once for each entry with its name, the bytes that are done and those that
    /// there are, all before compression; false breaks off. While compress() looks for the files,
    /// none are done, and there are those found so far.
    using Progress = std::function<bool(const QString& name, qint64 done, qint64 total)>;
    /// Tells @p progress from now on; none ends that.
    void setProgress(const Progress& progress);

    /// How hard to compress, 0 (stored) to 9; 6 unless told, and for any other number.
    void setLevel(int level);

    /// Whether compress() and extract() replace files that are there. They do not unless told.
    void setOverwrites(bool overwrites);

    /// The most bytes that one operation takes out of an archive; 4 GiB unless told.
    void setMostBytes(qint64 bytes);

    /// How many times larger than in the archive may be what one operation takes out of it, of more
    /// than 1 MiB: each entry, and all of them; 100 unless told. Data whose ratio is greater were
    /// made to harm, most often.
    void setMostRatio(int ratio);

    /// Makes an archive of files and folders, with all that is in these. Each is found in the
    /// archive under its own name, with times. Links to files are stored as what they lead to.
    /// The archive itself is left out, and so are staging folders (".velm-" and eight digits, with
    /// ".lock"). Refused are names that are none on every system or no text in the local encoding,
    /// folders that cannot be listed, and files that change while they are read.
    /// False leaves what was there; unless overwriting is allowed, also what came there meanwhile.
    bool compress(const QStringList& paths, const QString& archive);
    /// What the last compress() has left out but for these: links to folders, links that lead
    /// nowhere, and what is neither file nor folder.
    QStringList leftOut() const;

    /// Extracts an archive, or those of its entries that @p names names (a folder's with all that
    /// is in it), into a folder, which is made if need be. Refused, before anything is written, are
    /// an archive with a name that leads out of the folder or is none on every system (drives,
    /// absolute paths, "..", names of devices), links, entries that are encrypted or of the same
    /// name, folders of one name in two spellings, and files that are there unless overwriting
    /// is allowed. A "\" counts as "/". Folders that are made get their times, too.
    /// False leaves the folder as it was; only a failure while the finished files are moved into
    /// their places, such as a file that came there meanwhile, can leave some of them there.
    bool extract(const QString& archive, const QString& folder,
                 const QStringList& names = QStringList());

    /// The entries in the order of the archive. False leaves @p entries as they were.
    bool list(const QString& archive, QVector<VelmArchiveEntry>& entries);

    /// Whether every entry can be read and is what was stored.
    bool test(const QString& archive);

    /// The content of one entry. False leaves @p content as it was.
    bool readEntry(const QString& archive, const QString& name, QByteArray& content);

    /// Why the last operation failed, in English; empty if it did not.
    QString errorText() const;

private:
    template<class Operation>
    bool run(const Operation& operation);

    std::unique_ptr<velm::detail::CompressSettings> m_settings;
    QStringList m_leftOut;
    QString m_errorText;
};
