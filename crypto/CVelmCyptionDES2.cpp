#include "CVelmCyptionDES2.h"

#include "crypto/Des.h"
#include "crypto/DesFile.h"
#include "CVelmString.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <new>

using namespace velm::detail;

namespace {

constexpr int kBlock = static_cast<int>(Des::kBlockSize);
constexpr int kMostCipherBytes = 4096;  // of an encrypted text
constexpr int kMostBits = 8192;         // of a text to decrypt

using Block = std::array<char, Des::kBlockSize>;

/// A block of what is left of a text, filled up with zeros.
Block paddedBlock(const char* in, int length)
{
    Block block{};
    std::copy_n(in, length, block.begin());
    return block;
}

// Two characters make one byte at the least: a pair that the code page does not have.
constexpr int kMostCharacters = 2 * kMostCipherBytes;

/// The bits that an encrypted text of so many characters has.
int bitCountOf(int characters)
{
    constexpr int kMost = kMostCipherBytes * 8;
    return characters >= kMostCipherBytes ? kMost : (characters + 7) / 8 * 64;
}

}  // namespace

CVelmCryption::~CVelmCryption() = default;

CVelmCyptionDES2::CVelmCyptionDES2() : m_des(std::make_unique<Des>()) {}

CVelmCyptionDES2::CVelmCyptionDES2(const CVelmCyptionDES2& other)
    : CVelmCryption(other), m_des(std::make_unique<Des>(*other.m_des))
{}

CVelmCyptionDES2& CVelmCyptionDES2::operator=(const CVelmCyptionDES2& other)
{
    *m_des = *other.m_des;
    return *this;
}

CVelmCyptionDES2::~CVelmCyptionDES2() = default;

Velm::ErrorStatus CVelmCyptionDES2::initializeKey(const QString& key)
{
    QByteArray bytes = key.left(2 * kBlock).toLocal8Bit();
    Block block = paddedBlock(bytes.constData(), std::min(kBlock, bytes.size()));
    m_des->setKey(block.data());
    wipe(block.data(), block.size());
    wipe(bytes.data(), static_cast<size_t>(bytes.size()));
    return Velm::VelmOk;
}

void CVelmCyptionDES2::encryptString(char* out, const char* in)
{
    EncryptAnyLength(out, in, static_cast<int>(std::strlen(in)));
}

void CVelmCyptionDES2::decryptString(char* out, const char* in, int length)
{
    DecryptAnyLength(out, in, length == 0 ? static_cast<int>(std::strlen(in)) : length);
}

QString CVelmCyptionDES2::encryptString(const QString& text)
{
    try {
        const QByteArray bytes = text.left(kMostCharacters).toLocal8Bit();
        const auto length = static_cast<int>(std::strlen(bytes.constData()));
        std::array<char, kMostCipherBytes + kBlock + 1> cipher{};
        EncryptAnyLength(cipher.data(), bytes.constData(), std::min(length, kMostCipherBytes));
        return ConvertCiphertext2OtherFormat(cipher.data(), bitCountOf(text.length()));
    } catch (const std::bad_alloc&) {
        return QString();
    }
}

QString CVelmCyptionDES2::decryptString(const QString& bits)
{
    try {
        std::array<char, kMostBits / 8> cipher{};
        std::array<char, kMostBits / 8 + 1> plain{};
        const int length = ConvertOtherFormat2Ciphertext(bits.left(kMostBits), cipher.data());
        DecryptAnyLength(plain.data(), cipher.data(), length);
        return QString::fromLocal8Bit(plain.data());
    } catch (const std::bad_alloc&) {
        return QString();
    }
}

void CVelmCyptionDES2::encryptFile(const QString& inPath, const QString& outPath)
{
    convertFile(true, inPath, outPath);
}

void CVelmCyptionDES2::decryptFile(const QString& inPath, const QString& outPath)
{
    convertFile(false, inPath, outPath);
}

QString CVelmCyptionDES2::convertFile(bool encrypts, const QString& inPath, const QString& outPath,
                                      const Progress& progress, bool overwrites) const
{
    try {
        return DesFile(*m_des, inPath, outPath, progress)
            .convert(encrypts, overwrites ? Replace::Yes : Replace::No);
    } catch (const std::bad_alloc&) {
        return QStringLiteral("out of memory");
    }
}

void CVelmCyptionDES2::EncryptAnyLength(char* out, const char* in, int length) const
{
    const int whole = length / kBlock;
    m_des->encrypt(in, out, static_cast<size_t>(whole));
    if (length == kBlock)
        return;
    const Block last = paddedBlock(in + whole * kBlock, length % kBlock);
    m_des->encrypt(last.data(), out + whole * kBlock, 1);
    out[(whole + 1) * kBlock] = '\0';
}

void CVelmCyptionDES2::DecryptAnyLength(char* out, const char* in, int length) const
{
    const int whole = length / kBlock;
    m_des->decrypt(in, out, static_cast<size_t>(whole));
    if (length == kBlock)
        return;
    if (length % kBlock != 0) {
        Block last{};
        m_des->decrypt(in + whole * kBlock, last.data(), 1);
        std::copy_n(last.begin(), length % kBlock, out + whole * kBlock);
    }
    out[length] = '\0';
}

QString CVelmCyptionDES2::ConvertCiphertext2OtherFormat(const char* cipher, int bitCount)
{
    QByteArray bits(bitCount, Qt::Uninitialized);
    CVelmString::Bytes2Bits(cipher, bits.data(), static_cast<unsigned int>(bitCount));
    for (char& bit : bits)
        bit = static_cast<char>(bit + '0');
    return QString::fromLatin1(bits);
}

/// @return the number of bytes that the bits fill
int CVelmCyptionDES2::ConvertOtherFormat2Ciphertext(const QString& bits, char* cipher)
{
    QByteArray values = bits.toLatin1();
    for (char& value : values)
        value = static_cast<char>(value - '0');
    CVelmString::Bits2Bytes(cipher, values.constData(), static_cast<unsigned int>(values.size()));
    return values.size() / 8;
}
