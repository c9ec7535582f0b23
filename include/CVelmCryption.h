#pragma once

#include "VelmCommonGlobal.h"
#include "VelmTypes.h"

#include <QString>

/// A cipher for texts and files. CVelmCryptionFactory makes one for each operation; whoever uses
/// one directly sets a key first. One operation at a time for each object; objects are independent
/// of each other. The order of the virtual operations is part of the interface.
class VELMCOMMON_EXPORT CVelmCryption
{
public:
    virtual ~CVelmCryption();

    /// Decrypts @p length bytes of @p in, or as many as stand before its first zero if @p length is
    /// 0, into @p out.
    virtual void decryptString(char* out, const char* in, int length) = 0;
    /// The text of what encryptString() returned.
    virtual QString decryptString(const QString& bits) = 0;
    /// Encrypts the bytes of @p in up to its first zero into @p out.
    virtual void encryptString(char* out, const char* in) = 0;
    /// The encrypted text, as text.
    virtual QString encryptString(const QString& text) = 0;
    /// Takes the key. @return VelmOk
    virtual Velm::ErrorStatus initializeKey(const QString& key) = 0;
    /// Encrypts a file. What fails leaves the file @p outPath as it was, and is not told.
    virtual void encryptFile(const QString& inPath, const QString& outPath) = 0;
    /// Decrypts a file; the rest like encryptFile().
    virtual void decryptFile(const QString& inPath, const QString& outPath) = 0;

protected:
    CVelmCryption() = default;
    /// A cipher has no data in this class, so there is nothing to copy.
    CVelmCryption(const CVelmCryption& other) = default;
    /// Likewise.
    CVelmCryption& operator=(const CVelmCryption& other) = default;
};
