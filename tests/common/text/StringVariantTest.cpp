#include "CVelmString.h"
#include "support/LocalCodec.h"
#include "support/Values.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>

#include <limits>

namespace {

constexpr int kGuard = 8;

/// A buffer with guard bytes on both sides.
QByteArray guarded(const QByteArray& content)
{
    return QByteArray(kGuard, '#') + content + QByteArray(kGuard, '#');
}

class StringFile : public testing::Test
{
protected:
    QString path(const QString& name) const { return m_folder.filePath(name); }
    QString write(const QByteArray& content) const
    {
        QFile file(path(u"测 file"_s));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(content), content.size());
        return file.fileName();
    }

private:
    LocalCodec m_local{"GBK"};
    QTemporaryDir m_folder;
};

}  // namespace

TEST(StringBits, AreConvertedWithinTheirBuffersWhateverTheirNumber)
{
    const QByteArray source = QByteArray::fromHex("a53c0ff0817e6b12");
    QByteArray allBits, allValues;
    for (const char digit : source.toHex()) {
        allValues += static_cast<char>(QByteArray(1, digit).toInt(nullptr, 16));
        allBits += QByteArray::number(allValues.back(), 2).rightJustified(4, '0');
    }
    allBits.replace('0', '\0').replace('1', '\1');
    for (int count = 0; count <= 64; ++count) {
        SCOPED_TRACE(count);
        const auto bitCount = static_cast<unsigned int>(count);
        QByteArray bytes = guarded(source.left((count + 7) / 8));
        QByteArray bits = guarded(QByteArray(count, '?'));
        CVelmString::Bytes2Bits(bytes.data() + kGuard, bits.data() + kGuard, bitCount);
        EXPECT_EQ(bits, guarded(allBits.left(count)));

        bytes = guarded(QByteArray(count / 8, '?'));
        CVelmString::Bits2Bytes(bytes.data() + kGuard, bits.data() + kGuard, bitCount);
        EXPECT_EQ(bytes, guarded(source.left(count / 8)));

        QByteArray hex = guarded(QByteArray(count / 4, '?'));
        CVelmString::Bits2Hex(hex.data() + kGuard, bits.data() + kGuard, bitCount);
        EXPECT_EQ(hex, guarded(source.toHex().toUpper().left(count / 4)));

        bits = guarded(QByteArray(count, '?'));
        CVelmString::Hex2Bits(hex.data() + kGuard, bits.data() + kGuard, bitCount);
        EXPECT_EQ(bits, guarded(allBits.left(count / 4 * 4).leftJustified(count, '\0')));
        EXPECT_EQ(hex, guarded(allValues.left(count / 4)));
    }
}

TEST(StringVariant, BecomesTextAndAFieldTypeByItsType)
{
    const QVariantList values =
        QVariantList() << -7 << 4294967295U << std::numeric_limits<qlonglong>::min()
                       << std::numeric_limits<qulonglong>::max() << QVariant::fromValue(-7L)
                       << QVariant::fromValue(7UL) << QVariant::fromValue<short>(5)
                       << QVariant::fromValue<ushort>(5) << 0.1 << -1e15 << 2.5F << QChar(0x6D4B)
                       << u"测 1"_s << true << QByteArray("x") << QVariant() << QDate(2020, 2, 29)
                       << QTime(1, 2) << QDateTime::fromSecsSinceEpoch(0);
    QString texts, fields;
    for (const QVariant& value : values) {
        const auto type = static_cast<QVariant::Type>(value.userType());
        texts += CVelmString::VariantToString(value) + QLatin1Char('|');
        fields += QString::number(CVelmString::QVariantType2VelmFieldType(type));
    }
    EXPECT_EQ(texts, "-7|4294967295|-9223372036854775808|18446744073709551615|-7|7|||0.100000|"
                     u"-1000000000000000.000000|2.500000|测|测 1|||||||"_s);
    EXPECT_EQ(fields, u"1122001133300000444"_s);
    QList<short> cadTypes;
    for (const auto type :
         {QVariant::Int, QVariant::LongLong, QVariant::Double, QVariant::Date, QVariant::String})
        cadTypes.append(CVelmString::QVariantType2CadDataType(type));
    EXPECT_EQ(cadTypes, QList<short>({1070, 1071, 1040, 1000, 1000}));  // DXF, extended data
}

TEST(StringVariant, MapsAreConvertedAndMerged)
{
    const QVariantMap map{{u"码"_s, 12}, {u"d"_s, 0.5}, {u"f"_s, 2.0F}, {u"t"_s, u"x"_s}};
    for (const bool shorten : {false, true}) {
        const QMap<QString, QString> texts = CVelmString::VariantMapToStringMap(map, shorten);
        EXPECT_EQ(QStringList(texts.values()).join(QLatin1Char(' ')),
                  shorten ? u"0.5 2 x 12"_s : u"0.500000 2.000000 x 12"_s);
    }
    for (const bool overwrite : {false, true}) {
        QVariantMap to{{u"d"_s, 7}, {u"o"_s, 8}};
        CVelmString::ConstVarMap2VarMap(map, to, overwrite);
        EXPECT_EQ(to.keys().join(QString()), u"dfot码"_s);
        EXPECT_EQ(to.value(u"d"_s), overwrite ? 0.5 : 7.0);
    }
}

TEST(StringVariant, GoesThroughJson)
{
    const QVariantMap map{{u"名"_s, u"测\"量\n"_s},
                          {u"l"_s, QVariantList{1.5, true, QVariantMap()}}};
    EXPECT_EQ(CVelmString::Json2Variant(CVelmString::Variant2Json(map)), QVariant(map));
    EXPECT_EQ(CVelmString::Variant2Json(QVariantMap{{u"a"_s, 1}}), u"{\n    \"a\": 1\n}\n"_s);
    EXPECT_EQ(CVelmString::Variant2Json(u"text"_s), QString());
    for (const char* invalid : {"", "5", "\"a\"", "{", "[1,]", "{\"a\":1}x"})
        EXPECT_FALSE(CVelmString::Json2Variant(QString::fromLatin1(invalid)).isValid()) << invalid;
    for (const int depth : {500, 1000000}) {
        const QString nested = QString(depth, QLatin1Char('[')) + QString(depth, QLatin1Char(']'));
        EXPECT_EQ(CVelmString::Json2Variant(nested).isValid(), depth == 500);
    }
}

TEST(StringVariant, ColoursAreTextsOfOneOrThreeNumbers)
{
    QString numbers;
    for (const char* text : {"1,2,3", "7", ",1,,2,3,", "red,300, -5", "255,0", "1,2,3,4", ""}) {
        const VelmColor color = CVelmString::String2Color(QString::fromLatin1(text));
        numbers += u"%1 %2 %3|"_s.arg(color.r).arg(color.g).arg(color.b);
    }
    EXPECT_EQ(numbers, u"1 2 3|7 -1 -1|1 2 3|0 300 -5|-1 -1 -1|-1 -1 -1|-1 -1 -1|"_s);
    EXPECT_EQ(CVelmString::Color2String(QColor(1, 20, 255, 0)), u"1,20,255"_s);
    EXPECT_EQ(CVelmString::Color2String(QColor::fromHsv(240, 255, 255)), u"0,0,255"_s);
    EXPECT_EQ(CVelmString::Color2String(QColor()), QString());
}

TEST_F(StringFile, IsWrittenInTheLocalCodePageReadAsUtf8AndSummed)
{
    const QString file = path(u"测 out"_s);
    ASSERT_TRUE(CVelmString::WriteFile(file, u"测量"_s, QIODevice::WriteOnly));
    ASSERT_TRUE(CVelmString::WriteFile(file, u"\nA"_s, QIODevice::Append));
    QFile written(file);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    EXPECT_EQ(written.readAll().toHex(), "b2e2c1bf0a41");
    const QString utf8File = write("\xE6\xB5\x8B\r\n");
    EXPECT_EQ(CVelmString::ReadFile(utf8File, QIODevice::ReadOnly), u"测\r\n"_s);
    EXPECT_EQ(CVelmString::ReadFile(utf8File, QIODevice::ReadOnly | QIODevice::Text), u"测\n"_s);
    EXPECT_FALSE(CVelmString::WriteFile(path(u"missing/file"_s), u"x"_s, QIODevice::WriteOnly));
    EXPECT_FALSE(CVelmString::WriteFile(file, u"x"_s, QIODevice::ReadOnly));
#ifdef Q_OS_LINUX
    EXPECT_FALSE(CVelmString::WriteFile(u"/dev/full"_s, u"x"_s, QIODevice::WriteOnly));
#endif
    EXPECT_EQ(CVelmString::ReadFile(path(u"missing"_s), QIODevice::ReadOnly), QString());
    EXPECT_EQ(CVelmString::GetFileMD5(path(u"missing"_s)), QString());
    // RFC 1321, A.5, and by Python's hashlib; the second takes more than one read.
    EXPECT_EQ(CVelmString::GetFileMD5(write("abc")), u"900150983cd24fb0d6963f7d28e17f72"_s);
    EXPECT_EQ(CVelmString::GetFileMD5(write(QByteArray("a\r\n").repeated(300000))),
              u"51900db0943122e2a81fdc42cc0d5d85"_s);
}

TEST(StringIdentifier, IsRandomAndHasTheFormOfAGuid)
{
    const QRegularExpression form(u"^[0-9A-F]{12}4[0-9A-F]{3}[89AB][0-9A-F]{15}$"_s);  // RFC 4122
    QSet<QString> guids;
    for (int i = 0; i < 1000; ++i)
        guids.insert(CVelmString::makeGuid());
    EXPECT_EQ(guids.size(), 1000);
    EXPECT_TRUE(form.match(*guids.cbegin()).hasMatch()) << guids.cbegin()->toStdString();
    const QString folder = CVelmString::GetTempFolder();
    EXPECT_EQ(CVelmString::FormatFilePath(u"a/测"_s), u"a"_s + QDir::separator() + u"测"_s);
    EXPECT_TRUE(form.match(folder.right(32)).hasMatch()) << folder.toStdString();
    EXPECT_EQ(QDir(folder.chopped(32)).canonicalPath(), QDir::temp().canonicalPath());
    EXPECT_EQ(folder.at(folder.size() - 33), QDir::separator());
    EXPECT_FALSE(QDir(folder).exists());
}

TEST(StringPassword, IsBase64OfTheLocalCodePage)
{
    const LocalCodec local("GBK");
    EXPECT_EQ(CVelmString::encryption(u"foobar"_s), u"Zm9vYmFy"_s);       // RFC 4648, section 10
    EXPECT_EQ(CVelmString::encryption(u"测量123"_s), u"suLBvzEyMw=="_s);  // B2 E2 C1 BF 31 32 33
    EXPECT_EQ(CVelmString::deciphering(u"suLBvzEyMw=="_s), u"测量123"_s);
    EXPECT_EQ(CVelmString::deciphering(CVelmString::encryption(QString())), QString());
}
