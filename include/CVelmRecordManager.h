#pragma once

#include "VelmCommonGlobal.h"

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QVector>

#include <cstddef>

class CVelmDatabase;

namespace velm::detail {
class ConfigSources;
}

/// The record type of a feature code: a row of the table "RecordConfigType", whose texts are the
/// host's to interpret.
struct VelmRecordConfigType
{
    QString code;    ///< feature code, the key
    QString name;    ///< column "NAME"
    QString extend;  ///< column "EXTEND"
    QString table;   ///< column "TABLE"
    QString type;    ///< column "TYPE"
};

/// One field of a code's records: what is shown, and where it is written.
struct VelmRecordConfig
{
    QString code;         ///< feature code, or "[Default]"
    QString showField;    ///< field that is shown
    QString writeTable;   ///< table that is written
    QString actualField;  ///< field that is written
};

/// The columns of the graphic-attribute library.
struct VelmRecordGenusDatabase
{
    QStringList headerList;   ///< titles of the columns
    QString keyField;         ///< column by which rows are found
    QList<int> fieldType;     ///< a Velm::FieldType for each header
    QList<int> fieldDecimal;  ///< digits behind the point, for each header
    int matchRule = 0;        ///< number that the host gives its meaning
    bool showPoint = false;   ///< for the host; false unless stored
};

/// How feature records are shown and written, read once when it is made.
/// Codes are compared exactly. One thread at a time.
class VELMCOMMON_EXPORT CVelmRecordManager
{
public:
    /// What cannot be read is empty.
    CVelmRecordManager();
    virtual ~CVelmRecordManager();

    /// The pipe field of that number; empty if there is none.
    QString getPIPSysConfigInformation(int type) const;

    /// All record types by code. @return whether there is one
    bool getRecordConfigType(QMap<QString, VelmRecordConfigType>& types) const;
    /// The record type of a code; false, and @p type stays, for an unknown one.
    bool getRecordConfigType(const QString& code, VelmRecordConfigType& type) const;
    /// The fields of a code, or of "[Default]" if it has none. In showField and actualField numbers
    /// of pipe fields are replaced by their names.
    /// @return false, and @p configs stays, if there is neither
    bool getRecordConfig(const QString& code, QVector<VelmRecordConfig>& configs) const;

    /// The layout of the graphic-attribute library, read from "globaldefines" on every call.
    /// Members that are missing or of the wrong type have their defaults.
    /// @return false, and @p layout stays, if there is none or it is no JSON object
    bool getGenusDatabase(VelmRecordGenusDatabase& layout) const;

private:
    friend class CVelmConfigManager;

    explicit CVelmRecordManager(std::nullptr_t);  // empty

    void load(velm::detail::ConfigSources& sources);
    bool InitPIPSysConfig(const CVelmDatabase& database);
    bool InitRecordConfigType(const CVelmDatabase& database);
    bool InitRecordConfig(const CVelmDatabase& database);
    QString IndexToString(const QString& text) const;

    QMap<int, QString> m_pipeFields;
    QMap<QString, VelmRecordConfigType> m_types;         // by code
    QMap<QString, QVector<VelmRecordConfig>> m_configs;  // by code
};
