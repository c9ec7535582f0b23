#include "check/DictionaryCodes.h"

#include "check/CheckedSet.h"

#include <algorithm>

namespace {

constexpr int kShown = 8;

/// Whether a text is a number from 0, below @p count, as it is written.
bool isPosition(const QString& text, int count)
{
    bool converts = false;
    const int number = text.toInt(&converts);
    return converts && number >= 0 && number < count && QString::number(number) == text;
}

}  // namespace

DictionaryCodes::DictionaryCodes(const CheckedSet& set)
{
    for (const CheckedTable& table : set.tables()) {
        if (schema::isDictionary(table.name()))
            m_tables.insert(table.name(), &table);
    }
    const CheckedTable& lists = set.table("SYS_DICTIONARY");
    for (int row = 0; row < lists.size(); ++row)
        m_lists.insert(lists.plain(row, QStringLiteral("NAME")),
                       lists.text(row, QStringLiteral("LISTVALUE")));
    m_lists.remove(QString());
}

DictionaryCodes::Codes DictionaryCodes::read(const QString& dictionary) const
{
    Codes codes;
    const auto list = m_lists.constFind(dictionary);
    const CheckedTable* table = m_tables.value(dictionary);
    if (list != m_lists.constEnd()) {
        codes.count = list->isEmpty() ? 0 : list->count(QLatin1Char(';')) + 1;
        for (int code = 0; code < std::min(codes.count, kShown); ++code)
            codes.first.append(QString::number(code));
        return codes;
    }
    codes.count = table ? table->size() : 0;
    for (int row = 0; row < codes.count; ++row) {
        const QString code = table->text(row, QStringLiteral("CODE"));
        codes.all.insert(code);
        if (row < kShown)
            codes.first.append(code);
    }
    return codes;
}

const DictionaryCodes::Codes& DictionaryCodes::codesOf(const QString& dictionary)
{
    auto found = m_codes.find(dictionary);
    if (found == m_codes.end())
        found = m_codes.insert(dictionary, read(dictionary));
    return *found;
}

QString DictionaryCodes::whyNone(const QString& dictionary, const QString& value)
{
    const Codes& codes = codesOf(dictionary);
    const bool isOne =
        codes.all.isEmpty() ? isPosition(value, codes.count) : codes.all.contains(value);
    if (codes.count == 0 || isOne)
        return QString();
    return QStringLiteral("is no code of the dictionary \"%1\": %2")
               .arg(dictionary, codes.first.join(QStringLiteral(", ")))
           + (codes.count > kShown ? QStringLiteral(", ...") : QString());
}
