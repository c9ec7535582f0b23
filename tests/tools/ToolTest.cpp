#include "support/Tool.h"
#include "support/TemporaryRoot.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QLockFile>
#include <QProcess>
#include <QRegularExpression>

namespace {

QStringList words(const char* text)
{
    return QString::fromUtf8(text).split(QLatin1Char(' '));
}

class ToolTest : public TemporaryRoot
{
protected:
    /// Makes the sample configuration in the root and answers what the program said.
    Answer init(const QStringList& options = {})
    {
        return velm(QStringList{u"init"_s, root()} + options);
    }

    QStringList files() const
    {
        return QDir(path(u"config"_s))
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
};

}  // namespace

TEST_F(ToolTest, LooksUpCodesByAnyOfTheirNames)
{
    ASSERT_EQ(init().exitCode, 0);
    const Answer card = velm(words("lookup 310301 110102"));
    EXPECT_EQ(card.exitCode, 0);
    EXPECT_TRUE(card.output.contains(u"310301 一般房屋\n"_s)) << card.output.toStdString();
    EXPECT_TRUE(card.output.contains(u"    extension tables  EXT_FWDC, EXT_FWAQ\n"_s));
    EXPECT_TRUE(card.output.contains(u"\n110102 三角点\n"_s));

    const Answer json = velm(words("--json lookup --by usercode fw nobody"));
    EXPECT_EQ(json.exitCode, 1) << "one of the two does not exist";
    ASSERT_EQ(json.json.array().size(), 2);
    const QJsonObject house = json.json.array().at(0).toObject();
    EXPECT_EQ(house.value(u"code"_s).toString(), u"310301"_s);
    EXPECT_EQ(house[u"index"_s][u"gisTable"_s].toString(), u"JMD_PG"_s);
    EXPECT_EQ(house[u"work"_s][u"layer"_s].toString(), u"JMD_M"_s);
    EXPECT_TRUE(house.value(u"annotation"_s).isObject());
    bool dictionary = false;
    for (const QJsonValue& field : house[u"table"_s][u"fields"_s].toArray())
        dictionary = dictionary || field[u"values"_s].toString().startsWith(u"1 "_s);
    EXPECT_TRUE(dictionary) << "a field shows the values of its dictionary";
    EXPECT_FALSE(json.json.array().at(1).toObject().value(u"found"_s).toBool(true));

    const int housesOfTable = velm(words("lookup --by table jmd_pg --json")).json.array().size();
    EXPECT_EQ(velm(words("list --table JMD_PG --json")).json.array().size(), housesOfTable);
    EXPECT_GT(housesOfTable, 1);
}

TEST_F(ToolTest, ListsByNameInitialsAndType)
{
    ASSERT_EQ(init().exitCode, 0);
    EXPECT_GE(velm(words("list --json")).json.array().size(), 300);
    const auto names = [](const Answer& answer) {
        QStringList list;
        for (const QJsonValue& row : answer.json.array())
            list.append(row[u"name"_s].toString());
        return list;
    };
    EXPECT_TRUE(names(velm(words("list --json --match 三角点"))).contains(u"小三角点"_s));
    EXPECT_TRUE(names(velm(words("list --json --match xsjd"))).contains(u"小三角点"_s));
    const QJsonArray texts = velm(words("list --json --type 3")).json.array();
    EXPECT_GT(texts.size(), 10);
    for (const QJsonValue& row : texts)
        EXPECT_EQ(row[u"entityType"_s].toInt(), 3);

    // Columns stand below each other on a terminal, where a Chinese character takes two.
    const QStringList lines = velm(words("list --table KZD_PT")).output.split(QLatin1Char('\n'));
    const int column = lines.first().indexOf(u"TYPE"_s);
    for (const QString& line : lines.mid(1, lines.size() - 2)) {
        const QString shown =
            QString(line).replace(QRegularExpression(u"[\\x{4e00}-\\x{9fff}]"_s), u"xx"_s);
        EXPECT_EQ(shown.indexOf(u"general"_s), column) << line.toStdString();
    }
}

TEST_F(ToolTest, TellsWhatIsWrongAndWhatToDo)
{
    ASSERT_EQ(init().exitCode, 0);
    const struct
    {
        const char* arguments;
        int exitCode;
        const char* talk;
    } cases[] = {{"lookup 31030", 1, "did you mean \"310301\""},
                 {"lookup FW", 1, "--by usercode"},
                 {"lookup JMD_PG", 1, "--by table"},
                 {"lookup --by usercode 310301", 1, "leave --by out"},
                 {"lookup --by name FW", 2, "not \"name\""},
                 {"lookup", 2, "which code"},
                 {"lokup 310301", 2, "did you mean \"lookup\"?"},
                 {"list extra", 2, "unexpected argument \"extra\""},
                 {"list --type five", 2, "not \"five\""},
                 {"list --match nothingatall", 1, "no feature code matches"},
                 {"list --bogus", 2, "there is no option \"--bogus\""},
                 {"list --tabel=X", 2, "no option \"--tabel\"; did you mean \"--table\"?"},
                 {"list -json", 2, "no option \"-json\"; did you mean \"--json\"?"},
                 {"list --match", 2, "--match needs a value: TEXT"},
                 {"list --match --json", 2, "--match needs a value: TEXT"},
                 {"list --json=yes", 2, "--json takes no value"},
                 {"list --type= --json", 2, "not \"\""},
                 {"import-text -o", 2, "-o needs a value: FILE"},
                 {"import-text -o= x", 2, "name the database to make"},
                 {"import-text -", 2, "name the database to make"},
                 {"check -- --json", 2, "unexpected argument \"--json\""},
                 {"check --baseline=", 2, "--baseline names no file"},
                 {"check --json --sarif", 2, "give one of them"},
                 {"check --fix --watch", 2, "give one of them"},
                 {"check --rule --all", 2, "--rule needs a value: ID"},
                 {"check --explain", 2, "--explain needs a value: ID"},
                 {"--root /no/such/folder list", 3, "no such folder"},
                 {"--nonsense list", 2, "no option \"--nonsense\""},
                 {"--root= list", 2, "--root names no folder"},
                 {"init ", 2, "one folder"},
                 {"init", 2, "one folder"}};
    for (const auto& c : cases) {
        const Answer answer = velm(words(c.arguments));
        EXPECT_EQ(answer.exitCode, c.exitCode) << c.arguments;
        EXPECT_TRUE(answer.talk.contains(QString::fromUtf8(c.talk)))
            << c.arguments << ": " << answer.talk.toStdString();
        EXPECT_EQ(answer.output, QString()) << c.arguments;
        const bool isOurs = std::all_of(answer.talk.begin(), answer.talk.end(),
                                        [](QChar ch) { return ch.unicode() < 0x80; });
        EXPECT_TRUE(c.exitCode != 2 || isOurs) << answer.talk.toStdString();
    }
}

TEST_F(ToolTest, WritesTheWholeSampleSetOrNothing)
{
    writeFile(u"config/work.def"_s, "mine");
    const Answer refused = init();
    EXPECT_EQ(refused.exitCode, 2);
    EXPECT_TRUE(refused.talk.contains(u"config/work.def already; --force"_s));
    EXPECT_EQ(files(), QStringList{u"work.def"_s});
    EXPECT_EQ(QDir(root()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              QStringList{u"config"_s})
        << "the staging folder must be gone";

    EXPECT_EQ(init({u"--force"_s}).exitCode, 0);
    EXPECT_EQ(files(), words("attribute.def index.ini peltaconfig.db PipeConfig.db work.def"));

    // A folder in the place of a file is not replaced: what was moved before it comes back.
    ASSERT_TRUE(QFile::remove(path(u"config/work.def"_s)));
    writeFile(u"config/work.def/mine"_s, "x");
    writeFile(u"config/index.ini"_s, "mine");
    const Answer blocked = init({u"--force"_s});
    EXPECT_EQ(blocked.exitCode, 3);
    EXPECT_TRUE(blocked.talk.contains(u"nothing was written"_s)) << blocked.talk.toStdString();
    QFile index(path(u"config/index.ini"_s));
    ASSERT_TRUE(index.open(QIODevice::ReadOnly));
    EXPECT_EQ(index.readAll(), "mine");
    EXPECT_TRUE(QFile::exists(path(u"config/work.def/mine"_s)));
    EXPECT_EQ(files().size(), 5);
    EXPECT_EQ(velm({u"init"_s, path(u"config/index.ini/below"_s)}).exitCode, 3);
}

TEST_F(ToolTest, RemovesWhatAKilledRunLeftAndNothingElse)
{
    QLockFile living(path(u"config/.velm-00000001.lock"_s));
    ASSERT_TRUE(living.lock());
    writeFile(u"config/.velm-00000001/new/x"_s, "of a run that goes on");
    writeFile(u"config/.velm-mine/x"_s, "the user's");
    const QStringList others{u".velm-00000001"_s, u".velm-00000001.lock"_s, u".velm-mine"_s};
    for (const QString& dead : {u"config/.velm-0badcafe"_s, u".velm-0badcafe"_s}) {
        writeFile(dead + u".lock"_s, "");
        writeFile(dead + u"/new/x"_s, "x");
    }
    writeFile(u"config/.velm-commit.lock"_s, "");
    EXPECT_EQ(init().exitCode, 0);
    EXPECT_EQ(files(),
              others + words("attribute.def index.ini peltaconfig.db PipeConfig.db work.def"));
    EXPECT_EQ(QDir(root()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              QStringList{u"config"_s});
}

#ifdef Q_OS_UNIX
TEST_F(ToolTest, KeepsThePermissionsOfFilesThatItReplaces)
{
    writeFile(u"usual"_s, "x");
    const auto mode = [this](const QString& file) { return QFile::permissions(path(file)); };
    const auto only = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser;
    ASSERT_EQ(velm({u"init"_s, path(u"new"_s)}).exitCode, 0);
    EXPECT_EQ(mode(u"new/config/index.ini"_s), mode(u"usual"_s));
    EXPECT_EQ(mode(u"new/config"_s), mode(u"config"_s));
    for (const QString& file : {u"new/config/index.ini"_s, u"new/config/peltaconfig.db"_s})
        ASSERT_TRUE(QFile::setPermissions(path(file), only));
    ASSERT_EQ(velm({u"init"_s, u"--force"_s, path(u"new"_s)}).exitCode, 0);
    EXPECT_EQ(mode(u"new/config/index.ini"_s), only);
    EXPECT_EQ(mode(u"new/config/peltaconfig.db"_s), only);
}
#endif

TEST_F(ToolTest, WritesTheTextFilesOfTheSampleSetInGbk)
{
    ASSERT_EQ(init().exitCode, 0);
    QFile older(path(u"config/index.ini"_s));
    ASSERT_TRUE(older.open(QIODevice::ReadOnly));
    const QByteArray first = older.readLine();
    EXPECT_EQ(first.count(','), 5);
    EXPECT_TRUE(first.contains("\xB4\xF3\xB5\xD8")) << "GBK text";
}

TEST_F(ToolTest, LetsNoRemainsOfAnOlderDatabaseIntoTheNewOne)
{
    writeFile(u"config/peltaconfig.db-wal"_s, "remains");
    EXPECT_EQ(init().exitCode, 2);
    EXPECT_EQ(init({u"--force"_s}).exitCode, 0);
    EXPECT_EQ(files(), words("attribute.def index.ini peltaconfig.db PipeConfig.db work.def"));
#ifdef Q_OS_UNIX
    ASSERT_TRUE(QFile::remove(path(u"config/work.def"_s)));
    ASSERT_TRUE(QFile::link(path(u"elsewhere"_s), path(u"config/work.def"_s)));
    EXPECT_EQ(init({u"--force"_s}).exitCode, 3) << "what a link leads to is not ours to write";
    EXPECT_FALSE(QFile::exists(path(u"elsewhere"_s)));

    QProcess full;
    full.setStandardOutputFile(u"/dev/full"_s);
    full.start(program(), words("list"));
    ASSERT_TRUE(full.waitForFinished());
    EXPECT_EQ(full.exitCode(), 3) << "an answer that is lost is no success";
#endif
}

TEST_F(ToolTest, ShowsChineseWithoutALocaleAndNoControlCharacters)
{
    ASSERT_EQ(init().exitCode, 0);
    runSql({u"insert into indexini values ('A', '测' || char(27) || '[31m', '', 0, '', '')"_s});
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"LC_ALL"_s, u"C"_s);
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(program(), words("lookup A"));
    ASSERT_TRUE(process.waitForFinished());
    const QString output = QString::fromUtf8(process.readAllStandardOutput());
    EXPECT_TRUE(output.startsWith(u"A 测?[31m"_s)) << output.toStdString();
}

TEST_F(ToolTest, WorksInAFolderOfAnyNameAndLength)
{
    QString folder = path(u"Ω𠮷☃"_s);
    while (folder.size() < 300)
        folder += u"/a folder within the other"_s;
    EXPECT_EQ(velm({u"init"_s, folder}).talk, QString());
    EXPECT_EQ(velm({u"init"_s, u"--force"_s, folder}).exitCode, 0) << "each file is replaced";
    const Answer card = velm({u"--root"_s, folder, u"lookup"_s, u"310301"_s});
    EXPECT_TRUE(card.output.contains(u"一般房屋"_s)) << card.talk.toStdString();
    EXPECT_EQ(velm({u"--root"_s, folder, u"check"_s}).exitCode, 0);
    const QString missing = path(u"Ω𠮷☃/missing"_s);
    EXPECT_TRUE(velm({u"--root"_s, missing, u"check"_s}).talk.contains(missing))
        << "in files and pipes no character is lost";
}

TEST_F(ToolTest, ExaminesTheMachineAndTellsWhatIsMissing)
{
    const auto state = [](const Answer& answer, const QString& id) {
        for (const QJsonValue& finding : answer.json.array()) {
            if (finding[u"id"_s] == id)
                return finding[u"state"_s].toString();
        }
        return QString();
    };
    const Answer bare = velm({u"--root"_s, root(), u"doctor"_s, u"--json"_s});
    EXPECT_EQ(bare.exitCode, 1);
    EXPECT_EQ(state(bare, u"configuration.system"_s), u"error"_s);
    EXPECT_EQ(state(bare, u"start.bundle"_s), u"ok"_s) << "a root of its own moves no bundle";
    init();
    // Natively for unixODBC; the root of Wine has the driver registered.
    writeFile(u"odbcinst.ini"_s, "[Microsoft Access Driver (*.mdb, *.accdb)]\nDriver=x\n");
    qputenv("ODBCSYSINI", QFile::encodeName(root()));
    const Answer whole = velm({u"--root"_s, root(), u"doctor"_s, u"--json"_s});
    qunsetenv("ODBCSYSINI");
    EXPECT_EQ(whole.exitCode, 0);
    EXPECT_EQ(state(whole, u"database.access"_s), u"ok"_s);
    EXPECT_EQ(state(whole, u"configuration.system"_s), u"ok"_s);
    EXPECT_EQ(state(whole, u"database.sqlite"_s), u"ok"_s);
    const QString text = velm({u"--root"_s, root(), u"doctor"_s}).output;
    EXPECT_TRUE(text.contains(u"long                   %1 bytes"_s.arg(sizeof(long))))
        << text.toStdString();
    writeFile(u"config/peltaconfig.db"_s, "damaged");
    EXPECT_EQ(velm({u"--root"_s, root(), u"doctor"_s}).exitCode, 1);
}
