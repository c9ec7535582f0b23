#pragma once

#include "VelmCommonGlobal.h"

#include <QString>

#include <memory>

namespace velm::detail {
class UserStore;
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

    explicit CVelmSaveUserData(const QString& file);
    Q_DISABLE_COPY(CVelmSaveUserData)

    /// Makes what keeps the instance, without the instance: whoever uses it at its end is to be the
    /// younger one.
    static void prepareInstance();

    std::unique_ptr<velm::detail::UserStore> m_store;
};
