#include "CVelmFindFile.h"

#include "CVelmSystemGlobal.h"
#include "support/Printers.h"
#include "support/TemporaryRoot.h"

#include <QDir>
#include <QFile>

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

    QString tree() const { return path(QStringLiteral("tree")); }

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
    EXPECT_EQ(relative(finder().findFolder(tree(), QStringLiteral("C"), false)), list("c"));
    EXPECT_EQ(relative(finder().findAllFile(tree(), QStringLiteral("b.txt"), true)),
              list("B.txt c/b.TXT"));
    EXPECT_EQ(finder().findAll(path(QStringLiteral("missing")), true), QStringList());
    EXPECT_EQ(finder().findAll(QString(), true), QStringList());
}

TEST_F(FindFileTest, MatchesNamesAndSuffixesWhateverTheirCase)
{
    EXPECT_EQ(relative(finder().findFileNoSuffix(tree(), QStringLiteral("NOTE.TAR"), true)),
              list("a/note.tar.gz"));
    EXPECT_EQ(relative(finder().findFileNoSuffix(tree(), QStringLiteral("note"), true)),
              QStringList());
    EXPECT_EQ(relative(finder().findFileBySuffix(tree(), QStringLiteral("*.shp;.TXT | dwg"), true)),
              list("a/one.SHP B.txt c/b.TXT c/地形.dwg"));
    EXPECT_EQ(relative(finder().fuzzyQueryFile(tree(), QStringLiteral("形"), QString(), true)),
              list("c/地形.dwg"));
    EXPECT_EQ(relative(finder().fuzzyQueryFile(tree(), QStringLiteral("B"), QStringLiteral("txt"),
                                               false)),
              list("B.txt"));
    EXPECT_EQ(finder().fuzzyQueryFile(tree(), QStringLiteral("b"), QStringLiteral("dwg"), true),
              QStringList());
}

TEST_F(FindFileTest, FindsTheFirstFileDepthFirstAndNeverAFolder)
{
    const auto find = [this](const char* name, bool recursive) {
        const QString found = finder().findFile(tree(), QString::fromUtf8(name), recursive);
        return found.isEmpty() ? found : QDir(tree()).relativeFilePath(found);
    };
    EXPECT_EQ(find("b.TXT", true), QStringLiteral("B.txt"));
    EXPECT_EQ(find("one.shp", true), QStringLiteral("a/one.SHP"));
    EXPECT_EQ(find("one.shp", false), QString());
    EXPECT_EQ(find("a", true), QString());
}

TEST_F(FindFileTest, AsksTheSearchPathsInTheirOrder)
{
    writeFile(QStringLiteral("index.ini"), "root");
    EXPECT_EQ(finder().findFile(QStringLiteral("INDEX.INI"), false),
              path(QStringLiteral("index.ini")));
    writeFile(QStringLiteral("config/Index.ini"), "config");
    EXPECT_EQ(finder().findFile(QStringLiteral("INDEX.INI"), false),
              path(QStringLiteral("config/Index.ini")));
    writeFile(QStringLiteral("host/index.INI"), "host");
    ASSERT_TRUE(CVelmSystemGlobal::Instance()->addSearchPath(path(QStringLiteral("host"))));
    EXPECT_EQ(finder().findFile(QStringLiteral("INDEX.INI"), false),
              path(QStringLiteral("host/index.INI")));
    // Once in each folder; a recursive search of the root finds the other two again.
    const auto found = [this](bool recursive) {
        return finder().findFileNoSuffix(QStringLiteral("index"), recursive).filter(root()).size();
    };
    EXPECT_EQ(found(false), 3);
    EXPECT_EQ(found(true), 5);
}

#ifdef Q_OS_UNIX  // Wine has no symbolic links
TEST_F(FindFileTest, EndsInALoopOfLinks)
{
    ASSERT_TRUE(QFile::link(tree(), path(QStringLiteral("tree/c/loop"))));
    EXPECT_EQ(relative(finder().findAllFile(tree(), true)),
              list("a/note.tar.gz a/one.SHP B.txt c/b.TXT c/地形.dwg"));
}
#endif
