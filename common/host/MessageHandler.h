#pragma once

#include <QString>

#include <QtGlobal>

/// Turns every line of Qt's log into one text and hands it to the host.
namespace velm::detail {

using LogCallback = void (*)(const QString& line);

/// The callback gets one line at a time, whichever thread logs: it runs under the handler's lock.
/// What it logs itself is dropped. Null drops all lines.
void setLogCallback(LogCallback callback);

/// The handler for qInstallMessageHandler(). A fatal message ends the process and reaches no
/// callback; a message of a type without a format is handed on as an empty line.
void handleMessage(QtMsgType type, const QMessageLogContext& context, const QString& message);

/// Makes handleMessage() drop every line without a lock: for the end of a process, when a thread
/// that is gone may hold it.
void silenceMessages();

}  // namespace velm::detail
