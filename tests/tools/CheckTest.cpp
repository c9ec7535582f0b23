#include "support/TemporaryRoot.h"
#include "support/Tool.h"

#include <QJsonArray>

namespace {

/// A configuration of the sample set, checked by the program.
class CheckTest : public TemporaryRoot
{
protected:
    CheckTest() { EXPECT_EQ(velm({u"init"_s, root()}).exitCode, 0); }

    Answer check(const QStringList& options) const
    {
        return velm(QStringList{u"--root"_s, root(), u"check"_s} + options);
    }

    /// "rule table column value" of each finding, but for the older text files that are not read.
    static QStringList found(const Answer& answer)
    {
        QStringList list;
        for (const QJsonValue& finding : answer.json.array()) {
            const auto text = [&](const char* key) {
                return finding[QLatin1String(key)].toString();
            };
            if (text("rule") != u"text-file-lines"_s)
                list.append(
                    QStringList{text("rule"), text("table"), text("column"), text("value").left(12)}
                        .join(QLatin1Char(' ')));
        }
        list.sort();
        return list;
    }
};

}  // namespace

TEST_F(CheckTest, FindsNothingInTheSampleSet)
{
    const Answer answer = check({u"--json"_s});
    EXPECT_EQ(answer.exitCode, 0);
    EXPECT_EQ(found(answer), QStringList());
    EXPECT_EQ(check({u"--strict"_s}).exitCode, 1) << "text files that their readers leave empty";
    EXPECT_TRUE(check({}).output.endsWith(u"0 errors, 0 warnings, 2 notes\n"_s));
}

TEST_F(CheckTest, FindsWhatBreaksEachRule)
{
    runSql(
        {u"delete from IndexiniExtend"_s,
         u"insert into IndexiniExtend values ('310301', 'EXT_FWDC;EXT_NONE')"_s,
         u"update indexini set [TABLE] = 'NO_PG' where CODE = '310301'"_s,
         u"update indexini set USECODE = 'Sjd' where CODE = '310301'"_s,
         u"insert into indexini (CODE, NAME, WIDTH) values ('110102', 'again', 0), "
         "('x1', '', 0), ('X1', '', 0), ('lone', '', 0)"_s,
         u"insert into Workdef (CODE, LAYER, ENTTYPE) values ('x1', 'jmd_m', 9), ('X1', 'A', 1),"
         "('wild', 'A', 1)"_s,
         u"update Workdef set TEXT = 'O''Brien' where CODE = '310301'"_s,
         u"update Workdef set PAR1 = '\U0001F600' where CODE = '310301'"_s,
         u"update QuobAreaLine set LINEWIDTH = 'wide' where CODE = '310301'"_s,
         u"update VelmAnnotate set ANNTYPE = 6, INPUT = 3, ENTTYPE = -1, EXTDATA = '[1]' where "
         "CODE = '310301'"_s,
         u"update Attributefield set [DEFAULT] = 'TBL_NONE' where [TABLE] = 'JMD_PG' and NAME = "
         "'FWJG'"_s,
         u"update VelmCmdSetting set CmdText = '{' where CmdName = 'CONTOUR'"_s,
         u"update globaldefines set value = '{\"TableInfo\":{\"TableName\":\"NO_T\"}}' where key "
         "= '字段转换'"_s,
         u"insert into globaldefines values ('字段转换', '{\"TableInfo\":{\"TableName\":"
         "\"jmd_pg\"},\"FieldMap\":[{\"FieldName\":\"NO_F\"}]}')"_s,
         u"insert into RecordConfig values ('310301', '99999999999', 'JMD_PG', 'FWJG')"_s,
         u"insert into Attributefield ([TABLE], NAME, TYPE) values ('jmd_pg', 'fwjg', '2.x')"_s,
         u"drop index IX_Workdef_CODE"_s,
         u"create index p on Workdef (CODE) where CODE > 'A'"_s,
         u"drop table VelmFrame"_s,
         u"insert into VelmCmdSetting values ('', '[]')"_s,
         u"alter table RecordConfigType rename column EXTEND to X"_s});
    QStringList expected{u"annotation-type-range VelmAnnotate ANNTYPE 6"_s,
                         u"code-differs-in-case Workdef CODE X1"_s,
                         u"code-differs-in-case indexini CODE X1"_s,
                         u"code-without-drawing indexini CODE lone"_s,
                         u"conversion-field globaldefines VALUE {\"TableInfo\""_s,
                         u"conversion-table globaldefines VALUE {\"TableInfo\""_s,
                         u"drawing-without-code Workdef CODE wild"_s,
                         u"duplicate-code indexini CODE 110102"_s,
                         u"duplicate-code Attributefield NAME fwjg"_s,
                         u"duplicate-code globaldefines KEY 字段转换"_s,
                         u"duplicate-user-code indexini USECODE Sjd"_s,
                         u"empty-code VelmCmdSetting CMDNAME "_s,
                         u"entity-type-range VelmAnnotate ENTTYPE -1"_s,
                         u"entity-type-range Workdef ENTTYPE 9"_s,
                         u"input-type-range VelmAnnotate INPUT 3"_s,
                         u"json-syntax VelmCmdSetting CMDTEXT {"_s,
                         u"json-type VelmAnnotate EXTDATA [1]"_s,
                         u"layer-differs-in-case Workdef LAYER jmd_m"_s,
                         u"missing-column RecordConfigType EXTEND "_s,
                         u"missing-index Workdef CODE "_s,
                         u"missing-table VelmFrame  "_s,
                         u"not-a-number Attributefield TYPE 2.x"_s,
                         u"not-a-number QuobAreaLine LINEWIDTH wide"_s,
                         u"not-in-gbk Workdef PAR1 \U0001F600"_s,
                         u"single-quote Workdef TEXT O'Brien"_s,
                         u"text-file-field   "_s,
                         u"unknown-dictionary Attributefield DEFAULT TBL_NONE"_s,
                         u"unknown-extension-table IndexiniExtend EXTTABLE EXT_FWDC;EXT"_s,
                         u"unknown-gis-table indexini TABLE NO_PG"_s,
                         u"unknown-pipe-field RecordConfig SHOWFIELD 99999999999"_s};
    writeFile(u"config/attribute.def"_s, "F,A,n\n");
    expected.sort();
    const Answer answer = check({u"--json"_s});
    EXPECT_EQ(answer.exitCode, 1);
    EXPECT_EQ(found(answer), expected);

    const Answer one = check({u"--json"_s, u"--rule"_s, u"single-quote"_s});
    EXPECT_EQ(found(one), QStringList{u"single-quote Workdef TEXT O'Brien"_s});
    const QJsonValue run = check({u"--sarif"_s}).json[u"runs"_s][0];
    EXPECT_EQ(run[u"results"_s].toArray().size(), answer.json.array().size());
    EXPECT_EQ(run[u"tool"_s][u"driver"_s][u"rules"_s].toArray().size(), 26);
    EXPECT_FALSE(run[u"results"_s][0][u"message"_s][u"text"_s].toString().isEmpty());
    const QJsonValue file =
        run[u"results"_s].toArray().last()[u"locations"_s][0][u"physicalLocation"_s];
    EXPECT_EQ(file[u"artifactLocation"_s][u"uri"_s].toString(), u"config/attribute.def"_s);
    EXPECT_EQ(file[u"region"_s][u"startLine"_s].toInt(), 1);
    EXPECT_EQ(check({u"--rule"_s, QString()}).exitCode, 2);
}

TEST_F(CheckTest, ReadsDocumentsAsTheLibraryDoes)
{
    runSql({u"delete from globaldefines where key in ('GlobalParam', '字段转换', '图属库')"_s,
            u"insert into globaldefines values ('GlobalParam', '{\"FrameData\":{\"FrameSize\":"
            "{\"FrameWidth\":\"50\"}},\"SortRule\":[]}'), ('图属库', '\uFEFF{}')"_s,
            u"update VelmFrame set FRAMEMODE = "
            u"'{\"SelMode\":\"1\",\"TrimMode\":3000000000,\"Any\":[]}',"
            "FRAMETAG = '{\"a\":{},\"b\":1}' where rowid = 1"_s});
    runSql({u"create table globaldefines (KEY, VALUE)"_s,
            u"insert into globaldefines values ('字段转换', '{\"TableInfo\":{\"TableName\":"
            "\"JMD_PG\"},\"FieldMap\":{\"FWJG\":{\"FieldLength\":\"8\"},\"NO_F\":{}}}')"_s},
           u"config/PipeConfig.db"_s);
    QStringList messages;
    const Answer answer = check({u"--json"_s});
    for (const QJsonValue& finding : answer.json.array()) {
        if (finding[u"severity"_s] == u"error"_s)
            messages.append(finding[u"rule"_s].toString() + u" "_s
                            + finding[u"message"_s].toString());
    }
    messages.sort();
    EXPECT_EQ(
        messages,
        (QStringList{

            u"json-syntax 图属库: Parse json fail. err=Invalid value.. offset=0"_s,
            u"json-type GlobalParam: not integer. (path:m_frameData.m_frameSize.m_frameWidth"_s,
            u"json-type GlobalParam: not object. (path:m_sortRule"_s,
            u"json-type SelMode is to be an integer"_s, u"json-type TrimMode is to be an integer"_s,
            u"json-type the tag \"b\" is to be a JSON object"_s,
            u"json-type 字段转换: not integer. (path:m_newFieldMap.FWJG.m_fieldLength"_s}));
}

TEST_F(CheckTest, KnowsWhichDictionariesAndIndexesTheLibraryCanUse)
{
    runSql({u"create table TBL_NOVALUE (code)"_s, u"create table [TBL_A-B] (code, value)"_s,
            u"create table tb_quote (code, value)"_s, u"insert into tb_quote values (1, 'it''s')"_s,
            u"update Attributefield set [DEFAULT] = 'TBL_NOVALUE' where rowid = 1"_s,
            u"update Attributefield set [DEFAULT] = 'TBL_A-B' where rowid = 2"_s,
            u"drop index IX_Workdef_CODE"_s, u"create index n on Workdef (CODE collate nocase)"_s});
    EXPECT_EQ(found(check({u"--json"_s})),
              (QStringList{u"missing-column TBL_NOVALUE VALUE "_s, u"missing-index Workdef CODE "_s,
                           u"single-quote tb_quote VALUE it's"_s,
                           u"unknown-dictionary Attributefield DEFAULT TBL_A-B"_s,
                           u"unknown-dictionary Attributefield DEFAULT TBL_NOVALUE"_s}));
}

TEST_F(CheckTest, RefusesADatabaseThatItCannotRead)
{
    writeFile(u"config/PipeConfig.db"_s, "no database, whatever its name may say");
    EXPECT_EQ(check({}).exitCode, 3);
    writeFile(u"config/peltaconfig.db"_s, "no database, whatever its name may say");
    const Answer answer = check({});
    EXPECT_EQ(answer.exitCode, 3);
    EXPECT_TRUE(answer.talk.contains(u"peltaconfig.db"_s)) << answer.talk.toStdString();
}

TEST_F(CheckTest, ExplainsItsRulesAndRefusesOthers)
{
    EXPECT_TRUE(
        check({u"--explain"_s, u"single-quote"_s}).output.startsWith(u"single-quote (error)"_s));
    const Answer unknown = check({u"--rule"_s, u"single-quotes"_s});
    EXPECT_EQ(unknown.exitCode, 2);
    EXPECT_TRUE(unknown.talk.contains(u"did you mean single-quote?"_s))
        << unknown.talk.toStdString();
}
