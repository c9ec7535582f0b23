#include "CVelmFilePath.h"

#include "support/Printers.h"
#include "support/TemporaryRoot.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMessageBox>
#include <QTimer>

namespace {

CVelmFilePath& paths()
{
    return *CVelmFilePath::Instance();
}

struct PathCase
{
    const char* name;
    const char* path;
    const char* root;
    const char* up;
    const char* withoutSlash;
    const char* level0;
    const char* level1;
    const char* level3;
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
    EXPECT_EQ(paths().getFolderName(path, 0), QString::fromUtf8(c.level0));
    EXPECT_EQ(paths().getFolderName(path, 1), QString::fromUtf8(c.level1));
    EXPECT_EQ(paths().getFolderName(path, 3), QString::fromUtf8(c.level3));
    EXPECT_EQ(paths().getFolderName(path, 4), QString());
}

INSTANTIATE_TEST_SUITE_P(
    Paths, FilePathText,
    testing::Values(PathCase{"Windows", "C:\\a\\b", "C:", "C:/a", "C:\\a\\b", "b", "a", ""},
                    PathCase{"File", "C:/a/b/c.txt", "C:", "C:/a/b", "C:/a/b/c.txt", "c.txt", "b",
                             "C:"},
                    PathCase{"TrailingSlash", "C:/a/b/", "C:", "C:/a/b", "C:/a/b", "", "b", "C:"},
                    PathCase{"TwoTrailing", "C:/a//", "C:", "C:/a/", "C:/a/", "", "", "C:"},
                    PathCase{"Absolute", "/测\\绘", "", "/测", "/测\\绘", "绘", "测", ""},
                    PathCase{"Empty", "", "", "", "", "", "", ""}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(FilePath, CombinesWithoutDoubledSeparatorsAtTheJoins)
{
    const auto combine = [](const char* base, const QStringList& parts) {
        return paths().combinePath(QString::fromUtf8(base), parts);
    };
    EXPECT_EQ(combine("D:/a", {QStringLiteral("b"), QStringLiteral("c.txt")}),
              QStringLiteral("D:/a/b/c.txt"));
    EXPECT_EQ(combine("D:\\a\\\\", {QStringLiteral("\\/b//x"), QStringLiteral("/c")}),
              QStringLiteral("D:\\a/b//x/c"));
    EXPECT_EQ(combine("/", {QStringLiteral("usr")}), QStringLiteral("/usr"));
    EXPECT_EQ(combine("", {QStringLiteral("usr"), QStringLiteral("lib")}),
              QStringLiteral("usr/lib"));
    EXPECT_EQ(combine("D:/a/", {}), QStringLiteral("D:/a/"));
}

using FolderTest = TemporaryRoot;

TEST_F(FolderTest, CountsAsOpenAsSoonAsOneFileLiesAnywhereBelow)
{
    const QString folder = path(QStringLiteral("图"));
    ASSERT_TRUE(QDir().mkpath(folder + QStringLiteral("/a/b")));
    EXPECT_TRUE(paths().folderIsEmpty(folder));
    EXPECT_FALSE(paths().folderIsOpen(folder));

    writeFile(QStringLiteral("图/a/b/x.dwg"), "x");
    EXPECT_FALSE(paths().folderIsEmpty(folder));
    EXPECT_TRUE(paths().folderIsOpen(folder));
    EXPECT_EQ(paths().getOpenFileByFolder(folder),
              QStringList{folder + QStringLiteral("/a/b/x.dwg")});
    EXPECT_FALSE(paths().fileIsOpen(folder + QStringLiteral("/a/b/x.dwg")));
}

TEST_F(FolderTest, IsDeletedWithHiddenAndReadOnlyFilesAndNothingElse)
{
    writeFile(QStringLiteral("outer/victim/a/.hidden"), "x");
    writeFile(QStringLiteral("outer/victim/read only.txt"), "x");
    writeFile(QStringLiteral("outside/keep.txt"), "x");
    ASSERT_TRUE(QFile::setPermissions(path(QStringLiteral("outer/victim/read only.txt")),
                                      QFile::ReadOwner));
#ifdef Q_OS_UNIX  // Wine has no symbolic links; QFile::link makes shortcuts there
    ASSERT_TRUE(
        QFile::link(path(QStringLiteral("outside")), path(QStringLiteral("outer/victim/link"))));
#endif
    EXPECT_TRUE(paths().deleteDir(path(QStringLiteral("outer/victim/"))));
    EXPECT_FALSE(QFileInfo::exists(path(QStringLiteral("outer/victim"))));
    EXPECT_TRUE(QFileInfo::exists(path(QStringLiteral("outer")))) << "an emptied parent must stay";
    EXPECT_TRUE(QFileInfo::exists(path(QStringLiteral("outside/keep.txt"))))
        << "links must not be followed";

    EXPECT_FALSE(paths().deleteDir(QString()));
    EXPECT_FALSE(paths().deleteDir(path(QStringLiteral("missing"))));
    EXPECT_FALSE(paths().deleteDir(path(QStringLiteral("outside/keep.txt"))));
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
        CVelmFilePath::openFileWithTips(file, nullptr, QStringLiteral("提示"));
    };
    openAndAnswer(path(QStringLiteral("报告.doc")));
    EXPECT_TRUE(shown.contains(QStringLiteral("“报告.doc”不存在"))) << shown.toStdString();
    openAndAnswer(QString());
    EXPECT_TRUE(shown.contains(QStringLiteral("文件名为空"))) << shown.toStdString();
}
