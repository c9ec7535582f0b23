#include "CVelmDatabase.h"
#include "data/ConfigDatabase.h"
#include "data/Statement.h"

#include "support/Records.h"
#include "support/TemporaryRoot.h"

#include <QFileInfo>

using namespace velm::detail;

using DatabaseRunner = TemporaryRoot;

TEST_F(DatabaseRunner, RefusesAQueryThatStandsOnARecord)
{
    CVelmDatabase database;
    ASSERT_EQ(database.initDatabase(u":memory:"_s, QString()), Velm::VelmOk);
    QSqlQuery query = forwardQuery(database.getQSqlDatabase());
    ASSERT_EQ(runStatement(query, u"select 1 union select 2"_s), Velm::VelmOk);
    ASSERT_TRUE(query.next());
    EXPECT_EQ(runStatement(query, u"create table T (A)"_s), Velm::VelmQueryBusy);
    EXPECT_FALSE(database.existTable(u"T"_s));
    EXPECT_TRUE(query.next()) << "the query was disturbed";
}

TEST_F(DatabaseRunner, MakesNoConfigurationOfAMissingOne)
{
    const QString file = path(u"config/peltaconfig.db"_s);
    CVelmDatabase database;
    for (const QString& name : {file, path(u"config"_s), QString()})
        EXPECT_EQ(openConfigDatabase(database, name), Velm::VelmDatabaseOpenFailed);
    EXPECT_FALSE(QFileInfo::exists(file));
    writeFile(u"config/peltaconfig.db"_s, "");
    EXPECT_EQ(openConfigDatabase(database, file), Velm::VelmOk);
}
