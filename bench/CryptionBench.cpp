#include "crypto/Des.h"
#include "CVelmCyptionDES2.h"

#include <benchmark/benchmark.h>
#include <gcrypt.h>
#include <nettle/des.h>
#include <openssl/evp.h>
#include <openssl/provider.h>

#include <QFile>
#include <QTemporaryDir>

#include <array>
#include <cstring>
#include <random>
#include <vector>

using velm::detail::Des;

namespace {

constexpr size_t kBulk = 64 << 20;
constexpr size_t kShort = 16;

using Key = std::array<unsigned char, 8>;

/// Another key for each set-up, so that none is remembered.
Key keyOf(quint64 number)
{
    Key key;
    std::memcpy(key.data(), &number, key.size());
    return key;
}

/// Single DES of each library: a key is set, then any number of blocks encrypted.
class Ours
{
public:
    void setKey(const Key& key) { m_des.setKey(reinterpret_cast<const char*>(key.data())); }
    void encrypt(const unsigned char* in, unsigned char* out, size_t size)
    {
        m_des.encrypt(reinterpret_cast<const char*>(in), reinterpret_cast<char*>(out), size / 8);
    }

private:
    Des m_des;
};

class OpenSsl
{
public:
    OpenSsl()
    {
        static OSSL_PROVIDER* const legacy = OSSL_PROVIDER_load(nullptr, "legacy");
        static OSSL_PROVIDER* const usual = OSSL_PROVIDER_load(nullptr, "default");
        static EVP_CIPHER* const cipher = EVP_CIPHER_fetch(nullptr, "DES-ECB", nullptr);
        m_cipher = legacy && usual ? cipher : nullptr;
        m_context = EVP_CIPHER_CTX_new();
    }
    ~OpenSsl() { EVP_CIPHER_CTX_free(m_context); }
    void setKey(const Key& key)
    {
        EVP_EncryptInit_ex2(m_context, m_cipher, key.data(), nullptr, nullptr);
        EVP_CIPHER_CTX_set_padding(m_context, 0);
    }
    void encrypt(const unsigned char* in, unsigned char* out, size_t size)
    {
        int written = 0;
        EVP_EncryptUpdate(m_context, out, &written, in, static_cast<int>(size));
    }

private:
    EVP_CIPHER* m_cipher;
    EVP_CIPHER_CTX* m_context;
};

class Libgcrypt
{
public:
    Libgcrypt()
    {
        gcry_check_version(nullptr);
        gcry_control(GCRYCTL_INITIALIZATION_FINISHED, 0);
        gcry_cipher_open(&m_cipher, GCRY_CIPHER_DES, GCRY_CIPHER_MODE_ECB, 0);
    }
    ~Libgcrypt() { gcry_cipher_close(m_cipher); }
    void setKey(const Key& key) { gcry_cipher_setkey(m_cipher, key.data(), key.size()); }
    void encrypt(const unsigned char* in, unsigned char* out, size_t size)
    {
        gcry_cipher_encrypt(m_cipher, out, size, in, size);
    }

private:
    gcry_cipher_hd_t m_cipher = nullptr;
};

class Nettle
{
public:
    void setKey(const Key& key) { des_set_key(&m_context, key.data()); }
    void encrypt(const unsigned char* in, unsigned char* out, size_t size)
    {
        des_encrypt(&m_context, size, out, in);
    }

private:
    des_ctx m_context{};
};

template<class Cipher>
void DesBulk(benchmark::State& state)
{
    const std::vector<unsigned char> in(kBulk, 'x');
    std::vector<unsigned char> out(kBulk);
    Cipher cipher;
    cipher.setKey(keyOf(0x0123456789ABCDEF));
    for (auto _ : state) {
        cipher.encrypt(in.data(), out.data(), in.size());
        benchmark::DoNotOptimize(out.back());
    }
    state.SetBytesProcessed(state.iterations() * static_cast<qint64>(kBulk));
}
BENCHMARK(DesBulk<Ours>)->Unit(benchmark::kMillisecond);
BENCHMARK(DesBulk<OpenSsl>)->Unit(benchmark::kMillisecond);
BENCHMARK(DesBulk<Libgcrypt>)->Unit(benchmark::kMillisecond);
BENCHMARK(DesBulk<Nettle>)->Unit(benchmark::kMillisecond);

/// A key and a configuration value of two blocks.
template<class Cipher>
void DesShort(benchmark::State& state)
{
    const std::array<unsigned char, kShort> in{};
    std::array<unsigned char, kShort> out{};
    Cipher cipher;
    quint64 number = 0;
    for (auto _ : state) {
        cipher.setKey(keyOf(++number));
        cipher.encrypt(in.data(), out.data(), in.size());
        benchmark::DoNotOptimize(out);
    }
}
BENCHMARK(DesShort<Ours>);
BENCHMARK(DesShort<OpenSsl>);
BENCHMARK(DesShort<Libgcrypt>);
BENCHMARK(DesShort<Nettle>);

/// A file of 64 MiB: ours with a staged file and its way to the disk, the peers in a loop.
class BulkFile
{
public:
    BulkFile()
    {
        QFile file(in());
        file.open(QIODevice::WriteOnly);
        file.write(QByteArray(static_cast<int>(kBulk), 'x'));
    }
    QString in() const { return m_folder.filePath(QStringLiteral("in")); }
    QString out() const { return m_folder.filePath(QStringLiteral("out")); }

private:
    QTemporaryDir m_folder;
};

void DesFile_Library(benchmark::State& state)
{
    const BulkFile file;
    CVelmCyptionDES2 cipher;
    cipher.initializeKey(QStringLiteral("12345678"));
    for (auto _ : state)
        cipher.encryptFile(file.in(), file.out());
}
BENCHMARK(DesFile_Library)->Unit(benchmark::kMillisecond);

template<class Cipher>
void DesFile(benchmark::State& state)
{
    const BulkFile files;
    Cipher cipher;
    cipher.setKey(keyOf(0x0123456789ABCDEF));
    QByteArray part(1 << 18, '\0');
    auto* bytes = reinterpret_cast<unsigned char*>(part.data());
    for (auto _ : state) {
        QFile in(files.in()), out(files.out());
        in.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
        out.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
        for (qint64 got = in.read(part.data(), part.size()); got > 0;
             got = in.read(part.data(), part.size())) {
            cipher.encrypt(bytes, bytes, static_cast<size_t>(got));
            out.write(part.constData(), got);
        }
    }
}
BENCHMARK(DesFile<OpenSsl>)->Unit(benchmark::kMillisecond);
BENCHMARK(DesFile<Libgcrypt>)->Unit(benchmark::kMillisecond);
BENCHMARK(DesFile<Nettle>)->Unit(benchmark::kMillisecond);

/// No speed: a million random blocks, each with a key of its own, encrypted and decrypted.
void DesAgreesWithOpenSsl(benchmark::State& state)
{
    constexpr int kBlocks = 1000000;
    std::mt19937_64 random(20260101);
    Ours ours;
    OpenSsl peer;
    Des des;
    for (auto _ : state) {
        for (int i = 0; i < kBlocks; ++i) {
            const Key key = keyOf(random());
            const Key plain = keyOf(random());
            Key mine, other, back;
            ours.setKey(key);
            ours.encrypt(plain.data(), mine.data(), mine.size());
            peer.setKey(key);
            peer.encrypt(plain.data(), other.data(), other.size());
            des.setKey(reinterpret_cast<const char*>(key.data()));
            des.decrypt(reinterpret_cast<const char*>(mine.data()),
                        reinterpret_cast<char*>(back.data()), 1);
            if (mine != other || back != plain) {
                state.SkipWithError("a block differs");
                return;
            }
        }
    }
    state.SetItemsProcessed(state.iterations() * kBlocks);
}
BENCHMARK(DesAgreesWithOpenSsl)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
