#include "archive/RawZip.h"
#include "SmartTable.h"
#include "smarttable/package/Package.h"
#include "support/TemporaryRoot.h"

#include <zlib.h>

#include <cmath>

using namespace SmartTable;

namespace {

constexpr char kBookTypes[] =
    "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">"
    "<Default Extension=\"rels\" "
    "ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>"
    "<Default Extension=\"xml\" ContentType=\"application/xml\"/></Types>";

QByteArray relationsOf(const QList<QPair<QByteArray, QByteArray>>& typesAndTargets)
{
    QByteArray xml =
        "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">";
    int number = 0;
    for (const auto& [type, target] : typesAndTargets)
        xml += "<Relationship Id=\"r" + QByteArray::number(++number)
               + "\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/"
               + type + "\" Target=\"" + target + "\"/>";
    return xml + "</Relationships>";
}

RawEntry part(const QByteArray& name, const QByteArray& content)
{
    RawEntry entry{name, content};
    entry.crc = crc32(0, reinterpret_cast<const Bytef*>(content.constData()),
                      static_cast<uInt>(content.size()));
    return entry;
}

class WorkbookTest : public TemporaryRoot
{
protected:
    WorkbookTest() { m_book.setEncoding(EncodingUtf8); }

    /// A workbook of one sheet, as a program writes it that has ways of its own.
    int load(const QByteArray& sheet, const QByteArray& texts = "<sst/>")
    {
        writeFile(
            u"in 入.xlsx"_s,
            rawZip({part("[Content_Types].xml", kBookTypes),
                    part("_rels/.rels", relationsOf({{"officeDocument", "xl/workbook.xml"}})),
                    part("xl/workbook.xml",
                         "<x:workbook xmlns:x=\"m\" xmlns:q=\"r\"><x:sheets><x:sheet "
                         "name=\"图 one\" sheetId=\"7\" q:id=\"r1\"/><x:sheet name=\"Chart\" "
                         "sheetId=\"8\" q:id=\"r3\"/></x:sheets><x:pivotCaches/></x:workbook>"),
                    part("xl/_rels/workbook.xml.rels", relationsOf({{"worksheet", "s.xml"},
                                                                    {"sharedStrings", "/xl/t.xml"},
                                                                    {"chartsheet", "c.xml"}})),
                    part("xl/c.xml", "<chartsheet/>"), part("xl/s.xml", sheet),
                    part("xl/t.xml", texts)}));
        return m_book.loadExcel(path(u"in 入.xlsx"_s).toUtf8().constData());
    }
    bool save() { return m_book.save(path(u"out 出.xlsx"_s).toUtf8().constData()); }
    /// The content of a part of what was saved.
    QByteArray saved(const char* name)
    {
        detail::Package package;
        QByteArray content;
        EXPECT_EQ(package.load(path(u"out 出.xlsx"_s)), QString());
        EXPECT_EQ(package.read(QString::fromUtf8(name), content), QString());
        return content;
    }
    ExcelSheet sheet(int id = 1)
    {
        ExcelSheet found;
        EXPECT_TRUE(m_book.getSheetByID(id, found)) << m_book.lastError().p();
        return found;
    }

    Excel m_book;
};

}  // namespace

TEST_F(WorkbookTest, KeepsWhatStandsAroundAChangedCell)
{
    ASSERT_EQ(
        load("<?xml version=\"1.0\"?><x:worksheet xmlns:x=\"m\" z=\"1\"><x:cols><x:col min=\"2\" "
             "max=\"4\" width=\"9\" hidden=\"1\"/></x:cols><!-- a --><x:sheetData "
             "q=\"1\"><x:row r=\"2\" spans=\"1:9\" ht=\"20\" own=\"a&gt;b\"><x:c r=\"A2\" "
             "t=\"s\"><x:v>0</x:v></x:c><x:c r=\"C2\" s=\"5\" cm=\"1\"><x:f t=\"array\" "
             "ref=\"C2\">A1&amp;1</x:f><x:v>7</x:v></x:c><x:c><x:v>1.50</x:v></x:c><x:extLst/>"
             "</x:row></x:sheetData><mc:AlternateContent xmlns:mc=\"c\"><mc:Choice "
             "Requires=\"q\"><x:controls/></mc:Choice></mc:AlternateContent><x:extLst><e/>"
             "</x:extLst></x:worksheet>",
             "<sst><si><r><t>房</t></r><r><t xml:space=\"preserve\"> 屋</t></r><rPh><t>x</t>"
             "</rPh></si></sst>"),
        LoadOk)
        << m_book.lastError().p();
    EXPECT_EQ(m_book.allSheetID().length(), 1) << "a chart is none";
    ExcelSheet first = sheet();
    EXPECT_STREQ(first.getCellText(2, 1).p(), "房 屋");
    EXPECT_EQ(first.getCellInt(2, 3), 7);
    EXPECT_EQ(first.cellData(2, 3).kind, CellFormula);
    EXPECT_EQ(first.getCellDouble(2, 4), 1.5) << "without a place of its own";
    EXPECT_EQ(first.getRowH(2), 20);
    first.setColW(3, 12.5);
    first.merge(1, 1, 1, 2);
    EXPECT_TRUE(first.setCellValueText(3, 2, " a<\x01&_x0041_\n", false));
    ASSERT_TRUE(save()) << m_book.lastError().p();
    EXPECT_EQ(
        saved("/xl/s.xml"),
        QByteArray(
            "<?xml version=\"1.0\"?><x:worksheet xmlns:x=\"m\" z=\"1\"><x:dimension ref=\"A2:D3\"/>"
            "<x:cols><x:col min=\"2\" max=\"2\" width=\"9\" hidden=\"1\"/><x:col min=\"3\" "
            "max=\"3\" "
            "width=\"12.5\" hidden=\"1\" customWidth=\"1\"/><x:col min=\"4\" max=\"4\" width=\"9\" "
            "hidden=\"1\"/></x:cols><!-- a --><x:sheetData><x:row r=\"2\" ht=\"20\" own=\"a&gt;b\">"
            "<x:c r=\"A2\" t=\"s\"><x:v>0</x:v></x:c><x:c r=\"C2\" s=\"5\" cm=\"1\"><x:f "
            "t=\"array\" "
            "ref=\"C2\">A1&amp;1</x:f><x:v>7</x:v></x:c><x:c "
            "r=\"D2\"><x:v>1.5</x:v></x:c><x:extLst/>"
            "</x:row><x:row r=\"3\"><x:c r=\"B3\" t=\"s\"><x:v>1</x:v></x:c></x:row></x:sheetData>"
            "<x:mergeCells count=\"1\"><x:mergeCell ref=\"A1:B1\"/></x:mergeCells>"
            "<mc:AlternateContent xmlns:mc=\"c\"><mc:Choice "
            "Requires=\"q\"><x:controls/></mc:Choice>"
            "</mc:AlternateContent><x:extLst><e/></x:extLst></x:worksheet>"));
    EXPECT_TRUE(saved("/xl/t.xml")
                    .contains("<rPh><t>x</t></rPh></si><si><t xml:space=\"preserve\"> "
                              "a&lt;_x0001_&amp;_x005F_x0041_\n</t></si></sst>"));
    EXPECT_TRUE(saved("/xl/workbook.xml")
                    .contains("</x:sheets><x:calcPr fullCalcOnLoad=\"1\"/><x:pivotCaches/>"));
    ASSERT_EQ(m_book.loadExcel(path(u"out 出.xlsx"_s).toUtf8().constData()), LoadOk);
    EXPECT_STREQ(sheet().getCellText(3, 2).p(), " a<\x01&_x0041_\n");
}

TEST_F(WorkbookTest, HoldsValuesOfEveryKind)
{
    ExcelSheet made;
    ASSERT_TRUE(m_book.addSheet("测绘 '1' x", made));
    EXPECT_TRUE(made.setCellValueInt(1, 1, -5));
    EXPECT_TRUE(made.setCellValueDouble(1048576, 16384, 0.1 + 0.2));
    EXPECT_TRUE(made.setCellValueText(2, 1, "007", true));
    EXPECT_TRUE(made.setCellValueText(2, 2, "-12.50", true));
    EXPECT_TRUE(made.setCellValueText(2, 3, "12", false));
    made.setCellFunction(3, 1, "SUM(A1:A2)&\"<\"", "x");
    EXPECT_TRUE(made.setCellHAlign(3, 1, HorizontalCenter));
    EXPECT_TRUE(made.setCellVAlign(3, 1, VerticalTop));
    EXPECT_FALSE(made.setCellValueDouble(1, 1, NAN));
    EXPECT_FALSE(made.setCellValueInt(1048577, 1, 1));
    EXPECT_FALSE(made.setCellValueInt(1, 16385, 1));
    EXPECT_FALSE(made.setCellValueText(1, 1, QByteArray(32768, 'x').constData(), false));
    EXPECT_TRUE(made.setCellValueText(
        4, 1, QByteArray(32767 * 3, '\xE6').replace("\xE6\xE6\xE6", "房").constData(), false));
    EXPECT_FALSE(made.setCellHAlign(1, 1, 8));
    made.setCellProperty(1, 1, 99);
    EXPECT_STRNE(m_book.lastError().p(), "");
    ASSERT_TRUE(save()) << m_book.lastError().p();
    ASSERT_EQ(m_book.loadExcel(path(u"out 出.xlsx"_s).toUtf8().constData()), LoadOk);
    EXPECT_EQ(made.sheetID(), 0) << "its workbook is another now";
    const ExcelSheet read = sheet();
    EXPECT_STREQ(read.name().p(), "测绘 '1' x");
    EXPECT_EQ(read.getCellInt(1, 1), -5);
    EXPECT_EQ(read.getCellDouble(1048576, 16384), 0.1 + 0.2);
    EXPECT_EQ(read.cellData(2, 1).kind, CellText);
    EXPECT_EQ(read.cellData(2, 2).kind, CellNumber);
    EXPECT_STREQ(read.getCellText(2, 2).p(), "-12.5");
    EXPECT_EQ(read.cellData(2, 3).kind, CellText);
    EXPECT_EQ(read.cellData(3, 1).kind, CellFormula);
    EXPECT_STREQ(read.getCellText(3, 1).p(), "x");
    EXPECT_EQ(read.allCellData().length(), 7);
    EXPECT_EQ(read.rows().length(), 5);
    EXPECT_TRUE(m_book.setPropertySheet(1));
    EXPECT_NE(m_book.getProperty(3, 1), 0);
    EXPECT_TRUE(
        saved("/xl/styles.xml").contains("<alignment horizontal=\"center\" vertical=\"top\"/>"));
}

TEST_F(WorkbookTest, KnowsItsSheetsByNumberAndName)
{
    ExcelSheet made;
    for (const char* name : {"", "a:b", "'a", "History", "a234567890123456789012345678901x"})
        EXPECT_FALSE(m_book.addSheet(name, made)) << name;
    ASSERT_TRUE(m_book.addSheet("Ä", made) && m_book.addSheet("b", made));
    EXPECT_FALSE(m_book.addSheet("ä", made)) << "in any letter case";
    m_book.removeSheet(1);
    ASSERT_TRUE(m_book.addSheet("c", made));
    EXPECT_EQ(made.sheetID(), 3) << "no number is given twice";
    EXPECT_FALSE(m_book.getSheetByID(1, made) || m_book.getSheetByName("Ä", made));
    EXPECT_EQ(made.sheetID(), 3) << "untouched";
    made.setName("B");
    EXPECT_STREQ(made.name().p(), "c");
    made.setName("C");
    EXPECT_STREQ(made.name().p(), "C") << "its own in another letter case";
    ASSERT_TRUE(save());
    ASSERT_EQ(m_book.loadExcel(path(u"out 出.xlsx"_s).toUtf8().constData()), LoadOk);
    ASSERT_EQ(m_book.allSheetID().length(), 2);
    EXPECT_TRUE(m_book.getSheetByName("c", made));
    EXPECT_EQ(made.sheetID(), 2);
}

TEST_F(WorkbookTest, RefusesDamagedSheetsAndKeepsWhatWasThere)
{
    const QByteArray opening = "<worksheet><sheetData>";
    const QByteArray closing = "</sheetData></worksheet>";
    for (const QByteArray& rows :
         {QByteArray("<row r=\"0\"/>"), QByteArray("<row r=\"1048577\"/>"),
          QByteArray("<row><c r=\"XFE1\"/></row>"), QByteArray("<row r=\"2\"><c r=\"A3\"/></row>"),
          QByteArray("<row><c></row>"), QByteArray("<row><c r=\"A1\""), QByteArray("<!DOCTYPE a>"),
          QByteArray("<a>").repeated(300)}) {
        ASSERT_EQ(load(opening + rows + closing), LoadOk);
        ExcelSheet found;
        EXPECT_FALSE(m_book.getSheetByID(1, found)) << rows.left(40).constData();
        EXPECT_STRNE(m_book.lastError().p(), "");
    }
    ASSERT_EQ(load(opening + "<row><c t=\"s\"><v>9</v></c><c t=\"?\"><v>1</v></c></row>" + closing),
              LoadOk);
    ExcelSheet found = sheet();
    EXPECT_STREQ(found.getCellText(1, 1).p(), "") << "a text that there is not";
    writeFile(u"no.xlsx"_s, "no package");
    EXPECT_EQ(m_book.loadExcel(path(u"no.xlsx"_s).toUtf8().constData()), LoadNotRead);
    EXPECT_EQ(m_book.loadExcel(path(u"none.xlsx"_s).toUtf8().constData()), LoadCannotOpen);
    EXPECT_EQ(found.sheetID(), 1);
    EXPECT_FALSE(m_book.save(path(u"none/x.xlsx"_s).toUtf8().constData()));
}
