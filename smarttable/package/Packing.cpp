#include "smarttable/package/Packing.h"

#include <new>

#include <libdeflate.h>

using velm::detail::ZipPacked;

namespace SmartTable::detail {

namespace {

constexpr int kDeflate = 8;  // the method

QString damaged()
{
    return QStringLiteral("its content is damaged");
}

struct FreeDecompressor
{
    void operator()(libdeflate_decompressor* decompressor) const
    {
        libdeflate_free_decompressor(decompressor);
    }
};

/// Fills @p content, which has the size that is told.
bool inflate(const QByteArray& bytes, QByteArray& content)
{
    const std::unique_ptr<libdeflate_decompressor, FreeDecompressor> decompressor(
        libdeflate_alloc_decompressor());
    if (!decompressor)
        throw std::bad_alloc();
    const auto size = static_cast<size_t>(bytes.size());
    const auto whole = static_cast<size_t>(content.size());
    size_t taken = 0;
    size_t made = 0;
    const libdeflate_result result = libdeflate_deflate_decompress_ex(
        decompressor.get(), bytes.constData(), size, content.data(), whole, &taken, &made);
    return result == LIBDEFLATE_SUCCESS && taken == size && made == whole;
}

}  // namespace

Packer::Packer(int level) : m_level(level)
{
    if (level == 0)
        return;
    m_compressor.reset(libdeflate_alloc_compressor(level));
    if (!m_compressor)
        throw std::bad_alloc();
}

Packer::~Packer() = default;

void Packer::Free::operator()(libdeflate_compressor* compressor) const
{
    libdeflate_free_compressor(compressor);
}

ZipPacked Packer::pack(const QByteArray& content) const
{
    ZipPacked packed;
    packed.crc = checksum(content);
    packed.size = content.size();
    packed.bytes = content;
    if (!m_compressor || content.isEmpty())
        return packed;
    const auto room = static_cast<size_t>(content.size()) - 1;
    QByteArray bytes(content.size(), Qt::Uninitialized);
    const size_t made = libdeflate_deflate_compress(m_compressor.get(), content.constData(),
                                                    room + 1, bytes.data(), room);
    if (made == 0)
        return packed;
    packed.method = kDeflate;
    packed.bytes = bytes.left(static_cast<int>(made));  // and the room that was not used goes
    return packed;
}

QString unpack(const ZipPacked& packed, QByteArray& content)
{
    QByteArray unpacked = packed.bytes;
    if (packed.method == kDeflate) {
        unpacked = QByteArray(static_cast<int>(packed.size), Qt::Uninitialized);
        if (!inflate(packed.bytes, unpacked))
            return damaged();
    }
    if (unpacked.size() != packed.size || checksum(unpacked) != packed.crc)
        return damaged();
    content = unpacked;
    return QString();
}

quint32 checksum(const QByteArray& content)
{
    return libdeflate_crc32(0, content.constData(), static_cast<size_t>(content.size()));
}

}  // namespace SmartTable::detail
