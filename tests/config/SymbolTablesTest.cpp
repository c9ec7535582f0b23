#include "CVelmAnnotate.h"
#include "CVelmAreaLine.h"
#include "CVelmAttribute.h"
#include "CVelmCmdSetting.h"
#include "CVelmCodeManager.h"
#include "CVelmConfigManager.h"
#include "CVelmFrame.h"
#include "CVelmIndex.h"
#include "CVelmRecordManager.h"
#include "CVelmWork.h"

#include "config/Told.h"
#include "support/TemporaryRoot.h"

namespace {

/// The configuration manager on a configuration of the test's own.
class SymbolTables : public TemporaryRoot
{
protected:
    void load(const QStringList& statements)
    {
        runSql(statements);
        ASSERT_TRUE(m_manager->flushVelmConfig());
    }

    CVelmConfigManager* const m_manager = CVelmConfigManager::Instance();
};

// With texts for numbers, as some programs write them.
const QString kAnnTable =
    u"create table VelmAnnotate (CODE text, FONT text, PLACE text, DECIMAL text, TEXT text, "
    "EXTDATA text, HEIGHT real, ROTATE real, FACTOR real, LINETYPE text, INPUT int, ANNTYPE int, "
    "ENTTYPE int)"_s;

}  // namespace

TEST_F(SymbolTables, TellHowAreasAreDrawn)
{
    load({created(u"QuobAreaLine"_s),
          u"insert into QuobAreaLine values ('A', 1, '0.15', 2, '0', null, 'ann', 'area', 'grp'),"
          "('A', 5, 0.5, 1.5, 3, 'x', 'ann2', 'area2', 'grp2'), (null, 1, 1, 1, 1, 1, 1, 1, 1)"_s});
    CVelmAreaLine* areas = m_manager->GetVelmAreaLine();
    const auto drawn = [areas](const QString& code) {
        return told({areas->GetAreaLineLineWidth(code), areas->GetAreaLineLineTypeScale(code),
                     areas->GetAreaLineHatchColor(code), areas->GetAreaLineHatchBKColor(code),
                     areas->GetAreaLineEntType(code), areas->GetAreaLineAnnRule(code),
                     areas->GetAreaLineAreaRule(code), areas->GetAreaLineGroupName(code)});
    };
    EXPECT_EQ(drawn(u"A"_s), u"0.5|1.5|3|0|5|ann2|area2|grp2"_s) << "the last row of a code counts";
    EXPECT_EQ(drawn(u"a"_s), u"0|0|7|7||||"_s) << "codes are exact";
    EXPECT_EQ(areas->GetAllAreaLineArray().size(), 2);
    EXPECT_TRUE(areas->isValidCode(QString()));
    EXPECT_FALSE(areas->isValidCode(u"a"_s));
    VelmAreaLineItem item;
    item.code = u"before"_s;
    EXPECT_FALSE(areas->GetAreaLineItem(item, u"a"_s));
    EXPECT_EQ(item.code, u"before"_s);
}

TEST_F(SymbolTables, KeepAreasInTheDatabaseFirst)
{
    load({created(u"QuobAreaLine"_s),
          u"insert into QuobAreaLine (CODE, GROUPNAME) values ('A', 'old')"_s});
    CVelmAreaLine* areas = m_manager->GetVelmAreaLine();
    VelmAreaLineItem changed;
    changed.code = u"A"_s;
    changed.groupname = u"new"_s;
    changed.hatchcolor = 9;
    VelmAreaLineItem refused = changed;
    refused.groupname = u"it's"_s;  // a quote breaks the statement
    VelmAreaLineItem added = changed;
    added.code = u"B"_s;

    EXPECT_FALSE(areas->addAreaLineItem(refused));
    EXPECT_EQ(areas->GetAreaLineGroupName(u"A"_s), u"old"_s);
    EXPECT_TRUE(areas->addAreaLineItem(changed));
    EXPECT_EQ(areas->GetAreaLineGroupName(u"A"_s), u"new"_s);
    EXPECT_FALSE(areas->UpdateAreaLine({refused}));
    EXPECT_FALSE(areas->UpdateAreaLine({refused, added}));
    EXPECT_EQ(areas->GetAreaLineHatchColor(u"B"_s), 9) << "what was written is loaded";
    EXPECT_TRUE(areas->UpdateAreaLine({}));
    runSql(
        {u"insert into QuobAreaLine (CODE, GROUPNAME) values ('A', 'last')"_s,
         u"create trigger t before update on QuobAreaLine when old.GROUPNAME = 'last' begin select "
         "raise(abort, 'no'); end"_s});
    changed.groupname = u"half"_s;
    EXPECT_FALSE(areas->addAreaLineItem(changed)) << "fails at the second of its rows";
    EXPECT_EQ(areas->GetAreaLineGroupName(u"A"_s), u"new"_s);
    EXPECT_EQ(querySql(u"select GROUPNAME from QuobAreaLine where CODE = 'A'"_s),
              (QStringList{u"new"_s, u"last"_s}));
    runSql({u"delete from QuobAreaLine where GROUPNAME = 'last'"_s});
    EXPECT_EQ(querySql(u"select CODE || '|' || GROUPNAME || '|' || HATCHCOLOR from QuobAreaLine"_s),
              (QStringList{u"A|new|9"_s, u"B|new|9"_s}));
    runSql({u"create trigger u before insert on QuobAreaLine when new.CODE = 'D' begin select "
            "raise(rollback, 'the disk is full'); end"_s});
    QVector<VelmAreaLineItem> more(3, added);
    for (int i = 0; i < more.size(); ++i)
        more[i].code = QChar('C' + i);
    EXPECT_FALSE(areas->UpdateAreaLine(more)) << "everything is taken back, what follows too";
    EXPECT_EQ(querySql(u"select CODE from QuobAreaLine"_s), (QStringList{u"A"_s, u"B"_s}));
    EXPECT_EQ(areas->GetAllAreaLineArray().size(), 2);
    ASSERT_TRUE(QFile::remove(path(u"config/peltaconfig.db"_s)));
    EXPECT_FALSE(areas->addAreaLineItem(added));
    EXPECT_FALSE(areas->UpdateAreaLine({added}));
}

TEST_F(SymbolTables, TellHowAnnotationsArePlacedUpToANumberOutOfRange)
{
    load({kAnnTable, u"create table Workdef (CODE text, LAYER text, COLOR int)"_s,
          u"insert into Workdef values ('A', 'ZJ', 3)"_s,
          u"insert into VelmAnnotate values"
          "('A', 'F', 'MR', '3', 'T', '{\"k\":[1]}', 2.5, 0.5, 0.8, '-2.9', 2, 5, 8),"
          "('input', 'F', 'P', 1, 'T', '[1]', 2, 0, 1, 2.9, 3, 0, 0),"
          "('ann', 'F', 'P', 1, 'T', 'x', 2, 0, 1, 1, 0, 6, 0),"
          "('ent', 'F', 'P', 1, 'T', null, 2, 0, 1, 1e300, 0, 0, 9),"
          "('wide', 'F', 'P', 1, 'T', null, 2, 0, 1, 1, 4294967297, 0, 0)"_s});
    CVelmAnnotate* annotate = m_manager->GetVelmAnnotate();
    VelmAnnItem item;
    EXPECT_EQ(annotate->getAnnotateItem(u"A"_s, item), Velm::VelmOk);
    EXPECT_EQ(told({item.code, item.layer, item.color}), u"A|ZJ|3"_s);
    EXPECT_EQ(item.extdata, (Record{{u"k"_s, QVariantList{1}}}));
    const auto one = [annotate](auto get, auto value) {
        EXPECT_EQ((annotate->*get)(u"A"_s, value), Velm::VelmOk);
        return value;
    };
    using Annotate = CVelmAnnotate;
    EXPECT_EQ(told({one(&Annotate::getFont, QString()), one(&Annotate::getPlace, QString()),
                    one(&Annotate::getAnnText, QString()), one(&Annotate::getDecimal, 0),
                    one(&Annotate::getHeight, 0.0), one(&Annotate::getRotate, 0.0),
                    one(&Annotate::getFactor, 0.0)}),
              u"F|MR|T|3|2.5|0.5|0.8"_s);
    EXPECT_EQ(told({one(&Annotate::getLineType, 0), one(&Annotate::getAnnType, Velm::AnnType1),
                    one(&Annotate::getEntType, Velm::EntityUnset),
                    one(&Annotate::getInputType, Velm::InputUnset)}),
              u"-2|5|8|2"_s)
        << "the line type goes towards 0";

    const QMap<QString, QString> choices({{u"input"_s, u"-1|1|-1"_s},  // as far as they were read
                                          {u"ann"_s, u"0|1|-1"_s},
                                          {u"ent"_s, u"0|0|-1"_s},
                                          {u"wide"_s, u"-1|1|-1"_s}});
    for (const QString& code : choices.keys()) {
        VelmAnnItem partly;
        QString font = u"before"_s;
        EXPECT_EQ(annotate->getAnnotateItem(code, partly), Velm::VelmInvalidValue);
        EXPECT_EQ(annotate->getFont(code, font), Velm::VelmInvalidValue);
        EXPECT_EQ(told({partly.inputtype, partly.anntype, partly.enttype}), choices[code])
            << code.toStdString();
        EXPECT_EQ(told({partly.code, partly.height, partly.color, partly.extdata.size(), font}),
                  code + u"|2|7|0|before"_s)
            << "no work definition, no object";
    }
    ASSERT_TRUE(QFile::remove(path(u"config/peltaconfig.db"_s)));
    EXPECT_EQ(annotate->getAnnotateItem(u"A"_s, item), Velm::VelmDatabaseOpenFailed);
}

TEST_F(SymbolTables, FindRowsByTheExactCodeOnly)
{
    load({u"create table VelmAnnotate (CODE int, FONT text)"_s,
          u"insert into VelmAnnotate values (31, 'number'), ('3_', 'any'), ('3%', 'all'),"
          "('Ab', 'case'), ('Abc', 'longer'), ('Ab', 'second')"_s});
    CVelmAnnotate* annotate = m_manager->GetVelmAnnotate();
    const QMap<QString, QString> fonts{
        {u"31"_s, u"number"_s}, {u"3_"_s, u"any"_s}, {u"3%"_s, u"all"_s}, {u"Ab"_s, u"case"_s}};
    for (const QString& code :
         {u"31"_s, u"3_"_s, u"3%"_s, u"Ab"_s, u"ab"_s, u"A"_s, u"3"_s, u""_s, u"%"_s}) {
        QString font;
        EXPECT_EQ(annotate->getFont(code, font),
                  fonts.contains(code) ? Velm::VelmOk : Velm::VelmNoData);
        EXPECT_EQ(font, fonts.value(code)) << code.toStdString();
    }
    VelmAnnItem item;
    EXPECT_EQ(annotate->getAnnotateItem(u"Ab"_s, item), Velm::VelmOk);
    EXPECT_EQ(item.height, 0.0) << "there is no such column";
}

TEST_F(SymbolTables, TellHowFramesAreProduced)
{
    load(
        {created(u"VelmFrame"_s),
         u"insert into VelmFrame values ('A', '图幅', '{\"SelMode\":1,\"TrimMode\":2,"
         "\"FrameStyle\":3,\"FrameSave\":4,\"FrameScaleType\":5,\"FrameSizeType\":0}',"
         "'{\"t\":{\"x\":1},\"n\":5}', '{\"d\":1}', '{\"e\":1}'), ('B', 'b', '[', 'null', '', null)"_s});
    CVelmFrame* frames = m_manager->GetVelmFrame();
    VelmFrameItem item;
    EXPECT_EQ(frames->getFrameItem(u"A"_s, item), Velm::VelmOk);
    EXPECT_EQ(told({item.configname, item.framename, item.selmode, item.trimmode, item.framestyle,
                    item.framesave, item.framescaletype, item.framesizetype}),
              u"A|图幅|1|2|3|4|5|0"_s);
    EXPECT_EQ(item.entdeploy, (Record{{u"d"_s, 1}}));
    EXPECT_EQ(item.extand, QVariant(Record{{u"e"_s, 1}}));
    EXPECT_EQ(frames->getFrameItem(u"B"_s, item), Velm::VelmOk);
    EXPECT_EQ(item.framesizetype, 128);
    EXPECT_EQ(item.extand.type(), QVariant::Map);

    Record tags;
    EXPECT_EQ(frames->getFrameTag(tags, u"A"_s, u"none"_s), Velm::VelmNoData);
    EXPECT_EQ(frames->getFrameTag(tags, u"A"_s, u"t"_s), Velm::VelmOk);
    EXPECT_EQ(tags, (Record{{u"x"_s, 1}}));
    EXPECT_EQ(frames->getFrameTag(tags, u"A"_s, u"none"_s), Velm::VelmOk) << "as it was";
    EXPECT_EQ(tags.size(), 1);
    EXPECT_EQ(frames->getFrameTag(tags, u"A"_s, QString()), Velm::VelmOk);
    EXPECT_EQ(tags.keys(), (QStringList{u"n"_s, u"t"_s}));
    EXPECT_EQ(frames->getFrameTag(tags, u"A"_s, u"n"_s), Velm::VelmNoData) << "5 is no map";
    Velm::TrimMode mode = Velm::TrimModeDefault;
    EXPECT_EQ(frames->getFrameTrimMode(u"none"_s, mode), Velm::VelmNoData);

    item.configname = u"01"_s;
    runSql({u"drop table VelmFrame"_s, u"create table VelmFrame (ConfigName integer)"_s,
            u"insert into VelmFrame values (1)"_s});
    EXPECT_EQ(frames->getFrameItem(item.configname, item), Velm::VelmOk);
    EXPECT_EQ(item.configname, u"01"_s) << "as it was asked for";
}

TEST_F(SymbolTables, HandOutCommandSettings)
{
    load({created(u"VelmCmdSetting"_s),
          u"insert into VelmCmdSetting values ('List', '[1,\"\",\"a\"]'), ('Map', '{\"v\":1}'),"
          "('Bad', '{'), ('Empty', '')"_s});
    CVelmCmdSetting* settings = m_manager->GetVelmCmdSetting();
    QStringList texts{u"kept"_s};
    EXPECT_EQ(settings->getCommandSettingStringList(u"List"_s, texts), Velm::VelmOk);
    EXPECT_EQ(texts, (QStringList{u"kept"_s, u"1"_s, u"a"_s}));
    Record map;
    EXPECT_EQ(settings->getCommandSettingVariantMap(u"Map"_s, map), Velm::VelmOk);
    EXPECT_EQ(map, (Record{{u"v"_s, 1}}));
    for (const char16_t* name : {u"List", u"Bad"})
        EXPECT_EQ(settings->getCommandSettingVariantMap(QString::fromUtf16(name), map),
                  Velm::VelmSettingConvertFailed);
    EXPECT_EQ(settings->getCommandSettingStringList(u"Map"_s, texts),
              Velm::VelmSettingConvertFailed);
    for (const char16_t* name : {u"Empty", u"list", u"none"}) {
        QString text = u"before"_s;
        EXPECT_EQ(settings->getCommandSettingString(QString::fromUtf16(name), text),
                  Velm::VelmSettingNotFound);
        EXPECT_EQ(text, QString());
    }
    const QString unknown = u"unknown "_s + root();
    EXPECT_EQ(settings->getCommandVersion(unknown, texts), Velm::VelmOk);
    EXPECT_EQ(settings->getCommandVersion(unknown.toUpper(), texts), Velm::VelmNotFound)
        << "asking has entered it";
    EXPECT_EQ(texts.size(), 3);
}

TEST_F(SymbolTables, TellHowRecordsAreShownAndWritten)
{
    runSql({u"create table PIP_SysConfig (FIELDTYPE text, FIELDNAME text)"_s,
            u"insert into PIP_SysConfig values ('3', '管材'), (3, '材质')"_s},
           u"config/PipeConfig.db"_s);
    load({created(u"RecordConfigType"_s),
          u"insert into RecordConfigType values ('A', 'n', 'e', 't', 5)"_s,
          created(u"RecordConfig"_s),
          u"insert into RecordConfig values ('A', 3, 'w', '3a'), ('[Default]', 'x', 'y', '4'),"
          "('A', 'z', '3', 'q')"_s,
          created(u"globaldefines"_s)});
    CVelmRecordManager records;
    QVector<VelmRecordConfig> configs;
    EXPECT_TRUE(records.getRecordConfig(u"A"_s, configs));
    ASSERT_EQ(configs.size(), 2);
    EXPECT_EQ(told({configs[0].showField, configs[0].writeTable, configs[0].actualField}),
              u"材质|w|3a"_s);
    EXPECT_EQ(told({configs[1].showField, configs[1].writeTable}), u"z|3"_s);
    EXPECT_TRUE(records.getRecordConfig(u"B"_s, configs));
    ASSERT_EQ(configs.size(), 1);
    EXPECT_EQ(configs[0].actualField, QString()) << "an unknown number";
    VelmRecordConfigType type;
    EXPECT_TRUE(records.getRecordConfigType(u"A"_s, type));
    EXPECT_EQ(told({type.code, type.name, type.extend, type.table, type.type}), u"A|n|e|t|5"_s);
    EXPECT_FALSE(records.getRecordConfigType(u"[Default]"_s, type));

    VelmRecordGenusDatabase layout;
    EXPECT_FALSE(records.getGenusDatabase(layout));
    runSql({u"insert into globaldefines values ('图属库', '{\"HeaderList\":[\"a\",\"b\"],"
            "\"KeyField\":\"a\",\"FieldType\":[0,3],\"FieldDecimal\":[0,2],\"MatchRule\":\"?\","
            "\"ShowPoint\":1}')"_s});
    EXPECT_TRUE(records.getGenusDatabase(layout));
    EXPECT_EQ(layout.headerList, (QStringList{u"a"_s, u"b"_s}));
    EXPECT_EQ(layout.fieldType, (QList<int>{0, 3}));
    EXPECT_EQ(layout.fieldDecimal, (QList<int>{0, 2}));
    EXPECT_TRUE(layout.showPoint);
    EXPECT_EQ(layout.matchRule, 0);
    runSql({u"update globaldefines set value = '{\"HeaderList\":[\"a\",5,\"c\"],"
            "\"FieldType\":[\"x\",2]}'"_s});
    EXPECT_TRUE(m_manager->GetVelmRecordManager()->getGenusDatabase(layout));
    EXPECT_EQ(layout.headerList, (QStringList{u"a"_s, u""_s, u"c"_s})) << "places count";
    EXPECT_EQ(layout.fieldType, (QList<int>{0, 2}));
    EXPECT_EQ(m_manager->GetVelmRecordManager()->getPIPSysConfigInformation(3), u"材质"_s);
}

TEST_F(SymbolTables, ChooseAmongDefinedCodes)
{
    load({u"create table Workdef (CODE text, TEXT text)"_s,
          u"insert into Workdef values ('A', 'Road'), ('B', 'River')"_s});
    m_manager->switchVersion(Velm::VersionTextFiles);
    CVelmCodeManager* codes = CVelmCodeManager::Instance();
    EXPECT_EQ(codes->filterInValidCode({u"B"_s, u"X"_s, u"A"_s, u"B"_s}),
              (QStringList{u"B"_s, u"A"_s, u"B"_s}));
    QString choices = u"before"_s, numbers = u"before"_s;
    EXPECT_EQ(codes->GetPromptByCodes(choices, numbers, {u"A"_s, u"X"_s, u"B"_s}), Velm::VelmOk);
    EXPECT_EQ(told({choices, numbers}), u"(0)Road/(1)River|0 1"_s);
    EXPECT_EQ(codes->GetPromptByCodes(choices, numbers, {u"X"_s}), Velm::VelmInvalidValue);
    EXPECT_EQ(told({choices, numbers}), u"|"_s);
    m_manager->switchVersion(Velm::VersionDatabase);
}
