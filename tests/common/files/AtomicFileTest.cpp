#include "common/files/AtomicFile.h"

#include "common/files/StagedFile.h"
#include "common/platform/FileSystem.h"
#include "support/TemporaryRoot.h"

#include <QThread>

#include <thread>

using velm::detail::AtomicFile;
using velm::detail::StagedFile;

namespace {

class AtomicFileTest : public TemporaryRoot
{
protected:
    AtomicFileTest() { writeFile(u"made"_s, "new"); }

    bool commit(AtomicFile& file)
    {
        QString problem;
        const bool done = file.commit(problem);
        EXPECT_NE(done, problem.size() > 0) << "a refusal says why";
        return done;
    }

    /// Empty if there is no such file.
    QByteArray content(const QString& name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
};

}  // namespace

TEST_F(AtomicFileTest, TakesItsPlaceAndCanBeTakenBack)
{
    for (const QByteArray& old : {QByteArray(), QByteArray("old")}) {
        writeFile(u"made"_s, "new");
        if (!old.isEmpty())
            writeFile(u"place"_s, old);
        AtomicFile file(path(u"place"_s), path(u"made"_s), path(u"spare"_s));
        ASSERT_TRUE(commit(file));
        EXPECT_EQ(content(u"place"_s), "new");
        EXPECT_FALSE(QFile::exists(path(u"made"_s)));
        EXPECT_TRUE(file.undo());
        EXPECT_EQ(content(u"place"_s), old);
        EXPECT_EQ(QFile::exists(path(u"place"_s)), !old.isEmpty());
    }
}

TEST_F(AtomicFileTest, ReplacesOrdinaryFilesOnly)
{
    ASSERT_TRUE(QDir().mkpath(path(u"folder"_s)));
    writeFile(u"behind"_s, "behind");
    ASSERT_TRUE(QFile::link(path(u"behind"_s), path(u"link.lnk"_s)));
    for (const QString& place : {u"folder"_s, u"link.lnk"_s, u"no folder/place"_s}) {
        AtomicFile file(path(place), path(u"made"_s));
        EXPECT_FALSE(commit(file)) << place.toStdString();
    }
    EXPECT_EQ(content(u"behind"_s), "behind");
    EXPECT_EQ(content(u"made"_s), "new");
}

TEST_F(AtomicFileTest, LeavesWhatCameMeanwhileWhereItReplacesNothing)
{
    for (const bool cameMeanwhile : {false, true}) {
        StagedFile file(path(u"place"_s));
        ASSERT_EQ(file.open(), QString());
        ASSERT_EQ(file.write("new", 3), QString());
        if (cameMeanwhile)
            writeFile(u"place"_s, "other");
        EXPECT_EQ(file.commit(velm::detail::Replace::No).isEmpty(), !cameMeanwhile);
        EXPECT_EQ(file.isTaken(), cameMeanwhile);
        EXPECT_EQ(content(u"place"_s), cameMeanwhile ? "other" : "new");
        ASSERT_TRUE(QFile::remove(path(u"place"_s)));
    }
    EXPECT_EQ(QDir(root()).entryList(QDir::Files | QDir::Hidden), QStringList{u"made"_s});
}

TEST_F(AtomicFileTest, WaitsForAProgramThatHoldsTheOldFile)
{
    writeFile(u"place"_s, "old");
    QFile held(path(u"place"_s));
    ASSERT_TRUE(held.open(QIODevice::ReadOnly));
    AtomicFile file(path(u"place"_s), path(u"made"_s));
    EXPECT_EQ(commit(file), velm::detail::platform::replacesOpenFiles()) << "it is never let go of";
    EXPECT_EQ(content(u"place"_s), QFile::exists(path(u"made"_s)) ? "old" : "new");

    writeFile(u"made"_s, "newer");
    std::thread holder([&held] {
        QThread::msleep(300);
        held.close();
    });
    EXPECT_TRUE(commit(file));
    holder.join();
    EXPECT_EQ(content(u"place"_s), "newer");
}
