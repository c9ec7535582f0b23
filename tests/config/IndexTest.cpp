#include "config/tables/CVelmIndexDB.h"
#include "config/tables/CVelmIndexIni.h"

#include "CVelmDatabase.h"
#include "support/LocalCodec.h"
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
                u"create table IndexiniExtend (code text, exttable text)"_s});
    }

    void addRow(const char* values)
    {
        runSql({u"insert into indexini values ("_s + QString::fromUtf8(values) + QLatin1Char(')')});
    }

    Velm::ErrorStatus load()
    {
        CVelmDatabase database;
        EXPECT_EQ(database.initDatabase(path(u"config/peltaconfig.db"_s), QString()), Velm::VelmOk);
        return m_index.load(database);
    }

    QString nameOf(const char* code) const
    {
        QString name = u"untouched"_s;
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
    ASSERT_EQ(m_index.getPars(u"110102"_s, ltype, width, name, usecode, table), 0);
    EXPECT_EQ(QStringList({ltype, name, usecode, table}),
              QStringList({u"gc1"_s, u"三角点"_s, u"SJD"_s, u"KZD_PT"_s}));
    EXPECT_EQ(width, 0.15);
    VelmIndexItem numeric;
    ASSERT_EQ(m_index.getItem(u"220001"_s, numeric), Velm::VelmOk);
    EXPECT_EQ(numeric.code, u"220001"_s);
    EXPECT_EQ(numeric.width, 0.0);
    EXPECT_EQ(numeric.name, QString());
}

TEST_F(IndexTest, LeavesOutputsAloneForAnUnknownCode)
{
    addRow("'A1','name',1,'l','t','u'");
    load();
    QString text = u"untouched"_s;
    double width = 7.5;
    QStringList tables{text};
    VelmIndexItem item;
    Velm::EntityType type = Velm::EntityText;
    const QString unknown = u"a1"_s;  // codes are exact
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
        m_index.getCodeByUsercode(u"nobody"_s, text)};
    EXPECT_EQ(answers, QVector<Velm::ErrorStatus>(answers.size(), Velm::VelmNotFound));
    EXPECT_EQ(QStringList{text} + tables, QStringList({u"untouched"_s, u"untouched"_s}));
    EXPECT_EQ(width, 7.5);
    EXPECT_EQ(item.code, QString());
    EXPECT_EQ(type, Velm::EntityText);
}

TEST_F(IndexTest, ReplacesExtensionTablesByTheLastRowAndDropsEmptyNames)
{
    addRow("'A','',0,'','',''");
    addRow("'B','',0,'','',''");
    runSql({u"insert into IndexiniExtend values ('A','OLD'), ('A','E1;;E2;'), ('X','E3')"_s});
    load();
    QStringList tables{u"before"_s};
    EXPECT_EQ(m_index.getExtendTables(u"A"_s, tables), Velm::VelmOk);
    EXPECT_EQ(tables, QStringList({u"E1"_s, u"E2"_s}));
    EXPECT_EQ(m_index.getExtendTables(u"B"_s, tables), Velm::VelmOk);
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
    EXPECT_EQ(m_index.getCodes(u"KZD_PT"_s, codes), Velm::VelmOk);
    EXPECT_EQ(codes, QStringList({u"A"_s, u"B"_s}));
    EXPECT_EQ(m_index.getCodes(u"none"_s, codes), Velm::VelmOk) << "the list held codes before";
    EXPECT_EQ(codes.size(), 2);
    QStringList none;
    EXPECT_EQ(m_index.getCodes(u"none"_s, none), Velm::VelmNotFound);
    QString code;
    EXPECT_EQ(m_index.getCodeByUsercode(u"SJ"_s, code), Velm::VelmOk);
    EXPECT_EQ(code, u"A"_s) << "the smaller code wins";
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
        runSql({u"delete from indexini"_s});
        addRow(QByteArray("'A','',")
                   .append(c.width)
                   .append(",'")
                   .append(c.ltype)
                   .append("','',''")
                   .constData());
        load();
        Velm::EntityType type{};
        EXPECT_EQ(m_index.getEntType(u"A"_s, type), Velm::VelmOk);
        EXPECT_EQ(type, c.type) << c.ltype << ' ' << c.width;
    }
}

TEST_F(IndexTest, WritesThroughToTheDatabase)
{
    addRow("'A','old',1,'l','t','u'");
    load();
    VelmIndexItem item;
    item.code = u"A"_s;
    item.name = u"%1 新名 %2"_s;
    item.width = 0.1;
    EXPECT_EQ(m_index.addItem(item), Velm::VelmOk);
    EXPECT_EQ(querySql(u"select name || '/' || usecode || '/' || width from indexini"_s),
              QStringList{u"%1 新名 %2//0.1"_s});
    EXPECT_EQ(m_index.removeItem(u"A"_s), Velm::VelmOk);
    EXPECT_EQ(m_index.removeItem(u"A"_s), Velm::VelmNotFound);
    EXPECT_EQ(querySql(u"select code from indexini"_s), QStringList());
}

TEST_F(IndexTest, ChangesMemoryEvenWhenTheDatabaseRefuses)
{
    addRow("'A','old',1,'l','t','u'");
    load();
    VelmIndexItem item;
    item.code = u"A"_s;
    item.name = u"it's"_s;  // the quote ends the text in the statement
    EXPECT_EQ(m_index.addItem(item), Velm::VelmSqlExecFailed);
    EXPECT_EQ(nameOf("A"), u"it's"_s);

    ASSERT_TRUE(QFile::remove(path(u"config/peltaconfig.db"_s)));
    item.name = u"new"_s;
    EXPECT_EQ(m_index.addItem(item), Velm::VelmDatabaseOpenFailed);
    EXPECT_EQ(nameOf("A"), u"new"_s);
    EXPECT_EQ(m_index.removeItem(u"A"_s), Velm::VelmDatabaseOpenFailed);
    EXPECT_EQ(nameOf("A"), u"untouched"_s);
    EXPECT_FALSE(QFile::exists(path(u"config/peltaconfig.db"_s))) << "asking must not create it";
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
    writeFile(u"config/sub/INDEX.ini"_s, QByteArray(c.content));
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
