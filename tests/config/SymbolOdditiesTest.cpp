#include "config/tables/AreaLines.h"
#include "CVelmCmdSetting.h"
#include "CVelmConfigManager.h"
#include "CVelmDatabase.h"

#include "support/TemporaryRoot.h"

using SymbolOddities = TemporaryRoot;

TEST_F(SymbolOddities, LoadingAreaLinesIsTrueWhenNothingWasLoaded)
{
    runSql({u"create table QuobAreaLine (CODE text)"_s});
    CVelmDatabase database;
    ASSERT_EQ(database.initDatabase(path(u"config/peltaconfig.db"_s), QString()), Velm::VelmOk);
    QMap<QString, VelmAreaLineItem> areas;
    EXPECT_TRUE(velm::detail::loadAreaLines(database, areas));
    runSql({u"insert into QuobAreaLine values ('A')"_s});
    EXPECT_FALSE(velm::detail::loadAreaLines(database, areas));
}

// The settings are read when the manager is made, so no other test of this program asks for it.
TEST_F(SymbolOddities, ACommandWithASettingHasNoVersion)
{
    runSql({u"create table VelmCmdSetting (CmdName text, CmdText text)"_s,
            u"insert into VelmCmdSetting values ('Draw', '{\"v1\":1}')"_s});
    CVelmCmdSetting& settings = *CVelmConfigManager::Instance()->GetVelmCmdSetting();
    QStringList versions{u"kept"_s};
    EXPECT_EQ(settings.getCommandVersion(u"dRAW"_s, versions), Velm::VelmNotFound);
    EXPECT_EQ(settings.getCommandVersion(u"other"_s, versions), Velm::VelmOk);
    EXPECT_EQ(versions, QStringList{u"kept"_s});
}
