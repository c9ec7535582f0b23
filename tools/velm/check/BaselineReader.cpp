#include "check/BaselineFile.h"

#include "common/files/SystemFile.h"

#include <rapidjson/reader.h>

namespace {

/// The bytes of a file, as the JSON reader takes them.
class FileStream
{
public:
    using Ch = char;

    explicit FileStream(QFile& file) : m_file(file)
    {
        fill();
        if (m_bytes.startsWith("\xEF\xBB\xBF"))  // some editors write it
            m_next = 3;
    }

    char Peek() const { return m_next < m_bytes.size() ? m_bytes.at(m_next) : '\0'; }
    char Take()
    {
        const char taken = Peek();
        m_line += taken == '\n' ? 1 : 0;
        ++m_next;
        if (m_next >= m_bytes.size())
            fill();
        return taken;
    }
    std::size_t Tell() const { return static_cast<std::size_t>(m_before + m_next); }
    int line() const { return m_line; }

    // For writing in place only.
    char* PutBegin() { return nullptr; }
    void Put(char) {}
    void Flush() {}
    std::size_t PutEnd(char*) { return 0; }

private:
    void fill()
    {
        constexpr int kPiece = 65536;
        m_before += m_bytes.size();
        m_bytes = m_file.read(kPiece);
        m_next = 0;
    }

    QFile& m_file;
    QByteArray m_bytes;
    qint64 m_before = 0;
    int m_next = 0;
    int m_line = 1;
};

/// Takes the findings out of what the JSON reader meets: {"known": [{...}, ...]}.
class Handler : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Handler>
{
public:
    explicit Handler(std::vector<KnownFinding>& known) : m_known(known) {}

    bool hasList() const { return m_hasList; }

    bool StartObject()
    {
        ++m_depth;
        if (m_depth == kFinding)
            m_finding = KnownFinding{{}, 1, nullptr};
        return true;
    }
    bool EndObject(rapidjson::SizeType)
    {
        if (m_depth == kFinding && m_inList)
            m_known.push_back(m_finding);
        --m_depth;
        return true;
    }
    bool StartArray()
    {
        ++m_depth;
        if (m_depth == kList && m_key == "known")
            m_hasList = m_inList = true;
        return true;
    }
    bool EndArray(rapidjson::SizeType)
    {
        if (m_depth == kList)
            m_inList = false;
        --m_depth;
        return true;
    }
    bool Key(const char* text, rapidjson::SizeType length, bool)
    {
        m_key = QByteArray(text, static_cast<int>(length));
        return true;
    }
    bool String(const char* text, rapidjson::SizeType length, bool)
    {
        if (m_depth != kFinding)
            return true;
        const QByteArray value(text, static_cast<int>(length));
        if (m_key == "fingerprint")
            m_finding.fingerprint = fingerprintOf(value);
        else if (m_key == "rule")
            m_finding.rule = rules::find(QString::fromUtf8(value));
        return true;
    }
    bool Uint(unsigned number)
    {
        constexpr unsigned kMost = 1U << 30U;
        if (m_depth == kFinding && m_key == "count")
            m_finding.count = static_cast<int>(std::min(number, kMost));
        return true;
    }

private:
    static constexpr int kList = 2;  // how many brackets are open
    static constexpr int kFinding = 3;

    std::vector<KnownFinding>& m_known;
    KnownFinding m_finding{};
    QByteArray m_key;
    int m_depth = 0;
    bool m_inList = false;
    bool m_hasList = false;
};

}  // namespace

QString baselinefile::read(const QString& path, std::vector<KnownFinding>& known)
{
    velm::detail::SystemFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return path + QStringLiteral(": ") + file.errorString();
    FileStream stream(file);
    Handler handler(known);
    rapidjson::Reader reader;
    const bool parses = !reader.Parse<rapidjson::kParseIterativeFlag>(stream, handler).IsError();
    if (file.error() != QFileDevice::NoError)
        return path + QStringLiteral(": it cannot be read to its end");
    if (!parses)
        return path + QStringLiteral(": line %1 is no JSON").arg(stream.line());
    return handler.hasList()
               ? QString()
               : path + QStringLiteral(": no baseline; \"velm check --write-baseline\" makes one");
}
