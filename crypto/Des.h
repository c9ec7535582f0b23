#pragma once

#include <QtGlobal>

#include <array>
#include <cstddef>

namespace velm::detail {

/// Single DES (FIPS 46-3) over whole blocks, each for itself (ECB). The key schedule is wiped when
/// the object dies.
class Des
{
public:
    static constexpr size_t kBlockSize = 8;

    /// With round keys that are all zero, until a key is set.
    Des() = default;
    Des(const Des& other) = default;
    Des& operator=(const Des& other) = default;
    ~Des();

    /// Takes a key of 8 bytes; the lowest bit of each counts for nothing.
    void setKey(const char* key);

    // @p blocks blocks of 8 bytes; @p out may be @p in.
    void encrypt(const char* in, char* out, size_t blocks) const;
    void decrypt(const char* in, char* out, size_t blocks) const;

private:
    std::array<quint64, 16> m_roundKeys{};
};

/// Overwrites memory that held a secret, also where nobody reads it any more.
void wipe(void* memory, size_t size);

}  // namespace velm::detail
