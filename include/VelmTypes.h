#pragma once

/// The enumerations that the exported signatures share. Databases, configuration tables and callers
/// keep the numbers, so every value here is part of the interface: never renumber.
namespace Velm {

/// The result of most operations: 0 is success, every other value a specific failure.
/// Output parameters are written on success only, unless an operation says otherwise.
enum ErrorStatus : int
{
    VelmOk = 0,                 ///< success
    VelmFailed = 1,             ///< general failure of a database or attribute operation
    VelmInvalidValue = 4,       ///< a value that cannot be stored or converted
    VelmNotFound = 5,           ///< unknown key or code, empty user code, missing definition file
    VelmEmptyArgument = 7,      ///< an empty key argument
    VelmNoData = 8,             ///< a loader that finished with an empty table
    VelmWorkCodeNotFound = 13,  ///< a code that the work definitions do not hold
    VelmFileOpenFailed = 14,    ///< a definition file that exists but cannot be opened
    VelmSettingConvertFailed = 15,  ///< a command setting that is no list or map
    VelmSettingNotFound = 19,       ///< a command setting that is not defined
    VelmWriteTableFailed = 20,      ///< a table holds another number of rows than was written
    VelmXmlInitFailed = 26,         ///< an XML file cannot be initialised
    VelmSqlExecFailed = 33,         ///< a statement failed to execute
    VelmDatabaseOpenFailed = 34,    ///< a database could not be opened
    VelmCommitFailed = 35,          ///< the commit failed, the changes were rolled back
    VelmRollbackFailed = 36,        ///< the commit failed and the roll-back failed too
    VelmQueryBusy = 37,             ///< a query object was already positioned on a record
    VelmTableNotExist = 38,         ///< an insert into a table that does not exist
    VelmTransactionFailed = 39,     ///< a transaction could not be started
    VelmFrameItemInvalid = 128,     ///< a map-frame item that cannot be produced
};

/// The configuration version. Only the comparison with VersionDatabase matters.
enum Version : int
{
    VersionTextFiles = 9,  ///< this and everything below: "index.ini", "work.def", "attribute.def"
    VersionDatabase = 10,  ///< the database-based set, the default
};

/// The kind of drawing entity that a feature code produces. The numbering runs from 0 to 8; the
/// values without a name carry no fixed meaning here.
enum EntityType : int
{
    EntityUnset = -1,
    EntityGeneral = 1,
    EntityText = 3,         ///< line type "text"
    EntitySpecialLine = 5,  ///< line type "gc..." or a negative width
    EntityTypeLast = 8,     ///< the greatest number of the numbering
};

/// The type of an attribute field. Numbers from 10 on mark fields that are not shown.
enum FieldType : int
{
    FieldText = 0,
    FieldInt = 1,   ///< 32-bit integer
    FieldLong = 2,  ///< 64-bit integer
    FieldReal = 3,
    FieldDate = 4,  ///< date, time or both
};

/// The geometry of an attribute table's features. The library stores and compares the number only.
enum TableType : int
{
    TablePoint = 0,
    TableLine = 1,
    TableArea = 2,
    TableAnnotation = 3,
    TablePipePoint = 4,
    TablePipeLine = 5,
};

/// The annotation kind, 0 to 5. The host gives the numbers their meaning; the library checks the
/// range.
enum AnnType : int
{
    AnnType0 = 0,
    AnnType1 = 1,
    AnnType2 = 2,
    AnnType3 = 3,
    AnnType4 = 4,
    AnnType5 = 5,
};

/// How an annotation's value is entered, 0 to 2. The host gives the numbers their meaning.
enum InputType : int
{
    InputUnset = -1,
    InputType0 = 0,
    InputType1 = 1,
    InputType2 = 2,
};

/// How a map frame trims the drawing; kept as stored, any number is possible.
enum TrimMode : int
{
    TrimModeDefault = 0,
};

/// How a map frame selects what it holds; kept as stored, any number is possible.
enum FrameSelMode : int
{
    FrameSelModeDefault = 0,
};

/// How a map frame is saved; kept as stored, any number is possible.
enum FrameSaveStyle : int
{
    FrameSaveStyleDefault = 0,
};

/// The direction in which a read is sorted.
enum DataBaseOrderByType : int
{
    OrderAscending = 0,
    OrderDescending = 1,
};

/// Selects a cipher. No other number creates one.
enum CryptionType : int
{
    CryptionDes = 0,
};

/// The rounding rule of reported numbers. Every number but 0 means the digit rule.
enum RoundOffType : int
{
    RoundOffPlain = 0,
    RoundOffByDigit = 1,
};

/// The unit of a reported area. Every other number means square metres.
enum UnitOfAreaType : int
{
    AreaSquareMetre = 0,
    AreaMu = 1,  ///< 1/15 hectare
    AreaHectare = 2,
};

}  // namespace Velm
