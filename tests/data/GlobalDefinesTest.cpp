#include "CVelmReadGlobaldefinesTable.h"
#include "CVelmTBLManager.h"

#include "support/TemporaryRoot.h"

#include <QSqlDatabase>

namespace {

using Pairs = QVector<QPair<QString, QString>>;

CVelmReadGlobaldefinesTable& defines()
{
    return *CVelmReadGlobaldefinesTable::Instance();
}

}  // namespace

using GlobalDefines = TemporaryRoot;
using Dictionaries = TemporaryRoot;

TEST_F(GlobalDefines, InsertsUpdatesAndLeavesEqualValuesAlone)
{
    QString value;
    EXPECT_FALSE(defines().get_value(u"k"_s, value));
    EXPECT_EQ(defines().set_value(u"k"_s, u"v"_s), Velm::VelmDatabaseOpenFailed);
    EXPECT_FALSE(QFileInfo::exists(path(u"config/peltaconfig.db"_s)));

    runSql({u"create table other (key text)"_s});
    EXPECT_EQ(defines().set_value(u"k"_s, u"v"_s), Velm::VelmTableNotExist);
    runSql({u"create table globaldefines (key text, value text, note text default 'new')"_s,
            u"create table writes (n int)"_s,
            u"create trigger t after update on globaldefines begin insert into writes values (1); "
            "end"_s,
            u"insert into globaldefines values ('empty', '', 'kept')"_s});
    EXPECT_FALSE(defines().get_value(u"empty"_s, value));
    EXPECT_EQ(defines().set_value(u"键"_s, u"值"_s), Velm::VelmOk);
    EXPECT_TRUE(defines().get_value(u"键"_s, value));
    EXPECT_EQ(value, u"值"_s);
    EXPECT_EQ(defines().set_value(u"键"_s, u"值"_s), Velm::VelmOk);
    EXPECT_EQ(querySql(u"select count(*) from writes"_s), QStringList{u"0"_s});
    EXPECT_EQ(defines().set_value(u"empty"_s, u"x"_s), Velm::VelmOk);
    EXPECT_EQ(querySql(u"select key || value || note from globaldefines order by key"_s),
              (QStringList{u"emptyxkept"_s, u"键值new"_s}));
}

TEST_F(GlobalDefines, ExchangesMapsAsJson)
{
    runSql({created(u"globaldefines"_s),
            u"insert into globaldefines values ('list', '[1]'), ('none', '{}'), ('bad', '{')"_s});
    const QMap<QString, QVariant> map{{u"名"_s, u"值"_s}, {u"n"_s, 1.5}};
    EXPECT_EQ(defines().set_value(u"map"_s, map), Velm::VelmOk);
    QMap<QString, QVariant> read;
    EXPECT_TRUE(defines().get_value(read, u"map"_s));
    EXPECT_EQ(read, map);
    for (const char* key : {"list", "none", "bad"})
        EXPECT_FALSE(defines().get_value(read, QString::fromLatin1(key))) << key;
}

TEST_F(Dictionaries, ComeFromTablesAndPipeRows)
{
    runSql({u"create table tb_路面 (code int, value text)"_s,
            u"insert into tb_路面 values (2, '水泥'), (1, 'Road'), (2, '沥青')"_s,
            u"create table Tbl_材料（旧） (code text, value text)"_s,
            u"insert into Tbl_材料（旧） values ('1', '钢')"_s,
            u"create table TBL_A (code text, value text)"_s,
            u"insert into TBL_A values ('a', 'table')"_s,
            u"create table other (code text, value text)"_s,
            u"create table TBL_lacks (code text)"_s,
            u"create table \"TBL_A where 1=1; drop table TBL_A\" (code text, value text)"_s,
            u"create table \"TBL_x]'\" (code text, value text)"_s});
    runSql({created(u"SYS_DICTIONARY"_s),
            u"insert into SYS_DICTIONARY values ('管材', 'a;;c'), ('', 'x'), ('TBL_A', 'pipe')"_s},
           u"config/PipeConfig.db"_s);
    CVelmTBLManager manager;
    Pairs pairs{{u"before"_s, QString()}};
    for (const char16_t* name : {u"other", u"TBL_lacks", u"TB_路面", u"", u"TBL_x]'"})
        EXPECT_FALSE(manager.GetDictByTable(QString::fromUtf16(name), pairs));
    EXPECT_EQ(pairs.size(), 1);
    EXPECT_TRUE(manager.GetDictByTable(u"tb_路面"_s, pairs));
    EXPECT_EQ(pairs, (Pairs{{u"2"_s, u"水泥"_s}, {u"1"_s, u"Road"_s}, {u"2"_s, u"沥青"_s}}));
    QMap<QString, QString> map;
    const CVelmTBLManager copy = manager;
    EXPECT_TRUE(copy.GetDictByTable(u"tb_路面"_s, map));
    EXPECT_EQ(map, (QMap<QString, QString>{{u"1"_s, u"Road"_s}, {u"2"_s, u"沥青"_s}}));
    EXPECT_EQ(manager.getCodeValue(u"管材"_s, u"-"_s), (QStringList{u"0-a"_s, u"1-"_s, u"2-c"_s}));
    EXPECT_EQ(manager.getCodeValue(u"TBL_A"_s, u"="_s), QStringList{u"0=pipe"_s});
    EXPECT_EQ(manager.getCodeValue(u"Tbl_材料（旧）"_s, u":"_s), QStringList{u"1:钢"_s});
    EXPECT_EQ(manager.getCodeValue(u"unknown"_s, u"="_s), QStringList());
    EXPECT_EQ(querySql(u"select count(*) from TBL_A"_s), QStringList{u"1"_s});
}

TEST_F(Dictionaries, AreNoneWithoutTheSystemDatabase)
{
    runSql({created(u"SYS_DICTIONARY"_s), u"insert into SYS_DICTIONARY values ('管材', 'a')"_s},
           u"config/PipeConfig.db"_s);
    EXPECT_TRUE(CVelmTBLManager().getCodeValue(u"管材"_s, QString()).isEmpty());
    EXPECT_FALSE(QFileInfo::exists(path(u"config/peltaconfig.db"_s)));
    writeFile(u"config/peltaconfig.db"_s, "this is no database, however long it may be made");
    EXPECT_TRUE(CVelmTBLManager().getCodeValue(u"管材"_s, QString()).isEmpty());
    EXPECT_TRUE(QSqlDatabase::contains(u"TBL_SQLITE"_s)) << "the connection stays registered";
}
