#include "lookup/CodeIndex.h"

#include "cli/Suggestions.h"

#include "CVelmIndex.h"

#include <QVector>

namespace {

/// The same text for all that differ in letter case only.
QString folded(const QString& text)
{
    QVector<uint> characters = text.toUcs4();
    for (uint& character : characters)
        character = QChar::toCaseFolded(character);
    return QString::fromUcs4(characters.constData(), characters.size());
}

QStringList namesOf(const CVelmIndex& index, Key key)
{
    QStringList names;
    const QMap<QString, VelmIndexItem> items = index.getIndexMap();
    for (const VelmIndexItem& item : items)
        names.append(key == Key::Code       ? item.code
                     : key == Key::UserCode ? item.usecode
                                            : item.table);
    names.removeDuplicates();
    return names;
}

}  // namespace

QStringList CodeIndex::codesOfTable(const QString& table)
{
    if (m_tables.isEmpty()) {
        const QMap<QString, VelmIndexItem> items = m_index.getIndexMap();
        for (const VelmIndexItem& item : items)
            m_tables[folded(item.table)].append(item.code);
    }
    return m_tables.value(folded(table));
}

QString CodeIndex::codeOfUserCode(const QString& userCode)
{
    if (m_userCodes.isEmpty()) {
        const QMap<QString, VelmIndexItem> items = m_index.getIndexMap();
        for (const VelmIndexItem& item : items) {
            const QString name = folded(item.usecode);
            if (!name.isEmpty() && !m_userCodes.contains(name))
                m_userCodes.insert(name, item.code);
        }
    }
    return m_userCodes.value(folded(userCode));
}

QStringList CodeIndex::suggestionsFor(const QString& text, Key key)
{
    constexpr int kMostQuestions = 20;  // each looks at all names
    if (++m_asked > kMostQuestions)
        return {};
    if (m_candidates.isEmpty() || key != m_candidateKey)
        m_candidates = namesOf(m_index, key);
    m_candidateKey = key;
    return similarTo(text, m_candidates);
}
