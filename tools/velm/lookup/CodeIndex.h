#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

class CVelmIndex;

/// What the arguments of a look-up are.
enum class Key
{
    Code,
    UserCode,
    Table
};

/// The codes of the index by their other names, each sorted out once and when first asked for.
/// Letter case of the names does not count.
class CodeIndex
{
public:
    /// Of an index that lives longer.
    explicit CodeIndex(const CVelmIndex& index) : m_index(index) {}

    /// The codes of a GIS table in ascending order.
    QStringList codesOfTable(const QString& table);
    /// The smallest code with that user code; empty if there is none.
    QString codeOfUserCode(const QString& userCode);
    /// Three names at most that @p text may have been meant as; none after the 20th question.
    QStringList suggestionsFor(const QString& text, Key key);

private:
    const CVelmIndex& m_index;
    QHash<QString, QStringList> m_tables;
    QHash<QString, QString> m_userCodes;
    QStringList m_candidates;  // of m_candidateKey
    Key m_candidateKey = Key::Code;
    int m_asked = 0;
};
