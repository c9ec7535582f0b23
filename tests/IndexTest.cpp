#include "config/CVelmIndexDB.h"
#include "config/CVelmIndexIni.h"

#include "CVelmDatabase.h"
#include "support/LocalCodec.h"
#include "support/Printers.h"
#include "support/TemporaryRoot.h"

#include <QFile>

namespace {

class IndexTest : public TemporaryRoot
{
protected:
    IndexTest()
    {
        runSql({QStringLiteral("create table indexini (code text, name text, width, ltype text, "
                               "[table] text, usecode text)"),
                QStringLiteral("create table IndexiniExtend (code text, exttable text)")});
    }

    void addRow(const char* values)
    {
        runSql({QStringLiteral("insert into indexini values (") + QString::fromUtf8(values)
                + QLatin1Char(')')});
    }

    Velm::ErrorStatus load()
    {
        CVelmDatabase database;
        EXPECT_EQ(database.initDatabase(path(QStringLiteral("config/peltaconfig.db")), QString()),
                  Velm::VelmOk);
        return m_index.load(database);
    }

    QString nameOf(const char* code) const
    {
        QString name = QStringLiteral("untouched");
        m_index.getName(QString::fromUtf8(code), name);
        return name;
    }

    CVelmIndexDB m_index;
};

}  // namespace

TEST_F(IndexTest, KeepsTheLastRowOfACodeAndConvertsLooselyTypedColumns)
{
    EXPECT_EQ(load(), Velm::VelmNoData);
    addRow("'110102','旧名','0.5','x5','KZD_PT','SJD'");
    addRow("'110102','三角点','0.15','gc1','KZD_PT','SJD'");
    addRow("220001,null,null,null,null,null");
    EXPECT_EQ(load(), Velm::VelmOk);

    QString ltype, name, usecode, table;
    double width = -1.0;
    ASSERT_EQ(m_index.getPars(QStringLiteral("110102"), ltype, width, name, usecode, table), 0);
    EXPECT_EQ(QStringList({ltype, name, usecode, table}),
              QStringList({QStringLiteral("gc1"), QStringLiteral("三角点"), QStringLiteral("SJD"),
                           QStringLiteral("KZD_PT")}));
    EXPECT_EQ(width, 0.15);
    VelmIndexItem numeric;
    ASSERT_EQ(m_index.getItem(QStringLiteral("220001"), numeric), Velm::VelmOk);
    EXPECT_EQ(numeric.code, QStringLiteral("220001"));
    EXPECT_EQ(numeric.width, 0.0);
    EXPECT_EQ(numeric.name, QString());
}

TEST_F(IndexTest, LeavesOutputsAloneForAnUnknownCode)
{
    addRow("'A1','name',1,'l','t','u'");
    load();
    QString text = QStringLiteral("untouched");
    double width = 7.5;
    QStringList tables{text};
    VelmIndexItem item;
    Velm::EntityType type = Velm::EntityText;
    const QString unknown = QStringLiteral("a1");  // codes are exact
    const QVector<Velm::ErrorStatus> answers{
        m_index.getName(unknown, text),
        m_index.getLType(unknown, text),
        m_index.getUseCode(unknown, text),
        m_index.getGisTableName(unknown, text),
        m_index.getWidth(unknown, width),
        m_index.getPars(unknown, text, width, text, text, text),
        m_index.getExtendTables(unknown, tables),
        m_index.getItem(unknown, item),
        m_index.getEntType(unknown, type),
        m_index.getCodeByUsercode(QString(), text),
        m_index.getCodeByUsercode(QStringLiteral("nobody"), text)};
    EXPECT_EQ(answers, QVector<Velm::ErrorStatus>(answers.size(), Velm::VelmNotFound));
    EXPECT_EQ(QStringList{text} + tables,
              QStringList({QStringLiteral("untouched"), QStringLiteral("untouched")}));
    EXPECT_EQ(width, 7.5);
    EXPECT_EQ(item.code, QString());
    EXPECT_EQ(type, Velm::EntityText);
}

TEST_F(IndexTest, ReplacesExtensionTablesByTheLastRowAndDropsEmptyNames)
{
    addRow("'A','',0,'','',''");
    addRow("'B','',0,'','',''");
    runSql({QStringLiteral(
        "insert into IndexiniExtend values ('A','OLD'), ('A','E1;;E2;'), ('X','E3')")});
    load();
    QStringList tables{QStringLiteral("before")};
    EXPECT_EQ(m_index.getExtendTables(QStringLiteral("A"), tables), Velm::VelmOk);
    EXPECT_EQ(tables, QStringList({QStringLiteral("E1"), QStringLiteral("E2")}));
    EXPECT_EQ(m_index.getExtendTables(QStringLiteral("B"), tables), Velm::VelmOk);
    EXPECT_EQ(tables, QStringList());
    EXPECT_EQ(m_index.getIndexMap().size(), 2) << "a row for an unknown code makes none";
}

TEST_F(IndexTest, FindsCodesByTableAndUserCodeWhateverTheirCase)
{
    addRow("'B','second',0,'','KZD_pt','Sj'");
    addRow("'A','first',0,'','kzd_PT','sJ'");
    addRow("'C','third',0,'','other',''");
    load();
    QStringList codes;
    EXPECT_EQ(m_index.getCodes(QStringLiteral("KZD_PT"), codes), Velm::VelmOk);
    EXPECT_EQ(codes, QStringList({QStringLiteral("A"), QStringLiteral("B")}));
    EXPECT_EQ(m_index.getCodes(QStringLiteral("none"), codes), Velm::VelmOk)
        << "the list held codes before";
    EXPECT_EQ(codes.size(), 2);
    QStringList none;
    EXPECT_EQ(m_index.getCodes(QStringLiteral("none"), none), Velm::VelmNotFound);
    QString code;
    EXPECT_EQ(m_index.getCodeByUsercode(QStringLiteral("SJ"), code), Velm::VelmOk);
    EXPECT_EQ(code, QStringLiteral("A")) << "the smaller code wins";
}

TEST_F(IndexTest, DerivesTheEntityTypeFromLineTypeAndWidth)
{
    const struct
    {
        const char* ltype;
        const char* width;
        Velm::EntityType type;
    } cases[] = {{"GC123", "0", Velm::EntitySpecialLine}, {"gc", "0", Velm::EntitySpecialLine},
                 {"text", "-1", Velm::EntitySpecialLine}, {"Text", "0", Velm::EntityText},
                 {"texts", "0", Velm::EntityGeneral},     {"g", "0.5", Velm::EntityGeneral},
                 {"", "0", Velm::EntityGeneral},          {"x", "-0.001", Velm::EntitySpecialLine}};
    for (const auto& c : cases) {
        runSql({QStringLiteral("delete from indexini")});
        addRow(QByteArray("'A','',")
                   .append(c.width)
                   .append(",'")
                   .append(c.ltype)
                   .append("','',''")
                   .constData());
        load();
        Velm::EntityType type{};
        EXPECT_EQ(m_index.getEntType(QStringLiteral("A"), type), Velm::VelmOk);
        EXPECT_EQ(type, c.type) << c.ltype << ' ' << c.width;
    }
}

TEST_F(IndexTest, WritesThroughToTheDatabase)
{
    addRow("'A','old',1,'l','t','u'");
    load();
    VelmIndexItem item;
    item.code = QStringLiteral("A");
    item.name = QStringLiteral("%1 新名 %2");
    item.width = 0.1;
    EXPECT_EQ(m_index.addItem(item), Velm::VelmOk);
    EXPECT_EQ(
        querySql(QStringLiteral("select name || '/' || usecode || '/' || width from indexini")),
        QStringList{QStringLiteral("%1 新名 %2//0.1")});
    item.code = QStringLiteral("N");
    EXPECT_EQ(m_index.addItem(item), Velm::VelmOk);
    EXPECT_EQ(querySql(QStringLiteral("select code from indexini order by code")),
              QStringList({QStringLiteral("A"), QStringLiteral("N")}));

    EXPECT_EQ(m_index.removeItem(QStringLiteral("A")), Velm::VelmOk);
    EXPECT_EQ(m_index.removeItem(QStringLiteral("A")), Velm::VelmNotFound);
    EXPECT_EQ(querySql(QStringLiteral("select code from indexini")),
              QStringList{QStringLiteral("N")});
}

TEST_F(IndexTest, ChangesMemoryEvenWhenTheDatabaseRefuses)
{
    addRow("'A','old',1,'l','t','u'");
    load();
    VelmIndexItem item;
    item.code = QStringLiteral("A");
    item.name = QStringLiteral("it's");  // the quote ends the text in the statement
    EXPECT_EQ(m_index.addItem(item), Velm::VelmSqlExecFailed);
    EXPECT_EQ(nameOf("A"), QStringLiteral("it's"));

    ASSERT_TRUE(QFile::remove(path(QStringLiteral("config/peltaconfig.db"))));
    item.name = QStringLiteral("new");
    EXPECT_EQ(m_index.addItem(item), Velm::VelmDatabaseOpenFailed);
    EXPECT_EQ(nameOf("A"), QStringLiteral("new"));
    EXPECT_EQ(m_index.removeItem(QStringLiteral("A")), Velm::VelmDatabaseOpenFailed);
    EXPECT_EQ(nameOf("A"), QStringLiteral("untouched"));
    EXPECT_FALSE(QFile::exists(path(QStringLiteral("config/peltaconfig.db"))))
        << "asking must not create it";
}

namespace {

struct FileCase
{
    const char* name;
    const char* content;
    Velm::ErrorStatus status;
    const char* code;  // of the only item; null for none
    const char* ltype;
    double width;
    const char* table;
};

/// Comes before the root, whose folder is named in the local code page too.
struct GbkLocale
{
    const LocalCodec codec{"GBK"};
};

class IndexFile : private GbkLocale,
                  public TemporaryRoot,
                  public testing::WithParamInterface<FileCase>
{};

}  // namespace

TEST_P(IndexFile, YieldsOneLineOnly)
{
    const FileCase& c = GetParam();
    writeFile(QStringLiteral("config/sub/INDEX.ini"), QByteArray(c.content));
    CVelmIndexIni index;
    EXPECT_EQ(index.load(), c.status);
    ASSERT_EQ(index.getIndexMap().size(), c.code ? 1 : 0);
    if (!c.code)
        return;
    VelmIndexItem item;
    ASSERT_EQ(index.getItem(QString::fromUtf8(c.code), item), Velm::VelmOk);
    EXPECT_EQ(item.ltype, QString::fromUtf8(c.ltype));
    EXPECT_EQ(item.width, c.width);
    EXPECT_EQ(item.table, QString::fromUtf8(c.table));
}

INSTANTIATE_TEST_SUITE_P(
    Files, IndexFile,
    testing::Values(
        FileCase{"OneLine", "A,x5,0.5,n,u,T", Velm::VelmOk, "A", "x5", 0.5, "T"},
        FileCase{"LineEnd", "  A,x5,0.5,n,u,T \r\n", Velm::VelmOk, "A", "x5", 0.5, "T"},
        FileCase{"Gbk", "\xB2\xE2,\xC1\xBF,zero,,,T", Velm::VelmOk, "测", "量", 0.0, "T"},
        FileCase{"FewFields", "A,x5", Velm::VelmOk, "A", "x5", 0.0, ""},
        FileCase{"TooManyFields", "A,x5,0.5,n,u,T,more", Velm::VelmOk, "", "", 0.0, ""},
        FileCase{"Empty", "", Velm::VelmOk, "", "", 0.0, ""},
        FileCase{"TwoLines", "A,x5,0.5,n,u,T\nB,x5,0.5,n,u,T", Velm::VelmNoData, nullptr, "", 0,
                 ""},
        FileCase{"BlankSecond", "A,x5,0.5,n,u,T\n\n", Velm::VelmNoData, nullptr, "", 0, ""}),
    [](const auto& info) { return std::string(info.param.name); });

using MissingFile = TemporaryRoot;

TEST_F(MissingFile, IsNotFound)
{
    EXPECT_EQ(CVelmIndexIni().load(), Velm::VelmNotFound);
}
