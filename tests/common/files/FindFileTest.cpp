#include "CVelmFindFile.h"

#include "CVelmSystemGlobal.h"
#include "support/TemporaryRoot.h"

namespace {

CVelmFindFile& finder()
{
    return *CVelmFindFile::Instance();
}

class FindFileTest : public TemporaryRoot
{
protected:
    FindFileTest()
    {
        for (const char* file : {"tree/B.txt", "tree/a/one.SHP", "tree/a/note.tar.gz",
                                 "tree/c/b.TXT", "tree/c/地形.dwg", "tree/.hidden/b.txt"})
            writeFile(QString::fromUtf8(file), "x");
    }

    QString tree() const { return path(u"tree"_s); }

    /// Without the folder, so that lists are easy to read.
    QStringList relative(const QStringList& found) const
    {
        QStringList names;
        for (const QString& file : found)
            names.append(QDir(tree()).relativeFilePath(file));
        return names;
    }
};

QStringList list(const char* names)
{
    return QString::fromUtf8(names).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

}  // namespace

TEST_F(FindFileTest, ListsInNameOrderWithFoldersEnteredWhereTheyAreMet)
{
    EXPECT_EQ(relative(finder().findAll(tree(), true)),
              list("a a/note.tar.gz a/one.SHP B.txt c c/b.TXT c/地形.dwg"));
    EXPECT_EQ(relative(finder().findAll(tree(), false)), list("a B.txt c"));
    EXPECT_EQ(relative(finder().findAllFile(tree(), false)), list("B.txt"));
    EXPECT_EQ(relative(finder().findFolder(tree(), true)), list("a c"));
    EXPECT_EQ(relative(finder().findFolder(tree(), u"C"_s, false)), list("c"));
    EXPECT_EQ(relative(finder().findAllFile(tree(), u"b.txt"_s, true)), list("B.txt c/b.TXT"));
    EXPECT_EQ(finder().findAll(path(u"missing"_s), true), QStringList());
    EXPECT_EQ(finder().findAll(QString(), true), QStringList());
}

TEST_F(FindFileTest, MatchesNamesAndSuffixesWhateverTheirCase)
{
    EXPECT_EQ(relative(finder().findFileNoSuffix(tree(), u"NOTE.TAR"_s, true)),
              list("a/note.tar.gz"));
    EXPECT_EQ(relative(finder().findFileNoSuffix(tree(), u"note"_s, true)), QStringList());
    EXPECT_EQ(relative(finder().findFileBySuffix(tree(), u"*.shp;.TXT | dwg"_s, true)),
              list("a/one.SHP B.txt c/b.TXT c/地形.dwg"));
    EXPECT_EQ(relative(finder().fuzzyQueryFile(tree(), u"形"_s, QString(), true)),
              list("c/地形.dwg"));
    EXPECT_EQ(relative(finder().fuzzyQueryFile(tree(), u"B"_s, u"TXT"_s, false)), list("B.txt"));
    EXPECT_EQ(finder().fuzzyQueryFile(tree(), u"b"_s, u"dwg"_s, true), QStringList());
}

TEST_F(FindFileTest, FindsTheFirstFileDepthFirstAndNeverAFolder)
{
    const auto find = [this](const char* name, bool recursive) {
        const QString found = finder().findFile(tree(), QString::fromUtf8(name), recursive);
        return found.isEmpty() ? found : QDir(tree()).relativeFilePath(found);
    };
    EXPECT_EQ(find("b.TXT", true), u"B.txt"_s);
    EXPECT_EQ(find("one.shp", true), u"a/one.SHP"_s);
    EXPECT_EQ(find("one.shp", false), QString());
    EXPECT_EQ(find("a", true), QString());
}

TEST_F(FindFileTest, AsksTheSearchPathsInTheirOrder)
{
    writeFile(u"index.ini"_s, "root");
    EXPECT_EQ(finder().findFile(u"INDEX.INI"_s, false), path(u"index.ini"_s));
    writeFile(u"config/Index.ini"_s, "config");
    EXPECT_EQ(finder().findFile(u"INDEX.INI"_s, false), path(u"config/Index.ini"_s));
    writeFile(u"host/index.INI"_s, "host");
    ASSERT_TRUE(CVelmSystemGlobal::Instance()->addSearchPath(path(u"host"_s)));
    EXPECT_EQ(finder().findFile(u"INDEX.INI"_s, false), path(u"host/index.INI"_s));
    // Once in each folder; a recursive search of the root finds the other two again.
    const auto found = [this](bool recursive) {
        return finder().findFileNoSuffix(u"index"_s, recursive).filter(root()).size();
    };
    EXPECT_EQ(found(false), 3);
    EXPECT_EQ(found(true), 5);
}

#ifdef Q_OS_WIN
TEST_F(FindFileTest, TakesAShortcutForAFile)
{
    ASSERT_TRUE(QFile::link(path(u"tree/c"_s), path(u"tree/a/far.lnk"_s)));
    EXPECT_EQ(relative(finder().findAllFile(path(u"tree/a"_s), true)),
              list("a/far.lnk a/note.tar.gz a/one.SHP"));
    EXPECT_EQ(relative(finder().findFolder(tree(), true)), list("a c"));
}
#else
TEST_F(FindFileTest, FollowsLinksWithoutLosingAFolderOrItsWay)
{
    ASSERT_TRUE(QFile::link(tree(), path(u"tree/c/loop"_s)));
    ASSERT_TRUE(QFile::link(path(u"tree/c"_s), path(u"tree/a/ahead"_s)));
    EXPECT_EQ(relative(finder().findAllFile(tree(), true)),
              list("a/ahead/b.TXT a/ahead/地形.dwg a/note.tar.gz a/one.SHP B.txt c/b.TXT "
                   "c/地形.dwg"));

    // Were each way through these gone, it would be twenty factorial of them.
    constexpr int kFolders = 20;
    for (int from = 0; from < kFolders; ++from)
        writeFile(u"web/%1/here"_s.arg(from), "x");
    for (int from = 0; from < kFolders; ++from) {
        for (int to = 0; to < kFolders; ++to)
            QFile::link(path(u"web/%1"_s.arg(to)), path(u"web/%1/a%2"_s.arg(from).arg(to)));
    }
    const QStringList found = finder().findAllFile(path(u"web"_s), u"here"_s, true);
    for (int folder = 0; folder < kFolders; ++folder)
        EXPECT_TRUE(found.contains(path(u"web/%1/here"_s.arg(folder)))) << folder;
    EXPECT_GT(found.size(), kFolders) << "links are ways too";
}
#endif
