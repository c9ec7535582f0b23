#include "CVelmCryptionFactory.h"
#include "CVelmCyptionDES2.h"
#include "fuzz/Expect.h"
#include "support/LocalCodec.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace {

constexpr int kBlock = 8;

/// Bytes at the end of a memory block of their own, so that reading or writing behind them shows.
std::vector<char> copyOf(const QByteArray& bytes, int size)
{
    std::vector<char> copy(static_cast<size_t>(size), '\0');
    std::copy_n(bytes.begin(), std::min(size, bytes.size()), copy.begin());
    return copy;
}

/// A text of odd and of even bits, Latin letters, or any UTF-16 there may be.
QString textOf(const QByteArray& bytes, int form)
{
    QString text = QString::fromLatin1(bytes);
    if (form % 3 == 1) {
        text.clear();
        for (const char byte : bytes)
            text += QString::number(static_cast<uchar>(byte), 2);
    } else if (form % 3 == 2) {
        text.resize(bytes.size() / 2);
        std::memcpy(text.data(), bytes.constData(), static_cast<size_t>(text.size()) * 2);
    }
    const int repeats = 1 + form / 3;
    return text.left(30000 / repeats).repeated(repeats);
}

bool isAscii(const QString& text)
{
    return std::all_of(text.begin(), text.end(),
                       [](QChar ch) { return ch.unicode() > 0 && ch.unicode() < 0x80; });
}

void checkTexts(CVelmCyptionDES2& cipher, const QString& text)
{
    const QString plain = cipher.decryptString(text);
    expect(plain == cipher.decryptString(text.left(8192)), "the first 8,192 bits count");
    expect(plain.size() <= 1024, "no more characters than bytes");
    const QString bits = cipher.encryptString(text);
    expect(bits.size() == std::min(32768, (text.size() + 7) / 8 * 64), "64 bits for 8 characters");
    expect(bits.count(QLatin1Char('0')) + bits.count(QLatin1Char('1')) == bits.size(), "bits");
    if (isAscii(text))
        expect(cipher.decryptString(bits) == text.left(1024), "a text comes back");
}

/// Gives the operations on bytes the room that the header tells, and no more.
void checkBytes(CVelmCyptionDES2& cipher, const QByteArray& bytes)
{
    const auto length = static_cast<int>(qstrlen(bytes.constData()));
    const int zero = length == kBlock ? 0 : 1;
    const int cipherSize = length == kBlock ? kBlock : (length / kBlock + 1) * kBlock;
    const std::vector<char> in = copyOf(bytes, length + 1);
    std::vector<char> encrypted(static_cast<size_t>(cipherSize + zero));
    cipher.encryptString(encrypted.data(), in.data());
    encrypted.resize(static_cast<size_t>(cipherSize));
    encrypted.shrink_to_fit();
    std::vector<char> plain(static_cast<size_t>(length + zero));
    if (length > 0) {
        cipher.decryptString(plain.data(), encrypted.data(), length);
        expect(std::memcmp(plain.data(), in.data(), static_cast<size_t>(length)) == 0,
               "bytes come back");
    }
    const int size = std::max(1, bytes.size());
    const std::vector<char> any = copyOf(bytes, (size + kBlock - 1) / kBlock * kBlock);
    std::vector<char> out(static_cast<size_t>(size + (size == kBlock ? 0 : 1)));
    cipher.decryptString(out.data(), any.data(), size);
}

void checkFactory(const QString& text)
{
    CVelmCryptionFactory& factory = *CVelmCryptionFactory::Instance();
    factory.initializeKey(text.left(9));
    const QString bits = factory.encryptString(Velm::CryptionDes, text);
    factory.decryptString(Velm::CryptionDes, bits);
    QString out;
    factory.decryptString(Velm::CryptionDes, out, text);
    factory.encryptString(Velm::CryptionDes, out, text);
    const int whole = out.size() / kBlock * kBlock;  // what stands before a zero of the cipher
    factory.decryptString(Velm::CryptionDes, out, QString(out));
    if (isAscii(text) && QTextCodec::codecForLocale()->name() == "ISO-8859-1")
        expect(out.left(whole) == text.left(whole), "blocks before a zero come back");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    constexpr const char* kCodecs[] = {"UTF-8", "GBK", "GB18030", "ISO-8859-1"};
    if (size < 2)
        return 0;
    const LocalCodec codec(kCodecs[data[0] % std::size(kCodecs)]);
    const QByteArray bytes(reinterpret_cast<const char*>(data) + 2, static_cast<int>(size) - 2);
    const QString text = textOf(bytes, data[1]);
    CVelmCyptionDES2 cipher;
    cipher.initializeKey(text.mid(data[0] / 4));
    checkTexts(cipher, text);
    checkBytes(cipher, bytes);
    checkFactory(text);
    return 0;
}
