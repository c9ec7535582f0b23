#pragma once

#include "VelmCommonGlobal.h"

#include <QString>
#include <QStringList>

class QWidget;

/// Path texts, folder removal and the standard file dialogs.
/// The text operations take "\" and "/" alike. Instance() may be called from any thread, the
/// dialogs from the GUI thread only; the rest holds no state.
class VELMCOMMON_EXPORT CVelmFilePath
{
public:
    static CVelmFilePath* Instance();  ///< made by the first call, never null
    virtual ~CVelmFilePath();

    /// The first part: "D:" of "D:\data\a.txt", empty for a path that starts with a separator.
    QString getRootPath(const QString& path);
    /// Without the last part, with "/" throughout. Of a trailing separator only that is removed:
    /// "D:/a/b/" gives "D:/a/b".
    QString getUpOneLevelPath(const QString& path);
    /// Without one trailing separator, if there is one.
    QString removeLastSlashFromPath(const QString& path);
    /// The part @p level steps from the end: 0 the last one, 1 its parent. Empty beyond the root,
    /// and for level 0 behind a trailing separator.
    QString getFolderName(const QString& path, unsigned int level);
    /// Joins with single "/": separators that meet at a join are dropped, those inside a part stay.
    QString combinePath(const QString& base, const QStringList& parts);

    /// Always false: files held open by other programs are not detected.
    bool fileIsOpen(const QString& file);
    /// All files below @p folder, less those that fileIsOpen() reports: that is, all files. Kept so
    /// together with folderIsOpen().
    QStringList getOpenFileByFolder(const QString& folder);
    /// Whether @p folder holds at least one file anywhere below it. Callers refuse to delete or
    /// replace such a folder and rely on this rule.
    bool folderIsOpen(const QString& folder);
    /// Whether no file lies below @p folder; sub-folders without files do not count.
    bool folderIsEmpty(const QString& folder);
    /// Removes @p folder with everything below it, hidden entries included. Links are removed, not
    /// followed, and nothing outside the folder is touched.
    /// @return false for an empty or missing path, and if anything could not be removed
    bool deleteDir(const QString& folder);

    /// Opens @p file with the program that the system associates with it. If the name is empty, the
    /// file is missing or no program takes it, a message box titled @p title says so.
    static void openFileWithTips(const QString& file, QWidget* parent, const QString& title);

    /// @{
    /// The QFileDialog function of the same name. Empty when the user cancels.
    QString getExistingDirectory(QWidget* parent = nullptr, const QString& caption = QString(),
                                 const QString& dir = QString());
    QString getSaveFileName(QWidget* parent = nullptr, const QString& caption = QString(),
                            const QString& dir = QString(), const QString& filter = QString(),
                            QString* selectedFilter = nullptr);
    QString getOpenFileName(QWidget* parent = nullptr, const QString& caption = QString(),
                            const QString& dir = QString(), const QString& filter = QString(),
                            QString* selectedFilter = nullptr);
    QStringList getOpenFileNames(QWidget* parent = nullptr, const QString& caption = QString(),
                                 const QString& dir = QString(), const QString& filter = QString(),
                                 QString* selectedFilter = nullptr);
    /// @}

private:
    CVelmFilePath();
    Q_DISABLE_COPY(CVelmFilePath)
};
