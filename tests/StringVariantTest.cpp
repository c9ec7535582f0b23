#include "CVelmString.h"
#include "support/LocalCodec.h"
#include "support/Printers.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>

namespace {

QString utf8(const char* text)
{
    return QString::fromUtf8(text);
}

/// A buffer of the caller's, with guard bytes on both sides.
class Buffer
{
public:
    explicit Buffer(const QByteArray& content)
        : m_bytes(kGuard + content + kGuard), m_size(content.size())
    {}
    explicit Buffer(unsigned int size) : Buffer(QByteArray(static_cast<int>(size), '?')) {}

    operator char*() { return m_bytes.data() + kGuard.size(); }
    /// The content, or "overrun".
    QByteArray content() const
    {
        const bool intact = m_bytes.startsWith(kGuard) && m_bytes.endsWith(kGuard);
        return intact ? m_bytes.mid(kGuard.size(), m_size) : QByteArray("overrun");
    }

private:
    inline static const QByteArray kGuard = QByteArray(8, '#');
    QByteArray m_bytes;
    int m_size;
};

struct VariantCase
{
    QVariant value;
    const char* text;
    Velm::FieldType field;
    short cad;
};

struct ColorCase
{
    const char* text;
    int r, g, b;
};

class StringFile : public testing::Test
{
protected:
    QString path(const char* name) const { return m_folder.filePath(utf8(name)); }
    QString write(const QByteArray& content) const
    {
        QFile file(path("测 file.txt"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(content), content.size());
        return file.fileName();
    }

private:
    QTemporaryDir m_folder;
};

}  // namespace

TEST(StringBits, ConvertWithinTheirBuffersWhateverTheNumberOfBits)
{
    const QByteArray source = QByteArray::fromHex("a53c0ff0817e6b12");
    QByteArray allBits;  // as bytes of 0 and 1
    for (const char byte : source) {
        const QByteArray text =
            QByteArray::number(static_cast<uchar>(byte), 2).rightJustified(8, '0');
        for (const char digit : text)
            allBits += static_cast<char>(digit - '0');
    }
    for (unsigned int bitCount = 0; bitCount <= 64; ++bitCount) {
        SCOPED_TRACE(bitCount);
        const int count = static_cast<int>(bitCount);
        const QByteArray bits = allBits.left(count);
        const QByteArray hex = source.toHex().toUpper().left(count / 4);

        Buffer bytes(source.left((count + 7) / 8)), unpacked(bitCount);
        CVelmString::Bytes2Bits(bytes, unpacked, bitCount);
        EXPECT_EQ(unpacked.content(), bits);

        Buffer packed(bitCount / 8), plainBits(bits);
        CVelmString::Bits2Bytes(packed, plainBits, bitCount);
        EXPECT_EQ(packed.content(), source.left(count / 8));

        Buffer digits(bitCount / 4);
        CVelmString::Bits2Hex(digits, plainBits, bitCount);
        EXPECT_EQ(digits.content(), hex);

        Buffer expanded(bitCount);
        CVelmString::Hex2Bits(digits, expanded, bitCount);
        EXPECT_EQ(expanded.content(), bits.left(count / 4 * 4).leftJustified(count, '\0'));
        QByteArray values;
        for (const char digit : hex)
            values += static_cast<char>(QByteArray(1, digit).toInt(nullptr, 16));
        EXPECT_EQ(digits.content(), values);
    }
}

TEST(StringVariant, BecomesTextAndFieldTypeByItsType)
{
    const VariantCase cases[]{
        {-7, "-7", Velm::FieldInt, 1070},
        {4294967295U, "4294967295", Velm::FieldInt, 1070},
        {std::numeric_limits<qlonglong>::min(), "-9223372036854775808", Velm::FieldLong, 1071},
        {std::numeric_limits<qulonglong>::max(), "18446744073709551615", Velm::FieldLong, 1071},
        {QVariant::fromValue<long>(-2147483647L), "-2147483647", Velm::FieldText, 1000},
        {QVariant::fromValue<ulong>(4294967295UL), "4294967295", Velm::FieldText, 1000},
        {QVariant::fromValue<short>(5), "", Velm::FieldInt, 1070},
        {QVariant::fromValue<ushort>(5), "", Velm::FieldInt, 1070},
        {0.1, "0.100000", Velm::FieldReal, 1040},
        {-1e15, "-1000000000000000.000000", Velm::FieldReal, 1040},
        {2.5F, "2.500000", Velm::FieldReal, 1040},
        {QChar(0x6D4B), "测", Velm::FieldText, 1000},
        {utf8("测 1"), "测 1", Velm::FieldText, 1000},
        {true, "", Velm::FieldText, 1000},
        {QByteArray("x"), "", Velm::FieldText, 1000},
        {QDate(2020, 2, 29), "", Velm::FieldDate, 1000},
        {QTime(1, 2), "", Velm::FieldDate, 1000},
        {QDateTime(QDate(2020, 2, 29), QTime(1, 2)), "", Velm::FieldDate, 1000},
        {QVariantList{1}, "", Velm::FieldText, 1000},
        {QVariant(), "", Velm::FieldText, 1000}};
    for (const VariantCase& c : cases) {
        const auto type = static_cast<QVariant::Type>(c.value.userType());
        SCOPED_TRACE(QMetaType::typeName(c.value.userType()));
        EXPECT_EQ(CVelmString::VariantToString(c.value), utf8(c.text));
        EXPECT_EQ(CVelmString::QVariantType2VelmFieldType(type), c.field);
        EXPECT_EQ(CVelmString::QVariantType2CadDataType(type), c.cad);
    }
}

TEST(StringVariant, MapsAreConvertedAndMerged)
{
    const QMap<QString, QVariant> map{
        {utf8("码"), 12}, {utf8("d"), 0.5}, {utf8("f"), 2.0F}, {utf8("t"), utf8("x")}};
    using Texts = QMap<QString, QString>;
    EXPECT_EQ(CVelmString::VariantMapToStringMap(map, false), Texts({{utf8("码"), utf8("12")},
                                                                     {utf8("d"), utf8("0.500000")},
                                                                     {utf8("f"), utf8("2.000000")},
                                                                     {utf8("t"), utf8("x")}}));
    EXPECT_EQ(CVelmString::VariantMapToStringMap(map, true), Texts({{utf8("码"), utf8("12")},
                                                                    {utf8("d"), utf8("0.5")},
                                                                    {utf8("f"), utf8("2")},
                                                                    {utf8("t"), utf8("x")}}));

    const QMap<QString, QVariant> old{{utf8("d"), 7}, {utf8("o"), 8}};
    for (const bool overwrite : {false, true}) {
        QMap<QString, QVariant> to = old;
        CVelmString::ConstVarMap2VarMap(map, to, overwrite);
        EXPECT_EQ(to.keys().join(QString()), utf8("dfot码"));
        EXPECT_EQ(to.value(utf8("d")), overwrite ? QVariant(0.5) : QVariant(7));
        EXPECT_EQ(to.value(utf8("o")), QVariant(8));
    }
}

TEST(StringVariant, GoesThroughJson)
{
    const QVariant value = QVariantMap{{utf8("名"), utf8("测\"量\n")},
                                       {utf8("list"), QVariantList{1.5, true, QVariantMap()}}};
    EXPECT_EQ(CVelmString::Json2Variant(CVelmString::Variant2Json(value)), value);
    EXPECT_EQ(CVelmString::Variant2Json(QVariantMap{{utf8("a"), 1}}), utf8("{\n    \"a\": 1\n}\n"));
    EXPECT_EQ(CVelmString::Variant2Json(utf8("text")), QString());
    EXPECT_EQ(CVelmString::Json2Variant(utf8(" {} ")), QVariant(QVariantMap()));
    for (const char* invalid : {"", "5", "\"a\"", "{", "[1,]", "{\"a\":1}x", "{a:1}"})
        EXPECT_FALSE(CVelmString::Json2Variant(utf8(invalid)).isValid()) << invalid;

    const auto nested = [](int depth) {
        return QString(depth, QLatin1Char('[')) + QString(depth, QLatin1Char(']'));
    };
    EXPECT_TRUE(CVelmString::Json2Variant(nested(500)).isValid());
    EXPECT_FALSE(CVelmString::Json2Variant(nested(1000000)).isValid());
}

TEST(StringVariant, ColoursAreTextsOfOneOrThreeNumbers)
{
    for (const ColorCase& c : {ColorCase{"1,2,3", 1, 2, 3}, ColorCase{"7", 7, -1, -1},
                               ColorCase{",,7", 7, -1, -1}, ColorCase{"1,,2,3,", 1, 2, 3},
                               ColorCase{"red,300, -5", 0, 300, -5}, ColorCase{"255,0", -1, -1, -1},
                               ColorCase{"1,2,3,4", -1, -1, -1}, ColorCase{"", -1, -1, -1}}) {
        const VelmColor color = CVelmString::String2Color(utf8(c.text));
        EXPECT_EQ((std::array<int, 3>{color.r, color.g, color.b}),
                  (std::array<int, 3>{c.r, c.g, c.b}))
            << c.text;
    }
    EXPECT_EQ(CVelmString::Color2String(QColor(1, 20, 255, 0)), utf8("1,20,255"));
    EXPECT_EQ(CVelmString::Color2String(QColor::fromHsv(240, 255, 255)), utf8("0,0,255"));
    EXPECT_EQ(CVelmString::Color2String(QColor()), QString());
}

TEST_F(StringFile, IsWrittenInTheLocalCodePageAndReadAsUtf8)
{
    const LocalCodec local("GBK");
    const QString file = path("测 out.txt");
    ASSERT_TRUE(CVelmString::WriteFile(file, utf8("测量"), QIODevice::WriteOnly));
    ASSERT_TRUE(CVelmString::WriteFile(file, utf8("\nA"), QIODevice::Append));
    QFile written(file);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    EXPECT_EQ(written.readAll().toHex(), "b2e2c1bf0a41");
    EXPECT_EQ(CVelmString::ReadFile(write("\xE6\xB5\x8B\r\n"), QIODevice::ReadOnly),
              utf8("测\r\n"));
    EXPECT_EQ(
        CVelmString::ReadFile(write("\xE6\xB5\x8B\r\n"), QIODevice::ReadOnly | QIODevice::Text),
        utf8("测\n"));

    EXPECT_EQ(CVelmString::ReadFile(path("missing"), QIODevice::ReadOnly), QString());
    EXPECT_FALSE(CVelmString::WriteFile(path("missing/file"), utf8("x"), QIODevice::WriteOnly));
    EXPECT_FALSE(CVelmString::WriteFile(file, utf8("x"), QIODevice::ReadOnly));
    EXPECT_EQ(CVelmString::FormatFilePath(utf8("a/测/b")),
              utf8("a/测/b").replace(QLatin1Char('/'), QDir::separator()));
}

TEST_F(StringFile, HasTheMd5OfAllItsBytes)
{
    // RFC 1321, A.5, and a million times "a", which takes more than one read.
    EXPECT_EQ(CVelmString::GetFileMD5(write("")), utf8("d41d8cd98f00b204e9800998ecf8427e"));
    EXPECT_EQ(CVelmString::GetFileMD5(write("abc")), utf8("900150983cd24fb0d6963f7d28e17f72"));
    EXPECT_EQ(CVelmString::GetFileMD5(write(QByteArray(1000000, 'a'))),
              utf8("7707d6ae4e027c70eea2a935c2296f21"));
    EXPECT_EQ(CVelmString::GetFileMD5(path("missing")), QString());
}

TEST(StringIdentifier, IsRandomAndHasTheFormOfAGuid)
{
    const QRegularExpression form(
        utf8("^[0-9A-F]{12}4[0-9A-F]{3}[89AB][0-9A-F]{15}$"));  // RFC 4122, 4.4
    QSet<QString> guids;
    for (int i = 0; i < 1000; ++i) {
        const QString guid = CVelmString::makeGuid();
        ASSERT_TRUE(form.match(guid).hasMatch()) << guid.toStdString();
        guids.insert(guid);
    }
    EXPECT_EQ(guids.size(), 1000);

    const QString folder = CVelmString::GetTempFolder();
    EXPECT_TRUE(form.match(folder.right(32)).hasMatch()) << folder.toStdString();
    EXPECT_EQ(QDir(folder.chopped(32)).canonicalPath(), QDir::temp().canonicalPath());
    EXPECT_TRUE(folder.chopped(32).endsWith(QDir::separator()));
    EXPECT_FALSE(QDir(folder).exists());
}

TEST(StringPassword, IsBase64OfTheLocalCodePage)
{
    const LocalCodec local("GBK");
    const std::pair<const char*, const char*> texts[]{
        {"", ""}, {"f", "Zg=="}, {"foobar", "Zm9vYmFy"}, {"测量123", "suLBvzEyMw=="}};
    for (const auto& [plain, hidden] : texts) {
        EXPECT_EQ(CVelmString::encryption(utf8(plain)), utf8(hidden));
        EXPECT_EQ(CVelmString::deciphering(utf8(hidden)), utf8(plain));
    }
}
