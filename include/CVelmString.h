#pragma once

#include "VelmCommonGlobal.h"
#include "VelmTypes.h"

#include <QByteArray>
#include <QIODevice>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>

class QColor;
class QTextCodec;

/// A colour as configuration texts hold it: an index in r alone, or red, green and blue from 0 to
/// 255.
struct VelmColor
{
    int r = -1;  ///< index or red; -1 means not set
    int g = -1;  ///< green; -1 for an index
    int b = -1;  ///< blue; -1 for an index
};

/// Text tools: code pages, pinyin, number lists, validation, bits and bytes, variants and files.
/// Nothing here reports an error: bad input gives the neutral value (empty, 0, false) that each
/// operation names. The static operations may be called from any thread; so may the others, an
/// object being only read after construction.
class VELMCOMMON_EXPORT CVelmString
{
public:
    CVelmString();
    CVelmString(const CVelmString& other);             ///< objects do not differ
    CVelmString& operator=(const CVelmString& other);  ///< objects do not differ
    virtual ~CVelmString();

    // --- Code pages and byte text

    /// Re-interprets @p text, which was read as local 8-bit text although its bytes are GBK: the
    /// local 8-bit bytes are decoded as "gb2312", encoded as UTF-8 and read as local 8-bit text
    /// again. The codec "gb2312" is GB2312 proper in a Qt without ICU and the whole of GBK in a Qt
    /// with ICU (Debian's).
    static QString GBKToUTF8(const QString& text);

    /// The mirror of GBKToUTF8(): local 8-bit bytes decoded as UTF-8, encoded as "gb2312".
    static QString UTF8ToGBK(const QString& text);

    /// @{
    /// Whether @p data holds no byte sequence that is invalid in @p codec. A character cut off at
    /// the end is not invalid. The answer for UTF-8 and for GB18030, GBK and GB2312 does not depend
    /// on how Qt was built: a Qt with ICU does not count invalid characters, so these are checked
    /// by the structure that the standards give. False for a null codec.
    static bool IsTextCodec(const QByteArray& data, const QTextCodec* codec);
    static bool IsTextCodec(const char* data, unsigned int size, const QTextCodec* codec);
    /// @}
    /// @{
    /// IsTextCodec() with UTF-8.
    static bool IsUTF8(const QByteArray& data);
    static bool IsUTF8(const char* data, unsigned int size);
    /// @}
    /// @{
    /// IsTextCodec() with GB18030, of which GBK is the one- and two-byte part.
    static bool IsGBK(const QByteArray& data);
    static bool IsGBK(const char* data, unsigned int size);
    /// @}

    /// @{
    /// Decodes with @p codec; valid GB18030 and GBK give the same text in every build of Qt. With a
    /// null codec: as UTF-8 if the bytes are valid UTF-8, else as GB18030 if they are valid there,
    /// else the empty text.
    static QString BytesToString(const QByteArray& data, const QTextCodec* codec);
    static QString CharsToString(const char* data, unsigned int size, const QTextCodec* codec);
    /// @}

    // --- Pinyin, the search keys of Chinese names

    /// The pinyin syllable of a GB2312 level-1 character, lower case, without tone ("ü" is "v"). A
    /// character that is ASCII, not in GBK, or has a lead byte below 0xA1 there is returned itself;
    /// one with a trail byte below 0xA1 gives the empty text; symbols before the level-1 area give
    /// "a", level-2 characters "zuo".
    QString getPYChar(const QChar& ch);
    /// getPYChar() of every character, joined.
    QString getPYString(const QString& text);
    /// getPYChar() of every character, one entry each, empty ones kept.
    QStringList getPYStrings(const QString& text);
    /// The initial letters: upper case for level-1 characters; ASCII and what GBK does not have as
    /// it stands; every other character dropped. "测量point" gives "CLpoint".
    QString getChineseSpell(const QString& text);

    // --- Validation and counting

    /// Whether every character is an ASCII digit, "." or "-", in any number and order; the empty
    /// text is one too.
    static bool IsDigitStr(const QString& text);
    /// The number of characters from U+04BB to U+FFFD. The range is far wider than Chinese:
    /// callers count Chinese characters in mixed text, and a narrower range would change
    /// their counts.
    static int ChineseCount(const QString& text);
    /// How often @p symbol occurs in @p text, without overlaps, letter case counting; 0 for an
    /// empty symbol.
    static unsigned int GetNumberOfSymbol(const QString& text, const QString& symbol);
    /// Whether the Gregorian date exists. What is no number counts as 0. Day 0 is accepted on
    /// purpose.
    static bool CheckDate(const QString& year, const QString& month, const QString& day);
    /// Whether @p id is a resident identity number of 18 characters (GB 11643: region, birth date,
    /// check character by ISO 7064 MOD 11-2). A lower-case "x" at the end is refused; the first 17
    /// need not be digits.
    static bool CheckIDCard18(const QString& id);

    // --- Lists and numbers. Where memory runs out a list is empty, and no number found.

    /// Splits at @p separator, letter case counting, empty parts kept. With @p keepLeading a
    /// separator at the start of a part stays with it, so that a minus sign survives: "-3-6" gives
    /// "-3", "6"; ",a,b" gives ",a", "b". Of a longer separator only the first character is removed
    /// then.
    static QStringList String2StringList(const QString& text, const QString& separator,
                                         bool keepLeading);
    /// Splits at @p separator, letter case counting, empty parts dropped.
    static QStringList SplitString(const QString& text, const QString& separator);
    /// Expands a list of numbers and ranges: "1,3-6,9" gives 1, 3, 4, 5, 6, 9 and "6-3" gives 6, 5,
    /// 4, 3. What is no digit string is skipped, and so is a range whose ends are 2147483647 or
    /// more apart, and a number or range that would make more than 16,777,216 numbers in all.
    static QVector<long> String2LongList(const QString& text, const QString& rangeSeparator,
                                         const QString& listSeparator);
    /// String2LongList() of every element, joined in list order.
    static QVector<long> StringList2LongList(const QStringList& list, const QString& rangeSeparator,
                                             const QString& listSeparator);
    /// The reverse: ascending order, runs of consecutive numbers as "first, separator, last". Equal
    /// numbers end a run.
    static QStringList LongList2StringList(const QVector<long>& values,
                                           const QString& rangeSeparator);
    /// LongList2StringList() joined with @p listSeparator.
    static QString LongList2String(const QVector<long>& values, const QString& rangeSeparator,
                                   const QString& listSeparator);
    /// What is no number gives 0.
    static QVector<double> StringList2DoubleList(const QStringList& list);
    /// Fixed notation with @p precision decimals; a value whose fractional part is below 0.0001 is
    /// written as its integer part.
    static QStringList DoubleList2StringList(const QVector<double>& values, int precision);
    /// The number to give to the next thing: the first gap in @p used, else the greatest plus one.
    /// A @p start below all used numbers is itself the answer; one above them gives the greatest
    /// used plus one, so that numbers are not left out; one in between has no
    /// effect. With nothing used: @p start.
    /// @return false, @p result untouched, if there is neither a used number nor a start, or no
    /// greater number
    static bool FindSkipNum(long& result, const QVector<long>& used, long* start);
    /// The shortest fixed-point text, 15 decimals at most: 2.5 gives "2.5", 3.0 "3", 0.1 + 0.2
    /// "0.3", 1e-20 "0".
    static QString Double2QString(double value);
    /// The Chinese reading: 12 gives "十二", 10001 "一万零一", -5 "负五". Beyond "亿" (1e8) the
    /// units go on with "万亿" (1e12) and "亿亿" (1e16).
    static QString Number2Chinese(long n);
    /// A decimal number, else a Chinese reading as Number2Chinese() writes it (a leading "一十" and
    /// "一万零二亿" are understood too; parts in an unusual order are added up). 0 for what holds
    /// any other character and for what a long cannot hold.
    static long Chinese2Number(const QString& text);
    /// Spreadsheet column letters: 1 is "A", 26 "Z", 27 "AA". Empty for numbers below 1.
    static QString Number2EnglishLetters(long n, bool upper);
    /// The reverse, letter case ignored. 0 if any character is no letter A to Z, or the number does
    /// not fit.
    static long EnglishLetters2Number(QString text);

    // --- Bits, hexadecimal and bytes. The caller owns the buffers; a bit is a byte of 0 or 1.

    /// Expands bitCount/4 hexadecimal digits (upper case) into bits, most significant first. @p hex
    /// is changed in place: afterwards it holds the digit values 0 to 15. All @p bitCount bits are
    /// written; those behind the last whole digit are 0.
    static void Hex2Bits(char* hex, char* bits, unsigned int bitCount);
    /// Writes bitCount/4 upper-case digits and no terminating zero.
    static void Bits2Hex(char* hex, const char* bits, unsigned int bitCount);
    /// Packs into bitCount/8 bytes, most significant bit first.
    static void Bits2Bytes(char* bytes, const char* bits, unsigned int bitCount);
    /// Unpacks @p bitCount bits from the (bitCount + 7)/8 bytes that hold them.
    static void Bytes2Bits(const char* bytes, char* bits, unsigned int bitCount);

    // --- Variants, maps, JSON, colours

    /// Integers in decimal, floating-point numbers with 6 decimals, characters and texts as they
    /// are; empty for every other type, booleans included.
    static QString VariantToString(const QVariant& v);
    /// VariantToString() of every value. With @p shortDoubles floating-point numbers take the form
    /// of Double2QString() instead.
    static QMap<QString, QString> VariantMapToStringMap(const QMap<QString, QVariant>& map,
                                                        bool shortDoubles);
    /// Copies every entry of @p from into @p to; an entry that @p to holds already is replaced only
    /// with @p overwrite.
    static void ConstVarMap2VarMap(const QMap<QString, QVariant>& from, QMap<QString, QVariant>& to,
                                   bool overwrite);
    /// Types that QVariant::Type has no enumerator for (short, float, ...) are recognised by their
    /// QMetaType number.
    static Velm::FieldType QVariantType2VelmFieldType(QVariant::Type t);
    /// The DXF extended-data group code under which such a value hangs on an entity: 1070 (16-bit
    /// integer), 1071 (32-bit integer), 1040 (real) or 1000 (text).
    static short QVariantType2CadDataType(QVariant::Type t);
    /// The indented JSON document of a map or list; empty for any other value, and where memory
    /// runs out.
    static QString Variant2Json(const QVariant& v);
    /// A map or list; invalid if @p text is no JSON object or array. Qt's parser ends the process
    /// where memory runs out.
    static QVariant Json2Variant(const QString& text);
    /// "r,g,b", or one number as a colour index in r. Any other number of parts gives an unset
    /// colour.
    static VelmColor String2Color(const QString& text);
    /// "r,g,b"; empty for an invalid colour.
    static QString Color2String(const QColor& c);

    // --- Files, paths and identifiers

    /// The whole file read as UTF-8; empty if it cannot be opened with @p mode, or memory runs out.
    static QString ReadFile(const QString& path, QIODevice::OpenMode mode);
    /// Writes @p text in the local 8-bit code page. False if the file cannot be opened or takes not
    /// all of it.
    static bool WriteFile(const QString& path, const QString& text, QIODevice::OpenMode mode);
    /// The path with the system's own separators.
    static QString FormatFilePath(const QString& path);
    /// A random GUID as 32 upper-case hexadecimal digits.
    static QString makeGuid();
    /// A fresh folder name in the system's temporary folder. The folder is not created.
    static QString GetTempFolder();
    /// MD5 of the whole file, lower-case hexadecimal; empty if it cannot be opened.
    static QString GetFileMD5(const QString& path);
    /// Hides a password in a configuration file from a casual look: base64 of the local 8-bit text,
    /// no key.
    static QString encryption(const QString& text);
    /// The reverse of encryption(). What is no base64 is skipped.
    static QString deciphering(const QString& text);

private:
    bool Init();
    QString firstLetter(int qw);

    // "GB18030", whose one- and two-byte part is GBK: the codec named "GBK" has another table in
    // each kind of Qt. Not owned.
    QTextCodec* m_codec;
};
