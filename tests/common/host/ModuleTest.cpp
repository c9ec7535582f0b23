#include "CVelmSystemGlobal.h"

#include "support/ChildProgram.h"
#include "support/LocalCodec.h"
#include "support/TemporaryRoot.h"

#include <QRegularExpression>
#include <qtestsupport_core.h>
#include <QThread>

#include <thread>
#include <vector>

namespace {

/// A host in a folder of its own, with a copy of the library and what lies beside it.
class ModuleTest : public TemporaryRoot
{
protected:
    ModuleTest() { EXPECT_TRUE(QDir().mkpath(hostFolder())); }

    QString hostFolder() const { return path(u"宿主"_s); }
    QString hostProgram() const { return hostFolder() + QLatin1Char('/') + kHostName; }

    /// Copies files of the build beside the host.
    void bring(const QStringList& names)
    {
        for (const QString& name : names)
            ASSERT_TRUE(QFile::copy(builtFile(name), hostFolder() + QLatin1Char('/') + name))
                << name.toStdString();
    }
    void bringAll() { bring({kHostName, kLibraryName, kBundle, kCompanion}); }

    /// The store of the user beside the host.
    static QString storeName() { return QString(kHostName).remove(u".exe"_s) + u".dat"_s; }

    ChildAnswer host(const QStringList& arguments, bool startsItself = false)
    {
        ChildProgram child(hostProgram());
        if (startsItself)
            child.setVariable(u"VELM_START"_s, u"host"_s);
        return child.run(arguments);
    }

    const QString kBundle = u"VelmResource.rcc"_s;
    const QString kCompanion = u"adapter_qtinit.dll"_s;
};

}  // namespace

TEST_F(ModuleTest, StartsOnceWithBundleAndCompanion)
{
    bring({kHostName, kLibraryName, kBundle});
    EXPECT_EQ(host({u"start"_s}, true).output,
              u"box 0 错误信息: 无法找到文件[adapter_qtinit.dll]\nnot started\n"
              "box 0 错误信息: 无法找到文件[adapter_qtinit.dll]\nnot started\n"
              "Cancel\nbefore 1 0\nstopped 0 0"_s);
    bring({kCompanion});
    const QString started = u"started\nstarted\n"
                            "Warning: File:host.cpp Function:start Line:1 Content:logged\n"_s;
    const QString whole = started + u"取消\nbefore 1 1\nstopped 0 0"_s;
    EXPECT_EQ(host({u"start"_s}, true).output, whole);
    EXPECT_EQ(host({u"start"_s}).output, whole) << "started by itself";

    const QString bare = u"box 40010 错误: 初始化资源文件失败！！！\n"_s + started
                         + u"Cancel\nbefore 0 1\nstopped 0 0"_s;
    ASSERT_TRUE(QFile::remove(hostFolder() + QLatin1Char('/') + kBundle));
    EXPECT_EQ(host({u"start"_s}, true).output,
              u"box 40010 错误: 无法找到资源文件[VelmResource.rcc\n"_s + bare);
    writeFile(u"config/sub/velmresource.rcc"_s, "no bundle");
    EXPECT_EQ(host({u"start"_s}, true).output, bare) << "found below a search path";
    bring({kBundle});
    EXPECT_EQ(host({u"start"_s}, true).output, whole) << "beside the library comes before";
    writeFile(u"VelmResource.rcc"_s, "no bundle");
    EXPECT_EQ(host({u"start"_s}, true).output, bare) << "in a search path itself comes first";
}

TEST_F(ModuleTest, SavesTheGlobalParametersWhenItEnds)
{
    bringAll();
    EXPECT_EQ(host({u"show"_s}).output, u"nothing"_s);
    EXPECT_EQ(host({u"set"_s, u"O'Brien 测"_s}).exitCode, 0);
    EXPECT_EQ(host({u"show"_s}).output, u"O'Brien 测"_s);
    EXPECT_EQ(host({u"end-with-lock"_s, u"second"_s}).exitCode, 0)
        << "waits for nothing that a lost thread may hold";
    EXPECT_EQ(host({u"show"_s}).output, u"second"_s);
}

TEST_F(ModuleTest, LosesNoRecordWhenItIsKilledWhileSaving)
{
    bringAll();
    for (int round = 0; round < 4; ++round) {
        ChildProgram(hostProgram()).killAfterLines({u"save-for-ever"_s}, 3 + round);
        const QString symbol = host({u"show"_s}).output;
        EXPECT_EQ(symbol.size(), 100000);
        EXPECT_EQ(symbol, QString(100000, symbol.isEmpty() ? QChar() : symbol.at(0)));
    }
}

TEST_F(ModuleTest, LosesNoSettingOfEightProgramsThatSaveAtATime)
{
    bringAll();
    std::vector<std::thread> programs;
    for (int i = 0; i < 8; ++i)
        programs.emplace_back([this, i] {
            EXPECT_EQ(host({u"set-often"_s, QString::number(i)}).exitCode, 0) << i;
        });
    for (std::thread& program : programs)
        program.join();
    EXPECT_EQ(host({u"show-numbers"_s}).output, u"140\n240\n340\n440\n540\n640\n740\n840"_s);
    EXPECT_EQ(querySql(u"select count(*) || ' ' || count(distinct 名称) from UserInput"_s,
                       u"宿主/"_s + storeName()),
              QStringList{u"41 41"_s})
        << "one row for each name, whoever came first";
}

TEST_F(ModuleTest, LetsTheHostAskBackWhileItMakesWhatWasAskedFor)
{
    bringAll();
    ASSERT_TRUE(QDir().mkpath(hostFolder() + QLatin1Char('/') + storeName()));
    EXPECT_EQ(host({u"ask-back"_s}).output, u"line\nline\nline\nbox"_s)
        << "two databases and the store cannot be opened";
}

TEST_F(ModuleTest, WorksBeforeTheApplicationObjectAndWithTwoOfThem)
{
    bring({kHostName});  // the drivers lie beside the library, elsewhere
    ChildProgram child(hostProgram());
    child.setVariable(u"QT_PLUGIN_PATH"_s, QString());
    EXPECT_EQ(child.run({u"early"_s}).output, u"before 1 0\nsaved\nafter 1 0"_s);
    EXPECT_EQ(host({u"show"_s}).output, u"second"_s) << "saved with the second object too";
}

TEST_F(ModuleTest, HandsNoFatalMessageOn)
{
    bringAll();
    const ChildAnswer answer = host({u"fatal"_s});
    EXPECT_NE(answer.exitCode, 0);
    EXPECT_EQ(answer.output, QString());
}

TEST_F(ModuleTest, TellsWhereItsOwnMessagesComeFrom)
{
    bringAll();
    runSql(
        {created(u"globaldefines"_s), u"insert into globaldefines values ('GlobalParam', '[]')"_s});
    const QRegularExpression line(u"^Warning: File:\\w+\\.cpp Function:\\S.* Line:[1-9]\\d* "
                                  "Content:global parameters: "_s);
    const QString output = host({u"show"_s}).output;
    EXPECT_TRUE(line.match(output).hasMatch()) << output.toStdString();
}

namespace {

class CreateProcess : public TemporaryRoot
{
protected:
    unsigned long start(const QString& command, int waitMs, const QString& folder,
                        int* exitCode = nullptr)
    {
        VelmProcessParam param;
        param.m_waitMs = waitMs;
        param.m_workingFolder = folder;
        param.m_exitCode = exitCode;
        param.m_arguments = QStringList{command, path(u"echo"_s)} + kArguments;
        return CVelmSystemGlobal::Instance()->createProcess(builtFile(kHostName), param);
    }

    /// What the program wrote, as soon as it is there.
    QString echoed()
    {
        QFile file(path(u"echo"_s));
        for (int i = 0; file.size() == 0 && i < 3000; ++i)
            QThread::msleep(10);  // an event loop would leave the process half deleted
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return QString::fromUtf8(file.readAll());
    }

    const QStringList kArguments{u"a b"_s, u"\"q\" \\"_s, u"测绘 '"_s, QString(), u"end\\"_s};
    const QString kEcho = kArguments.join(QLatin1Char('\n'));

private:
    LocalCodec m_codec{"UTF-8"};  // natively arguments are bytes
};

}  // namespace

TEST_F(CreateProcess, PassesArgumentsAndFolderAndWaitsForTheExitCode)
{
    int exitCode = -7;
    EXPECT_NE(start(u"echo"_s, 60000, path(u"config"_s), &exitCode), 0U);
    EXPECT_EQ(exitCode, 7);
    EXPECT_EQ(echoed(), u"config\n"_s + kEcho);
}

TEST_F(CreateProcess, LetsTheProgramGoOnWithoutWaitingOrAfterIt)
{
    for (const int waitMs : {0, 50}) {
        int exitCode = -7;
        EXPECT_NE(start(u"echo-late"_s, waitMs, QString(), &exitCode), 0U);
        EXPECT_EQ(exitCode, -7);
        EXPECT_TRUE(echoed().endsWith(kEcho)) << waitMs;
        ASSERT_TRUE(QFile::remove(path(u"echo"_s)));
    }
}

TEST_F(CreateProcess, AnswersZeroWhenItCannotStart)
{
    for (const int waitMs : {0, 1000}) {
        VelmProcessParam param;
        param.m_waitMs = waitMs;
        for (const QString& program : {path(u"no such program"_s), QString()})
            EXPECT_EQ(CVelmSystemGlobal::Instance()->createProcess(program, param), 0U) << waitMs;
        EXPECT_EQ(start(u"echo"_s, waitMs, path(u"no such folder"_s)), 0U);
    }
}
