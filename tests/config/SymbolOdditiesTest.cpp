#include "CVelmAreaLine.h"
#include "CVelmCmdSetting.h"
#include "CVelmDatabase.h"

#include "support/TemporaryRoot.h"

#include <memory>

/// Makes and loads area lines as the configuration manager does.
class AreaLinePeer
{
public:
    static bool load(CVelmDatabase& database)
    {
        CVelmAreaLine areas;
        return areas.initVelmAreaLineConfig(database);
    }
};

/// Makes command settings as the configuration manager does.
class CmdSettingPeer
{
public:
    static std::unique_ptr<CVelmCmdSetting> load(CVelmDatabase& database)
    {
        auto settings = std::unique_ptr<CVelmCmdSetting>(new CVelmCmdSetting);
        settings->load(database);
        return settings;
    }
};

using SymbolOddities = TemporaryRoot;

TEST_F(SymbolOddities, LoadingAreaLinesIsTrueWhenNothingWasLoaded)
{
    runSql({u"create table QuobAreaLine (CODE text)"_s});
    CVelmDatabase database;
    ASSERT_EQ(database.initDatabase(path(u"config/peltaconfig.db"_s), QString()), Velm::VelmOk);
    EXPECT_TRUE(AreaLinePeer::load(database));
    runSql({u"insert into QuobAreaLine values ('A')"_s});
    EXPECT_FALSE(AreaLinePeer::load(database));
}

TEST_F(SymbolOddities, ACommandWithASettingHasNoVersion)
{
    runSql({u"create table VelmCmdSetting (CmdName text, CmdText text)"_s,
            u"insert into VelmCmdSetting values ('Draw', '{\"v1\":1}')"_s});
    CVelmDatabase database;
    ASSERT_EQ(database.initDatabase(path(u"config/peltaconfig.db"_s), QString()), Velm::VelmOk);
    const auto settings = CmdSettingPeer::load(database);
    QStringList versions{u"kept"_s};
    EXPECT_EQ(settings->getCommandVersion(u"dRAW"_s, versions), Velm::VelmNotFound);
    EXPECT_EQ(settings->getCommandVersion(u"other"_s, versions), Velm::VelmOk);
    EXPECT_EQ(versions, QStringList{u"kept"_s});
}
