#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

/// What a column holds. JSON is stored as text.
enum class ColumnType
{
    Text,
    Integer,
    Real,
    JsonObject,  ///< empty, or a JSON object
    Json,        ///< any JSON
};

/// What the values of a column stand for.
enum class Holds
{
    Values,           ///< nothing that is looked up
    Name,             ///< a name by which rows are found or shown
    FeatureCode,      ///< the code of a feature, defined here
    CodeReference,    ///< the code of a feature
    UserCode,         ///< an alternative to a code
    Layer,            ///< a layer of drawings
    LineType,         ///< a line type
    GisTable,         ///< a GIS table, defined here
    TableReference,   ///< a GIS table
    TableReferences,  ///< GIS tables separated by ";"
    Field,            ///< a field of a GIS table, defined here
    RecordField,      ///< a field of a GIS table, or the number of a pipe field
    FieldTemplate,    ///< text in which "[FIELD]" stands for the value of a field
    AnnotationData,   ///< a JSON object that may name fields and dictionaries
    Default,          ///< the default value of a field, or its dictionary
    Dictionary,       ///< a dictionary, defined here
    DictionaryReference,
};

struct ColumnSchema
{
    QString name;
    ColumnType type = ColumnType::Text;
    Holds holds = Holds::Values;
    QString meaning;        ///< for people
    bool optional = false;  ///< whether nothing is amiss without the column

    /// The type with which the column is made: TEXT, INT or REAL.
    QString sqlType() const;
};

/// How the rows of a table are found by its key.
enum class KeyRule
{
    Exact,         ///< one row a key, letter case counts
    IgnoringCase,  ///< one row a key, letter case does not count
    Repeated,      ///< any number of rows a key
};

/// One table of the configuration, as the library reads it.
struct TableSchema
{
    QString database;  ///< its file name
    QString name;
    QStringList key;  ///< the columns by which rows are found; each gets an index
    KeyRule keyRule = KeyRule::Exact;
    QVector<ColumnSchema> columns;  ///< in the order in which they are made
    bool queried = false;           ///< whether single rows are looked up by the key
    bool written = false;           ///< whether the library writes rows
    bool optional = false;          ///< whether nothing is amiss without the table

    QStringList columnNames() const;
};

/// The tables of a configuration: everything that makes, fills, checks, examines or describes one
/// asks here.
namespace schema {

extern const QString kSystemFile;  ///< "peltaconfig.db"
extern const QString kPipeFile;    ///< "PipeConfig.db"

/// All tables but the dictionaries of the system configuration, in the order in which they are
/// made.
const QVector<TableSchema>& tables();

/// The table of that name; that of the system configuration if both databases have one. It is one
/// of tables().
const TableSchema& table(const QString& name);

/// Whether a table of that name in the system configuration is a dictionary.
bool isDictionary(const QString& name);
/// A dictionary of the system configuration.
TableSchema dictionary(const QString& name);

}  // namespace schema
