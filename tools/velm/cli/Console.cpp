#include "cli/Console.h"

#include "cli/TerminalText.h"

#include "common/platform/Terminal.h"

#include <QJsonDocument>

namespace console {

namespace {

namespace platform = velm::detail::platform;

bool outputFailed = false;
QByteArray waiting;  // of the output

void writeWaiting()
{
    if (!waiting.isEmpty())
        outputFailed = !platform::writeText(platform::Stream::Output, waiting) || outputFailed;
    waiting.resize(0);
}

}  // namespace

void write(const QByteArray& text)
{
    constexpr int kMostWaiting = 65536;  // bytes; a write for each line takes its time
    waiting += text;
    if (waiting.size() > kMostWaiting)
        writeWaiting();
}

void print(const QString& line)
{
    write(line.toUtf8() + '\n');
}

void print(const QJsonObject& document)
{
    write(QJsonDocument(document).toJson());
}

void print(const QJsonArray& document)
{
    write(QJsonDocument(document).toJson());
}

bool printedAll()
{
    writeWaiting();
    return !outputFailed;
}

void tell(const QString& line)
{
    writeWaiting();  // on a terminal both stand in their order
    platform::writeText(platform::Stream::Error, "velm: " + plain(line).toUtf8() + '\n');
}

}  // namespace console
