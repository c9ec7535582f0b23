#pragma once

#include "CVelmCryption.h"

#include <functional>
#include <memory>

namespace velm::detail {
class Des;
}

/// Single DES (FIPS 46-3), each block of 8 bytes for itself (ECB), what is missing of a block
/// filled with zeros. That keeps data from the curious only: 56 bits of key are searched through
/// within a day, and equal blocks stay equal. Never use it for what must stay secret.
///
/// An encrypted text is a text of "0" and "1", one for each bit, the most significant bit of a byte
/// first. An encrypted file is the blocks and no more: nothing in it tells whether a key is the
/// right one.
class VELMCOMMON_EXPORT CVelmCyptionDES2 : public CVelmCryption
{
public:
    /// Without a key, until initializeKey(), the round keys are all zero.
    CVelmCyptionDES2();
    /// With the same round keys.
    CVelmCyptionDES2(const CVelmCyptionDES2& other);
    /// Takes the round keys of the other.
    CVelmCyptionDES2& operator=(const CVelmCyptionDES2& other);
    /// Wipes the round keys.
    ~CVelmCyptionDES2() override;

    /// Decrypts @p length bytes (at least 0), or strlen(@p in) if it is 0. Each block that is begun
    /// is read whole: @p in holds a multiple of 8 bytes, at least 8. @p out takes @p length bytes
    /// and, but for a length of 8, a zero.
    void decryptString(char* out, const char* in, int length) override;

    /// Decrypts the first 8,192 characters; the rest is ignored. Characters other than "0" and "1"
    /// give wrong bits, bits that fill no byte count for nothing. The text ends at the first zero
    /// byte.
    QString decryptString(const QString& bits) override;

    /// Encrypts strlen(@p in) bytes. A block is written for up to 8 bytes, followed by a zero for
    /// fewer than 8; for n > 8 bytes n / 8 + 1 blocks, the last of which may be zeros alone, and a
    /// zero.
    void encryptString(char* out, const char* in) override;

    /// Encrypts a text in the local 8-bit code page. The result has 64 characters for each 8
    /// characters of @p text that are begun, 32,768 at most. They are counted as characters, so of
    /// a text with others than ASCII the end is lost.
    QString encryptString(const QString& text) override;

    /// Takes the first 8 bytes of the key in the local 8-bit code page, zeros for those that are
    /// missing. The lowest bit of each counts for nothing.
    Velm::ErrorStatus initializeKey(const QString& key) override;

    /// Encrypts a file into one that is 1 to 8 bytes longer. Of a file of 8 bytes the second block
    /// is zeros that are not encrypted, so that 8 more bytes come back without a meaning: this form
    /// has it so. Nothing happens if the file is missing or empty. The new file takes its place
    /// whole; @p outPath may be @p inPath.
    void encryptFile(const QString& inPath, const QString& outPath) override;

    /// Decrypts a file. All zeros at the end are lost, also those that the plain file had.
    void decryptFile(const QString& inPath, const QString& outPath) override;

    /// Called with the bytes that are done and those that there are; false breaks off.
    using Progress = std::function<bool(qint64 done, qint64 total)>;

    /// What encryptFile() and decryptFile() do, told. Without @p overwrites, what is at @p outPath,
    /// or comes there meanwhile, stays. A new file may be read and written by nobody who may not do
    /// so with @p inPath. @return why the file is not there; empty if it is. Then what was there
    /// stays, unless the text says that it is written in part.
    QString convertFile(bool encrypts, const QString& inPath, const QString& outPath,
                        const Progress& progress = Progress(), bool overwrites = true) const;

private:
    void EncryptAnyLength(char* out, const char* in, int length) const;
    void DecryptAnyLength(char* out, const char* in, int length) const;
    static QString ConvertCiphertext2OtherFormat(const char* cipher, int bitCount);
    static int ConvertOtherFormat2Ciphertext(const QString& bits, char* cipher);

    std::unique_ptr<velm::detail::Des> m_des;
};
