#include "support/Printers.h"
#include "support/TemporaryRoot.h"
#include "support/Text.h"
#include "support/Tool.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
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
                           u"index.ini 1 line 4 has the same code"_s, u"index.ini 5 has no code"_s,
                           u"work.def 1 has 8 fields, 7 at most"_s,
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
