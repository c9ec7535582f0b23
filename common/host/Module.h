#pragma once

#include <QString>

/// What the library does when it comes into a process and when it leaves. Called by one thread at a
/// time: the loader's, or the one that runs the application object.
namespace velm::detail::module {

/// The name of a project of the mapping system.
extern const QString kProjectKey;

/// Whether the environment variable VELM_START is "host": then nothing starts by itself, and the
/// host calls CVelmSystemGlobal::startModule().
bool hostStarts();

/// Registers what is to be saved when the application object goes or the module stops. Its owner
/// calls this when the library is loaded. @return true
bool callAtEnd(void (*work)());

/// Registers the resource bundle, loads the companion library, installs Qt's Chinese translation
/// and the message handler. What is missing is shown in a message box: without the bundle
/// start-up goes on, without the companion it ends. What was done already is not done again; the
/// translation waits for a call when there is an application object.
/// @return false without the companion
bool start();

/// Saves what callAtEnd() has registered, and lets the bundle and the companion go if
/// start() was called since. The message handler and the translation stay.
void stop();

/// Has that saved when the application object goes, or the next one if there is none. Qt
/// forgets that with each.
void saveWithApplication();
/// Takes that back.
void forgetApplication();

/// The file of that name: the first that lies in a search path itself or, for a root that holds the
/// configuration only, beside the library; else the first below a search path, where letter case
/// does not count, among no more than 10,000 files and folders in all. Only beside the library if
/// the program exports a function "velmKeepsToLibraryFolder". Empty if there is none.
QString findFile(const QString& name);

}  // namespace velm::detail::module
