#include "support/TemporaryRoot.h"
#include "support/Tool.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QProcess>

#include <csignal>

namespace {

class ArchiveTool : public TemporaryRoot
{
protected:
    QByteArray content(const QString& name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
};

}  // namespace

TEST_F(ArchiveTool, MakesListsTestsAndExtractsArchives)
{
    writeFile(u"图/a.txt"_s, "text");
    const QString archive = path(u"图纸.zip"_s), out = path(u"out"_s);
    const struct
    {
        QStringList arguments;
        int exitCode;
        const char* talk;
    } cases[] = {{{u"create"_s, archive, path(u"图"_s)}, 0, ""},
                 {{u"create"_s, archive, path(u"图"_s)}, 3, "is there already"},
                 {{u"create"_s, archive, path(u"图"_s), u"--force"_s, u"--level=9"_s}, 0, ""},
                 {{u"test"_s, archive}, 0, ""},
                 {{u"extract"_s, archive, u"--into"_s, out}, 0, ""},
                 {{u"extract"_s, archive, u"--into"_s, out}, 3, "is there already"},
                 {{u"extract"_s, archive, u"no"_s, u"--into"_s, out}, 3, "no such entry"},
                 {{u"extract"_s, archive, u"--most-bytes=3"_s, u"--force"_s}, 3, "more than 3"},
                 {{u"test"_s, path(u"图/a.txt"_s)}, 3, "no zip archive"},
                 {{u"test"_s, root()}, 3, "it is a folder"},
                 {{u"create"_s, path(u"b.zip"_s), u""_s}, 3, "an empty name is given"},
                 {{u"test"_s, archive, u"--json"_s}, 2, "--json is for list"},
                 {{u"create"_s, archive, u"--level=10"_s}, 2, "0 to 9"},
                 {{u"pack"_s}, 2, "not \"pack\""},
                 {{}, 2, "which of create"}};
    for (const auto& c : cases) {
        const Answer answer = velm(QStringList{u"zip"_s} + c.arguments);
        EXPECT_EQ(answer.exitCode, c.exitCode) << answer.talk.toStdString();
        EXPECT_TRUE(answer.talk.contains(QLatin1String(c.talk))) << answer.talk.toStdString();
    }
    EXPECT_EQ(content(u"out/图/a.txt"_s), "text");
    const Answer list = velm({u"zip"_s, u"list"_s, archive, u"--json"_s});
    EXPECT_EQ(list.json[1][u"name"_s].toString(), u"图/a.txt"_s);
    EXPECT_EQ(list.json[1][u"crc"_s].toString(), u"3b8ba7c7"_s);
}

TEST_F(ArchiveTool, EncryptsFilesWithAKeyFromWhereItIsHidden)
{
    writeFile(u"图.dwg"_s, "drawing");
    writeFile(u"zeros"_s, QByteArray("x\0", 2));
    writeFile(u"key"_s, "12345678\r\nnot of the key");
    qputenv("VELM_TEST_KEY", "12345678");
    const QByteArray gbk("\xB2\xE2\xBB\xE6", 4);
    const QPair<const char*, QByteArray> badKeys[] = {
        {"gbk", gbk}, {"zero", QByteArray("12\0 34", 6)}, {"long", QByteArray(10 << 20, 'k')}};
    for (const auto& [name, bytes] : badKeys)
        writeFile(QString::fromLatin1(name), bytes);
    const QString plain = path(u"图.dwg"_s), cipher = plain + u".des"_s, key = path(u"key"_s);
    const struct
    {
        QStringList arguments;
        int exitCode;
        const char* talk;
    } cases[] = {
        {{u"encrypt"_s, plain, u"--key-file"_s, key}, 0, "written: "},
        {{u"encrypt"_s, plain, u"--key-file"_s, key}, 3, "is there already"},
        {{u"decrypt"_s, cipher, u"-o"_s, path(u"back"_s), u"--key-env=VELM_TEST_KEY"_s},
         0,
         "written: "},
        {{u"encrypt"_s, path(u"zeros"_s), u"--key-file"_s, key}, 3, "do not come back"},
        {{u"encrypt"_s, path(u"zeros"_s), u"--key=123"_s, u"--force"_s}, 0, "3 of 8 bytes"},
        {{u"encrypt"_s, path(u"none"_s), u"--key-file"_s, key}, 3, "no such file"},
        {{u"encrypt"_s, key, u"--key-env=VELM_TEST_NONE"_s}, 3, "not set"},
#ifndef Q_OS_WIN  // whose code page GBK is
        {{u"encrypt"_s, key, u"--key-file"_s, path(u"gbk"_s)}, 3, "no text in the code page"},
#endif
        {{u"encrypt"_s, key, u"--key-file"_s, path(u"zero"_s)}, 3, "holds a NUL"},
        {{u"encrypt"_s, key, u"--key-file"_s, path(u"long"_s)}, 3, "more than 4096 bytes"},
        {{u"encrypt"_s, key, u"--key"_s, u"测绘"_s}, 0, "not ASCII alone"},
        {{u"encrypt"_s, key, u"--key=1"_s, u"--key-env=VELM_TEST_KEY"_s}, 2, "give one of"},
        {{u"encrypt"_s, key, u"--key-env="_s}, 2, "need a name"},
        {{u"encrypt"_s, key, u"--json"_s}, 2, "leave --json out"},
        {{u"scramble"_s, plain}, 2, "not \"scramble\""},
        {{u"encrypt"_s}, 2, "give one file"}};
    for (const auto& c : cases) {
        const Answer answer = velm(QStringList{u"crypt"_s} + c.arguments);
        EXPECT_EQ(answer.exitCode, c.exitCode) << answer.talk.toStdString();
        EXPECT_TRUE(answer.talk.contains(QLatin1String(c.talk))) << answer.talk.toStdString();
    }
    qunsetenv("VELM_TEST_KEY");
    EXPECT_EQ(content(u"back"_s), "drawing");
    EXPECT_EQ(content(u"图.dwg.des"_s).size(), 8);
}

#ifndef Q_OS_WIN
TEST_F(ArchiveTool, BreaksOffCleanlyWhenItIsToEnd)
{
    QFile large(path(u"large"_s));
    ASSERT_TRUE(large.open(QIODevice::WriteOnly) && large.resize(qint64(1) << 29));
    writeFile(u"key"_s, "12345678");
    const QStringList commands[] = {
        {u"crypt"_s, u"encrypt"_s, u"large"_s, u"--key-file"_s, u"key"_s, u"--force"_s},
        {u"zip"_s, u"create"_s, u"large.zip"_s, u"large"_s}};
    for (const QStringList& command : commands) {
        QProcess process;
        process.setWorkingDirectory(root());
        process.start(program(), command);
        const auto staged = [&] {
            return QDir(root()).entryList({u".velm-*"_s}, QDir::AllEntries | QDir::Hidden);
        };
        while (staged().size() < 2 && !process.waitForFinished(10)) {
        }
        process.terminate();
        ASSERT_TRUE(process.waitForFinished());
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(process.exitCode(), 128 + SIGTERM);
        EXPECT_EQ(staged(), QStringList());
    }
    EXPECT_FALSE(QFile::exists(path(u"large.zip"_s)) || QFile::exists(path(u"large.des"_s)));
}
#endif
