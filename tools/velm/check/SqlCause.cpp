#include "check/SqlCause.h"

#include <array>

QString sqlCause(const QString& text)
{
    struct Words
    {
        const char* sqlite;
        const char* ours;
    };
    constexpr std::array<Words, 7> kWords{
        {{"database is locked", "another program is using it"},
         {"database table is locked", "another program is using it"},
         {"database schema is locked", "another program is using it"},
         {"locking protocol", "another program is using it"},
         {"attempt to write a readonly database", "it may not be written"},
         {"database or disk is full", "the disk is full"},
         {"unable to open database file", "it, or a file beside it, cannot be opened"}}};
    QString trimmed = text.trimmed();
    for (const Words& words : kWords) {
        if (trimmed.startsWith(QLatin1String(words.sqlite)))
            return QLatin1String(words.ours);
    }
    return trimmed;
}
