#include "archive/RawZip.h"
#include "CVelmCompress.h"
#include "support/TemporaryRoot.h"

#include <QDirIterator>
#include <QProcess>

#include <map>
#include <string>

#ifndef Q_OS_WIN
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace {

class Compress : public TemporaryRoot
{
protected:
    /// The files below a folder and what they hold, the folders with "/" and nothing.
    std::map<std::string, std::string> tree(const QString& folder) const
    {
        std::map<std::string, std::string> found;
        QDirIterator entries(path(folder), QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                             QDirIterator::Subdirectories);
        while (entries.hasNext()) {
            QFile file(entries.next());
            const QString name = QDir(path(folder)).relativeFilePath(file.fileName());
            if (file.open(QIODevice::ReadOnly))
                found[name.toStdString()] = file.readAll().toStdString();
            else
                found[name.toStdString() + '/'] = "";
        }
        return found;
    }

    void makeFiles()
    {
        writeFile(u"图/readme.txt"_s, "text");
        writeFile(u"图/.hidden"_s, "");
        writeFile(u"图/a b/房屋 €.dwg"_s, QByteArray(300000, 'd') + "end");
        ASSERT_TRUE(QDir().mkpath(path(u"图/empty"_s)));
        QFile file(path(u"图/readme.txt"_s));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(file.setFileTime(kTime, QFileDevice::FileModificationTime));
    }

    void writeRaw(const QVector<RawEntry>& entries) { writeFile(u"raw.zip"_s, rawZip(entries)); }

    bool extract(const QString& archive, const QString& folder, const QStringList& names = {})
    {
        const bool done = m_zip.extract(path(archive), path(folder), names);
        EXPECT_EQ(done, m_zip.errorText().isEmpty()) << m_zip.errorText().toStdString();
        return done;
    }

    const QDateTime kTime = QDateTime(QDate(2020, 2, 29), QTime(12, 34, 57));
    CVelmCompress m_zip;
};

#ifndef Q_OS_WIN
/// What a program prints; fails unless it ends well.
QString printed(const QString& program, const QStringList& arguments,
                const QString& folder = QString())
{
    QProcess process;
    process.setWorkingDirectory(folder);
    process.setProcessChannelMode(QProcess::MergedChannels);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished(60000)) << program.toStdString();
    const QString output = QString::fromUtf8(process.readAll());
    EXPECT_EQ(process.exitCode(), 0) << output.toStdString();
    return output;
}
#endif

}  // namespace

TEST_F(Compress, KeepsNamesContentsAndTimes)
{
    makeFiles();
    writeFile(u"single.txt"_s, "one");
    const auto expected = tree(u"图"_s);
    for (const int level : {0, 1, 9}) {
        m_zip.setLevel(level);
        m_zip.setOverwrites(true);
        ASSERT_TRUE(m_zip.compress({path(u"图"_s) + u'/', path(u"single.txt"_s)}, path(u"a.zip"_s)))
            << m_zip.errorText().toStdString();
        QVector<VelmArchiveEntry> entries;
        ASSERT_TRUE(m_zip.list(path(u"a.zip"_s), entries));
        QStringList names;
        for (const VelmArchiveEntry& entry : entries)
            names.append(entry.name);
        EXPECT_EQ(names, (QStringList{u"图/"_s, u"图/.hidden"_s, u"图/a b/"_s, u"图/empty/"_s,
                                      u"图/readme.txt"_s, u"图/a b/房屋 €.dwg"_s, u"single.txt"_s}))
            << names.join(u'|').toStdString();
        EXPECT_EQ(entries.at(4).modified, kTime);
        EXPECT_EQ(entries.at(5).size, 300003);
        EXPECT_EQ(entries.at(5).compressedSize > 300000, level == 0);
        EXPECT_TRUE(m_zip.test(path(u"a.zip"_s))) << m_zip.errorText().toStdString();
        ASSERT_TRUE(extract(u"a.zip"_s, u"new/out"_s));
        EXPECT_EQ(tree(u"new/out/图"_s), expected);
        EXPECT_EQ(QFileInfo(path(u"new/out/图/readme.txt"_s)).lastModified(), kTime);
    }
    QByteArray content;
    EXPECT_TRUE(m_zip.readEntry(path(u"a.zip"_s), u"single.txt"_s, content));
    EXPECT_EQ(content, "one");
    EXPECT_FALSE(m_zip.readEntry(path(u"a.zip"_s), u"none"_s, content));
    EXPECT_EQ(content, "one");
    ASSERT_TRUE(extract(u"a.zip"_s, u"part"_s, {u"图/a b"_s, u"single.txt"_s}));
    EXPECT_EQ(tree(u"part"_s).size(), 4);
    EXPECT_FALSE(extract(u"a.zip"_s, u"part2"_s, {u"图/a"_s})) << "half a name is none";
    EXPECT_FALSE(QFileInfo::exists(path(u"part2"_s)));
}

#ifndef Q_OS_WIN
TEST_F(Compress, AgreesWithOtherPrograms)
{
    makeFiles();
    const auto expected = tree(u"图"_s);
    const QString ours = path(u"ours.zip"_s), theirs = path(u"theirs.zip"_s);
    ASSERT_TRUE(m_zip.compress({path(u"图"_s)}, ours));
    EXPECT_TRUE(printed(u"unzip"_s, {u"-t"_s, ours}).contains(u"No errors"_s));
    printed(u"unzip"_s, {u"-q"_s, ours, u"-d"_s, path(u"unzipped"_s)});
    EXPECT_EQ(tree(u"unzipped/图"_s), expected);
    EXPECT_EQ(QFileInfo(path(u"unzipped/图/readme.txt"_s)).lastModified(), kTime);
    printed(u"python3"_s, {u"-m"_s, u"zipfile"_s, u"-e"_s, ours, path(u"python"_s)});
    EXPECT_EQ(tree(u"python/图"_s), expected);

    printed(u"zip"_s, {u"-qr"_s, theirs, u"图"_s}, root());
    ASSERT_TRUE(extract(u"theirs.zip"_s, u"from zip"_s));
    EXPECT_EQ(tree(u"from zip/图"_s), expected);
    EXPECT_EQ(QFileInfo(path(u"from zip/图/readme.txt"_s)).lastModified(), kTime);
    QFile::remove(theirs);
    printed(u"python3"_s, {u"-m"_s, u"zipfile"_s, u"-c"_s, theirs, u"图"_s}, root());
    ASSERT_TRUE(extract(u"theirs.zip"_s, u"from python"_s));
    EXPECT_EQ(tree(u"from python/图"_s), expected);
}
#endif

TEST_F(Compress, ReadsNamesAsUtf8OrGbk)
{
    const struct
    {
        QByteArray bytes;
        quint16 flags;
        const char* name;
    } cases[] = {{"\xE6\x88\xBF.txt", 0x800, "房.txt"},
                 {"\xE6\x88\xBF.txt", 0, "房.txt"},
                 {"\xB7\xBF\xCE\xDD.txt", 0, "房屋.txt"},
                 {"\x81\x5C/\x81\x5C.txt", 0, "乗/乗.txt"},
                 {"\xB7\xBF", 0x800, "房"},
                 {"./a\\b.txt", 0, "a/b.txt"}};
    for (const auto& c : cases) {
        const QString out = QString::number(&c - cases);
        writeRaw({{c.bytes, "x", c.flags}});
        QVector<VelmArchiveEntry> entries;
        ASSERT_TRUE(m_zip.list(path(u"raw.zip"_s), entries)) << c.name;
        EXPECT_EQ(entries.at(0).name, QString::fromUtf8(c.name));
        ASSERT_TRUE(extract(u"raw.zip"_s, out)) << c.name;
        EXPECT_EQ(tree(out).count(c.name), 1) << c.name;
    }
}

TEST_F(Compress, NeverLeavesTheFolderOrMakesWhatIsNoFileEverywhere)
{
    for (const char* name : {"../x",    "a/../../x",   "/x",     "//server/x", "\\\\server\\x",
                             "..\\x",   "C:x",         "C:/x",   "a//b",       ".\\..\\x",
                             "..",      "a/./b",       "CON",    "nul.txt",    "a/Com1.dwg",
                             "LPT9 .x", "com\xC2\xB9", "CONIN$", "x.",         "x ",
                             "a /x",    "a?b",         "a\nb",   "a:b",        "x/../y",
                             "*"}) {
        writeRaw({{"fine", "x"}, {name, "x", 0x800}});
        EXPECT_FALSE(extract(u"raw.zip"_s, u"out"_s)) << name;
        EXPECT_FALSE(QFileInfo::exists(path(u"out"_s))) << name;
    }
    const quint32 link = 0120777U << 16;
    const QVector<QVector<RawEntry>> cases{
        {{"link", "/etc", 0, 0, link}},
        {{"a", "x", 1}},
        {{"a"}, {"A"}},
        {{"a"}, {"a/b"}},
        {{"a/b"}, {"a"}},
        {{"A/x"}, {"a/y"}},
        {{"a"}, {"a"}},
        {{"\xC3\xA9", "x", 0x800}, {"e\xCC\x81", "x", 0x800}},
        {{"a", "x", 0, 99}},
        {{"a", "x", 0, 0, 0, -1, 1}},
        {{"shorter than told", "x", 0, 0, 0, 2}},
        {{"a", {"\1\1\0\xFE\xFFx", 6}, 0, 8, 0, 2}},
        {{"fine"}, {"a", "x", 0, 8}},
        {{"more than told", "xy", 0, 0, 0, 1}},
        {{"a folder/", "x"}},
        {{"", "x"}},
        {{"without its end", {"\0\1\0\xFE\xFFx", 6}, 0, 8, 0, 1}},
        {{"more than its end", {"\1\1\0\xFE\xFFxx", 7}, 0, 8, 0, 1}}};
    for (const QVector<RawEntry>& entries : cases) {
        writeRaw(entries);
        EXPECT_FALSE(extract(u"raw.zip"_s, u"out"_s)) << entries.last().name.constData();
        EXPECT_FALSE(QFileInfo::exists(path(u"out"_s))) << entries.last().name.constData();
    }
}

TEST_F(Compress, RefusesBombs)
{
    writeFile(u"zeros"_s, QByteArray(5000000, '\0'));
    ASSERT_TRUE(m_zip.compress({path(u"zeros"_s)}, path(u"bomb.zip"_s)));
    QByteArray content;
    EXPECT_FALSE(extract(u"bomb.zip"_s, u"out"_s));
    EXPECT_FALSE(m_zip.test(path(u"bomb.zip"_s)));
    EXPECT_FALSE(m_zip.readEntry(path(u"bomb.zip"_s), u"zeros"_s, content));
    m_zip.setMostRatio(2000);
    EXPECT_TRUE(m_zip.test(path(u"bomb.zip"_s)));
    m_zip.setMostBytes(4999999);
    EXPECT_FALSE(extract(u"bomb.zip"_s, u"out"_s));
    m_zip.setMostBytes(5000000);
    EXPECT_TRUE(extract(u"bomb.zip"_s, u"out"_s)) << m_zip.errorText().toStdString();

    // What an entry claims is one thing, what comes out another.
    QFile file(path(u"bomb.zip"_s));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    QByteArray bytes = file.readAll();
    const QByteArray size("\x40\x4B\x4C\x00", 4);
    while (bytes.contains(size))
        bytes.replace(bytes.indexOf(size), 4, QByteArray("\x01\x00\x00\x00", 4));
    ASSERT_TRUE(file.seek(0) && file.write(bytes) == bytes.size() && file.flush());
    m_zip.setMostBytes(1000);
    EXPECT_FALSE(m_zip.readEntry(file.fileName(), u"zeros"_s, content));
    EXPECT_LE(content.size(), 0);
}

TEST_F(Compress, ReplacesNothingUnlessToldAndLeavesNothingHalf)
{
    makeFiles();
    ASSERT_TRUE(m_zip.compress({path(u"图"_s)}, path(u"a.zip"_s)));
    EXPECT_FALSE(m_zip.compress({path(u"图"_s)}, path(u"a.zip"_s))) << "is there";
    writeFile(u"out/图/readme.txt"_s, "mine");
    const auto before = tree(u"out"_s);
    EXPECT_FALSE(extract(u"a.zip"_s, u"out"_s));
    m_zip.setProgress([](const QString&, qint64 done, qint64) { return done < 200000; });
    m_zip.setOverwrites(true);
    EXPECT_FALSE(extract(u"a.zip"_s, u"out"_s));
    EXPECT_EQ(m_zip.errorText().right(9), u"cancelled"_s);
    EXPECT_FALSE(m_zip.compress({path(u"图"_s)}, path(u"a.zip"_s)));
    EXPECT_EQ(tree(u"out"_s), before);
    m_zip.setProgress({});
    EXPECT_TRUE(m_zip.test(path(u"a.zip"_s))) << "the old one";
    EXPECT_TRUE(extract(u"a.zip"_s, u"out"_s));
    EXPECT_EQ(tree(u"out/图"_s), tree(u"图"_s));

    writeFile(u"out2/图/readme.txt/folder in its place"_s, "");
    EXPECT_FALSE(extract(u"a.zip"_s, u"out2"_s));
    writeFile(u"out3/图"_s, "a file in the place of a folder");
    EXPECT_FALSE(extract(u"a.zip"_s, u"out3"_s));
    for (const QStringList& paths : {QStringList(), QStringList{path(u"none"_s)},
                                     QStringList{path(u"图"_s), path(u"out/图"_s)}})
        EXPECT_FALSE(m_zip.compress(paths, path(u"b.zip"_s)));
    EXPECT_FALSE(QFileInfo::exists(path(u"b.zip"_s)));
}

TEST_F(Compress, LeavesItselfAndLinksToFoldersOut)
{
    makeFiles();
    m_zip.setOverwrites(true);
    for (int i = 0; i < 2; ++i)
        ASSERT_TRUE(m_zip.compress({path(u"图"_s)}, path(u"图/self.zip"_s)));
    QVector<VelmArchiveEntry> entries;
    ASSERT_TRUE(m_zip.list(path(u"图/self.zip"_s), entries));
    EXPECT_EQ(entries.size(), 6);
#ifndef Q_OS_WIN
    ASSERT_TRUE(QFile::link(path(u"图"_s), path(u"图/loop"_s)));
    ASSERT_TRUE(QFile::link(path(u"图/self.zip"_s), path(u"图/again.zip"_s)));
    writeFile(u"图/.velm-01234567/file"_s, "of a run that was killed");
    ASSERT_TRUE(m_zip.compress({path(u"图"_s)}, path(u"图/self.zip"_s)));
    EXPECT_EQ(m_zip.leftOut(), QStringList{path(u"图/loop"_s)});
    ASSERT_TRUE(m_zip.list(path(u"图/self.zip"_s), entries));
    EXPECT_EQ(entries.size(), 6);
    ASSERT_TRUE(QFile::rename(path(u"图/self.zip"_s), path(u"a.zip"_s)));
    for (const char* name : {"p\\q", "\xB7\xBF"}) {  // what comes back as two, and no UTF-8
        const QByteArray full = QFile::encodeName(path(u"图/"_s)) + name;
        ASSERT_EQ(::mkdir(full.constData(), 0777), 0);
        EXPECT_FALSE(m_zip.compress({path(u"图"_s)}, path(u"b.zip"_s))) << name;
        ASSERT_EQ(::rmdir(full.constData()), 0);
    }
    // A link in the place of a folder leads out of the one to extract into.
    ASSERT_TRUE(QDir().mkpath(path(u"out"_s)) && QFile::link(path(u"图"_s), path(u"out/图"_s)));
    EXPECT_FALSE(extract(u"a.zip"_s, u"out"_s));
#endif
}

TEST_F(Compress, AsksForEachEntryWhetherToGoOn)
{
    ASSERT_TRUE(QDir().mkpath(path(u"empty/a/b"_s)));
    ASSERT_TRUE(m_zip.compress({path(u"empty"_s)}, path(u"a.zip"_s)));
    for (int after = 0; after < 3; ++after) {
        int calls = 0;
        m_zip.setProgress([&](const QString&, qint64, qint64) { return calls++ < after; });
        EXPECT_FALSE(m_zip.compress({path(u"empty"_s)}, path(u"b.zip"_s))) << after;
        EXPECT_EQ(calls, after + 1);
        calls = 0;
        EXPECT_FALSE(extract(u"a.zip"_s, u"out"_s)) << after;
        calls = 0;
        EXPECT_FALSE(m_zip.test(path(u"a.zip"_s))) << after;
    }
    EXPECT_EQ(QDir(root()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              (QStringList{u"a.zip"_s, u"config"_s, u"empty"_s}));
}

TEST_F(Compress, TakesNoFolderForEmptyThatCannotBeListed)
{
    writeFile(u"d/sub/file"_s, "x");
    m_zip.setProgress([this](const QString& name, qint64, qint64) {
        const QString folder = path(u"d/sub"_s);
        if (name == u"d/sub"_s && QDir(folder).removeRecursively())
            writeFile(name, "no folder any more");
        return true;
    });
    EXPECT_FALSE(m_zip.compress({path(u"d"_s)}, path(u"a.zip"_s)));
    EXPECT_TRUE(m_zip.errorText().contains(u"d/sub\": cannot be listed: "_s))
        << m_zip.errorText().toStdString();
}

TEST_F(Compress, LeavesWhatComesMeanwhile)
{
    makeFiles();
    ASSERT_TRUE(m_zip.compress({path(u"图"_s)}, path(u"a.zip"_s)));
    ASSERT_TRUE(QDir().mkpath(path(u"out/图"_s)));
    m_zip.setProgress([this](const QString&, qint64, qint64) {
        writeFile(u"b.zip"_s, "another's");
        writeFile(u"out/图/readme.txt"_s, "another's");
        return true;
    });
    EXPECT_FALSE(m_zip.compress({path(u"图"_s)}, path(u"b.zip"_s)));
    EXPECT_FALSE(extract(u"a.zip"_s, u"out"_s));
    EXPECT_TRUE(m_zip.errorText().contains(u"图/readme.txt\": is there already"_s))
        << m_zip.errorText().toStdString();
    const auto found = tree(QString());
    EXPECT_EQ(found.at("b.zip"), "another's");
    EXPECT_EQ(found.at("out/图/readme.txt"), "another's");
}

TEST_F(Compress, RefusesTargetsThatAreNone)
{
    makeFiles();
    ASSERT_TRUE(m_zip.compress({path(u"图"_s)}, path(u"a.zip"_s)));
    EXPECT_FALSE(m_zip.extract(path(u"a.zip"_s), QString()));
    EXPECT_EQ(m_zip.errorText(), u"no folder is given to extract into"_s);
    EXPECT_FALSE(m_zip.compress({path(u"图"_s)}, QString()));
    EXPECT_EQ(m_zip.errorText(), u"no name is given for the archive"_s);
    m_zip.setOverwrites(true);
    EXPECT_FALSE(m_zip.compress({path(u"a.zip"_s)}, path(u"a.zip"_s)));
    EXPECT_TRUE(m_zip.errorText().endsWith(u"is the archive that is to be made"_s));
#ifdef Q_OS_WIN
    EXPECT_FALSE(m_zip.extract(path(u"a.zip"_s), u"Q:/none/x"_s));
#endif
    EXPECT_TRUE(m_zip.test(path(u"a.zip"_s)));
}

TEST_F(Compress, TellsOfDamageWhereverItIs)
{
    makeFiles();
    ASSERT_TRUE(m_zip.compress({path(u"图"_s)}, path(u"a.zip"_s)));
    QFile file(path(u"a.zip"_s));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray whole = file.readAll();
    for (int size = 0; size < whole.size(); size += 13) {
        writeFile(u"cut.zip"_s, whole.left(size));
        EXPECT_FALSE(m_zip.test(path(u"cut.zip"_s))) << size;
        EXPECT_FALSE(extract(u"cut.zip"_s, u"out"_s)) << size;
    }
    writeFile(u"cut.zip"_s, QByteArray("PK\5\6").leftJustified(14, '\0'));  // an end, cut off
    EXPECT_FALSE(m_zip.test(path(u"cut.zip"_s)));
    for (int at = 0; at < whole.size(); ++at) {
        QByteArray broken = whole;
        broken[at] = static_cast<char>(broken.at(at) ^ 0x55);
        writeFile(u"broken.zip"_s, broken);
        m_zip.test(path(u"broken.zip"_s));  // no fault, whatever it finds
    }
    EXPECT_FALSE(QFileInfo::exists(path(u"out"_s)));
}
