#pragma once

#include <QString>

class Arguments;

/// Where the key of a cipher comes from: a file, the environment, the command line or a question at
/// the terminal.
namespace keysource {

/// Declares the options.
void addOptions(Arguments& args);

/// What is wrong with the options that were given; empty if nothing is.
QString wrongUsage(const Arguments& args);

/// Reads the key, which is refused if the code page of the system cannot tell it from another;
/// @p isNew asks at the terminal twice, since nothing tells a wrong one later.
/// @return what is wrong; empty if nothing is
QString read(const Arguments& args, bool isNew, QString& key);

}  // namespace keysource
