#pragma once

#include "VelmCommonGlobal.h"
#include "VelmTypes.h"

#include <QString>

/// Encrypts and decrypts with one key, which it keeps until it is given another. Each operation has
/// a cipher of its own, so any number of threads may call them; initializeKey() must not run
/// meanwhile. What the cipher is worth, and what it loses, CVelmCyptionDES2 tells.
class VELMCOMMON_EXPORT CVelmCryptionFactory
{
public:
    /// Created on the first call, destroyed when the library unloads.
    static CVelmCryptionFactory* Instance();
    virtual ~CVelmCryptionFactory();

    /// Keeps a key. @return VelmOk; VelmNoData for an empty key, then the old one stays
    Velm::ErrorStatus initializeKey(const QString& key);

    /// The encrypted text; empty for an unknown @p type.
    QString encryptString(Velm::CryptionType type, const QString& text);
    /// The text of what encryptString() returned; empty for an unknown @p type.
    QString decryptString(Velm::CryptionType type, const QString& text);

    /// Encrypts into bytes, which are read as text of the local 8-bit code page up to the first
    /// zero. That loses bytes: for callers that have kept texts in this form. An unknown @p type
    /// clears @p out.
    void encryptString(Velm::CryptionType type, QString& out, const QString& in);
    /// The reverse, as far as nothing was lost.
    void decryptString(Velm::CryptionType type, QString& out, const QString& in);

    /// Encrypts a file. Nothing happens for an unknown @p type, a missing file or an empty one.
    void encryptFile(Velm::CryptionType type, const QString& inPath, const QString& outPath);
    /// Decrypts a file; the rest like encryptFile().
    void decryptFile(Velm::CryptionType type, const QString& inPath, const QString& outPath);

private:
    CVelmCryptionFactory();
    Q_DISABLE_COPY(CVelmCryptionFactory)

    QString m_key;
};
