#include "CVelmAreaLine.h"
#include "CVelmAttribute.h"
#include "CVelmConfigManager.h"
#include "CVelmDatabase.h"
#include "CVelmIndex.h"
#include "CVelmReadGlobaldefinesTable.h"
#include "CVelmRecordManager.h"
#include "CVelmTBLManager.h"
#include "CVelmWork.h"

#include "support/LogLines.h"
#include "support/StarvedMemory.h"
#include "support/TemporaryRoot.h"

#include <future>

namespace {

const QString kPipe = u"config/PipeConfig.db"_s;
const QString kSystemFile = u"peltaconfig.db"_s;

/// The configuration manager on a configuration with all tables and one code, "A".
class ConfigFault : public TemporaryRoot
{
protected:
    ConfigFault()
    {
        createTables();
        runSql({u"insert into indexini (code, name) values ('A', 'first')"_s,
                u"insert into Workdef (code, layer) values ('A', 'L')"_s,
                u"insert into QuobAreaLine (CODE, GROUPNAME) values ('A', 'G')"_s});
    }

    QString file() const { return path(u"config/peltaconfig.db"_s); }

    /// How many codes, layers and area lines are loaded.
    QString loaded() const
    {
        QString layer;
        return u"%1 %2 %3"_s.arg(m_manager->GetVelmIndex()->getIndexMap().size())
            .arg(m_manager->GetVelmWork()->get_layer(u"A"_s, layer, false) == Velm::VelmOk)
            .arg(m_manager->GetVelmAreaLine()->GetAllAreaLineArray().size());
    }

    CVelmConfigManager* const m_manager = CVelmConfigManager::Instance();
    LogLines m_log;
};

struct LoadCase
{
    const char* name;
    const char* sql;  ///< run on the system configuration database
    void (*breakFile)(const QString& folder);
    bool answer;
    const char* loaded;   ///< codes, layer, area lines
    const char* problem;  ///< all that is told, without the text of the driver
};

class LoadFault : public ConfigFault, public testing::WithParamInterface<LoadCase>
{};

void overwrite(const QString& file, qint64 position, const QByteArray& bytes)
{
    QFile broken(file);
    ASSERT_TRUE(broken.open(QIODevice::ReadWrite) && broken.seek(position));
    ASSERT_EQ(broken.write(bytes), bytes.size());
}

}  // namespace

TEST_P(LoadFault, IsToldAndLeavesWhatCannotBeReadEmpty)
{
    const LoadCase& c = GetParam();
    runSql(QString::fromUtf8(c.sql).split(u';', Qt::SkipEmptyParts));
    if (c.breakFile)
        c.breakFile(path(u"config/"_s));
    m_log.take();
    EXPECT_EQ(m_manager->flushVelmConfig(), c.answer);
    EXPECT_EQ(loaded(), QLatin1String(c.loaded));
    const QStringList problems = m_manager->loadProblems();
    const QString expected = QString::fromUtf8(c.problem);
    EXPECT_EQ(problems.size(), 1) << problems.join(u'\n').toStdString();
    EXPECT_EQ(problems.value(0).left(expected.size()), expected);
    EXPECT_EQ(m_log.take().size(), problems.size()) << "a line in the log for each";
}
INSTANTIATE_TEST_SUITE_P(
    Databases, LoadFault,
    testing::Values(
        LoadCase{"MissingFile", "", [](const QString& c) { QFile::remove(c + kSystemFile); }, false,
                 "0 0 0", "peltaconfig.db: no such file"},
        LoadCase{"MissingPipe", "", [](const QString& c) { QFile::remove(c + u"PipeConfig.db"_s); },
                 true, "1 1 1", "PipeConfig.db: no such file"},
        LoadCase{"NoDatabase", "",
                 [](const QString& c) { overwrite(c + kSystemFile, 0, QByteArray(4000, 'x')); },
                 false, "0 0 0", "peltaconfig.db: not a database: "},
        LoadCase{"MissingTable", "drop table Workdef", nullptr, true, "1 0 1",
                 "peltaconfig.db, table \"workdef\": no such table"},
        LoadCase{"EndlessView",
                 "drop table indexini; create view INDEXINI as with recursive n(i) as "
                 "(select 1 union all select i + 1 from n) select i as code from n",
                 nullptr, true, "0 1 1", "peltaconfig.db, table \"indexini\": a view in its place"},
        LoadCase{"VirtualTable",
                 "drop table Workdef; create virtual table Workdef using fts4(code); "
                 "pragma writable_schema=on; update sqlite_master set rootpage=2 where "
                 "name='Workdef'",
                 nullptr, true, "1 0 1",
                 "peltaconfig.db, table \"workdef\": a virtual table in its place"},
        LoadCase{"FieldConversion", "insert into globaldefines values ('字段转换', '{')", nullptr,
                 true, "1 1 1",
                 "peltaconfig.db, table \"globaldefines\": field conversion: Parse json fail"},
        LoadCase{"ComputedColumn", "alter table Workdef add column x as (zeroblob(1000000000))",
                 nullptr, true, "1 0 1", "peltaconfig.db, table \"workdef\": columns are computed"},
        LoadCase{"DamagedPage",
                 "with recursive n(i) as (select 1 union all select i + 1 from n where i < 9000) "
                 "insert into indexini (code, name) select i, 'abcdefgh' from n",
                 [](const QString& c) {
                     const qint64 end = QFile(c + kSystemFile).size();
                     overwrite(c + kSystemFile, end - 50000, QByteArray(30000, '\xff'));
                 },
                 true, "0 1 1", "peltaconfig.db, table \"indexini\": reading broke off: damaged"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(ConfigFault, NothingIsWrittenOrAnsweredUnderTheLockOfAnotherProgram)
{
    runSql({u"insert into globaldefines values ('k', 'v')"_s});
    ASSERT_TRUE(m_manager->flushVelmConfig());
    CVelmDatabase other;
    ASSERT_EQ(other.initDatabase(file(), QString()), Velm::VelmOk);
    ASSERT_EQ(other.executeSql(u"begin exclusive"_s), Velm::VelmOk);

    // All at the same time: each waits for seconds.
    const auto at = std::launch::async;
    VelmIndexItem changed;
    changed.code = u"A"_s;
    VelmAreaLineItem area;
    area.code = u"B"_s;
    auto index = std::async(at, [&] { return m_manager->GetVelmIndex()->addItem(changed); });
    auto areas = std::async(at, [&] {
        return m_manager->GetVelmAreaLine()->UpdateAreaLine({area, area});
    });
    auto define = std::async(
        at, [] { return CVelmReadGlobaldefinesTable::Instance()->set_value(u"k"_s, u"w"_s); });
    auto work = std::async(at, [&] { return m_manager->GetVelmWork()->removeItem(u"A"_s); });
    EXPECT_EQ(index.get(), Velm::VelmSqlExecFailed);
    EXPECT_FALSE(areas.get());
    EXPECT_EQ(define.get(), Velm::VelmSqlExecFailed);
    EXPECT_EQ(work.get(), Velm::VelmSqlExecFailed);
    m_log.take();
    EXPECT_FALSE(m_manager->flushVelmConfig());
    EXPECT_EQ(loaded(), u"0 0 0"_s);
    EXPECT_TRUE(m_manager->loadProblems().value(0).startsWith(u"peltaconfig.db: locked: "_s));
    EXPECT_EQ(m_log.take().size(), 1);

    ASSERT_EQ(other.executeSql(u"commit"_s), Velm::VelmOk);
    for (const char* table : {"indexini", "Workdef", "QuobAreaLine", "globaldefines"})
        EXPECT_EQ(querySql(u"select count(*) from "_s + QLatin1String(table)), QStringList{u"1"_s})
            << table;
    EXPECT_EQ(querySql(u"select name || '|' || value from indexini, globaldefines"_s),
              QStringList{u"first|v"_s});
}

TEST_F(ConfigFault, TablesAreWrittenInAnyLetterCaseAndNeverWithANullCode)
{
    for (const QString& name : {u"IndexIni"_s, u"workdef"_s, u"quobarealine"_s, u"GlobalDefines"_s})
        runSql({u"alter table %1 rename to x"_s.arg(name), u"alter table x rename to "_s + name});
    ASSERT_TRUE(m_manager->flushVelmConfig());
    CVelmIndex* index = m_manager->GetVelmIndex();
    CVelmWork* work = m_manager->GetVelmWork();
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(index->addItem(VelmIndexItem()), Velm::VelmOk);
        EXPECT_EQ(work->addItem(VelmWorkItem()), Velm::VelmOk);
        EXPECT_TRUE(m_manager->GetVelmAreaLine()->addAreaLineItem(VelmAreaLineItem()));
        EXPECT_EQ(CVelmReadGlobaldefinesTable::Instance()->set_value(QString(), u"v"_s),
                  Velm::VelmOk);
    }
    EXPECT_EQ(work->removeItem(u"A"_s), Velm::VelmOk);
    EXPECT_EQ(index->removeItem(u""_s), Velm::VelmOk);
    EXPECT_EQ(querySql(u"select code from indexini"_s), QStringList{u"A"_s});
    EXPECT_EQ(querySql(u"select quote(code) from Workdef"_s), QStringList{u"''"_s});
    EXPECT_EQ(querySql(u"select quote(CODE) from QuobAreaLine order by CODE"_s),
              QStringList({u"''"_s, u"'A'"_s}));
    EXPECT_EQ(querySql(u"select quote(key) from globaldefines"_s), QStringList{u"''"_s});
    runSql(
        {u"drop table GlobalDefines"_s, u"create view globaldefines as select 'k' key, 1 value"_s});
    EXPECT_EQ(CVelmReadGlobaldefinesTable::Instance()->set_value(u"k"_s, u"v"_s),
              Velm::VelmTableNotExist);
}

TEST_F(ConfigFault, LoadsNothingOrAllWhereMemoryRunsOut)
{
    if (!StarvedMemory::isPossible())
        GTEST_SKIP();
    const QString counting =
        u"with recursive n(i) as (select 1 union all select i + 1 from n where i "
        "< 9000) insert into %1"_s;
    runSql({counting.arg(u"indexini (code, name) select 'x' || i, 'abcdefgh' || i from n"_s),
            counting.arg(u"IndexiniExtend select 'x' || i, 'a;b' from n"_s),
            counting.arg(u"Attributetable select 'T' || i, 'a', 'b', 1 from n"_s),
            counting.arg(u"Attributefield ([TABLE], NAME) select 'T' || i, 'f' from n"_s),
            u"create table TBL_A (code text, value text)"_s,
            counting.arg(u"TBL_A select i, 'v' from n"_s),
            u"insert into indexini (code, name) select 'long', hex(zeroblob(200000))"_s});
    int failures = 0;
    bool failed = true;
    for (int which = 1; failed; ++which) {
        bool answer = false;
        {
            const StarvedMemory starved(150000, which);
            answer = m_manager->flushVelmConfig();
            failed = starved.hasFailed();
        }
        EXPECT_EQ(answer, m_manager->loadProblems().isEmpty()) << which;
        EXPECT_EQ(loaded(), answer ? u"9002 1 1"_s : u"0 0 0"_s) << which;
        EXPECT_EQ(m_manager->GetVelmAttribute()->getGisTableMap().size(), answer ? 9000 : 0);
        QMap<QString, QString> dictionary;
        EXPECT_EQ(m_manager->GetVelmTBLManager()->GetDictByTable(u"TBL_A"_s, dictionary), answer);
        failures += answer ? 0 : 1;
    }
    EXPECT_GT(failures, 3);
    QString name;
    EXPECT_EQ(m_manager->GetVelmIndex()->getName(u"long"_s, name), Velm::VelmOk);
    EXPECT_EQ(name.size(), 400000);
    EXPECT_EQ(loaded(), u"9002 1 1"_s);
}

TEST_F(ConfigFault, TablesAreReadAndReplacedWholeOrNotWhereMemoryRunsOut)
{
    if (!StarvedMemory::isPossible())
        GTEST_SKIP();
    const QString table = u"globaldefines"_s;
    const Rows rows(3000, Record{{u"key"_s, QString(40000, u'k')}, {u"value"_s, u"v"_s}});
    CVelmDatabase database;
    ASSERT_EQ(database.initDatabase(file(), QString()), Velm::VelmOk);
    ASSERT_EQ(database.writeTable(table, rows.mid(0, 2000)), Velm::VelmOk);
    bool failed = true;
    int written = 2000;
    for (int which = 1; failed && which < 60; ++which) {
        Rows read(1);
        Velm::ErrorStatus status = Velm::VelmOk;
        {
            const StarvedMemory starved(30000, which);
            status = database.executeSql(u"select * from globaldefines"_s, read);
            failed = starved.hasFailed();
        }
        EXPECT_EQ(read.size(), status == Velm::VelmOk ? written + 1 : 1) << which;
        {
            const StarvedMemory starved(30000, which);
            status = database.writeTable(table, rows.mid(0, 1000 + which));
            failed = failed || starved.hasFailed();
        }
        written = status == Velm::VelmOk ? 1000 + which : written;
        EXPECT_EQ(database.recordCount(table, {}), static_cast<unsigned int>(written)) << which;
    }
}
