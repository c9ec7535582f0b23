#include "cli/Console.h"

#include "cli/TerminalText.h"

#include "common/platform/Terminal.h"

#include <QJsonDocument>

namespace console {

namespace {

namespace platform = velm::detail::platform;

bool outputFailed = false;
QString waiting;  // of the output

void writeWaiting()
{
    if (!waiting.isEmpty())
        outputFailed = !platform::writeText(platform::Stream::Output, waiting) || outputFailed;
    waiting.resize(0);
}

}  // namespace

void write(const QString& text)
{
    constexpr int kMostWaiting = 65536;  // characters; a write for each line takes its time
    waiting += text;
    if (waiting.size() > kMostWaiting)
        writeWaiting();
}

void print(const QString& line)
{
    write(line + QLatin1Char('\n'));
}

void print(const QJsonObject& document)
{
    write(QString::fromUtf8(QJsonDocument(document).toJson()));
}

void print(const QJsonArray& document)
{
    write(QString::fromUtf8(QJsonDocument(document).toJson()));
}

bool printedAll()
{
    writeWaiting();
    return !outputFailed;
}

void tell(const QString& line)
{
    writeWaiting();  // on a terminal both stand in their order
    platform::writeText(platform::Stream::Error,
                        QStringLiteral("velm: ") + plain(line) + QLatin1Char('\n'));
}

}  // namespace console
