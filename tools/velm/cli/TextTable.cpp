#include "cli/TextTable.h"

#include "cli/Colours.h"
#include "cli/Console.h"
#include "cli/TerminalText.h"

#include <algorithm>

namespace {

constexpr int kGap = 2;  // columns between two cells

}  // namespace

void TextTable::addRow(const QStringList& cells)
{
    QStringList row;
    for (const QString& cell : cells)
        row.append(console::clipped(console::plain(cell)));
    m_rows.append(row);
}

void TextTable::print(int indent) const
{
    QVector<int> widths(m_rows.first().size());
    for (const QStringList& row : m_rows) {
        for (int i = 0; i < widths.size(); ++i)
            widths[i] = std::max(widths[i], console::displayWidth(row.at(i)));
    }
    for (int r = 0; r < m_rows.size(); ++r) {
        QString line(indent, QLatin1Char(' '));
        for (int i = 0; i < widths.size(); ++i) {
            const bool last = i + 1 == widths.size();
            line +=
                last ? m_rows.at(r).at(i) : console::padded(m_rows.at(r).at(i), widths[i] + kGap);
        }
        console::print(r == 0 ? console::heading(line) : line);
    }
}
