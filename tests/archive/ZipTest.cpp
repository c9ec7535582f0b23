#include "archive/RawZip.h"
#include "archive/StagedTree.h"
#include "archive/ZipReader.h"
#include "archive/ZipTime.h"
#include "archive/ZipWriter.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QDir>
#include <QTemporaryDir>
#include <QTemporaryFile>

using namespace velm::detail;

namespace {

class CountingFile : public QTemporaryFile
{
public:
    int m_reads = 0;

protected:
    qint64 readData(char* bytes, qint64 size) override
    {
        ++m_reads;
        return QTemporaryFile::readData(bytes, size);
    }
};

/// A file with a hole of some GiB at its beginning.
class LargeDevice : public QIODevice
{
public:
    static constexpr qint64 kHole = 5LL << 30;

    explicit LargeDevice(const QByteArray& bytes) : m_bytes(bytes) {}
    qint64 size() const override { return kHole + m_bytes.size(); }

protected:
    qint64 readData(char* bytes, qint64 size) override
    {
        const qint64 got = std::max<qint64>(0, std::min(size, this->size() - pos()));
        for (qint64 i = 0; i < got; ++i)
            bytes[i] = pos() + i < kHole ? '\0' : m_bytes.at(static_cast<int>(pos() + i - kHole));
        return got;
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    QByteArray m_bytes;
};

QByteArray numbers(std::initializer_list<std::pair<qint64, int>> list)
{
    QByteArray bytes;
    for (const auto& [number, size] : list) {
        for (int i = 0; i < size; ++i)
            bytes.append(i < 8 ? static_cast<char>(number >> (8 * i) & 0xFF) : '\0');
    }
    return bytes;
}

/// What follows the hole, which is the content of the first entry: a second one, and the end.
QByteArray behindTheHole()
{
    constexpr qint64 kWide = 0xFFFFFFFF;
    constexpr qint64 kX = 0x8CDC1683;  // the checksum of "x"
    constexpr qint64 kHole = LargeDevice::kHole;
    const QByteArray second =
        "PK\3\4" + numbers({{45, 2}, {0, 8}, {kX, 4}, {1, 4}, {1, 4}, {1, 2}, {0, 2}}) + "bx";
    const QByteArray directory =
        "PK\1\2"
        + numbers(
            {{45, 2}, {45, 2}, {0, 8}, {0, 4}, {kWide, 4}, {kWide, 4}, {1, 2}, {20, 2}, {0, 14}})
        + 'a' + numbers({{1, 2}, {16, 2}, {kHole - 31, 8}, {kHole - 31, 8}}) + "PK\1\2"
        + numbers({{45, 2},
                   {45, 2},
                   {0, 8},
                   {kX, 4},
                   {1, 4},
                   {1, 4},
                   {1, 2},
                   {12, 2},
                   {0, 10},
                   {kWide, 4}})
        + 'b' + numbers({{1, 2}, {8, 2}, {kHole, 8}});
    const qint64 directoryAt = kHole + second.size();
    return second + directory + "PK\6\6"
           + numbers({{44, 8},
                      {45, 2},
                      {45, 2},
                      {0, 8},
                      {2, 8},
                      {2, 8},
                      {directory.size(), 8},
                      {directoryAt, 8}})
           + "PK\6\7" + numbers({{0, 4}, {directoryAt + directory.size(), 8}, {1, 4}}) + "PK\5\6"
           + numbers({{0, 4}, {2, 2}, {2, 2}, {kWide, 4}, {kWide, 4}, {0, 2}});
}

/// A file on a disk with a bad place.
class BrokenFile : public QBuffer
{
protected:
    qint64 readData(char* bytes, qint64 size) override
    {
        constexpr qint64 kBad = 1000;
        return pos() >= kBad ? -1 : QBuffer::readData(bytes, std::min(size, kBad - pos()));
    }
};

}  // namespace

TEST(Zip, WritesNothingMoreWhenItIsBrokenOff)
{
    QBuffer buffer;
    ASSERT_TRUE(buffer.open(QIODevice::ReadWrite));
    {
        ZipWriter writer(buffer, 6);
        ASSERT_EQ(writer.open(), QString());
        ASSERT_EQ(writer.addFolder(QStringLiteral("a/"), QDateTime()), QString());
    }
    EXPECT_EQ(buffer.size(), 0);
}

TEST(StagedTree, MovesWhatItMadeAndNothingElseWhereItIsMeantToBe)
{
    QTemporaryDir root;
    const auto path = [&root](const char* name) { return root.filePath(QLatin1String(name)); };
    const QDateTime time = QDateTime::fromSecsSinceEpoch(1234567890);
    const auto moved = [&](const std::function<void()>& meanwhile) {
        for (const char* name : {"from", "to", "outside"}) {
            QDir(path(name)).removeRecursively();
            QDir().mkdir(path(name));
        }
        QDir().mkdir(path("to/a"));
        StagedTree tree;
        EXPECT_EQ(tree.open(path("from")), QString());
        platform::NewFile file;
        EXPECT_EQ(tree.addFolder(QStringLiteral("a/b/"), time), QString());
        EXPECT_EQ(tree.addFile(QStringLiteral("a/b/x"), file), QString());
        file.close();
        meanwhile();
        platform::FolderHandle to;
        EXPECT_EQ(to.open(path("to")), 0);
        return tree.moveInto(to, false);
    };
    EXPECT_EQ(moved([] {}), QString());
    EXPECT_TRUE(QFile::exists(path("to/a/b/x")));
    EXPECT_EQ(QFileInfo(path("to/a/b")).lastModified(), time);
    EXPECT_NE(moved([&] { QFile::remove(path("from/a/b/x")), QDir().mkpath(path("to/a/b")); }),
              QString())
        << "what is missing";
#ifndef Q_OS_WIN
    EXPECT_NE(moved([&] {
                  QDir().rmdir(path("to/a"));
                  QFile::link(path("outside"), path("to/a"));
              }),
              QString());
    EXPECT_TRUE(QDir(path("outside")).isEmpty());
#endif
}

TEST(Zip, TakesNoFileForWholeThatIsNot)
{
    QBuffer buffer;
    ASSERT_TRUE(buffer.open(QIODevice::ReadWrite));
    ZipWriter writer(buffer, 0);
    ASSERT_EQ(writer.open(), QString());
    const auto add = [&writer](QIODevice& content, qint64 size) {
        return writer.addFile(QStringLiteral("a"), QDateTime(), content, size,
                              [](qint64) { return QString(); });
    };
    BrokenFile broken;
    broken.setData(QByteArray(2000, 'x'));
    ASSERT_TRUE(broken.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
    EXPECT_NE(add(broken, 2000), QString());
    for (const qint64 size : {1999, 2001}) {
        QBuffer content;
        content.setData(QByteArray(2000, 'x'));
        ASSERT_TRUE(content.open(QIODevice::ReadOnly));
        EXPECT_TRUE(add(content, size).contains(QStringLiteral("changed"))) << size;
    }
}

TEST(Zip, HoldsMoreEntriesThanTheFirstFormat)
{
    constexpr int kCount = 66000;
    QBuffer buffer;
    ASSERT_TRUE(buffer.open(QIODevice::ReadWrite));
    ZipWriter writer(buffer, 6);
    ASSERT_EQ(writer.open(), QString());
    for (int i = 0; i < kCount; ++i)
        ASSERT_EQ(writer.addFolder(QString::number(i) + QLatin1Char('/'), QDateTime()), QString());
    ASSERT_EQ(writer.close(), QString());
    ZipReader reader(buffer);
    QVector<ZipEntry> entries;
    ASSERT_EQ(reader.open(), QString());
    ASSERT_EQ(reader.readEntries(entries), QString());
    ASSERT_EQ(entries.size(), kCount);
    EXPECT_EQ(entries.last().name, QStringLiteral("65999/"));
}

TEST(Zip, ReadsSizesAndPlacesBeyond4GiB)
{
    LargeDevice device(behindTheHole());
    ASSERT_TRUE(device.open(QIODevice::ReadOnly));
    ZipReader reader(device);
    QVector<ZipEntry> entries;
    ASSERT_EQ(reader.open(), QString());
    ASSERT_EQ(reader.readEntries(entries), QString());
    ASSERT_EQ(entries.size(), 2);
    EXPECT_EQ(entries.at(0).size, LargeDevice::kHole - 31);
    EXPECT_EQ(entries.at(0).compressedSize, LargeDevice::kHole - 31);
    QByteArray content;
    EXPECT_EQ(reader.read(entries.at(1),
                          [&content](const char* bytes, int size) {
                              content.append(bytes, size);
                              return QString();
                          }),
              QString());
    EXPECT_EQ(content, "x");
}

TEST(Zip, AsksOnceForWhatIsBehindTheEnd)
{
    CountingFile file;
    QByteArray bytes = rawZip({{"a"}});
    bytes[bytes.indexOf("PK\1\2") + 31] = '\x7F';  // 32 KB of fields that are not there
    ASSERT_TRUE(file.open() && file.write(bytes) == bytes.size());
    ZipReader reader(file);
    QVector<ZipEntry> entries;
    ASSERT_EQ(reader.open(), QString());
    EXPECT_NE(reader.readEntries(entries), QString());
    EXPECT_LT(file.m_reads, 20);
}

TEST(Zip, TellsTimesAsTheFormatHasThem)
{
    const QDateTime time(QDate(2107, 12, 31), QTime(23, 59, 58));
    EXPECT_EQ(timeOfDos(dosTime(time)), time);
    EXPECT_EQ(dosTime(QDateTime(QDate(1979, 12, 31), QTime(0, 0))), 0x00210000U);
    EXPECT_EQ(dosTime(QDateTime(QDate(2108, 1, 1), QTime(0, 0))), dosTime(time));
    EXPECT_FALSE(timeOfDos(0).isValid());
    const QDateTime later = QDateTime(QDate(2100, 1, 1), QTime(0, 0), Qt::UTC);
    EXPECT_EQ(
        timeOfFields(QByteArray::fromHex("5554050001") + numbers({{later.toSecsSinceEpoch(), 4}}),
                     dosTime(later)),
        later);
    EXPECT_EQ(timeField(time), QByteArray()) << "beyond 32 bits";
    const QDateTime before1970 = QDateTime::fromSecsSinceEpoch(-86400);
    EXPECT_EQ(timeOfFields(timeField(before1970), 0), before1970);
    const QDateTime known = QDateTime::fromSecsSinceEpoch(1234567890);
    EXPECT_EQ(timeField(known).toHex(), "5554050001d2029649");
    EXPECT_EQ(timeOfFields(QByteArray("\1\0\2\0xx", 6) + timeField(known), 0), known);
    for (int size = 0; size < 9; ++size)
        EXPECT_FALSE(timeOfFields(timeField(known).left(size), 0).isValid()) << size;
}
