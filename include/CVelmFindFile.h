#pragma once

#include "VelmCommonGlobal.h"

#include <QString>
#include <QStringList>

/// Finds files and folders by name, in one folder or on the application's search paths.
/// Letter case never counts. A folder is listed in name order, folders among files and hidden
/// entries left out; a recursive search enters a folder where it meets it. A folder that a link
/// leads to is entered too, unless the search is inside it already, and at most 16 times in one
/// search and 8 links deep: whatever links do, each folder is listed at its own place. A Windows
/// shortcut (*.lnk) is a file. Results are absolute paths. A missing folder lists nothing.
/// Holds no state; Instance() may be called from any thread.
class VELMCOMMON_EXPORT CVelmFindFile
{
public:
    static CVelmFindFile* Instance();  ///< made by the first call, never null
    virtual ~CVelmFindFile();

    /// The first file called @p name on the search paths, which are asked in their order of
    /// priority and read anew on every call; empty if there is none.
    QString findFile(const QString& name, bool recursive);
    /// The first file called @p name below @p folder, empty if there is none.
    QString findFile(const QString& folder, const QString& name, bool recursive);

    /// @{
    /// All files called @p name without the text behind the last ".", over all search paths or in
    /// one folder.
    QStringList findFileNoSuffix(const QString& name, bool recursive);
    QStringList findFileNoSuffix(const QString& folder, const QString& name, bool recursive);
    /// @}

    /// All files with one of @p suffixes: "shp;dxf", separated by ";", ",", "|" or blanks; "." or
    /// "*." may stand in front of each.
    QStringList findFileBySuffix(const QString& folder, const QString& suffixes, bool recursive);

    /// All files whose name contains @p text and whose suffix is one of @p suffix (as above; empty
    /// for any).
    QStringList fuzzyQueryFile(const QString& folder, const QString& text, const QString& suffix,
                               bool recursive);

    /// All files and folders.
    QStringList findAll(const QString& folder, bool recursive);
    /// @{
    /// All files, or those called @p name.
    QStringList findAllFile(const QString& folder, bool recursive);
    QStringList findAllFile(const QString& folder, const QString& name, bool recursive);
    /// @}
    /// @{
    /// All folders, or those called @p name.
    QStringList findFolder(const QString& folder, bool recursive);
    QStringList findFolder(const QString& folder, const QString& name, bool recursive);
    /// @}

private:
    CVelmFindFile();
    Q_DISABLE_COPY(CVelmFindFile)
};
