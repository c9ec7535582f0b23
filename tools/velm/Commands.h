#pragma once

#include <QStringList>

/// The commands of the program. Each takes the arguments behind its name, and answers with the exit
/// code.
namespace commands {

int check(const QStringList& arguments);
int crypt(const QStringList& arguments);
int doctor(const QStringList& arguments);
int importText(const QStringList& arguments);
int init(const QStringList& arguments);
int list(const QStringList& arguments);
int lookup(const QStringList& arguments);
int zip(const QStringList& arguments);

}  // namespace commands
