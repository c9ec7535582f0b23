#pragma once

#include "VelmCommonGlobal.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QString>

namespace velm::detail {
class GlobalParamStore;
}

/// Small values of the user in a SQLite file beside the host program: "cad.dat" for "cad.exe".
/// A value has two keys, a type and a name. Keys and values go into statements as they are, so one
/// that holds a single quote cannot be stored (false) or read (empty). What fails is shown in a
/// message box. A file that could not be opened is tried again at the next call. Instance() may be
/// called from any thread; the rest belongs to the host's main thread.
class VELMCOMMON_EXPORT CVelmSaveUserData
{
public:
    /// The first call opens the file, which is created if it is missing. If that fails, a message
    /// box says so once.
    static CVelmSaveUserData* Instance();
    virtual ~CVelmSaveUserData();

    /// The file of this program: its path with ".exe" replaced by ".dat", or with ".dat" appended.
    static QString fileName();

    /// @{
    /// The stored value; empty if there is none, or no file. Inputs and paths are two stores.
    QString userInput(const QString& type, const QString& name);
    QString pathRecord(const QString& type, const QString& name);
    /// @}

    /// @{
    /// Stores a value in place of an older one, at once. False if that fails.
    bool setUserInput(const QString& type, const QString& name, const QString& value);
    bool setPathRecord(const QString& type, const QString& name, const QString& value);
    /// @}

private:
    friend class CVelmSystemGlobal;
    friend class velm::detail::GlobalParamStore;
    friend class UserDataPeer;

    explicit CVelmSaveUserData(const QString& file);
    Q_DISABLE_COPY(CVelmSaveUserData)

    /// Makes what keeps the instance, without the instance: whoever uses it at its end is to be the
    /// younger one.
    static void prepareInstance();

    /// userInput() that tells a failure, false, from a value that is not there, empty. Shows
    /// nothing.
    bool readUserInput(const QString& type, const QString& name, QString& value);
    /// setUserInput() within a transaction of the caller. Shows nothing.
    bool putUserInput(const QString& type, const QString& name, const QString& value);

    /// Opens the file unless it is open; the first failure is shown.
    bool isReady();
    QSqlError initSaveUserData();
    QSqlError makeTables();
    void forget();
    bool read(const QString& table, const QString& type, const QString& name, QString& value);
    bool write(const QString& table, const QString& type, const QString& name,
               const QString& value);

    const QString m_file;
    QSqlDatabase m_database;  // not valid while the file is not open
    bool m_isFailureShown = false;
};
