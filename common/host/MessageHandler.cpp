#include "common/host/MessageHandler.h"

#include "common/host/HostCalls.h"
#include "CVelmFilePath.h"

#include <atomic>
#include <cstdlib>
#include <mutex>

namespace velm::detail {

namespace {

std::atomic<LogCallback> logCallback{nullptr};
std::atomic<bool> silent{false};

// Not a QMutex: Qt may log when the library's statics are gone, and ThreadSanitizer sees no lock
// within Qt.
std::mutex logMutex;

QString formatOf(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return QStringLiteral("Debug: File:%1 Function:%2 Line:%3 Content:%4");
    case QtWarningMsg:
        return QStringLiteral("Warning: File:%1 Function:%2 Line:%3 Content:%4");
    case QtCriticalMsg:
        return QStringLiteral("Critical: File:%1 Function:%2 Line:%3 Content:%4");
    case QtFatalMsg:
        return QStringLiteral("Fatal: File:%1 Function:%2 Line:%3 Content:%4");
    default:
        return QString();
    }
}

QString lineOf(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    const QString format = formatOf(type);
    if (format.isEmpty())
        return QString();
    // Decoded before it is cut: a trail byte of GBK may be a backslash.
    const QString path = QString::fromLocal8Bit(context.file);
    return format.arg(CVelmFilePath::Instance()->getFolderName(path, 0))
        .arg(QString::fromUtf8(context.function))
        .arg(context.line)
        .arg(message);
}

thread_local bool inCallback = false;

void call(const QString& line)
{
    const LogCallback callback = logCallback;
    if (!callback)
        return;
    inCallback = true;
    callback(line);
    inCallback = false;
}

void deliver(const QString& line)
{
    const std::lock_guard<std::mutex> lock(logMutex);
    call(line);
}

}  // namespace

void setLogCallback(LogCallback callback)
{
    logCallback = callback;
}

void handleMessage(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (type == QtFatalMsg && inCallback)
        std::abort();
    if (silent || inCallback)
        return;
    const std::lock_guard<std::mutex> lock(logMutex);
    const QString line = lineOf(type, context, message);
    if (type == QtFatalMsg)
        std::abort();
    if (!HostCallsLater::keep([line] { deliver(line); }))
        call(line);
}

void silenceMessages()
{
    silent = true;
}

}  // namespace velm::detail
