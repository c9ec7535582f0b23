#pragma once

#include "VelmCommonGlobal.h"
#include "VelmTypes.h"

#include <QMap>
#include <QString>
#include <QVariant>

/// The key/value store in the table "globaldefines" of the system configuration database.
/// Every call opens the database for itself, so what one program stores another sees at once. Keys
/// and values go into statements as they are: one with a single quote is neither found nor stored.
/// May be used from any thread.
class VELMCOMMON_EXPORT CVelmReadGlobaldefinesTable
{
public:
    static CVelmReadGlobaldefinesTable* Instance();  ///< made by the first call, never null
    virtual ~CVelmReadGlobaldefinesTable();

    /// Whether there is a value that is not empty. @p value is written whenever the database can be
    /// read: it is empty for a key that is missing.
    bool get_value(const QString& key, QString& value);
    /// Reads a JSON object. @p map is written if the key has a value, and is empty if that is no
    /// JSON object.
    /// @return whether the map has an entry
    bool get_value(QMap<QString, QVariant>& map, const QString& key);

    /// Inserts or updates a value; nothing is written if it is stored already.
    /// @return VelmOk; VelmDatabaseOpenFailed; VelmTableNotExist; VelmSqlExecFailed if the database
    ///         cannot be read or written
    Velm::ErrorStatus set_value(const QString& key, const QString& value);
    /// Stores a map as a JSON object. @return VelmInvalidValue if it has no JSON text; else as
    /// above
    Velm::ErrorStatus set_value(const QString& key, const QMap<QString, QVariant>& map);

private:
    CVelmReadGlobaldefinesTable();
    Q_DISABLE_COPY(CVelmReadGlobaldefinesTable)
};
