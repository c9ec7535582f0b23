#include "CVelmConfigManager.h"

#include "CVelmIndex.h"
#include "CVelmSystemGlobal.h"
#include "CVelmWork.h"
#include "support/Printers.h"
#include "support/TemporaryRoot.h"

#include <QFile>

namespace {

class ConfigManagerTest : public TemporaryRoot
{
protected:
    ConfigManagerTest()
    {
        runSql({QStringLiteral("create table indexini (code text, name text)"),
                QStringLiteral("insert into indexini values ('A','from database')"),
                QStringLiteral("create table Workdef (code text, layer text)"),
                QStringLiteral("insert into Workdef values ('A','L')")});
        writeFile(QStringLiteral("config/index.ini"), "A,,,from file");
        writeFile(QStringLiteral("config/work.def"), "A,F");
    }
    ~ConfigManagerTest() override { m_manager->switchVersion(Velm::VersionDatabase); }

    static QString nameIn(const CVelmIndex* index)
    {
        QString name;
        index->getName(QStringLiteral("A"), name);
        return name;
    }
    static QString layerIn(const CVelmWork* work)
    {
        QString layer;
        work->get_layer(QStringLiteral("A"), layer, false);
        return layer;
    }

    CVelmConfigManager* const m_manager = CVelmConfigManager::Instance();
    const CVelmConfigManager* const m_const = m_manager;
};

}  // namespace

TEST_F(ConfigManagerTest, HandsOutTheTablesThatTheVersionAndTheConstnessSelect)
{
    ASSERT_TRUE(m_manager->flushVelmConfig());
    EXPECT_EQ(nameIn(m_manager->GetVelmIndex()), QStringLiteral("from database"));
    EXPECT_EQ(layerIn(m_manager->GetVelmWork()), QStringLiteral("L"));

    m_manager->switchVersion(Velm::VersionTextFiles);
    EXPECT_EQ(CVelmSystemGlobal::Instance()->getVersion(), Velm::VersionTextFiles);
    EXPECT_EQ(nameIn(m_manager->GetVelmIndex()), QStringLiteral("from file"));
    EXPECT_EQ(nameIn(m_const->GetVelmIndex()), QStringLiteral("from database"));
    EXPECT_EQ(layerIn(m_manager->GetVelmWork()), QStringLiteral("L"));
    EXPECT_EQ(layerIn(m_const->GetVelmWork()), QStringLiteral("F"));

    const CVelmIndex* fileIndex = m_manager->GetVelmIndex();
    writeFile(QStringLiteral("config/index.ini"), "A,,,changed");
    m_manager->switchVersion(static_cast<Velm::Version>(3));
    EXPECT_EQ(m_manager->GetVelmIndex(), fileIndex) << "files are loaded once";
    EXPECT_EQ(nameIn(fileIndex), QStringLiteral("from file"));
    ASSERT_TRUE(m_manager->flushVelmConfig());
    EXPECT_EQ(nameIn(m_manager->GetVelmIndex()), QStringLiteral("changed"));
}

TEST_F(ConfigManagerTest, LeavesEmptyTablesWithoutADatabase)
{
    ASSERT_TRUE(m_manager->flushVelmConfig());
    const CVelmIndex* oldIndex = m_manager->GetVelmIndex();
    ASSERT_TRUE(QFile::remove(path(QStringLiteral("config/peltaconfig.db"))));
    EXPECT_FALSE(m_manager->flushVelmConfig());
    ASSERT_NE(m_manager->GetVelmIndex(), nullptr);
    ASSERT_NE(m_manager->GetVelmWork(), nullptr);
    EXPECT_TRUE(m_manager->GetVelmIndex()->getIndexMap().isEmpty());
    EXPECT_FALSE(m_manager->GetVelmWork()->isValidCode(QStringLiteral("A")));
    EXPECT_FALSE(QFile::exists(path(QStringLiteral("config/peltaconfig.db"))));
    EXPECT_EQ(nameIn(oldIndex), QStringLiteral("from database"))
        << "the old index is abandoned, not freed";
}
