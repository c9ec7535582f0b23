#include "support/ChildProgram.h"
#include "support/TemporaryRoot.h"
#include "support/Tool.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>

namespace {

class TrueAnswers : public TemporaryRoot
{
protected:
    void SetUp() override { ASSERT_EQ(velm({u"init"_s, root()}).exitCode, 0); }
};

}  // namespace

TEST_F(TrueAnswers, StartsNoCodeOfTheConfiguration)
{
    const QString trace = path(u"trace"_s);
    const QString planted = QString(path(u"%1adapter_qtinit.dll"_s));
    for (const char* folder : {"", "config/"})
        ASSERT_TRUE(
            QFile::copy(builtFile(u"velm_test_trace.dll"_s), planted.arg(QLatin1String(folder))));
    ChildProgram host(builtFile(hostName()));
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
    ASSERT_TRUE(velm({u"list"_s, u"--bogus"_s}).talk.contains(u"未知选项"_s))
        << "Qt speaks Chinese, and the help is there all the same";
    const struct
    {
        const char* command;
        const char* line;
    } cases[] = {{"check", "  --sarif       Answer in SARIF 2.1.0.\n"},
                 {"doctor", "  --root DIR  Folder that holds"},
                 {"import-text", "  -o FILE     The database to make.\n"},
                 {"init", "  --force     Replace files that exist.\n"},
                 {"list", "  --match TEXT   Codes whose code"},
                 {"lookup", "  --by KEY    What CODE is"}};
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
