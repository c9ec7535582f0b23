#include "common/text/Gb18030.h"

#include <QTextCodec>

#include <cstring>

namespace velm::detail {

namespace {

// Since 2005 the pair A8BC is the letter, and its former place 8135F437 the private-use character.
const QChar kMWithAcute(0x1E3F);
const QChar kPrivateUse(0xE7C7);
constexpr char kMWithAcutePair[] = "\xA8\xBC";
constexpr char kPrivateUseGroup[] = "\x81\x35\xF4\x37";

QTextCodec* codec()
{
    static QTextCodec* const codec = QTextCodec::codecForName("GB18030");
    return codec;
}

unsigned char byteAt(const QByteArray& data, int pos)
{
    return static_cast<unsigned char>(data.at(pos));
}

bool isLead(unsigned char byte)
{
    return byte >= 0x81 && byte <= 0xFE;
}

bool isPairTrail(unsigned char byte)
{
    return byte >= 0x40 && byte <= 0xFE && byte != 0x7F;
}

bool isGroupDigit(unsigned char byte)
{
    return byte >= 0x30 && byte <= 0x39;
}

/// The position of a group of four in the order of the groups; 81308130 is 0.
quint32 groupIndex(const QByteArray& data, int pos)
{
    const quint32 first = byteAt(data, pos) - 0x81U;
    const quint32 second = byteAt(data, pos + 1) - 0x30U;
    const quint32 third = byteAt(data, pos + 2) - 0x81U;
    const quint32 fourth = byteAt(data, pos + 3) - 0x30U;
    return ((first * 10 + second) * 126 + third) * 10 + fourth;
}

constexpr quint32 kBmpGroups = 39420;        // 81308130 to 8431A439
constexpr quint32 kFirstBeyondBmp = 189000;  // 90308130, U+10000

bool standsForCharacter(quint32 group)
{
    return group < kBmpGroups || (group >= kFirstBeyondBmp && group < kFirstBeyondBmp + 0x100000);
}

/// The length of the sequence at @p pos; 0 if it is not permitted. One that is cut off reaches
/// beyond the end.
int sequenceLength(const QByteArray& data, int pos, bool groups)
{
    const unsigned char first = byteAt(data, pos);
    if (first < 0x80)
        return 1;
    if (!isLead(first))
        return 0;
    const int rest = data.size() - pos;
    if (rest < 2 || isPairTrail(byteAt(data, pos + 1)))
        return 2;
    if (!groups || !isGroupDigit(byteAt(data, pos + 1)))
        return 0;
    if ((rest > 2 && !isLead(byteAt(data, pos + 2)))
        || (rest > 3 && !isGroupDigit(byteAt(data, pos + 3))))
        return 0;
    return rest < 4 || standsForCharacter(groupIndex(data, pos)) ? 4 : 0;
}

bool isValid(const QByteArray& data, bool groups)
{
    for (int pos = 0; pos < data.size();) {
        const int length = sequenceLength(data, pos, groups);
        if (length == 0)
            return false;
        pos += length;
    }
    return true;
}

/// The text of the sequences that the two kinds of Qt read differently; empty for all others.
QString settledText(const QByteArray& data, int pos, int length)
{
    const char* const sequence = data.constData() + pos;
    if (length == 2 && std::memcmp(sequence, kMWithAcutePair, 2) == 0)
        return QString(kMWithAcute);
    if (length != 4)
        return QString();
    if (std::memcmp(sequence, kPrivateUseGroup, 4) == 0)
        return QString(kPrivateUse);
    const quint32 group = groupIndex(data, pos);
    if (group < kFirstBeyondBmp)
        return QString();
    const uint codePoint = 0x10000 + group - kFirstBeyondBmp;
    return QString::fromUcs4(&codePoint, 1);
}

}  // namespace

bool isValidGb18030(const QByteArray& data)
{
    return isValid(data, true);
}

bool isValidGbk(const QByteArray& data)
{
    return isValid(data, false);
}

QString decodeGb18030(const QByteArray& data)
{
    QString text;
    int plain = 0;  // where the part begins that Qt reads
    int pos = 0;
    while (pos < data.size()) {
        const int length = qMax(1, sequenceLength(data, pos, true));
        if (pos + length > data.size())
            break;
        const QString settled = settledText(data, pos, length);
        if (!settled.isEmpty()) {
            text += codec()->toUnicode(data.mid(plain, pos - plain)) + settled;
            plain = pos + length;
        }
        pos += length;
    }
    return text + codec()->toUnicode(data.mid(plain, pos - plain));
}

QByteArray gbkBytes(const QTextCodec* gb18030, QChar ch)
{
    if (ch == kMWithAcute)
        return QByteArray(kMWithAcutePair);
    if (ch == kPrivateUse || ch.isSurrogate())
        return QByteArray();
    const QByteArray bytes = gb18030->fromUnicode(QString(ch));
    return bytes.size() <= 2 ? bytes : QByteArray();
}

}  // namespace velm::detail
