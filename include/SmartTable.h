#pragma once

#include <QtCore/qglobal.h>

/// Marks what the library SmartTable exports. SMARTTABLE_LIBRARY is defined only where its objects
/// are built or linked themselves.
#if defined(SMARTTABLE_LIBRARY)
#define SMARTTABLE_EXPORT Q_DECL_EXPORT
#else
#define SMARTTABLE_EXPORT Q_DECL_IMPORT
#endif

/// Workbooks without an office program. Texts are UTF-8 after setEncoding() with
/// EncodingUtf8, else in the local 8-bit code page; a null text counts as an empty one. Rows,
/// columns, sheets and tables are numbered from 1. Lengths are points, 1/72 inch, unless the name
/// says otherwise. Nothing is thrown: what fails gives false, 0 or an empty text, and says why in
/// lastError(). An object and what it hands out belong to one thread at a time.
namespace SmartTable {

/// The version of the library that is loaded, e.g. "0.2.0".
SMARTTABLE_EXPORT const char* version();

/// In which form texts are given and answered.
enum Encoding
{
    EncodingLocal = 0,  ///< the local 8-bit code page
    EncodingUtf8 = 1    ///< UTF-8
};

/// Where the content of a cell stands from left to right, for setCellHAlign().
enum HorizontalAlignment
{
    HorizontalGeneral = 0,           ///< texts left, numbers right
    HorizontalLeft = 1,              ///< at the left edge
    HorizontalCenter = 2,            ///< in the middle
    HorizontalRight = 3,             ///< at the right edge
    HorizontalFill = 4,              ///< repeated
    HorizontalJustify = 5,           ///< both edges straight
    HorizontalCenterContinuous = 6,  ///< over the empty cells to the right, too
    HorizontalDistributed = 7        ///< every line spread
};

/// Where the content of a cell stands from top to bottom, for setCellVAlign().
enum VerticalAlignment
{
    VerticalTop = 0,         ///< at the upper edge
    VerticalCenter = 1,      ///< in the middle
    VerticalBottom = 2,      ///< at the lower edge
    VerticalJustify = 3,     ///< the lines spread between the edges
    VerticalDistributed = 4  ///< the same, and each line spread, too
};

/// What a cell holds: ExcelCellData::kind.
enum CellKind
{
    CellEmpty = 0,    ///< a format at most
    CellNumber = 1,   ///< a number; dates are numbers, too: days since 1899-12-30
    CellText = 2,     ///< a text
    CellBool = 3,     ///< "TRUE" or "FALSE"
    CellError = 4,    ///< "#DIV/0!" and the like
    CellFormula = 5,  ///< a formula; its text is the value that was last calculated
    CellDate = 6      ///< a date as text, as ISO 8601 has it
};

/// What Excel::loadExcel() answers.
enum LoadResult
{
    LoadOk = 1,           ///< it is loaded
    LoadCannotOpen = 0,   ///< there is no such file, or it cannot be read
    LoadNotRead = -1,     ///< it is no workbook of a kind that is read, or is damaged
    LoadOutOfMemory = -2  ///< nothing was loaded
};

/// A text, ended by a zero. A value.
class SMARTTABLE_EXPORT String
{
public:
    /// An empty text.
    String();
    /// A copy of @p text; empty for null.
    String(const char* text);
    /// A copy.
    String(const String& other);
    ~String();
    /// Becomes a copy.
    String& operator=(const String& other);
    /// Becomes a copy of @p text; empty for null.
    String& operator=(const char* text);

    /// The text; never null, valid until the next change.
    const char* p() const;
    /// The same.
    const char* __str__() const;  // NOLINT(bugprone-reserved-identifier): the name is given
    /// Whether it has no character.
    bool empty() const;

private:
    char* m_text;  // null if it is empty
};

/// Some values in a row. A value.
template<class Value>
class List
{
public:
    /// No values.
    List();
    /// A copy; empty where there is no memory for it.
    List(const List& other);
    ~List();
    /// Becomes a copy; empty where there is no memory for it.
    List& operator=(const List& other);

    /// Makes room for @p length values, and forgets those that there were. @return the first of
    /// them; null for none, and where there is no memory
    Value* create(int length);

    /// How many values there are.
    int length() const;
    /// The value there, from 0 on; of a place that there is not, a spare one.
    Value& operator[](int at);
    /// The same.
    const Value& operator[](int at) const;

private:
    Value* m_values;
    int m_length;
    Value m_spare;
};

/// A cell and what it holds.
struct ExcelCellData
{
    int row = 0;   ///< from 1 on
    int col = 0;   ///< from 1 on
    String text;   ///< as it would be typed: numbers without their format
    int kind = 0;  ///< one of CellKind
};

/// Numbers of rows, columns and sheets.
using IntList = List<int>;
/// Lengths.
using DoubleList = List<double>;
/// Cells by rows.
using ExcelCellDataList = List<ExcelCellData>;

class Excel;

/// One sheet of a workbook. A default-constructed one, and one whose workbook is gone, answer
/// neutral values. Copies are the same sheet.
class SMARTTABLE_EXPORT ExcelSheet
{
public:
    ExcelSheet();
    /// The same sheet.
    ExcelSheet(const ExcelSheet& other);
    ~ExcelSheet();
    /// Becomes the same sheet.
    ExcelSheet& operator=(const ExcelSheet& other);

    /// As the tab shows it; empty without a sheet.
    String name() const;
    /// Renames the sheet. Formulas and names that speak of it are left as they are. Nothing is done
    /// for a name that a workbook cannot have: see Excel::addSheet().
    void setName(const char* name);
    /// By which the workbook knows it as long as it is loaded; 0 without a sheet.
    int sheetID() const;

    /// The rows that the sheet has.
    IntList rows() const;
    /// The columns of a row in which a cell stands, a format at most.
    IntList cols(int row) const;

    /// In points; that of the other rows if it has none of its own.
    double getRowH(int row) const;
    /// In characters of the usual font, as a spreadsheet program shows it.
    double getColW(int col) const;
    /// In points, 0 to 409.5; another height changes nothing.
    void setRowH(int row, double height);
    /// In characters, 0 to 255; another width changes nothing.
    void setColW(int col, double width);

    /// All cells, by rows.
    ExcelCellDataList allCellData() const;
    /// One cell; an empty one where there is none.
    ExcelCellData cellData(int row, int col) const;
    /// Rounded towards zero; that of a text is what it reads as, 0 if it is no number.
    int getCellInt(int row, int col) const;
    /// The number; that of a text is what it reads as, 0 if it is no number.
    double getCellDouble(int row, int col) const;
    /// As it would be typed: numbers without their format.
    String getCellText(int row, int col) const;

    // These keep the format of the cell. False for a place that a sheet does not have.

    /// A whole number.
    bool setCellValueInt(int row, int col, int value);
    /// False for a number that is not finite, too.
    bool setCellValueDouble(int row, int col, double value);
    /// @p asNumber: a text that reads as a number becomes one, unless it begins with a zero that a
    /// number would lose. False beyond 32,767 UTF-16 units, too.
    bool setCellValueText(int row, int col, const char* text, bool asNumber);
    /// A formula without "=", in English ("SUM(A1:A9)"), and the value that is shown until it is
    /// calculated.
    void setCellFunction(int row, int col, const char* formula, const char* value);

    /// Gives a cell the format @p property, a number of Excel::getProperty().
    void setCellProperty(int row, int col, int property);
    /// @p align is one of HorizontalAlignment. False for others.
    bool setCellHAlign(int row, int col, int align);
    /// @p align is one of VerticalAlignment. False for others.
    bool setCellVAlign(int row, int col, int align);

    /// Merges the cells of a rectangle; those but the first lose their values. Rectangles that it
    /// meets are parted first.
    void merge(int row1, int col1, int row2, int col2);
    /// Takes a cell away, its format included.
    void removeCell(int row, int col);

private:
    friend class Excel;
    class Private;
    Private* d;
};

/// A workbook.
class SMARTTABLE_EXPORT Excel
{
public:
    Excel();
    ~Excel();
    Q_DISABLE_COPY(Excel)

    /// From now on; EncodingLocal until it is told.
    void setEncoding(Encoding encoding);
    /// Why the last operation of the workbook or its sheets failed, in English; empty if none did.
    String lastError() const;

    /// A new workbook without a sheet. What was there is gone.
    void initExcel();
    /// Loads a workbook (.xlsx, .xlsm). @return one of LoadResult; unless LoadOk, what was there
    /// stays
    int loadExcel(const char* file);
    /// Writes the workbook; a file that is there is replaced when the new one is whole. A workbook
    /// without a sheet gets an empty one.
    bool save(const char* file);
    /// 0 (stored) to 9 (smallest); 6 unless told, and for any other number.
    void setCompressLevel(int level);

    /// The worksheets in the order of the workbook, from 1 on as they were loaded; a new one gets
    /// the next number, and none changes.
    IntList allSheetID() const;
    /// False, and @p sheet as it was, if there is none or it cannot be read.
    bool getSheetByID(int id, ExcelSheet& sheet);
    /// In any letter case.
    bool getSheetByName(const char* name, ExcelSheet& sheet);
    /// Adds a sheet behind the others. False for a name that a workbook cannot have: none, more
    /// than 31 UTF-16 units, one of []:*?/\ in it, ' at an end, "History", or that of another
    /// sheet.
    bool addSheet(const char* name, ExcelSheet& sheet);
    /// Removes a sheet. What formulas say of it is left as it is.
    void removeSheet(int id);

    /// The sheet that getProperty() asks. False if there is none.
    bool setPropertySheet(int id);
    /// The number of the format of a cell of that sheet, for ExcelSheet::setCellProperty().
    int getProperty(int row, int col);

private:
    class Private;
    Private* d;
};

}  // namespace SmartTable
