#include "cli/Console.h"

#include "cli/TerminalText.h"

#include "common/platform/Terminal.h"

#include <QJsonDocument>

namespace console {

namespace {

namespace platform = velm::detail::platform;

bool outputFailed = false;

}  // namespace

void write(const QString& text)
{
    outputFailed = !platform::writeText(platform::Stream::Output, text) || outputFailed;
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
    return !outputFailed;
}

void tell(const QString& line)
{
    platform::writeText(platform::Stream::Error,
                        QStringLiteral("velm: ") + plain(line) + QLatin1Char('\n'));
}

}  // namespace console
