#include "config/parameters/GlobalParamBinding.h"
#include "config/parameters/GlobalParamStore.h"
#include "CVelmMessage.h"
#include "CVelmReadGlobaldefinesTable.h"
#include "CVelmSaveUserData.h"
#include "data/values/UserStore.h"

#include "support/Boxes.h"
#include "support/TemporaryRoot.h"

#include <memory>

using velm::detail::GlobalParamStore;
using velm::detail::UserStore;
using Extent = GlobalParamStore::Extent;

namespace {

/// A JSON text, for whose quotes there are apostrophes.
QString json(const char* text)
{
    return QString::fromUtf8(text).replace(u'\'', u'"');
}

constexpr char16_t kFile[] = u"用户.dat";

class UserData : public TemporaryRoot
{
protected:
    QString file() const { return path(QString::fromUtf16(kFile)); }

    Boxes m_boxes;
};

}  // namespace

TEST_F(UserData, KeepsOneValueForEachPairOfKeys)
{
    UserStore store(file());
    const QString inputs = UserStore::inputs();
    EXPECT_EQ(store.value(inputs, u"绘图"_s, u"scale"_s), QString());
    EXPECT_TRUE(store.setValue(inputs, u"绘图"_s, u"scale"_s, u"500"_s));
    EXPECT_TRUE(store.setValue(inputs, u"绘图"_s, u"scale"_s, u"50%1"_s));
    EXPECT_TRUE(store.setValue(inputs, u"绘图"_s, u"other"_s, u"x"_s));
    EXPECT_TRUE(store.setValue(UserStore::paths(), u"绘图"_s, u"scale"_s, u"D:/图"_s));
    UserStore again(file());
    EXPECT_EQ(again.value(inputs, u"绘图"_s, u"scale"_s), u"50%1"_s);
    EXPECT_EQ(again.value(UserStore::paths(), u"绘图"_s, u"scale"_s), u"D:/图"_s);
    EXPECT_EQ(querySql(u"select count(*) from UserInput"_s, QString::fromUtf16(kFile)),
              QStringList{u"2"_s});
    EXPECT_EQ(m_boxes.take(), QString());

    EXPECT_FALSE(store.setValue(inputs, u"t"_s, u"n"_s, u"O'Brien"_s)) << "values are not escaped";
    EXPECT_EQ(store.value(inputs, u"t"_s, u"n'"_s), QString());
    EXPECT_TRUE(m_boxes.take().startsWith(u"40030 警告: "_s)) << "tells the error of the query";
}

TEST_F(UserData, TellsOnceThatItsFileCannotBeOpened)
{
    ASSERT_TRUE(QDir().mkpath(file()));  // a folder in the file's place
    UserStore store(file());
    EXPECT_FALSE(store.isReady());
    EXPECT_EQ(m_boxes.take(), u"40010 错误: 初始化文件失败！！！"_s);
    EXPECT_EQ(store.value(UserStore::inputs(), u"t"_s, u"n"_s), QString());
    EXPECT_EQ(m_boxes.take(), QString());
    EXPECT_FALSE(store.setValue(UserStore::paths(), u"t"_s, u"n"_s, u"v"_s));
    EXPECT_EQ(m_boxes.take(), u"40010 错误: 文件未打开，写入数据失败！！！"_s);
    ASSERT_TRUE(QDir().rmdir(file()));
    EXPECT_TRUE(store.setValue(UserStore::paths(), u"t"_s, u"n"_s, u"v"_s)) << "is tried again";
}

TEST_F(UserData, TheHostsStoreTellsInputsFromPaths)
{
    CVelmSaveUserData& store = *CVelmSaveUserData::Instance();
    const QString name = root();  // of this run alone: the file lies beside the program and stays
    EXPECT_TRUE(store.setUserInput(u"t"_s, name, u"input"_s));
    EXPECT_TRUE(store.setPathRecord(u"t"_s, name, u"path"_s));
    EXPECT_EQ(store.userInput(u"t"_s, name), u"input"_s);
    EXPECT_EQ(store.pathRecord(u"t"_s, name), u"path"_s);
}

namespace {

std::unique_ptr<UserStore> userStore;

UserStore& sharedStore()
{
    return *userStore;
}

class GlobalParam : public UserData
{
protected:
    GlobalParam() { userStore = std::make_unique<UserStore>(file()); }
    ~GlobalParam() override { userStore.reset(); }

    void store(const QString& text)
    {
        ASSERT_TRUE(
            userStore->setValue(UserStore::inputs(), u"GlobalParam"_s, u"VelmGlobalParam"_s, text));
    }
    static QString stored(const QString& name = u"VelmGlobalParam"_s)
    {
        return userStore->value(UserStore::inputs(), u"GlobalParam"_s, name);
    }
    void ship(const QString& text)
    {
        runSql({created(u"globaldefines"_s),
                u"insert into globaldefines values ('GlobalParam', '%1')"_s.arg(text)});
    }
    QStringList shipped() const
    {
        return querySql(u"select value from globaldefines where key = 'GlobalParam'"_s);
    }

    GlobalParamStore m_store{sharedStore};
    VelmGlobalParam m_param;
};

}  // namespace

TEST_F(GlobalParam, LetsTheUsersCopyShadowTheShippedDefault)
{
    EXPECT_FALSE(m_store.load(m_param)) << "no text at all";
    EXPECT_FALSE(QFileInfo::exists(path(u"config/peltaconfig.db"_s)));
    ship(json("{'SortRule':{'SortMode':4},"
              "'FrameData':{'FrameSave':{'FrameSpaceX':5}}}"));
    EXPECT_TRUE(m_store.load(m_param));
    EXPECT_EQ(m_param.m_sortRule.m_SortMode, 4);
    EXPECT_EQ(m_param.m_frameData.m_frameSave.m_frameSpaceX, 5);
    EXPECT_EQ(m_param.m_frameData.m_frameSave.m_frameSpaceY, 5) << "read from the same key";

    store(json("{'CommandInfo':{'SaveDwgVersion':31,'CmdShowPrompt':'yes'}}"));
    EXPECT_TRUE(m_store.load(m_param)) << "a member of the wrong type keeps its default";
    EXPECT_EQ(m_param.m_commandInfo.m_SaveDwgVersion, 31);
    EXPECT_TRUE(m_param.m_commandInfo.m_bCmdShowPrompt);
    EXPECT_EQ(m_param.m_sortRule.m_SortMode, 0);

    for (const QString& broken : {u"{"_s, u"[1]"_s}) {
        store(broken);
        EXPECT_FALSE(m_store.load(m_param));
        EXPECT_EQ(m_param.m_commandInfo.m_SaveDwgVersion, 31);
    }
}

TEST_F(GlobalParam, SavesWhatWasLoadedOrSetAndKeepsTheRest)
{
    ship(json("{'Later':{'x':[1]},'CommandInfo':{'SaveDwgVersion':'?'},"
              "'SortRule':{'SortMode':3}}"));
    ASSERT_TRUE(m_store.load(m_param));
    EXPECT_TRUE(m_store.save(m_param, false, Extent::Changes));
    EXPECT_EQ(stored(), shipped().value(0)) << "loaded, so it becomes the user's copy";

    m_param.m_sortRule.m_SortDir1 = 2;
    m_param.m_mustFieldData.m_symbolText = u"O'Brien"_s;
    EXPECT_TRUE(m_store.save(m_param, false, Extent::Changes));
    const QString expected = json(
        "{'Later':{'x':[1]},'CommandInfo':{'SaveDwgVersion':'?'},"
        "'SortRule':{'SortMode':3,'SortDir1':2},'MustFieldData':{'SymbolText':'O\\u0027Brien'}}");
    EXPECT_EQ(stored(), expected);
    EXPECT_FALSE(shipped().value(0).contains(u"Brien"_s));
    EXPECT_TRUE(m_store.save(m_param, true, Extent::Changes));
    EXPECT_EQ(shipped(), QStringList{expected});
}

TEST_F(GlobalParam, NeverSavesDefaultsOverTheUsersRecord)
{
    EXPECT_TRUE(m_store.save(m_param, true, Extent::Changes));
    EXPECT_EQ(stored(), QString()) << "nothing was loaded or set";

    const QString broken = u"{\"CommandInfo\":'"_s;
    store(u"{\"CommandInfo\":''"_s);
    ASSERT_FALSE(m_store.load(m_param));
    EXPECT_TRUE(m_store.save(m_param, false, Extent::Changes));
    EXPECT_EQ(stored(), broken);

    m_param.m_frameData.m_frameSave.m_frameSpaceX = 3;
    m_param.m_frameData.m_frameSave.m_frameSpaceY = 7;
    EXPECT_TRUE(m_store.save(m_param, false, Extent::Changes));
    EXPECT_EQ(stored(), json("{'FrameData':{'FrameSave':{'FrameSpaceX':7}}}"))
        << "one key for both, the vertical one counts";
    EXPECT_EQ(stored(u"VelmGlobalParam.unreadable"_s), broken);
}

TEST_F(GlobalParam, SettingsOfAnotherProgramSurvive)
{
    store(json("{'SortRule':{'SortMode':1}}"));
    ASSERT_TRUE(m_store.load(m_param));
    store(json("{'SortRule':{'SortMode':9}}"));  // saved by another program meanwhile
    m_param.m_drawModeParam.m_keepPolyline = false;
    EXPECT_TRUE(m_store.save(m_param, false, Extent::Changes));
    EXPECT_EQ(stored(), json("{'SortRule':{'SortMode':9},'DrawModeParam':{'KeepPolyline':false}}"));
    store(json("{'DrawModeParam':{'KeepPolyline':true}}"));
    m_param.m_sortRule.m_SortDir2 = 1;
    m_param.m_annNameMap.m_nameForamt = u"x"_s + QChar(0xD800);  // half of a pair
    EXPECT_TRUE(m_store.save(m_param, false, Extent::Changes));
    EXPECT_TRUE(stored().contains(json("'KeepPolyline':true")))
        << "saved before, so no change of ours";
    EXPECT_TRUE(stored().contains(json("'SortDir2':1")));
}

TEST_F(GlobalParam, KeepsTheRecordOfAUserThatCannotBeReadNow)
{
    store(json("{'Mine':1}"));
    runSql({u"alter table UserInput rename to Hidden"_s}, QString::fromUtf16(kFile));
    m_param.m_sortRule.m_SortMode = 5;
    EXPECT_FALSE(m_store.save(m_param, false, Extent::Changes));
    EXPECT_FALSE(userStore->setValue(UserStore::inputs(), u"t"_s, u"n"_s, u"v"_s));
    runSql({u"alter table Hidden rename to UserInput"_s}, QString::fromUtf16(kFile));
    EXPECT_EQ(stored(), json("{'Mine':1}"));
    EXPECT_TRUE(m_store.save(m_param, false, Extent::Changes));
    EXPECT_EQ(stored(), json("{'Mine':1,'SortRule':{'SortMode':5}}"));
}

TEST_F(GlobalParam, SavesTheWholeRecordForTheHost)
{
    ship(json("{'SortRule':{'SortMode':3}}"));
    store(json("{'Mine':1,'SortRule':7,'CommandInfo':{'SaveDwgVersion':31}}"));
    m_param.m_drawModeParam.m_DrawMode = 2;
    EXPECT_TRUE(m_store.save(m_param, false, Extent::Record));
    EXPECT_TRUE(stored().startsWith(json("{'Mine':1,'SortRule':{'SortMode':0,'SortType':0,")))
        << stored().toStdString();
    VelmGlobalParam read;
    EXPECT_TRUE(GlobalParamStore(sharedStore).load(read));
    EXPECT_EQ(read.m_drawModeParam.m_DrawMode, 2);
    EXPECT_EQ(read.m_commandInfo.m_SaveDwgVersion, 31) << "stored, and not changed here";
    const auto keys = velm::detail::json::toDocument(m_param).MemberCount();
    EXPECT_EQ(velm::detail::json::parse(stored()).MemberCount(), keys + 1) << "and \"Mine\"";
}

TEST_F(GlobalParam, AreNotWrittenWhereTheShippedDefaultCannotBeRead)
{
    writeFile(u"config/peltaconfig.db"_s, QByteArray(2000, 'x'));
    m_param.m_sortRule.m_SortMode = 5;
    for (const Extent extent : {Extent::Changes, Extent::Record})
        EXPECT_FALSE(m_store.save(m_param, false, extent));
    EXPECT_EQ(stored(), QString());
    EXPECT_FALSE(m_store.load(m_param));
    EXPECT_EQ(m_param.m_sortRule.m_SortMode, 5);
    ASSERT_TRUE(QFile::remove(path(u"config/peltaconfig.db"_s)));
    EXPECT_TRUE(m_store.save(m_param, false, Extent::Changes)) << "nothing is shipped";
    EXPECT_EQ(stored(), json("{'SortRule':{'SortMode':5}}"));
}

TEST(GlobalParamKeys, AreThoseOfTheSampleSet)
{
    QFile sample(QStringLiteral(VELM_SAMPLE_PARAMETERS));
    ASSERT_TRUE(sample.open(QIODevice::ReadOnly));
    const auto document = velm::detail::json::parse(QString::fromUtf8(sample.readAll()));
    VelmGlobalParam read;
    velm::detail::json::read(document, read);
    EXPECT_EQ(velm::detail::json::toText(velm::detail::json::toDocument(read)),
              velm::detail::json::toText(document));
}
