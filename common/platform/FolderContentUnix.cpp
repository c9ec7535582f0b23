#include "common/platform/FolderContent.h"

#include <QFile>

#include <cerrno>
#include <memory>

#include <dirent.h>
#include <sys/stat.h>

namespace velm::detail::platform {

namespace {

/// A name of which each byte beyond ASCII is written as "\xNN".
QString escaped(const QByteArray& name)
{
    QString text;
    for (const char byte : name) {
        const auto code = static_cast<unsigned char>(byte);
        text += code < 0x80 ? QString(QLatin1Char(byte))
                            : QStringLiteral("\\x%1").arg(QString::number(code, 16).toUpper());
    }
    return text;
}

EntryKind kindOf(mode_t mode, bool isLink)
{
    if (S_ISDIR(mode))
        return isLink ? EntryKind::FolderLink : EntryKind::Folder;
    if (S_ISREG(mode))
        return isLink ? EntryKind::FileLink : EntryKind::File;
    return EntryKind::Other;
}

EntryState failed(bool isLink)
{
    EntryState state;
    const bool isMissing = errno == ENOENT || errno == ENOTDIR;
    if (isLink && (isMissing || errno == ELOOP))
        state.kind = EntryKind::DeadLink;
    else if (isMissing)
        state.kind = EntryKind::Missing;
    else
        state.error = errno;
    return state;
}

}  // namespace

int listFolder(const QString& folder, FolderNames& content)
{
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(
        opendir(QFile::encodeName(folder).constData()), &closedir);
    if (!entries)
        return errno;
    for (;;) {
        errno = 0;
        const dirent* entry = readdir(entries.get());
        if (!entry)
            return errno;
        const QByteArray bytes(entry->d_name);
        const QString name = QFile::decodeName(bytes);
        if (bytes == "." || bytes == "..")
            continue;
        if (QFile::encodeName(name) == bytes)
            content.names.append(name);
        else
            content.unreadable.append(escaped(bytes));
    }
}

EntryState lookAt(const QString& path)
{
    const QByteArray name = QFile::encodeName(path);
    struct stat about
    {};
    if (lstat(name.constData(), &about) != 0)
        return failed(false);
    const bool isLink = S_ISLNK(about.st_mode);
    if (isLink && stat(name.constData(), &about) != 0)
        return failed(true);
    EntryState state;
    state.kind = kindOf(about.st_mode, isLink);
    state.size = qint64(about.st_size);
    state.modified = QDateTime::fromMSecsSinceEpoch(
        qint64(about.st_mtim.tv_sec) * 1000 + about.st_mtim.tv_nsec / 1000000, Qt::UTC);
    return state;
}

}  // namespace velm::detail::platform
