#include "support/ChildProgram.h"
#include "support/TemporaryRoot.h"
#include "support/Tool.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QSqlDatabase>
#include <QSqlQuery>

#include <cstdio>
#include <string>

namespace {

class TrueAnswers : public TemporaryRoot
{
protected:
    void SetUp() override { ASSERT_EQ(velm({u"init"_s, root()}).exitCode, 0); }

    /// Overwrites bytes of the root page of a table or an index, all unless told otherwise.
    void damage(const QString& name, const QString& file, int first = 0, int count = 0,
                char with = '\xEE')
    {
        const QStringList page =
            querySql(u"select rootpage from sqlite_master where name = '%1'"_s.arg(name), file)
            + querySql(u"pragma page_size"_s, file);
        const int size = page.last().toInt();
        QFile database(path(file));
        ASSERT_TRUE(database.open(QIODevice::ReadWrite));
        ASSERT_TRUE(database.seek(qint64(page.first().toInt() - 1) * size + first));
        const QByteArray bytes(count > 0 ? count : size, with);
        ASSERT_EQ(database.write(bytes), bytes.size());
    }

    /// Harms a file, or a table in it, or puts what a statement makes in the table's place.
    void harm(const QString& file, const QString& table, const QString& how)
    {
        QFile database(path(file));
        if (how == u"damage"_s) {
            damage(table, file);
        } else if (how == u"hollow"_s) {
            damage(table, file, 3, 2, '\0');  // the number of cells
        } else if (how == u"cut"_s) {
            EXPECT_TRUE(database.resize(database.size() - 100));
        } else if (table.isEmpty()) {
            EXPECT_TRUE(database.remove());
            EXPECT_TRUE(how != u"folder"_s || QDir().mkpath(path(file)));
        } else {
            runSql({u"drop table "_s + table, how.isEmpty() ? u"select 1"_s : how.arg(table)},
                   file);
        }
    }

    /// Changes a database as another program. False if it is locked.
    bool change(const QString& file)
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"other program"_s);
        database.setDatabaseName(path(file));
        database.setConnectOptions(u"QSQLITE_BUSY_TIMEOUT=0"_s);
        EXPECT_TRUE(database.open());
        const bool changed = QSqlQuery(database).exec(u"create table another (x)"_s);
        database.close();
        database = QSqlDatabase();
        QSqlDatabase::removeDatabase(u"other program"_s);
        return changed;
    }

    static constexpr char kSystem[] = "config/peltaconfig.db";
    static constexpr char kPipe[] = "config/PipeConfig.db";
};

}  // namespace

TEST_F(TrueAnswers, StartsNoCodeOfTheConfiguration)
{
    const QString trace = path(u"trace"_s);
    const QString planted = QString(path(u"%1adapter_qtinit.dll"_s));
    for (const char* folder : {"", "config/"})
        ASSERT_TRUE(
            QFile::copy(builtFile(u"velm_test_trace.dll"_s), planted.arg(QLatin1String(folder))));
    ChildProgram host(builtFile(kHostName));
    host.setVariable(u"VELM_TEST_TRACE"_s, trace);
    host.run({u"start"_s});
    ASSERT_TRUE(QFile::remove(trace)) << "other programs take the companion of the root";

    writeFile(u"VelmResource.rcc"_s, "no bundle");
    qputenv("VELM_TEST_TRACE", QFile::encodeName(trace));
    for (const char* command : {"list", "doctor", "--version"}) {
        const Answer byVariable = velm({QLatin1String(command)});
        EXPECT_FALSE(byVariable.output.contains(root() + u"/adapter"_s)) << command;
        EXPECT_FALSE(byVariable.talk.contains(u"资源"_s)) << byVariable.talk.toStdString();
    }
    EXPECT_FALSE(velm({u"doctor"_s, u"--root"_s, root()}).output.contains(root() + u"/adapter"_s));
    qunsetenv("VELM_TEST_TRACE");
    EXPECT_FALSE(QFile::exists(trace));
}

TEST_F(TrueAnswers, ShowsTheOptionsOfEveryCommand)
{
    const struct
    {
        const char* command;
        const char* line;
    } cases[] = {{"check", "  --sarif  "},
                 {"crypt", "  --key-env NAME   Take the key"},
                 {"doctor", "  --root DIR  Folder that holds"},
                 {"import-text", "  -o FILE     The database to make.\n"},
                 {"init", "  --force     Replace files that exist.\n"},
                 {"list", "  --match TEXT   Codes whose code"},
                 {"lookup", "  --by KEY    What CODE is"},
                 {"zip", "  --into DIR      extract: the folder"}};
    for (const auto& c : cases) {
        const QString help = velm({QLatin1String(c.command), u"--help"_s}).output;
        EXPECT_TRUE(help.contains(QLatin1String(c.line))) << help.toStdString();
        EXPECT_TRUE(help.endsWith(u"Show this help.\n"_s)) << help.toStdString();
        for (const QString& line : help.split(QLatin1Char('\n')))
            EXPECT_LE(line.size(), 80) << line.toStdString();
        const bool takesRoot = help.contains(u"--root DIR"_s);
        const Answer rooted = velm({u"--root"_s, path(u"none"_s), QLatin1String(c.command)});
        EXPECT_EQ(rooted.talk.contains(u"leave --root out"_s), !takesRoot) << c.command;
    }
}

TEST_F(TrueAnswers, TellsWhatCannotBeReadInsteadOfAShorterAnswer)
{
    const QString endless = u"create view %1 as with recursive r(x) as (select 1 union all select "
                            "x + 1 from r) select x as CODE from r"_s;
    const QString circular = u"create view %1 as select * from other"_s;
    const QString rowless = endless + u" where x < 0"_s;
    const struct
    {
        const char* file;
        const char* table;  // empty: the file itself
        QString how;        // a statement with the table's name, or what befalls the file
        const char* cause;
    } cases[] = {{kSystem, "indexini", endless, "a view"},
                 {kSystem, "Workdef", circular, "a view"},
                 {kSystem, "TBL_FWJG", rowless, "a view"},
                 {kPipe, "SYS_ATTRIBUTEDEF", endless, "a view"},
                 {kSystem, "VelmAnnotate", rowless, "a view"},
                 {kSystem, "VelmAnnotate", QString(), "no such table"},
                 {kPipe, "SYS_DICTIONARY", QString(), "no such table"},
                 {kSystem, "TBL_FWJG", u"create table %1 (CODE)"_s, "no column"},
                 {kSystem, "QuobAreaLine", u"create table %1 (CODE)"_s, "no column"},
                 {kSystem, "RecordConfig", u"damage"_s, "malformed"},
                 {kPipe, "SYS_GISTABLE", u"damage"_s, "malformed"},
                 {kSystem, "VelmAnnotate", u"damage"_s, "malformed"},
                 {kSystem, "IX_VelmAnnotate_CODE", u"damage"_s, "malformed"},
                 {kSystem, "IX_VelmAnnotate_CODE", u"hollow"_s, "damaged"},
                 {kSystem, "", u"cut"_s, "truncated"},
                 {kSystem, "", u"remove"_s, "no such file"},
                 {kPipe, "", u"remove"_s, "no such file"},
                 {kPipe, "", u"folder"_s, "it is no file"}};
    for (const auto& c : cases) {
        ASSERT_EQ(velm({u"init"_s, u"--force"_s, root()}).exitCode, 0);
        const QString file = QLatin1String(c.file);
        const QString table = QLatin1String(c.table);
        harm(file, table, c.how);
        const QString named = table.startsWith(u"IX_"_s) ? u"VelmAnnotate"_s : table;
        for (const char* command : {"lookup 310301", "lookup 110102 310301 --json", "list"}) {
            const Answer answer = velm(QString::fromLatin1(command).split(QLatin1Char(' ')));
            const std::string what = file.toStdString() + c.table + c.cause + command;
            EXPECT_EQ(answer.exitCode, 3) << what << answer.talk.toStdString();
            EXPECT_TRUE(answer.output.isEmpty()) << what;
            for (const QString& part :
                 {QFileInfo(file).fileName(), named, QString::fromLatin1(c.cause)})
                EXPECT_TRUE(answer.talk.contains(part)) << what << answer.talk.toStdString();
        }
        QDir().rmdir(path(file));  // where it is one
    }
}

TEST_F(TrueAnswers, SeesOneStateOfEachDatabase)
{
    const QStringList codes = querySql(u"select code from indexini order by code"_s);
    for (const char* file : {kSystem, kPipe}) {
        for (const char* mode : {"delete", "wal"}) {
            const QString name = QLatin1String(file);
            querySql(u"pragma journal_mode="_s + QLatin1String(mode), name);
            QProcess reader;  // waits for us when what it prints is more than a pipe holds
            reader.start(program(), QStringList{u"lookup"_s, u"--json"_s} + codes);
            ASSERT_TRUE(reader.waitForReadyRead(60000));
            const bool changed = change(name);
            ASSERT_TRUE(reader.waitForFinished(60000));
            const bool isWal = mode == std::string("wal");
            EXPECT_EQ(changed, isWal) << file << mode;
            EXPECT_EQ(reader.exitCode(), isWal ? 3 : 0) << file << mode;
            const QByteArray output = reader.readAllStandardOutput();
            EXPECT_EQ(QJsonDocument::fromJson(output).array().size(), isWal ? 0 : codes.size());
            EXPECT_EQ(reader.readAllStandardError().contains("changed while"), isWal);
        }
    }
}

#ifndef Q_OS_WIN  // which keeps files that are open
TEST_F(TrueAnswers, NoticesThatAFileWasReplacedOrIsGone)
{
    const QStringList codes = querySql(u"select code from indexini order by code"_s);
    const QString database = path(QLatin1String(kSystem));
    ASSERT_TRUE(QFile::copy(database, path(u"other"_s)));
    for (const bool isReplaced : {true, false}) {
        QProcess reader;
        reader.start(program(), QStringList{u"lookup"_s, u"--json"_s} + codes);
        ASSERT_TRUE(reader.waitForReadyRead(60000));
        EXPECT_EQ(std::rename(qPrintable(isReplaced ? path(u"other"_s) : database),
                              qPrintable(isReplaced ? database : path(u"aside"_s))),
                  0);
        ASSERT_TRUE(reader.waitForFinished(60000));
        EXPECT_EQ(reader.exitCode(), 3) << isReplaced;
        const QByteArray talk = reader.readAllStandardError();
        EXPECT_TRUE(talk.contains("changed while")) << talk.constData();
    }
}
#endif

TEST_F(TrueAnswers, ShowsNoValueThatTheLibraryDoesNotTake)
{
    runSql({u"update VelmAnnotate set ANNTYPE = 77, EXTDATA = '{\"a\": 1' where CODE = '310301'"_s,
            u"update Workdef set COLOR = 4294967297 where CODE = '310301'"_s,
            u"update indexini set NAME = 'a' || char(8232) || 'b' where CODE = '310301'"_s});
    const QJsonValue card = velm({u"lookup"_s, u"310301"_s, u"--json"_s}).json.array().at(0);
    EXPECT_EQ(card[u"work"_s][u"colour"_s].toInt(-9), 0) << "no 1, which are its last 32 bits";
    EXPECT_TRUE(card[u"annotation"_s][u"entityType"_s].isNull());
    EXPECT_EQ(card[u"annotation"_s][u"problem"_s].toString(),
              u"INPUT, ANNTYPE or ENTTYPE is out of range; EXTDATA is no JSON object"_s);
    EXPECT_TRUE(velm({u"lookup"_s, u"310301"_s}).output.contains(u"a?b"_s));
}

TEST_F(TrueAnswers, TellsOfCodesThatOnlyOtherTablesKnow)
{
    runSql({u"insert into QuobAreaLine (CODE) values ('X1'), ('X2')"_s,
            u"insert into VelmAnnotate (CODE) values ('X2')"_s,
            u"insert into IndexiniExtend (CODE) values ('X3')"_s,
            u"insert into RecordConfig (CODE) values ('X4')"_s,
            u"insert into RecordConfigType (CODE) values ('X5')"_s});
    const struct
    {
        const char* code;
        const char* talk;
        QStringList tables;
    } cases[] = {{"X1", "\"X1\" in the index; QuobAreaLine has a row of it", {u"QuobAreaLine"_s}},
                 {"X2", "VelmAnnotate have rows of it", {u"QuobAreaLine"_s, u"VelmAnnotate"_s}},
                 {"X3", "; IndexiniExtend has a row", {u"IndexiniExtend"_s}},
                 {"X4", "; RecordConfig has a row", {u"RecordConfig"_s}},
                 {"X5", "; RecordConfigType has a row", {u"RecordConfigType"_s}},
                 {"nobody", "no feature code \"nobody\"\n", {}}};
    for (const auto& c : cases) {
        Answer text = velm({u"lookup"_s, QLatin1String(c.code)});
        EXPECT_EQ(text.exitCode, 1) << c.code;
        EXPECT_TRUE(text.talk.remove(QLatin1Char('\r')).contains(QLatin1String(c.talk)))
            << text.talk.toStdString();
        const Answer json = velm({u"lookup"_s, u"--json"_s, QLatin1String(c.code)});
        EXPECT_EQ(json.json.array().at(0)[u"otherTables"_s].toVariant().toStringList(), c.tables);
    }
}
