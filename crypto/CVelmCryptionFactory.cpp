#include "CVelmCryptionFactory.h"

#include "common/host/Singleton.h"
#include "CVelmCyptionDES2.h"

#include <memory>
#include <new>

namespace {

/// A cipher with a key; null for an unknown type.
std::unique_ptr<CVelmCryption> makeCipher(Velm::CryptionType type, const QString& key)
{
    if (type != Velm::CryptionDes)
        return nullptr;
    auto cipher = std::make_unique<CVelmCyptionDES2>();
    cipher->initializeKey(key);
    return cipher;
}

/// Does something with a cipher, if there is one for the type and memory for it.
template<class Operation>
void withCipher(Velm::CryptionType type, const QString& key, const Operation& operation)
{
    try {
        if (const std::unique_ptr<CVelmCryption> cipher = makeCipher(type, key))
            operation(*cipher);
    } catch (const std::bad_alloc&) {
        // As any failure of a cipher it is not told.
    }
}

constexpr int kBlock = 8;

}  // namespace

CVelmCryptionFactory::CVelmCryptionFactory() = default;

CVelmCryptionFactory::~CVelmCryptionFactory() = default;

CVelmCryptionFactory* CVelmCryptionFactory::Instance()
{
    static velm::detail::Singleton<CVelmCryptionFactory> instance;
    return instance.get([] { return new CVelmCryptionFactory; });
}

Velm::ErrorStatus CVelmCryptionFactory::initializeKey(const QString& key)
{
    if (key.isEmpty())
        return Velm::VelmNoData;
    m_key = key;
    return Velm::VelmOk;
}

QString CVelmCryptionFactory::encryptString(Velm::CryptionType type, const QString& text)
{
    QString bits;
    withCipher(type, m_key, [&](CVelmCryption& cipher) { bits = cipher.encryptString(text); });
    return bits;
}

QString CVelmCryptionFactory::decryptString(Velm::CryptionType type, const QString& text)
{
    QString plain;
    withCipher(type, m_key, [&](CVelmCryption& cipher) { plain = cipher.decryptString(text); });
    return plain;
}

void CVelmCryptionFactory::encryptString(Velm::CryptionType type, QString& out, const QString& in)
{
    QString result;
    withCipher(type, m_key, [&](CVelmCryption& cipher) {
        const QByteArray bytes = in.toLocal8Bit();
        QByteArray buffer(bytes.size() / kBlock * kBlock + kBlock + 1, '\0');
        cipher.encryptString(buffer.data(), bytes.constData());
        result = QString::fromLocal8Bit(buffer.constData());
    });
    out = result;
}

void CVelmCryptionFactory::decryptString(Velm::CryptionType type, QString& out, const QString& in)
{
    QString result;
    withCipher(type, m_key, [&](CVelmCryption& cipher) {
        QByteArray bytes = in.toLocal8Bit();
        bytes.append(QByteArray(kBlock, '\0'));  // a block that is begun is read whole
        QByteArray buffer(bytes.size() + 1, '\0');
        cipher.decryptString(buffer.data(), bytes.constData(), 0);
        result = QString::fromLocal8Bit(buffer.constData());
    });
    out = result;
}

void CVelmCryptionFactory::encryptFile(Velm::CryptionType type, const QString& inPath,
                                       const QString& outPath)
{
    withCipher(type, m_key, [&](CVelmCryption& cipher) { cipher.encryptFile(inPath, outPath); });
}

void CVelmCryptionFactory::decryptFile(Velm::CryptionType type, const QString& inPath,
                                       const QString& outPath)
{
    withCipher(type, m_key, [&](CVelmCryption& cipher) { cipher.decryptFile(inPath, outPath); });
}
