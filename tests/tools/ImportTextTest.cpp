#include "support/TemporaryRoot.h"
#include "support/Tool.h"

#include <QJsonArray>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTextCodec>

namespace {

class ImportText : public TemporaryRoot
{
protected:
    Answer import(const QString& folder, const QStringList& options = {}) const
    {
        return velm(QStringList{u"import-text"_s, u"--json"_s, u"-o"_s, path(u"new/made.db"_s),
                                path(folder)}
                    + options);
    }

    QStringList rows(const QString& database, const char* query) const
    {
        return querySql(QString::fromUtf8(query), database);
    }
};

constexpr const char* kWhole[] = {
    "select CODE || LTYPE || WIDTH || NAME || USECODE || [TABLE] from indexini order by 1",
    "select CODE || LAYER || ENTTYPE || PAR1 || PAR2 || TEXT || COLOR from Workdef order by 1",
    "select [TABLE] || TEXT || GISTABLE || TYPE from Attributetable order by 1",
    "select [TABLE] || NAME || TEXT || TYPE || LENGTH || DECIMAL || [DEFAULT] || [NOTNULL] || "
    "BEXPORT "
    "|| ENABLEEDIT from Attributefield order by 1"};

}  // namespace

TEST_F(ImportText, GivesTheDatabaseThatTheFilesWereMadeFrom)
{
    ASSERT_EQ(velm({u"init"_s, root()}).exitCode, 0);
    EXPECT_EQ(import(u"config"_s).exitCode, 0);
    for (const char* query : kWhole) {
        const QStringList made = rows(u"new/made.db"_s, query);
        EXPECT_GT(made.size(), 40);
        EXPECT_EQ(made, rows(u"config/peltaconfig.db"_s, query));
    }
}

TEST_F(ImportText, ReportsTheLinesThatItCannotUse)
{
    QTextCodec* gbk = QTextCodec::codecForName("GBK");
    writeFile(u"old/INDEX.ini"_s,
              "\xEF\xBB\xBF" + u"A,,0.5,房屋\n\nA,,x,n\nA,,1,路\n,,,\n"_s.toUtf8());
    writeFile(u"old/work.def"_s, gbk->fromUnicode(u"A,层,1,,,,2,3\r\nB,层,1,,,文\r\n"_s));
    writeFile(u"old/attribute.def"_s,
              "T,t,\xE5\x90\x8D\nF,T,n,\xC3\xFB\nF,none,n\nX\n\xFF\xFF\n" + QByteArray("T\0\n", 3));
    const Answer answer = import(u"old"_s);
    EXPECT_EQ(answer.exitCode, 1);
    QStringList unused;
    for (const QJsonValue& line : answer.json[u"unused"_s].toArray())
        unused.append(u"%1 %2 %3"_s.arg(line[u"file"_s].toString())
                          .arg(line[u"line"_s].toInt())
                          .arg(line[u"reason"_s].toString()));
    EXPECT_EQ(unused,
              (QStringList{u"index.ini 3 WIDTH is no number: \"x\""_s,
                           u"index.ini 1 line 4 has the same code, and counts"_s,
                           u"index.ini 5 has no code"_s, u"work.def 1 has 8 fields, 7 at most"_s,
                           u"attribute.def 3 no line before defines the table \"none\""_s,
                           u"attribute.def 4 begins with \"X\", not with T or F"_s,
                           u"attribute.def 5 is neither UTF-8 nor GBK"_s,
                           u"attribute.def 6 holds a NUL character, as no text does"_s}));
    EXPECT_EQ(rows(u"new/made.db"_s, "select NAME || WIDTH from indexini"),
              QStringList{u"路1.0"_s});
    EXPECT_EQ(rows(u"new/made.db"_s, "select CODE || LAYER || TEXT || COLOR from Workdef"),
              QStringList{u"B层文-1"_s})
        << "no colour";
    EXPECT_EQ(rows(u"new/made.db"_s, "select ENABLEEDIT from Attributefield"), QStringList{u"1"_s});
    EXPECT_EQ(rows(u"new/made.db"_s, "select TEXT from Attributetable union all select TEXT from "
                                     "Attributefield"),
              (QStringList{u"名"_s, u"名"_s}));

    EXPECT_EQ(import(u"old"_s).exitCode, 2) << "the database exists";
    EXPECT_EQ(
        velm({u"import-text"_s, u"--force"_s, u"-o"_s, path(u"old/index.ini"_s), path(u"old"_s)})
            .exitCode,
        3)
        << "it reads that file";
    EXPECT_EQ(import(u"old"_s, {u"--force"_s}).exitCode, 1);
    EXPECT_EQ(import(u"config"_s, {u"--force"_s}).exitCode, 3) << "no such files";
    EXPECT_EQ(
        QDir(path(u"new"_s)).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
        QStringList{u"made.db"_s})
        << "nothing is half written";
}

namespace {

/// A program that works on the database "live.db" and can be looked at, or killed, at any moment.
class Writer
{
public:
    explicit Writer(const QString& file)
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"writer"_s);
        database.setDatabaseName(file);
        database.open();
    }
    ~Writer() { QSqlDatabase::removeDatabase(u"writer"_s); }

    void run(const QStringList& statements) const
    {
        for (const QString& statement : statements)
            EXPECT_TRUE(QSqlQuery(QSqlDatabase::database(u"writer"_s)).exec(statement))
                << statement.toStdString();
    }
};

class ImportOverDatabase : public ImportText
{
protected:
    ImportOverDatabase()
    {
        writeFile(u"old/index.ini"_s, "A,,1,n\n");
        runSql({u"create table mine (a)"_s, u"insert into mine values (1)"_s}, u"live.db"_s);
    }

    /// What a program killed now would leave, as "new/made.db".
    void leave() const
    {
        QDir().mkpath(path(u"new"_s));
        for (const QString& suffix : {u""_s, u"-journal"_s, u"-wal"_s})
            QFile::copy(path(u"live.db"_s) + suffix, path(u"new/made.db"_s) + suffix);
    }

    QString made() const
    {
        return QDir(path(u"new"_s))
            .entryList(QDir::Files | QDir::Hidden, QDir::Name)
            .join(QLatin1Char(' '));
    }

    const QStringList kForce{u"--force"_s};
};

}  // namespace

TEST_F(ImportOverDatabase, LetsNothingOfTheOldOneIntoTheNewOne)
{
    const struct
    {
        const char* sideFile;
        QStringList statements;
    } cases[] = {
        {"-journal",
         {u"pragma cache_size = 1"_s, u"begin"_s,
          u"with recursive n(i) as (select 1 union all select i + 1 from n where i < 99) "
          "insert into mine select randomblob(900) from n"_s}},
        {"-wal",
         {u"rollback"_s, u"pragma journal_mode = wal"_s, u"insert into mine values (2)"_s}}};
    const Writer writer(path(u"live.db"_s));
    for (const auto& c : cases) {
        writer.run(c.statements);
        leave();
        ASSERT_EQ(made(), u"made.db made.db%1"_s.arg(QLatin1String(c.sideFile)));
        EXPECT_EQ(import(u"old"_s, kForce).exitCode, 0) << c.sideFile;
        EXPECT_EQ(made(), u"made.db"_s);
        EXPECT_EQ(rows(u"new/made.db"_s, "select CODE from indexini"), QStringList{u"A"_s});
        EXPECT_EQ(rows(u"new/made.db"_s, "select name from sqlite_master where name = 'mine'"),
                  QStringList());
        ASSERT_TRUE(QFile::remove(path(u"new/made.db"_s)));
    }
}

TEST_F(ImportOverDatabase, LeavesOneAloneThatIsInUse)
{
    {
        const Writer writer(path(u"live.db"_s));
        writer.run({u"begin immediate"_s});
        const Answer used =
            velm({u"import-text"_s, u"--force"_s, u"-o"_s, path(u"live.db"_s), path(u"old"_s)});
        EXPECT_EQ(used.exitCode, 3);
        EXPECT_TRUE(used.talk.contains(u"another program uses it"_s)) << used.talk.toStdString();
    }
    EXPECT_EQ(rows(u"live.db"_s, "select a from mine"), QStringList{u"1"_s});
}
