#include "CVelmConfigManager.h"

#include "CVelmIndex.h"
#include "CVelmSystemGlobal.h"
#include "CVelmWork.h"
#include "support/TemporaryRoot.h"

namespace {

class ConfigManagerTest : public TemporaryRoot
{
protected:
    ConfigManagerTest()
    {
        runSql({u"create table indexini (code text, name text)"_s,
                u"insert into indexini values ('A','from database')"_s,
                u"create table Workdef (code text, layer text)"_s,
                u"insert into Workdef values ('A','L')"_s});
        writeFile(u"config/index.ini"_s, "A,,,from file");
        writeFile(u"config/work.def"_s, "A,F");
    }
    ~ConfigManagerTest() override { m_manager->switchVersion(Velm::VersionDatabase); }

    static QString in(const CVelmIndex* index)
    {
        QString name;
        index->getName(u"A"_s, name);
        return name;
    }
    static QString in(const CVelmWork* work)
    {
        QString layer;
        work->get_layer(u"A"_s, layer, false);
        return layer;
    }

    CVelmConfigManager* const m_manager = CVelmConfigManager::Instance();
    const CVelmConfigManager* const m_const = m_manager;
};

}  // namespace

TEST_F(ConfigManagerTest, HandsOutTheTablesThatTheVersionAndTheConstnessSelect)
{
    ASSERT_TRUE(m_manager->flushVelmConfig());
    EXPECT_EQ(in(m_manager->GetVelmIndex()), u"from database"_s);
    EXPECT_EQ(in(m_manager->GetVelmWork()), u"L"_s);

    m_manager->switchVersion(Velm::VersionTextFiles);
    EXPECT_EQ(CVelmSystemGlobal::Instance()->getVersion(), Velm::VersionTextFiles);
    EXPECT_EQ(in(m_manager->GetVelmIndex()), u"from file"_s);
    EXPECT_EQ(in(m_const->GetVelmIndex()), u"from database"_s);
    EXPECT_EQ(in(m_manager->GetVelmWork()), u"L"_s);
    EXPECT_EQ(in(m_const->GetVelmWork()), u"F"_s);

    const CVelmIndex* fileIndex = m_manager->GetVelmIndex();
    writeFile(u"config/index.ini"_s, "A,,,changed");
    m_manager->switchVersion(static_cast<Velm::Version>(3));
    EXPECT_EQ(m_manager->GetVelmIndex(), fileIndex) << "files are loaded once";
    EXPECT_EQ(in(fileIndex), u"from file"_s);
    ASSERT_TRUE(m_manager->flushVelmConfig());
    EXPECT_EQ(in(m_manager->GetVelmIndex()), u"changed"_s);

    const CVelmIndex* oldIndex = m_const->GetVelmIndex();
    ASSERT_TRUE(QFile::remove(path(u"config/peltaconfig.db"_s)));
    EXPECT_FALSE(m_manager->flushVelmConfig());
    EXPECT_FALSE(QFile::exists(path(u"config/peltaconfig.db"_s)));
    EXPECT_EQ(in(m_const->GetVelmIndex()), QString());
    EXPECT_EQ(in(oldIndex), u"from database"_s) << "the old index is abandoned, not freed";
}
