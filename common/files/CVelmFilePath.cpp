#include "CVelmFilePath.h"

#include "common/host/Singleton.h"
#include "CVelmFindFile.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QUrl>

namespace {

const QLatin1Char kSlash('/');

QString unified(const QString& path)
{
    return QString(path).replace(QLatin1Char('\\'), kSlash);
}

QStringList partsOf(const QString& path)
{
    return unified(path).split(kSlash);
}

bool isSlash(QChar ch)
{
    return ch == kSlash || ch == QLatin1Char('\\');
}

/// A link, junction or shortcut: removed itself, never entered.
bool isLink(const QFileInfo& entry)
{
    return entry.isSymLink() || entry.isJunction();
}

bool removeLink(const QFileInfo& link)
{
    return QFile::remove(link.filePath()) || QDir().rmdir(link.filePath());
}

bool removeFile(const QString& path)
{
    if (QFile::remove(path))
        return true;
    // Windows refuses read-only files.
    return QFile::setPermissions(path, QFile::permissions(path) | QFile::WriteUser)
           && QFile::remove(path);
}

bool removeTree(const QFileInfo& entry);

bool removeFolder(const QString& path)
{
    bool removedAll = true;
    const QFileInfoList entries = QDir(path).entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot
                                                           | QDir::Hidden | QDir::System);
    for (const QFileInfo& entry : entries)
        removedAll = removeTree(entry) && removedAll;
    return QDir().rmdir(path) && removedAll;
}

bool removeTree(const QFileInfo& entry)
{
    if (isLink(entry))
        return removeLink(entry);
    return entry.isDir() ? removeFolder(entry.filePath()) : removeFile(entry.filePath());
}

}  // namespace

CVelmFilePath* CVelmFilePath::Instance()
{
    static velm::detail::Singleton<CVelmFilePath> instance;
    return instance.get([] { return new CVelmFilePath; });
}

CVelmFilePath::CVelmFilePath() = default;

CVelmFilePath::~CVelmFilePath() = default;

QString CVelmFilePath::getRootPath(const QString& path)
{
    return partsOf(path).first();
}

QString CVelmFilePath::getUpOneLevelPath(const QString& path)
{
    QStringList parts = partsOf(path);
    parts.removeLast();
    return parts.join(kSlash);
}

QString CVelmFilePath::removeLastSlashFromPath(const QString& path)
{
    const bool trailing = !path.isEmpty() && isSlash(path.at(path.size() - 1));
    return trailing ? path.left(path.size() - 1) : path;
}

QString CVelmFilePath::getFolderName(const QString& path, unsigned int level)
{
    const QStringList parts = partsOf(path);
    const auto count = static_cast<unsigned int>(parts.size());
    return level >= count ? QString() : parts.at(static_cast<int>(count - level - 1));
}

QString CVelmFilePath::combinePath(const QString& base, const QStringList& parts)
{
    QString path = base;
    for (const QString& part : parts) {
        if (path.isEmpty()) {
            path = part;
            continue;
        }
        while (!path.isEmpty() && isSlash(path.at(path.size() - 1)))
            path.chop(1);
        int begin = 0;
        while (begin < part.size() && isSlash(part.at(begin)))
            ++begin;
        path += kSlash + part.mid(begin);
    }
    return path;
}

bool CVelmFilePath::fileIsOpen(const QString& file)
{
    Q_UNUSED(file)
    return false;
}

QStringList CVelmFilePath::getOpenFileByFolder(const QString& folder)
{
    QStringList files = CVelmFindFile::Instance()->findAllFile(folder, true);
    for (int i = files.size() - 1; i >= 0; --i) {
        if (fileIsOpen(files.at(i)))
            files.removeAt(i);
    }
    return files;
}

bool CVelmFilePath::folderIsOpen(const QString& folder)
{
    return !getOpenFileByFolder(folder).isEmpty();
}

bool CVelmFilePath::folderIsEmpty(const QString& folder)
{
    return CVelmFindFile::Instance()->findAllFile(folder, true).isEmpty();
}

bool CVelmFilePath::deleteDir(const QString& folder)
{
    if (folder.isEmpty())
        return false;
    // Without slashes and dots at its end a link shows that it is one.
    const QFileInfo entry(QDir::cleanPath(QFileInfo(folder).absoluteFilePath()));
    if (!entry.isDir())
        return false;
    return removeTree(entry);
}

void CVelmFilePath::openFileWithTips(const QString& file, QWidget* parent, const QString& title)
{
    const QString name = QFileInfo(file).fileName();
    QString problem;
    if (name.isEmpty())
        problem = QStringLiteral("没有可打开的文件，文件名为空。");
    else if (!QFileInfo::exists(file))
        problem = QStringLiteral("文件“") + name + QStringLiteral("”不存在。");
    else if (!QDesktopServices::openUrl(QUrl::fromLocalFile(file)))
        problem = QStringLiteral("文件“") + name
                  + QStringLiteral("”打开失败，请检查是否安装了关联的程序。");
    if (!problem.isEmpty())
        QMessageBox::information(parent, title, problem);
}

QString CVelmFilePath::getExistingDirectory(QWidget* parent, const QString& caption,
                                            const QString& dir)
{
    return QFileDialog::getExistingDirectory(parent, caption, dir);
}

QString CVelmFilePath::getSaveFileName(QWidget* parent, const QString& caption, const QString& dir,
                                       const QString& filter, QString* selectedFilter)
{
    return QFileDialog::getSaveFileName(parent, caption, dir, filter, selectedFilter);
}

QString CVelmFilePath::getOpenFileName(QWidget* parent, const QString& caption, const QString& dir,
                                       const QString& filter, QString* selectedFilter)
{
    return QFileDialog::getOpenFileName(parent, caption, dir, filter, selectedFilter);
}

QStringList CVelmFilePath::getOpenFileNames(QWidget* parent, const QString& caption,
                                            const QString& dir, const QString& filter,
                                            QString* selectedFilter)
{
    return QFileDialog::getOpenFileNames(parent, caption, dir, filter, selectedFilter);
}
