#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

#include <zlib.h>

namespace velm::detail {

/// Compresses one content after another by "deflate", without asking for memory anew.
class Deflater
{
public:
    /// @p level is 1 to 9. Throws std::bad_alloc.
    explicit Deflater(int level);
    ~Deflater();
    Q_DISABLE_COPY(Deflater)

    /// Gets compressed bytes; what is wrong ends the compressing.
    using Sink = std::function<QString(const char* bytes, int size)>;

    /// Takes a part of the content. @return what @p sink answers
    QString take(const char* bytes, int size, const Sink& sink)
    {
        return run(bytes, size, 0, sink);
    }
    /// Ends the content; the next one may begin. @return what @p sink answers
    QString end(const Sink& sink);

private:
    QString run(const char* bytes, int size, int flush, const Sink& sink);

    z_stream m_stream{};
    QByteArray m_out;
};

}  // namespace velm::detail
