#include "CVelmCryptionFactory.h"
#include "CVelmCyptionDES2.h"
#include "support/LocalCodec.h"
#include "support/TemporaryRoot.h"

#include <memory>

#ifndef Q_OS_WIN
#include <climits>
#include <csignal>

#include <sys/resource.h>
#include <unistd.h>
#endif

namespace {

// The answers were made with another program: DES in ECB mode without padding.
constexpr char kAbc[] = "2c8369311a2e38fa";

QByteArray bytesOf(const QString& bits)
{
    QByteArray bytes;
    for (int i = 0; i + 8 <= bits.size(); i += 8)
        bytes.append(static_cast<char>(bits.mid(i, 8).toInt(nullptr, 2)));
    return bytes.toHex();
}

CVelmCyptionDES2 cipherOf(const QString& key)
{
    CVelmCyptionDES2 cipher;
    EXPECT_EQ(cipher.initializeKey(key), Velm::VelmOk);
    return cipher;
}

class CryptedFiles : public TemporaryRoot
{
protected:
    /// Empty if there is no such file.
    QByteArray content(const QString& name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    CVelmCyptionDES2 m_cipher = cipherOf(u"12345678"_s);
};

}  // namespace

TEST(CryptedText, IsBitsOfWholeBlocks)
{
    const CVelmCyptionDES2 keyed = cipherOf(u"12345678"_s);
    CVelmCyptionDES2 cipher = keyed;
    const struct
    {
        const char* text;
        const char* cipher;
    } cases[] = {{"", ""},
                 {"abc", kAbc},
                 {"abcdefgh", "94d4436bc3b5b693"},
                 {"abcdefghi", "94d4436bc3b5b693080742be601a0c44"}};
    for (const auto& c : cases) {
        const QString bits = cipher.encryptString(QString::fromLatin1(c.text));
        EXPECT_EQ(bytesOf(bits), c.cipher) << c.text;
        EXPECT_EQ(cipher.decryptString(bits), QString::fromLatin1(c.text));
    }
    EXPECT_EQ(bytesOf(cipherOf(u"ab"_s).encryptString(u"abcdefgh"_s)), "616e3f56d73deaff")
        << "a short key is filled up with zeros";
    EXPECT_EQ(cipherOf(u"123456789"_s).encryptString(u"abc"_s), cipher.encryptString(u"abc"_s));
}

TEST(CryptedText, LosesTheEndOfWhatIsNoAscii)
{
    const LocalCodec gbk("GBK");
    CVelmCyptionDES2 cipher = cipherOf(u"12345678"_s);
    const QString bits = cipher.encryptString(u"房屋和道路"_s);
    EXPECT_EQ(bits.size(), 64) << "5 characters, of 10 bytes";
    EXPECT_EQ(cipher.decryptString(bits), u"房屋和道"_s);
}

TEST(CryptedText, IsBoundedWhateverItsLength)
{
    CVelmCyptionDES2 cipher = cipherOf(u"12345678"_s);
    const QString start = cipher.encryptString(QString(4096, QLatin1Char('x')));
    ASSERT_EQ(start.size(), 32768);
    for (const int length : {4095, 4097, 8191, 8192, 20000}) {
        const QString bits = cipher.encryptString(QString(length, QLatin1Char('x')));
        EXPECT_EQ(bits.size(), 32768) << length;
        EXPECT_EQ(bits.left(4088 * 8), start.left(4088 * 8)) << length;
        EXPECT_EQ(cipher.decryptString(bits), QString(1024, QLatin1Char('x'))) << length;
    }
    for (const QString& odd : {u"1"_s, u"0101010"_s})
        EXPECT_EQ(cipher.decryptString(odd), QString());
    EXPECT_EQ(cipher.decryptString(start.left(64 + 9)).left(8), u"xxxxxxxx"_s);
    cipher.decryptString(u"房子9\u00FF"_s.repeated(5000));  // wrong bits are no fault
}

TEST(CryptedText, AsBytesIsReadWholeBlocks)
{
    CVelmCyptionDES2 cipher = cipherOf(u"12345678"_s);
    char out[32];
    for (const int length : {1, 7, 8, 9, 16, 17}) {
        const QByteArray text(length, 'y');
        std::fill(std::begin(out), std::end(out), '~');
        cipher.encryptString(out, text.constData());
        const int cipherSize = length == 8 ? 8 : (length / 8 + 1) * 8;
        EXPECT_EQ(out[cipherSize], length == 8 ? '~' : '\0') << length;
        EXPECT_EQ(out[cipherSize + 1], '~') << length;
        char plain[32];
        std::fill(std::begin(plain), std::end(plain), '~');
        cipher.decryptString(plain, QByteArray(out, 32).constData(), length);
        EXPECT_EQ(QByteArray(plain, length), text);
        EXPECT_EQ(plain[length], length == 8 ? '~' : '\0') << length;
    }
}

TEST_F(CryptedFiles, AreBlocksAndComeBack)
{
    const struct
    {
        QByteArray plain;
        int cipherSize;
        QByteArray back;  // null: the plain file
        QByteArray hex = QByteArray();
    } cases[] = {{"abc", 8, {}, kAbc},
                 {"abcdefgh", 16, "abcdefgh" + QByteArray::fromHex("e6b399ea4aa02625"),
                  "94d4436bc3b5b6930000000000000000"},
                 {"0123456789abcdef", 24, {}},
                 {QByteArray("ab\0c\0\0", 6), 8, QByteArray("ab\0c", 4)},
                 {QByteArray(300000, '\0'), 300008, ""},
                 {QByteArray(262144, '\0') + "end", 262152, {}},
                 {QByteArray(524288, 'x'), 524296, {}}};
    for (const auto& c : cases) {
        writeFile(u"plain"_s, c.plain);
        m_cipher.encryptFile(path(u"plain"_s), path(u"file"_s));
        const QByteArray cipher = content(u"file"_s);
        EXPECT_EQ(cipher.size(), c.cipherSize);
        if (!c.hex.isEmpty()) {
            EXPECT_EQ(cipher.toHex(), c.hex);
        }
        m_cipher.decryptFile(path(u"file"_s), path(u"file"_s));  // onto itself
        const QByteArray expected = c.back.isNull() ? c.plain : c.back;
        EXPECT_EQ(content(u"file"_s), expected) << c.plain.size();
    }
    writeFile(u"cut"_s, QByteArray::fromHex(kAbc).left(5));
    m_cipher.decryptFile(path(u"cut"_s), path(u"file"_s));
    EXPECT_LE(content(u"file"_s).size(), 5);
}

TEST_F(CryptedFiles, LeaveTheOldOneWhereSomethingFails)
{
    writeFile(u"target"_s, "old");
    writeFile(u"empty"_s, "");
    writeFile(u"plain"_s, QByteArray(600000, 'x'));
    const CVelmCyptionDES2::Progress stop = [](qint64 done, qint64) { return done < 500000; };
    EXPECT_EQ(m_cipher.convertFile(true, path(u"plain"_s), path(u"target"_s), stop),
              u"cancelled"_s);
    for (const QString& in : {QString(), path(u"none"_s), path(u"empty"_s), root()}) {
        EXPECT_FALSE(m_cipher.convertFile(true, in, path(u"target"_s)).isEmpty());
        EXPECT_FALSE(m_cipher.convertFile(false, in, path(u"target"_s)).isEmpty());
    }
    for (const QString& out : {QString(), root(), path(u"none/file"_s)})
        EXPECT_FALSE(m_cipher.convertFile(true, path(u"plain"_s), out).isEmpty());
    EXPECT_TRUE(m_cipher.convertFile(true, path(u"plain"_s), path(u"target"_s), {}, false)
                    .endsWith(u"it is there already"_s));
    EXPECT_EQ(content(u"target"_s), "old");
    EXPECT_EQ(QDir(root()).entryList(QDir::Files | QDir::Hidden).size(), 3) << "nothing is left";
}

#ifndef Q_OS_WIN
TEST_F(CryptedFiles, StayLinksAndAreWrittenInPlaceWhereTheFolderTakesNoFile)
{
    writeFile(u"plain"_s, "abc");
    writeFile(u"closed/file"_s, "old");
    ASSERT_TRUE(QFile::link(path(u"closed/file"_s), path(u"link"_s)));
    QFile folder(path(u"closed"_s));
    for (const bool isClosed : {false, true}) {
        writeFile(u"closed/file"_s, "a longer old file");
        if (isClosed)
            folder.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
        EXPECT_EQ(m_cipher.convertFile(true, path(u"plain"_s), path(u"link"_s)), QString());
        folder.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        EXPECT_EQ(content(u"closed/file"_s).toHex(), kAbc) << isClosed;
        EXPECT_TRUE(QFileInfo(path(u"link"_s)).isSymLink());
    }
    EXPECT_EQ(m_cipher.convertFile(true, path(u"plain"_s), u"/dev/null"_s), QString());
    EXPECT_FALSE(QFileInfo(u"/dev/null"_s).isFile()) << "a device is written, not replaced";
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const QString writing = u"/proc/self/fd/%1"_s.arg(ends[1]);
    EXPECT_EQ(m_cipher.convertFile(true, path(u"plain"_s), writing), QString());
    QByteArray through(8, '\0');
    EXPECT_EQ(read(ends[0], through.data(), 8), 8);
    EXPECT_EQ(through.toHex(), kAbc) << "a pipe has no path to be replaced";
    close(ends[0]);
    close(ends[1]);
}

TEST_F(CryptedFiles, FollowALinkFromTheFolderThatHoldsIt)
{
    writeFile(u"plain"_s, "abc");
    writeFile(u"real/sub/keep"_s, "");
    ASSERT_TRUE(QFile::link(path(u"real/sub"_s), path(u"short"_s)));
    ASSERT_EQ(symlink("../target", QFile::encodeName(path(u"real/sub/link"_s)).constData()), 0);
    EXPECT_EQ(m_cipher.convertFile(true, path(u"plain"_s), path(u"short/link"_s)), QString());
    EXPECT_EQ(content(u"real/target"_s).toHex(), kAbc);
    EXPECT_FALSE(QFile::exists(path(u"target"_s)));
}

TEST_F(CryptedFiles, LeaveTheOldOneAndTellTheCauseWhereTheSystemRefuses)
{
    writeFile(u"plain"_s, QByteArray(600000, 'x'));
    // A folder in which "target" has a path that the system takes, and a staged file has none.
    const int longest = PATH_MAX - 12 - QFile::encodeName(root()).size() + root().size();
    QString deep = root();
    while (deep.size() < longest - 220)
        deep += u'/' + QString(200, u'd');
    deep += u'/' + QString(longest - deep.size(), u'd');
    ASSERT_TRUE(QDir().mkpath(deep));
    rlimit usual{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &usual), 0);
    const rlimit small{300000, usual.rlim_max};
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    for (const QString& folder : {root(), deep}) {
        QFile target(folder + u"/target"_s);
        ASSERT_TRUE(target.open(QIODevice::ReadWrite) && target.write("old") == 3);
        target.close();
        setrlimit(RLIMIT_FSIZE, &small);
        const QString problem = m_cipher.convertFile(true, path(u"plain"_s), target.fileName());
        setrlimit(RLIMIT_FSIZE, &usual);
        EXPECT_TRUE(problem.contains(folder == deep ? u"the name is too long"_s
                                                    : u"/target\": too large for this disk"_s))
            << problem.toStdString();
        ASSERT_TRUE(target.open(QIODevice::ReadOnly));
        EXPECT_EQ(target.readAll(), "old");
    }
    std::signal(SIGXFSZ, handler);
}

TEST_F(CryptedFiles, AreHiddenWhileTheyAreMadeAndNoMoreOpenThanTheirSource)
{
    constexpr auto kOwners =
        QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser;
    writeFile(u"plain"_s, "abc");
    QFile::setPermissions(path(u"plain"_s), QFile::ReadOwner | QFile::WriteOwner);
    QFile::Permissions staging;
    const auto look = [&](qint64, qint64) {
        const QFileInfoList folders =
            QDir(root()).entryInfoList({u".velm-*"_s}, QDir::Dirs | QDir::Hidden);
        staging = folders.value(0).permissions();
        return folders.size() == 1;
    };
    EXPECT_EQ(m_cipher.convertFile(true, path(u"plain"_s), path(u"file"_s), look), QString());
    EXPECT_EQ(staging, kOwners | QFile::ExeOwner | QFile::ExeUser);
    EXPECT_EQ(QFile::permissions(path(u"file"_s)), kOwners);
}
#endif

TEST(CryptionFactory, KeepsAKeyAndKnowsOneCipher)
{
    CVelmCryptionFactory& factory = *CVelmCryptionFactory::Instance();
    const auto unknown = static_cast<Velm::CryptionType>(1);
    ASSERT_EQ(factory.initializeKey(u"12345678"_s), Velm::VelmOk);
    EXPECT_EQ(factory.initializeKey(QString()), Velm::VelmNoData);
    const QString bits = factory.encryptString(Velm::CryptionDes, u"abc"_s);
    EXPECT_EQ(bytesOf(bits), kAbc) << "with the key that it has kept";
    EXPECT_EQ(factory.decryptString(Velm::CryptionDes, bits), u"abc"_s);
    EXPECT_EQ(factory.encryptString(unknown, u"x"_s), QString());

    const LocalCodec latin("ISO-8859-1");  // in which any bytes are a text
    for (const QString& text : {u"abc"_s, u"a text of 24 characters."_s, QString()}) {
        QString out = u"old"_s;
        factory.encryptString(Velm::CryptionDes, out, text);
        EXPECT_EQ(out.isEmpty(), false) << text.toStdString();
        factory.decryptString(Velm::CryptionDes, out, QString(out));
        EXPECT_EQ(out.left(text.size()), text);
        factory.decryptString(unknown, out, u"abc"_s);
        EXPECT_EQ(out, QString());
    }
}
