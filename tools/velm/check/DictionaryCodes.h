#pragma once

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

class CheckedSet;
class CheckedTable;

/// The codes of the dictionaries of a set, counted once for each that is asked for.
class DictionaryCodes
{
public:
    explicit DictionaryCodes(const CheckedSet& set);

    /// Why a value is none of the codes of a dictionary; empty if it is one, or the dictionary has
    /// none, or there is no such dictionary.
    QString whyNone(const QString& dictionary, const QString& value);

private:
    struct Codes
    {
        QStringList first;  // for the message
        int count = 0;
        QSet<QString> all;  // of a table; those of a list are numbers from 0
    };

    const Codes& codesOf(const QString& dictionary);
    Codes read(const QString& dictionary) const;

    QHash<QString, const CheckedTable*> m_tables;
    QHash<QString, QString> m_lists;  // they take the place of tables
    QHash<QString, Codes> m_codes;
};
