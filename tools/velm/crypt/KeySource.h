#pragma once

#include <QString>

class Arguments;

/// Where the key of a cipher comes from: a file, the environment, the command line or a question at
/// the terminal.
namespace keysource {

/// Declares the options.
void addOptions(Arguments& args);

/// Reads the key; @p isNew asks at the terminal twice, since nothing tells a wrong one later.
/// @return what is wrong; empty if nothing is
QString read(const Arguments& args, bool isNew, QString& key);

}  // namespace keysource
