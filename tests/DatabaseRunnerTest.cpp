#include "data/Statement.h"

#include "CVelmDatabase.h"
#include "support/Records.h"

#include <gtest/gtest.h>

TEST(DatabaseRunner, RefusesAQueryThatStandsOnARecord)
{
    CVelmDatabase database;
    ASSERT_EQ(database.initDatabase(u":memory:"_s, QString()), Velm::VelmOk);
    QSqlQuery query = velm::detail::forwardQuery(database.getQSqlDatabase());
    ASSERT_EQ(velm::detail::runStatement(query, u"select 1 union select 2"_s), Velm::VelmOk);
    ASSERT_TRUE(query.next());
    EXPECT_EQ(velm::detail::runStatement(query, u"create table T (A)"_s), Velm::VelmQueryBusy);
    EXPECT_FALSE(database.existTable(u"T"_s));
    EXPECT_TRUE(query.next()) << "the query was disturbed";
}
