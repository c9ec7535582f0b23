#pragma once

#include "archive/ZipPacked.h"

#include <QString>

#include <memory>

struct libdeflate_compressor;

namespace SmartTable::detail {

/// Packs contents, one after another, each as a whole. Throws std::bad_alloc.
class Packer
{
public:
    /// @p level is 0 (stored) to 12.
    explicit Packer(int level);
    ~Packer();
    Q_DISABLE_COPY(Packer)

    int level() const { return m_level; }
    /// What does not become smaller is stored.
    velm::detail::ZipPacked pack(const QByteArray& content) const;

private:
    struct Free
    {
        void operator()(libdeflate_compressor* compressor) const;
    };

    int m_level;
    std::unique_ptr<libdeflate_compressor, Free> m_compressor;  // null at level 0
};

/// Takes a content out and compares its size and checksum. Throws std::bad_alloc.
/// @return what is wrong, and @p content is as before; empty if nothing is
QString unpack(const velm::detail::ZipPacked& packed, QByteArray& content);

quint32 checksum(const QByteArray& content);

}  // namespace SmartTable::detail
