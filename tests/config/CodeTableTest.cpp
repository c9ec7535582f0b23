#include "config/tables/CVelmIndexDB.h"
#include "config/tables/CVelmIndexIni.h"
#include "config/tables/CVelmWorkDB.h"
#include "config/tables/CVelmWorkDef.h"
#include "config/Told.h"

#include "CVelmDatabase.h"
#include "support/LocalCodec.h"
#include "support/TemporaryRoot.h"

#include <utility>

namespace {

/// The index and the work definitions, which hold one item for each code.
class CodeTables : public TemporaryRoot
{
protected:
    CodeTables()
    {
        runSql({u"create table indexini (code text, name text, width, ltype text, [table] text, "
                "usecode text)"_s,
                u"create table IndexiniExtend (code text, exttable text)"_s,
                u"create table Workdef (code text, par1 text, par2 text, text text, color int, "
                "layer text, enttype int)"_s});
    }

    void load(const QStringList& statements, Velm::ErrorStatus status = Velm::VelmOk)
    {
        runSql(statements);
        CVelmDatabase database;
        ASSERT_EQ(database.initDatabase(path(u"config/peltaconfig.db"_s), QString()), Velm::VelmOk);
        EXPECT_EQ(m_index.load(database), status);
        EXPECT_EQ(m_work.initVelmWork(database), status);
    }

    /// What a getter answers about the code "A".
    template<class Table, class Base, class Value>
    Value ask(const Table& table, Velm::ErrorStatus (Base::*get)(const QString&, Value&) const)
    {
        Value value{};
        EXPECT_EQ((table.*get)(m_code, value), Velm::VelmOk);
        return value;
    }

    const QString m_code = u"A"_s;
    CVelmIndexDB m_index;
    CVelmWorkDB m_work;
};

const QString kOneIndex = u"insert into indexini values ('A','old',1,'l','t','u')"_s;
const QString kOneWork = u"insert into Workdef values ('A','','','',1,'old',1)"_s;

}  // namespace

TEST_F(CodeTables, KeepTheLastRowOfACodeAndConvertLooselyTypedColumns)
{
    load({}, Velm::VelmNoData);
    load({u"insert into indexini values ('A','旧名','0.5','x5','KZD','S'),"
          "('A','三角点','0.15','gc1','KZD_PT','SJD'), ('B',null,'x',null,null,null)"_s,
          u"insert into Workdef values ('A','old','','',1,'',1),"
          "('A','块','0.5','注','12','KZD','5'), ('B','','','',null,'',null)"_s});
    EXPECT_EQ(told({ask(m_index, &CVelmIndex::getName), ask(m_index, &CVelmIndex::getWidth),
                    ask(m_index, &CVelmIndex::getLType), ask(m_index, &CVelmIndex::getUseCode),
                    ask(m_index, &CVelmIndex::getGisTableName)}),
              u"三角点|0.15|gc1|SJD|KZD_PT"_s);
    QString ltype, name, usecode, table;
    double width = -1.0;
    EXPECT_EQ(m_index.getPars(m_code, ltype, width, name, usecode, table), Velm::VelmOk);
    EXPECT_EQ(told({ltype, width, name, usecode, table}), u"gc1|0.15|三角点|SJD|KZD_PT"_s);
    EXPECT_EQ(told({ask(m_work, &CVelmWork::get_text), ask(m_work, &CVelmWork::get_parOne),
                    ask(m_work, &CVelmWork::get_parTwo), ask(m_work, &CVelmWork::get_color),
                    ask(m_work, &CVelmWork::get_enttype)}),
              u"注|块|0.5|12|5"_s);
    QString par1, par2, text, layer;
    for (const bool flag : {false, true}) {
        EXPECT_EQ(m_work.get_layer(m_code, layer, flag), Velm::VelmOk);
        EXPECT_EQ(std::exchange(layer, QString()), u"KZD"_s);
    }
    int color = -1, enttype = -1;
    EXPECT_EQ(m_work.get_par(m_code, layer, enttype, par1, par2, text, color), Velm::VelmOk);
    EXPECT_EQ(told({layer, enttype, par1, par2, text, color}), u"KZD|5|块|0.5|注|12"_s);
    EXPECT_EQ(m_work.get_par(m_code, par1, color, par2, text, layer), Velm::VelmOk);
    EXPECT_EQ(told({par1, color, par2, text, layer}), u"KZD|5|块|0.5|注"_s);

    VelmIndexItem item;
    EXPECT_EQ(m_index.getItem(u"B"_s, item), Velm::VelmOk);
    EXPECT_EQ(told({item.code, item.name, item.width}), u"B||0"_s);
    VelmWorkItem definition;
    EXPECT_EQ(m_work.getWorkItem(u"B"_s, definition), Velm::VelmOk);
    EXPECT_EQ(told({definition.code, definition.color, definition.enttype}), u"B|0|0"_s);
}

TEST_F(CodeTables, LeaveOutputsAloneForAnUnknownCode)
{
    load({kOneIndex, kOneWork});
    QString text = u"untouched"_s;
    double width = 7.5;
    int number = 42;
    QStringList tables{text};
    VelmIndexItem item;
    VelmWorkItem definition;
    Velm::EntityType type = Velm::EntityText;
    for (const QString& unknown : {u"a"_s, QString()}) {  // codes are exact
        const QVector<Velm::ErrorStatus> answers(
            {m_index.getName(unknown, text), m_index.getLType(unknown, text),
             m_index.getUseCode(unknown, text), m_index.getGisTableName(unknown, text),
             m_index.getWidth(unknown, width),
             m_index.getPars(unknown, text, width, text, text, text),
             m_index.getExtendTables(unknown, tables), m_index.getItem(unknown, item),
             m_index.getEntType(unknown, type), m_index.getCodeByUsercode(unknown, text),
             m_index.removeItem(unknown), m_work.get_text(unknown, text),
             m_work.get_par(unknown, text, number, text, text, text, number),
             m_work.removeItem(unknown)});
        EXPECT_EQ(answers, QVector<Velm::ErrorStatus>(answers.size(), Velm::VelmNotFound));
        EXPECT_FALSE(m_work.isValidCode(unknown));
    }
    EXPECT_EQ(m_work.getWorkItem(QString(), definition), Velm::VelmEmptyArgument);
    EXPECT_EQ(m_work.getWorkItem(u"a"_s, definition), Velm::VelmWorkCodeNotFound);
    EXPECT_EQ(told({text, tables.join(u','), width, number, item.code, definition.code, type}),
              u"untouched|untouched|7.5|42|||%1"_s.arg(Velm::EntityText));
    EXPECT_TRUE(m_work.isValidCode(m_code));
}

TEST_F(CodeTables, TakeExtensionTablesFromTheLastRowWithoutEmptyNames)
{
    runSql({kOneWork, u"insert into indexini (code) values ('A'), ('B')"_s});
    load({u"insert into IndexiniExtend values ('A','OLD'), ('A','E1;;E2;'), ('X','E3')"_s});
    QStringList tables{u"before"_s};
    EXPECT_EQ(m_index.getExtendTables(m_code, tables), Velm::VelmOk);
    EXPECT_EQ(tables, QStringList({u"E1"_s, u"E2"_s}));
    EXPECT_EQ(m_index.getExtendTables(u"B"_s, tables), Velm::VelmOk);
    EXPECT_EQ(tables, QStringList());
    EXPECT_EQ(m_index.getIndexMap().size(), 2) << "a row for an unknown code makes none";
}

TEST_F(CodeTables, FindCodesByTableAndUserCodeWhateverTheirCase)
{
    load({kOneWork, u"insert into indexini (code, [table], usecode) values ('B','KZD_pt','Sj'),"
                    "('A','kzd_PT','sJ'), ('C','other','')"_s});
    QStringList codes;
    EXPECT_EQ(m_index.getCodes(u"none"_s, codes), Velm::VelmNotFound);
    EXPECT_EQ(m_index.getCodes(u"KZD_PT"_s, codes), Velm::VelmOk);
    EXPECT_EQ(m_index.getCodes(u"none"_s, codes), Velm::VelmOk) << "the list held codes before";
    EXPECT_EQ(codes, QStringList({u"A"_s, u"B"_s}));
    QString code;
    EXPECT_EQ(m_index.getCodeByUsercode(u"SJ"_s, code), Velm::VelmOk);
    EXPECT_EQ(code, u"A"_s) << "the smaller code wins";
}

TEST_F(CodeTables, DeriveTheEntityTypeFromLineTypeAndWidth)
{
    load({kOneWork, u"insert into indexini (code, ltype, width) values ('A','GC123',0), "
                    "('B','text',-1), ('C','Text',0), ('D','texts',0), ('E','g',0.5), "
                    "('F','x',-0.001)"_s});
    QMap<QString, Velm::EntityType> types;
    for (const QString& code : m_index.getIndexMap().keys())
        EXPECT_EQ(m_index.getEntType(code, types[code]), Velm::VelmOk);
    const auto special = Velm::EntitySpecialLine, general = Velm::EntityGeneral;
    EXPECT_EQ(types.values(), QList<Velm::EntityType>(
                                  {special, special, Velm::EntityText, general, general, special}));
}

TEST_F(CodeTables, WorkDefinitionsKeepTheColourUnsetWithoutItsColumn)
{
    load({kOneIndex, kOneWork, u"alter table Workdef drop column color"_s,
          u"alter table Workdef drop column enttype"_s});
    EXPECT_EQ(ask(m_work, &CVelmWork::get_color), -1);
    EXPECT_EQ(ask(m_work, &CVelmWork::get_enttype), 0) << "only a missing colour is not";
}

TEST_F(CodeTables, WriteThroughAndKeepMemoryChangedWhenTheDatabaseRefuses)
{
    load({kOneIndex, kOneWork});
    VelmIndexItem item;
    item.code = m_code;
    item.name = u"%1 新名 %2"_s;
    item.width = 0.1;
    VelmWorkItem definition;
    definition.code = u"新"_s;
    definition.layer = u"图层"_s;
    definition.color = 7;
    EXPECT_EQ(m_index.addItem(item), Velm::VelmOk);
    EXPECT_EQ(m_work.addItem(definition), Velm::VelmOk);
    EXPECT_EQ(m_work.removeItem(m_code), Velm::VelmOk);
    EXPECT_EQ(
        querySql(u"select i.name || '|' || usecode || '|' || width || '|' || w.code || '|' || "
                 "layer || '|' || color || '|' || enttype from indexini i, Workdef w"_s),
        QStringList{u"%1 新名 %2||0.1|新|图层|7|-1"_s});

    item.name = u"it's"_s;  // the quote ends the text in the statement
    EXPECT_EQ(m_index.addItem(item), Velm::VelmSqlExecFailed);
    EXPECT_EQ(ask(m_index, &CVelmIndex::getName), u"it's"_s);
    EXPECT_EQ(m_index.removeItem(m_code), Velm::VelmOk);
    EXPECT_EQ(querySql(u"select code from indexini"_s), QStringList());

    ASSERT_TRUE(QFile::remove(path(u"config/peltaconfig.db"_s)));
    definition.code = m_code;
    EXPECT_EQ(m_index.addItem(item), Velm::VelmDatabaseOpenFailed);
    EXPECT_EQ(m_work.addItem(definition), Velm::VelmDatabaseOpenFailed);
    EXPECT_EQ(ask(m_work, &CVelmWork::get_color), 7);
    EXPECT_EQ(m_index.removeItem(m_code), Velm::VelmDatabaseOpenFailed);
    EXPECT_EQ(m_work.removeItem(m_code), Velm::VelmDatabaseOpenFailed);
    EXPECT_FALSE(m_index.getIndexMap().contains(m_code) || m_work.isValidCode(m_code));
    EXPECT_FALSE(QFile::exists(path(u"config/peltaconfig.db"_s))) << "asking must not create it";
}

namespace {

struct FileCase
{
    const char* name;
    const char* content;
    const char* index;  ///< the only item of the index; empty for none
    const char* work;   ///< likewise of the work definitions
};

/// Comes before the root, whose folder is named in the local code page too.
struct GbkLocale
{
    const LocalCodec codec{"GBK"};
};

class CodeFile : private GbkLocale,
                 public TemporaryRoot,
                 public testing::WithParamInterface<FileCase>
{};

}  // namespace

TEST_P(CodeFile, YieldsOneLineOnly)
{
    const QString index = QString::fromUtf8(GetParam().index);
    const QString work = QString::fromUtf8(GetParam().work);
    CVelmIndexIni indexFile;
    CVelmWorkDef workFile;
    EXPECT_EQ(indexFile.load(), Velm::VelmNotFound);
    EXPECT_EQ(workFile.initVelmWork(), Velm::VelmNotFound);
    writeFile(u"config/sub/INDEX.ini"_s, GetParam().content);
    writeFile(u"config/work.def"_s, GetParam().content);
    EXPECT_EQ(indexFile.load(), index.isEmpty() ? Velm::VelmNoData : Velm::VelmOk);
    EXPECT_EQ(workFile.initVelmWork(), Velm::VelmOk) << "whether or not anything was read";
    QStringList items;
    for (const VelmIndexItem& i : indexFile.getIndexMap())
        items.append(told({i.code, i.ltype, i.width, i.name, i.usecode, i.table}));
    EXPECT_EQ(items.join(u'+'), index);
    QString code = work.section(u'|', 0, 0), layer, par1, par2, text;
    int enttype = 0, color = 0;
    const bool found = workFile.get_par(code, layer, enttype, par1, par2, text, color) == 0;
    EXPECT_EQ(found ? told({code, layer, enttype, par1, par2, text, color}) : QString(), work);
    EXPECT_FALSE(work.isEmpty() && workFile.isValidCode(u"A"_s));
}
INSTANTIATE_TEST_SUITE_P(
    Contents, CodeFile,
    testing::Values(FileCase{"OneLine", "  A,x5,0.5,n,u,T \r\n", "A|x5|0.5|n|u|T",
                             "A|x5|0|n|u|T|-1"},
                    FileCase{"AllOfWork", "A,L,3,p,q,t,12", "||0|||", "A|L|3|p|q|t|12"},
                    FileCase{"TooManyFields", "A,x5,0.5,n,u,T,1,more", "||0|||", "||-1||||-1"},
                    FileCase{"Gbk", "\xB2\xE2,\xC1\xBF", "测|量|0|||", "测|量|-1||||-1"},
                    FileCase{"Empty", "", "||0|||", "||-1||||-1"},
                    FileCase{"TwoLines", "A,x5,0.5,n,u,T\nB,x5,0.5,n,u,T", "", ""},
                    FileCase{"BlankSecond", "A,x5,0.5,n,u,T\n\n", "", ""}),
    [](const auto& info) { return std::string(info.param.name); });
