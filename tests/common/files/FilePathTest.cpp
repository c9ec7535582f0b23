#include "CVelmFilePath.h"

#include "support/TemporaryRoot.h"

#include <QApplication>
#include <QMessageBox>
#include <QTimer>

namespace {

CVelmFilePath& paths()
{
    return *CVelmFilePath::Instance();
}

struct PathCase
{
    const char *name, *path, *root, *up, *withoutSlash, *level0, *level1, *level3;
};

constexpr PathCase kPaths[] = {
    {"Windows", "C:\\a\\b", "C:", "C:/a", "C:\\a\\b", "b", "a", ""},
    {"File", "C:/a/b/c.txt", "C:", "C:/a/b", "C:/a/b/c.txt", "c.txt", "b", "C:"},
    {"TrailingSlash", "C:/a/b/", "C:", "C:/a/b", "C:/a/b", "", "b", "C:"},
    {"TwoTrailing", "C:/a//", "C:", "C:/a/", "C:/a/", "", "", "C:"},
    {"Absolute", "/测\\绘", "", "/测", "/测\\绘", "绘", "测", ""},
    {"Empty", "", "", "", "", "", "", ""},
};

class FilePathText : public testing::TestWithParam<PathCase>
{};

}  // namespace

TEST_P(FilePathText, TakesBothSeparatorsAndKeepsEmptyParts)
{
    const PathCase& c = GetParam();
    const QString path = QString::fromUtf8(c.path);
    EXPECT_EQ(paths().getRootPath(path), QString::fromUtf8(c.root));
    EXPECT_EQ(paths().getUpOneLevelPath(path), QString::fromUtf8(c.up));
    EXPECT_EQ(paths().removeLastSlashFromPath(path), QString::fromUtf8(c.withoutSlash));
    for (const auto& [level, folder] :
         {std::pair{0, c.level0}, {1, c.level1}, {3, c.level3}, {4, ""}})
        EXPECT_EQ(paths().getFolderName(path, level), QString::fromUtf8(folder)) << level;
}

INSTANTIATE_TEST_SUITE_P(Paths, FilePathText, testing::ValuesIn(kPaths),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(FilePath, CombinesWithoutDoubledSeparatorsAtTheJoins)
{
    const auto combine = [](const char* base, const QStringList& parts) {
        return paths().combinePath(QString::fromUtf8(base), parts);
    };
    EXPECT_EQ(combine("D:/a", {u"b"_s, u"c.txt"_s}), u"D:/a/b/c.txt"_s);
    EXPECT_EQ(combine("D:\\a\\\\", {u"\\/b//x"_s, u"/c"_s}), u"D:\\a/b//x/c"_s);
    EXPECT_EQ(combine("/", {u"usr"_s}), u"/usr"_s);
    EXPECT_EQ(combine("", {u"usr"_s, u"lib"_s}), u"usr/lib"_s);
    EXPECT_EQ(combine("D:/a/", {}), u"D:/a/"_s);
}

using FolderTest = TemporaryRoot;

TEST_F(FolderTest, CountsAsOpenAsSoonAsOneFileLiesAnywhereBelow)
{
    const QString folder = path(u"图"_s);
    ASSERT_TRUE(QDir().mkpath(folder + u"/a/b"_s));
    EXPECT_TRUE(paths().folderIsEmpty(folder));
    EXPECT_FALSE(paths().folderIsOpen(folder));

    writeFile(u"图/a/b/x.dwg"_s, "x");
    EXPECT_FALSE(paths().folderIsEmpty(folder));
    EXPECT_TRUE(paths().folderIsOpen(folder));
    EXPECT_EQ(paths().getOpenFileByFolder(folder), QStringList{folder + u"/a/b/x.dwg"_s});
    EXPECT_FALSE(paths().fileIsOpen(folder + u"/a/b/x.dwg"_s));
}

TEST_F(FolderTest, IsDeletedWithHiddenAndReadOnlyFilesAndNothingElse)
{
    writeFile(u"outer/victim/a/.hidden"_s, "x");
    writeFile(u"outer/victim/read only.txt"_s, "x");
    writeFile(u"outside/keep.txt"_s, "x");
    ASSERT_TRUE(QFile::setPermissions(path(u"outer/victim/read only.txt"_s), QFile::ReadOwner));
#ifdef Q_OS_UNIX  // Wine has no symbolic links; QFile::link makes shortcuts there
    ASSERT_TRUE(QFile::link(path(u"outside"_s), path(u"outer/victim/link"_s)));
    ASSERT_TRUE(QFile::link(path(u"outside"_s), path(u"link"_s)));
    EXPECT_TRUE(paths().deleteDir(path(u"link//"_s)));
    EXPECT_FALSE(QFileInfo::exists(path(u"link"_s)));
#endif
    EXPECT_TRUE(paths().deleteDir(path(u"outer/victim/"_s)));
    EXPECT_FALSE(QFileInfo::exists(path(u"outer/victim"_s)));
    EXPECT_TRUE(QFileInfo::exists(path(u"outer"_s))) << "an emptied parent must stay";
    EXPECT_TRUE(QFileInfo::exists(path(u"outside/keep.txt"_s))) << "links must not be followed";

    EXPECT_FALSE(paths().deleteDir(QString()));
    EXPECT_FALSE(paths().deleteDir(path(u"missing"_s)));
    EXPECT_FALSE(paths().deleteDir(path(u"outside/keep.txt"_s)));
}

TEST_F(FolderTest, TellsWhyAFileIsNotOpened)
{
    QString shown;
    const auto openAndAnswer = [&](const QString& file) {
        QTimer::singleShot(0, qApp, [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            shown = box->windowTitle() + QLatin1Char('/') + box->text();
            box->accept();
        });
        CVelmFilePath::openFileWithTips(file, nullptr, u"提示"_s);
    };
    openAndAnswer(path(u"报告.doc"_s));
    EXPECT_TRUE(shown.contains(u"“报告.doc”不存在"_s)) << shown.toStdString();
    openAndAnswer(QString());
    EXPECT_TRUE(shown.contains(u"文件名为空"_s)) << shown.toStdString();
}
