#include "set/Csv.h"

namespace {

/// Reads fields one after the other.
class CsvReader
{
public:
    explicit CsvReader(const QString& text) : m_text(text) {}

    bool atEnd() const { return m_pos >= m_text.size(); }

    QStringList readRecord()
    {
        QStringList fields{readField()};
        while (!atEnd() && m_text.at(m_pos) == QLatin1Char(',')) {
            ++m_pos;
            fields.append(readField());
        }
        if (!atEnd() && m_text.at(m_pos) == QLatin1Char('\r'))
            ++m_pos;
        if (!atEnd() && m_text.at(m_pos) == QLatin1Char('\n'))
            ++m_pos;
        return fields;
    }

private:
    QString readField()
    {
        QString field = readQuotedPart();
        while (!atEnd() && !endsField(m_text.at(m_pos)))
            field += m_text.at(m_pos++);
        return field;
    }

    QString readQuotedPart()
    {
        const QLatin1Char quote('"');
        QString part;
        if (atEnd() || m_text.at(m_pos) != quote)
            return part;
        for (++m_pos; !atEnd(); ++m_pos) {
            if (m_text.at(m_pos) == quote) {
                ++m_pos;
                if (atEnd() || m_text.at(m_pos) != quote)
                    break;
            }
            part += m_text.at(m_pos);
        }
        return part;
    }

    static bool endsField(QChar ch)
    {
        return ch == QLatin1Char(',') || ch == QLatin1Char('\r') || ch == QLatin1Char('\n');
    }

    const QString& m_text;
    int m_pos = 0;
};

}  // namespace

QVector<QStringList> parseCsv(const QString& text)
{
    QVector<QStringList> records;
    CsvReader reader(text);
    while (!reader.atEnd())
        records.append(reader.readRecord());
    return records;
}
