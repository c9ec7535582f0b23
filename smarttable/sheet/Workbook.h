#pragma once

#include "smarttable/package/Package.h"
#include "smarttable/sheet/SharedTexts.h"
#include "smarttable/sheet/Sheet.h"
#include "smarttable/sheet/Styles.h"

#include <memory>
#include <vector>

namespace SmartTable::detail {

/// A workbook (ECMA-376-1, 18.2): its sheets, texts and formats over the package that holds them.
/// What nobody touched stays as it lies in the package. All but load() and save() may throw
/// std::bad_alloc.
class Workbook
{
public:
    using SheetPointer = std::shared_ptr<Sheet>;

    Workbook();
    ~Workbook();
    Q_DISABLE_COPY(Workbook)

    // What went wrong is answered; nothing if nothing did.

    /// Takes a file. A failure leaves the workbook without sheets.
    QString load(const QString& file);
    /// @p level is 0 to 9.
    QString save(const QString& file, int level);

    const std::vector<SheetPointer>& sheets() const { return m_sheets; }
    /// Null if there is none.
    SheetPointer find(int id) const;
    SheetPointer find(const QString& name) const;

    /// The content of a sheet, which is read if need be.
    QString open(Sheet& sheet);

    /// Adds an empty sheet, whose name was looked at.
    QString add(const QString& name, SheetPointer& sheet);
    void remove(const SheetPointer& sheet);
    QString rename(Sheet& sheet, const QString& name);

    SharedTexts& texts() { return m_texts; }
    Styles& styles() { return m_styles; }
    /// A formula was made, changed or removed.
    void changeFormulas() { m_hasNewFormulas = true; }

private:
    QString readBook();
    QString readSheets(const Relations& relations);
    QString readRelated(const Relations& relations, const char* type, QString& part,
                        QByteArray& content) const;
    QString readTexts(const Relations& relations);
    QString readStyles(const Relations& relations);
    QString nameProblem(const QString& name, const Sheet* own) const;
    pugi::xml_node bookElement(const char* name);
    pugi::xml_node sheetElement(const Sheet& sheet);
    void writeSheets();
    void writeTexts();
    void writeStyles();
    void calculateOnOpening();
    QString freePart(const QString& stem) const;

    Package m_package;
    SmallXml m_book;
    QString m_bookPart;
    QString m_textsPart;
    QString m_stylesPart;
    std::vector<SheetPointer> m_sheets;
    SharedTexts m_texts;
    Styles m_styles;
    bool m_isBookChanged = false;
    bool m_hasNewFormulas = false;
};

}  // namespace SmartTable::detail
