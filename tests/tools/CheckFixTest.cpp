// What `velm check --fix` mends and leaves, and that it does so whole.

#include "tools/CheckFixture.h"

#include <QProcess>

TEST_F(CheckTest, MendsWhatHasOneSafeAnswer)
{
    runSql({u"update indexini set CODE = '310301 ' where CODE = '310301'"_s,
            u"insert into indexini (CODE, NAME, WIDTH) values (' 110102', 'taken', 0)"_s,
            u"update Workdef set LAYER = 'jmd_m' where CODE = '320102'"_s,
            u"insert into VelmCmdSetting values ('  ', '[]')"_s,
            u"insert into VelmFrame (ConfigName) values (' N'), ('N ')"_s});
    const Answer answer =
        check({u"--fix"_s, u"--json"_s, u"--rule"_s, u"blank-at-end"_s, u"--rule"_s,
               u"empty-code"_s, u"--rule"_s, u"layer-differs-in-case"_s});
    EXPECT_EQ(found(answer), (QStringList{u"blank-at-end VelmFrame CONFIGNAME N"_s,
                                          u"blank-at-end indexini CODE  110102"_s}))
        << "another row has that name";
    const QStringList copies =
        QDir(path(u"config"_s)).entryList({u"peltaconfig.db.before-fix-*"_s});
    ASSERT_EQ(copies.size(), 1);
    const QString told = QString(answer.talk)
                             .remove(u'\r')
                             .remove(u"velm: "_s)
                             .replace(path(u"config"_s) + u'/' + copies.first(), u"COPY"_s);
    EXPECT_EQ(
        told.split(u": peltaconfig.db "_s).join(u": "_s).split(u'\n'),
        (QStringList{
            u"fixed: VelmCmdSetting row 12 (CMDNAME   ) CMDNAME: the row is removed"_s,
            u"fixed: indexini row 123 (CODE 310301 ) CODE: \"310301 \" is \"310301\" now"_s,
            u"left: indexini row 621 (CODE  110102) CODE: without the blank it would be a "
            "second \"110102\""_s,
            u"fixed: VelmFrame row 7 (CONFIGNAME  N) CONFIGNAME: \" N\" is \"N\" now"_s,
            u"left: VelmFrame row 8 (CONFIGNAME N ) CONFIGNAME: without the blank it would be "
            "a second \"N\""_s,
            u"fixed: Workdef row 147 (CODE 320102) LAYER: \"jmd_m\" is \"JMD_M\" now"_s,
            u"kept: COPY"_s, u"4 fixed, 2 left"_s, QString()}));
    const Answer again = check({u"--fix"_s});
    EXPECT_EQ(again.exitCode, 1) << "what has no safe answer stays";
    EXPECT_TRUE(again.talk.contains(u"velm: 0 fixed, 2 left"_s)) << again.talk.toStdString();
    EXPECT_TRUE(
        check({u"--fix"_s, u"--rule"_s, u"comma"_s}).talk.startsWith(u"velm: nothing to fix"_s));
    EXPECT_EQ(querySql(u"select CODE from indexini where NAME = '一般房屋'"_s,
                       u"config/"_s + copies.first()),
              QStringList{u"310301 "_s});
    EXPECT_EQ(querySql(u"select CODE from indexini where NAME = '一般房屋'"_s),
              QStringList{u"310301"_s});

    for (int count = 2; count < 4; ++count) {  // within a second, mostly
        runSql({u"insert into VelmCmdSetting values ('', '[]')"_s});
        check({u"--fix"_s});
        EXPECT_EQ(QDir(path(u"config"_s)).entryList({u"peltaconfig.db.before-fix-*"_s}).size(),
                  count);
    }
    runSql({u"create table Q as select * from QuobAreaLine"_s, u"drop table QuobAreaLine"_s,
            u"create table QuobAreaLine (CODE text primary key) without rowid"_s,
            u"insert into QuobAreaLine values ('310302 ')"_s,
            u"update indexini set CODE = '310302 ' where CODE = '310302'"_s,
            u"create table S (CmdName check (CmdName <> 'N'), CmdText)"_s,
            u"drop table VelmCmdSetting"_s, u"alter table S rename to VelmCmdSetting"_s,
            u"insert into VelmCmdSetting values ('N ', '[]')"_s});
    const Answer kept = check({u"--fix"_s, u"--rule"_s, u"blank-at-end"_s});
    EXPECT_TRUE(kept.talk.contains(u"CODE: a row that cannot be changed refers to it"_s));
    EXPECT_TRUE(kept.talk.contains(u"its table does not number its rows"_s));
    EXPECT_TRUE(kept.talk.contains(u"CMDNAME: SQLite refuses the change: CHECK"_s));
    runSql({u"insert into VelmCmdSetting values ('', '[]')"_s,
            u"create trigger t after delete on VelmCmdSetting begin delete from indexini;end"_s});
    const Answer refused = check({u"--fix"_s});
    EXPECT_EQ(refused.exitCode, 3);
    EXPECT_TRUE(refused.talk.startsWith(u"velm: peltaconfig.db is not changed: it has triggers; "
                                        "remove them first"_s));
    EXPECT_EQ(querySql(u"select count(*) from VelmCmdSetting where CmdName = ''"_s),
              QStringList{u"1"_s});
}

TEST_F(CheckTest, LeavesWhatHasNoSafeAnswer)
{
    runSql({u"update indexini set USECODE = 'SJD ' where rowid = 1"_s,
            u"update indexini set USECODE = '110102 ' where rowid = 3"_s,
            u"update indexini set USECODE = ' NEW' where rowid = 4"_s,
            u"update indexini set USECODE = 'new ' where rowid = 5"_s,
            u"update Workdef set LAYER = 'New1' where rowid = 1"_s,
            u"update Workdef set LAYER = 'NEW1' where rowid = 2"_s});
    runSql({u"insert into SYS_GISTABLE values ('jmd_pg ', '', 2)"_s,
            u"insert into SYS_DICTIONARY values ('TBL_FWJG ', 'x;y')"_s},
           u"config/PipeConfig.db"_s);
    QStringList left;
    for (const QString& line : check({u"--fix"_s}).talk.remove(u'\r').split(u'\n')) {
        if (line.startsWith(u"velm: left: "_s))
            left.append(line.section(u": "_s, 3));
    }
    EXPECT_EQ(left, (QStringList{u"without the blank it would be the user code of \"110102\" too"_s,
                                 u"without the blank it would be the code of another feature"_s,
                                 u"without the blank it would be the user code of \"110104\" too"_s,
                                 u"as many rows have it as have \"New1\""_s,
                                 u"without the blank it would be a second \"TBL_FWJG\""_s,
                                 u"without the blank it would be a second \"jmd_pg\""_s}));
}

TEST_F(CheckTest, MendsAllOrNothingAlsoWhenKilled)
{
    runSql({u"with recursive n(i) as (select 1 union all select i + 1 from n where i < 20000) "
            "insert into indexini (CODE, NAME, WIDTH) select 'x' || i || ' ', '', 0 from n"_s});
    const QString blanks = u"select count(*) from indexini where CODE like 'x% '"_s;
    for (const QString& moment : {u".velm-????????"_s, u"*.before-fix-*"_s, u"*-journal"_s}) {
        QDir config(path(u"config"_s));
        config.setNameFilters({moment});
        QProcess mending;
        mending.start(program(), {u"--root"_s, root(), u"check"_s, u"--fix"_s, u"--rule"_s,
                                  u"blank-at-end"_s});
        while (config.entryList(QDir::AllEntries | QDir::Hidden).isEmpty()
               && !mending.waitForFinished(1)) {
        }
        mending.kill();
        mending.waitForFinished();
        const QStringList left = querySql(blanks);
        EXPECT_TRUE(left == QStringList{u"20000"_s} || left == QStringList{u"0"_s})
            << moment.toStdString() << ": " << left.join(u' ').toStdString();
        for (const QString& copy : QDir(config.path()).entryList({u"*.before-fix-*"_s})) {
            EXPECT_EQ(querySql(blanks, u"config/"_s + copy), QStringList{u"20000"_s});
            EXPECT_TRUE(config.remove(copy));
        }
        runSql({u"update indexini set CODE = trim(CODE) || ' ' where CODE like 'x%'"_s});
    }
    EXPECT_EQ(check({u"--fix"_s, u"--rule"_s, u"blank-at-end"_s}).exitCode, 0);
    EXPECT_EQ(QDir(path(u"config"_s)).entryList({u".velm-*"_s}, QDir::AllEntries | QDir::Hidden),
              QStringList())
        << "what killed runs left is gone";
}
