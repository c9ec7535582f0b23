#pragma once

#include <QString>

/// Why a call of the system failed, in words of our own: those of the system and of Qt come in the
/// language of the user, and for some causes not at all.
namespace velm::detail::platform {

/// The error of the call that failed last in this thread. Ask right behind it.
int lastError();

/// What an error says, in English on every system, without a capital and a full stop; "system error
/// N" if it is none of the usual ones.
QString errorText(int error);
/// The same of the last one.
QString lastErrorText();

/// Whether it says that nothing may be made or changed there: it is not allowed, or read-only.
bool isRefusal(int error);

}  // namespace velm::detail::platform
