// What `velm check` reads, in which order and form it tells its findings, and what it leaves out.

#include "support/StarvedMemory.h"
#include "tools/CheckFixture.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QRegularExpression>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QUrl>

TEST_F(CheckTest, RefusesWhatItCannotRead)
{
    const auto refuses = [this](const QString& cause) {
        const Answer answer = check({u"--json"_s});
        EXPECT_EQ(answer.exitCode, 3);
        EXPECT_EQ(answer.output, QString()) << "no invented findings";
        EXPECT_TRUE(answer.talk.contains(cause)) << answer.talk.toStdString();
    };
    runSql(
        {u"update globaldefines set value = cast(zeroblob(67108865) as text) where rowid = 2"_s});
    refuses(u"peltaconfig.db, table globaldefines: row 2, column value holds more than 64 MiB"_s);
    runSql({u"update globaldefines set value = '' where rowid = 2"_s});
    const QString file = path(u"config/peltaconfig.db"_s);
    const auto damage = [&](const QString& name, const QByteArray& bytes, int at) {
        const QString root =
            querySql(u"select rootpage from sqlite_master where name = '%1'"_s.arg(name))[0];
        QFile database(file);
        EXPECT_TRUE(database.open(QIODevice::ReadWrite));
        EXPECT_TRUE(database.seek((root.toInt() - 1) * 4096 + at));
        database.write(bytes);
    };
    damage(u"IX_VelmFrame_ConfigName"_s, QByteArray(1, 'x'), 4090);
    refuses(u"peltaconfig.db, table VelmFrame, index IX_VelmFrame_ConfigName: it is damaged"_s);
    damage(u"IX_VelmAnnotate_CODE"_s, QByteArray(4096, '\xFF'), 0);
    refuses(u"peltaconfig.db, table VelmAnnotate, index IX_VelmAnnotate_CODE: "_s);
    damage(u"Workdef"_s, QByteArray(4096, 'x'), 0);
    refuses(u"peltaconfig.db, table Workdef: "_s);
    writeFile(u"config/peltaconfig.db"_s, QByteArray());
    refuses(u"the file is empty"_s);
    EXPECT_TRUE(velm({u"--root"_s, this->root(), u"list"_s}).talk.contains(u"the file is empty"_s));
    writeFile(u"config/peltaconfig.db"_s, "no database, whatever its name may say");
    refuses(u"peltaconfig.db"_s);
    ASSERT_TRUE(QFile::remove(path(u"config/PipeConfig.db"_s)));
    ASSERT_EQ(velm({u"init"_s, u"--force"_s, this->root()}).exitCode, 0);
    ASSERT_TRUE(QFile::remove(path(u"config/PipeConfig.db"_s)));
    ASSERT_TRUE(QDir().mkdir(path(u"config/PipeConfig.db"_s)));
    refuses(u"PipeConfig.db: it is no file"_s);
    ASSERT_TRUE(QDir().rmdir(path(u"config/PipeConfig.db"_s)));
    ASSERT_TRUE(QFile::resize(file, 1024LL * 1024 * 1024 + 4096));  // of a hole, and sound
    refuses(u"peltaconfig.db\": larger than 1 GiB"_s);
}

TEST_F(CheckTest, TellsThatAnotherProgramUsesTheDatabase)
{
    runSql({u"insert into VelmCmdSetting values ('', '[]')"_s});
    for (const QString& lock : {u"begin immediate"_s, u"begin exclusive"_s}) {
        {
            QSqlDatabase other = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"other"_s);
            other.setDatabaseName(path(u"config/peltaconfig.db"_s));
            ASSERT_TRUE(other.open());
            ASSERT_FALSE(other.exec(lock).lastError().isValid());
            const Answer answer = check({u"--fix"_s});
            EXPECT_EQ(answer.exitCode, 3);
            EXPECT_TRUE(answer.talk.trimmed().endsWith(u"another program is using it"_s))
                << answer.talk.toStdString();
            EXPECT_EQ(answer.output.isEmpty(), lock == u"begin exclusive"_s);
        }
        QSqlDatabase::removeDatabase(u"other"_s);
        EXPECT_EQ(QDir(path(u"config"_s)).entryList(QDir::Files).size(), 5);
    }
}

TEST_F(CheckTest, GroupsManyFindingsAndTellsThePlaceOfEach)
{
    runSql({u"with recursive n(i) as (select 1 union all select i + 1 from n where i < 3000) "
            "insert into Workdef (rowid, CODE, LAYER, ENTTYPE) select 70000 + i, 'x' || i, 'A', 1 "
            "from n"_s});
    const Answer text = check({});
    const QStringList lines = text.output.split(u'\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 22);
    EXPECT_EQ(lines.at(1), u"warning drawing-without-code: peltaconfig.db Workdef row 70002 "
                           "(CODE x2) CODE: \"x2\" has no row in indexini"_s);
    EXPECT_EQ(lines.at(20),
              u"warning drawing-without-code: 2980 more of 3000 (--all shows them)"_s);
    EXPECT_EQ(lines.at(21), u"0 errors, 3000 warnings, 0 notes"_s);
    EXPECT_EQ(check({u"--all"_s}).output.count(u'\n'), 3001);
    EXPECT_EQ(check({u"--json"_s}).json.array().size(), 3000);
    EXPECT_EQ(check({u"--json"_s, u"--ignore"_s, u"drawing-without-code"_s}).exitCode, 0);
    EXPECT_EQ(check({u"--json"_s, u"--rule"_s, u"single-quote"_s}).exitCode, 0);

    const QJsonValue run = check({u"--sarif"_s}).json[u"runs"_s][0];
    const QJsonValue result = run[u"results"_s][1];
    EXPECT_EQ(run[u"results"_s].toArray().size(), 3000);
    EXPECT_EQ(run[u"tool"_s][u"driver"_s][u"rules"_s][result[u"ruleIndex"_s].toInt()][u"id"_s],
              result[u"ruleId"_s]);
    EXPECT_NE(result[u"partialFingerprints"_s], run[u"results"_s][2][u"partialFingerprints"_s]);
    const QJsonValue location = result[u"locations"_s][0];
    EXPECT_EQ(location[u"logicalLocations"_s][0][u"fullyQualifiedName"_s].toString(),
              u"peltaconfig.db/Workdef/x2/CODE"_s);
    EXPECT_EQ(location[u"logicalLocations"_s][0][u"properties"_s][u"row"_s].toInt(), 70002);
    const QString base = run[u"originalUriBaseIds"_s][u"ROOT"_s][u"uri"_s].toString();
    EXPECT_EQ(QUrl(base, QUrl::StrictMode).toLocalFile(), root() + u'/') << base.toStdString();
}

TEST_F(CheckTest, OrdersFindingsByPlaceAndClosesEachRuleWhereItsLinesEnd)
{
    runSql(
        {u"with recursive n(i) as (select 1 union all select i + 1 from n where i < 22) "
         "insert into Workdef (rowid, CODE, LAYER, ENTTYPE) select 9000 - i, 'x', 'A', 1 from n"_s,
         u"update Workdef set LAYER = 'A*' where rowid > 8998"_s,
         u"update indexini set NAME = 'a' || char(9) where CODE = '310301'"_s});
    const QString output = check({}).output.remove(
        QRegularExpression(u"^(error|warning) |: peltaconfig.db \\w+ row|\\(.*"_s,
                           QRegularExpression::MultilineOption));
    QStringList expected{u"control-character 123 "_s, u"drawing-without-code 8978 "_s};
    for (int row = 8979; row < 9000; ++row) {
        expected.append(u"duplicate-code %1 "_s.arg(row));  // the last instead of "1 more"
        if (row < 8998)
            expected.append(u"drawing-without-code %1 "_s.arg(row));
        if (row == 8997)
            expected.append(u"drawing-without-code: 2 more of 22 "_s);
    }
    expected += QStringList{u"layer-name 8999 "_s, u"22 errors, 23 warnings, 0 notes"_s, QString()};
    EXPECT_EQ(output.split(u'\n'), expected);
}

#ifdef Q_OS_UNIX
TEST_F(CheckTest, EndsWithAMessageWhenMemoryRunsOut)
{
    if (!StarvedMemory::isPossible())
        GTEST_SKIP() << "a sanitizer takes more than any limit";
    runSql({u"with recursive n(i) as (select 1 union all select i + 1 from n where i < 100000) "
            "insert into Workdef (CODE, LAYER, ENTTYPE) select 'x' || i, 'A*', 1 from n"_s});
    int failures = 0;
    int exitCode = 3;
    for (int mebibytes = 60; exitCode != 1 && mebibytes < 2000; mebibytes += 15) {
        QProcess starved;
        starved.start(u"/bin/sh"_s,
                      {u"-c"_s, u"ulimit -v $0; exec \"$@\""_s, QString::number(mebibytes * 1024),
                       program(), u"--root"_s, root(), u"check"_s, u"--sarif"_s});
        ASSERT_TRUE(starved.waitForFinished(60000));
        EXPECT_EQ(starved.exitStatus(), QProcess::NormalExit) << mebibytes;
        exitCode = starved.exitCode();
        const QByteArray talk = starved.readAllStandardError();
        if (exitCode == 3) {
            failures += talk.contains("memory") ? 1 : 0;  // or a part of Qt could not be loaded
            EXPECT_TRUE(talk.startsWith("velm: ")) << talk.toStdString();
        }
    }
    EXPECT_EQ(exitCode, 1);
    EXPECT_GT(failures, 0);
}
#endif

TEST_F(CheckTest, LeavesOutWhatABaselineKnows)
{
    const QString known = path(u"known 已知.json"_s);
    runSql({u"insert into Workdef (CODE, LAYER, ENTTYPE) values ('x1', 'A', 1), ('x1', 'A', 1)"_s});
    const Answer written = check({u"--write-baseline"_s, known});
    EXPECT_EQ(written.exitCode, 1);
    EXPECT_TRUE(written.talk.contains(u"velm: 3 findings written to "_s + known));
    const auto lines = [&known] {
        QFile file(known);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return QString::fromUtf8(file.readAll()).split(u'\n');
    };
    const QStringList before = lines();
    const QString place =
        u"{\"place\": \"peltaconfig.db Workdef (CODE x1) CODE\", \"rule\": \"%1\", "
        "\"value\": \"x1\", \"count\": "_s;
    ASSERT_EQ(before.size(), 5);
    EXPECT_TRUE(before.at(1).startsWith(place.arg(u"duplicate-code"_s) + u"1,"_s));
    EXPECT_TRUE(before.at(2).startsWith(place.arg(u"drawing-without-code"_s) + u"2,"_s));
    runSql({u"update Workdef set rowid = rowid + 5000"_s});
    check({u"--write-baseline"_s, known});
    EXPECT_EQ(lines(), before) << "the same findings in other rows";
    const Answer none = check({u"--baseline"_s, known});
    EXPECT_EQ(none.exitCode, 0);
    EXPECT_EQ(none.output, u"0 errors, 0 warnings, 0 notes; 3 known ones left out\n"_s);
    runSql({u"delete from Workdef where CODE = '110102'"_s,
            u"insert into Workdef (CODE, LAYER, ENTTYPE) values ('x1', 'A', 1)"_s});
    EXPECT_EQ(found(check({u"--json"_s, u"--baseline"_s, known})),
              (QStringList{u"code-without-drawing indexini CODE 110102"_s,
                           u"drawing-without-code Workdef CODE x1"_s,
                           u"duplicate-code Workdef CODE x1"_s}))
        << "one row more of a kind that is known";
    runSql({u"delete from Workdef where CODE = 'x1'"_s});
    const Answer gone = check({u"--json"_s, u"--baseline"_s, known});
    EXPECT_TRUE(gone.talk.contains(u"velm: 0 known ones left out, 3 known ones are gone"_s));
    EXPECT_FALSE(
        check({u"--baseline"_s, known, u"--rule"_s, u"comma"_s}).output.contains(u"gone"_s));
    const struct
    {
        QByteArray content;
        const char* cause;
    } broken[] = {{"{}", "no baseline"},
                  {"[]", "no baseline"},
                  {"{\"known\": [\n{]}", "line 2 is no JSON"},
                  {"", "line 1 is no JSON"}};
    for (const auto& c : broken) {
        writeFile(u"known 已知.json"_s, c.content);
        const Answer refused = check({u"--baseline"_s, known});
        EXPECT_EQ(refused.exitCode, 3);
        EXPECT_TRUE(refused.talk.contains(QLatin1String(c.cause))) << refused.talk.toStdString();
    }
    for (const QString& option : {u"--baseline"_s, u"--write-baseline"_s}) {
        const Answer refused = check({option, path(u"none/known.json"_s)});
        EXPECT_EQ(refused.exitCode, 3);
        EXPECT_TRUE(
            refused.talk.contains(QRegularExpression(u"none/known.json\"?: there is no such f"_s)))
            << refused.talk.toStdString();
    }
}

TEST_F(CheckTest, ChecksAgainWhenAFileChanges)
{
    runSql({u"pragma journal_mode=wal"_s});
    QProcess watching;
    watching.start(program(), {u"--root"_s, root(), u"check"_s, u"--watch"_s});
    QByteArray output;
    const auto waitFor = [&](const char* text, int atMostMs = 60000) {
        QElapsedTimer timer;
        for (timer.start(); !output.contains(text) && timer.elapsed() < atMostMs;) {
            watching.waitForReadyRead(100);
            output += watching.readAllStandardOutput();
        }
        return output.contains(text);
    };
    EXPECT_TRUE(waitFor("0 errors, 0 warnings, 0 notes")) << output.toStdString();
    EXPECT_FALSE(waitFor("checking again", 1000)) << "what the check itself leaves is no change";
    runSql({u"update Workdef set COLOR = 999 where CODE = '310301'"_s});
    EXPECT_TRUE(waitFor("1 error, 0 warnings, 0 notes")) << output.toStdString();
    watching.kill();
    watching.waitForFinished();
}

TEST_F(CheckTest, ExplainsItsRulesAndRefusesOthers)
{
    const Answer explained = check({u"--explain"_s, u"single-quote"_s});
    EXPECT_TRUE(explained.output.startsWith(u"single-quote (error)"_s));
    EXPECT_EQ(explained.output.count(u'\n'), 2) << "what is wrong, and what to do";
    const QJsonObject rule =
        check({u"--json"_s, u"--explain"_s, u"view-for-table"_s}).json.object();
    EXPECT_EQ(rule.keys(), (QStringList{u"advice"_s, u"explanation"_s, u"id"_s, u"severity"_s}));
    const QStringList listed = check({u"--rules"_s}).output.split(u'\n');
    EXPECT_EQ(listed.filter(u"view-for-table "_s),
              QStringList{u"view-for-table                 error     "_s
                          + rule[u"explanation"_s].toString()})
        << "a whole line in a pipe";
    for (const char* option : {"--rule", "--ignore", "--explain"}) {
        const Answer unknown = check({QLatin1String(option), u"single-quotes"_s});
        EXPECT_EQ(unknown.exitCode, 2) << option;
        EXPECT_TRUE(unknown.talk.contains(u"did you mean \"single-quote\"?"_s))
            << unknown.talk.toStdString();
    }
}
