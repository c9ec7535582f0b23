#include "archive/Deflater.h"

#include <new>

namespace velm::detail {

namespace {

constexpr int kOut = 1 << 16;  // bytes handed over at a time

}  // namespace

Deflater::Deflater(int level) : m_out(kOut, Qt::Uninitialized)
{
    const int result = deflateInit2(&m_stream, level, Z_DEFLATED, -MAX_WBITS, MAX_MEM_LEVEL - 1,
                                    Z_DEFAULT_STRATEGY);
    if (result != Z_OK)
        throw std::bad_alloc();
}

Deflater::~Deflater()
{
    deflateEnd(&m_stream);
}

QString Deflater::end(const Sink& sink)
{
    QString problem = run(nullptr, 0, Z_FINISH, sink);
    deflateReset(&m_stream);
    return problem;
}

QString Deflater::run(const char* bytes, int size, int flush, const Sink& sink)
{
    // zlib does not write there.
    m_stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes));
    m_stream.avail_in = static_cast<uInt>(size);
    do {
        m_stream.next_out = reinterpret_cast<Bytef*>(m_out.data());
        m_stream.avail_out = static_cast<uInt>(kOut);
        deflate(&m_stream, flush);
        const int made = kOut - static_cast<int>(m_stream.avail_out);
        QString problem = made > 0 ? sink(m_out.constData(), made) : QString();
        if (!problem.isEmpty())
            return problem;
    } while (m_stream.avail_out == 0);
    return QString();
}

}  // namespace velm::detail
