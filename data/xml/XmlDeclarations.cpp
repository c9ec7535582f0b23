#include "data/xml/XmlDeclarations.h"

#include <algorithm>

namespace velm::detail::xml {

void Declarations::read(QChar c)
{
    const State before = m_state;
    m_state = following(c);
    m_lastButOne = m_state == before ? m_last : QChar();
    m_last = m_state == before ? c : QChar();
}

Declarations::State Declarations::following(QChar c)
{
    switch (m_state) {
    case Between:
        return c == QLatin1Char('<') ? Opened : Between;
    case Opened:
        if (c == QLatin1Char('?'))
            return Instruction;
        return c == QLatin1Char('!') ? Declaration : Between;
    case Comment:
        return c == QLatin1Char('>') && m_last == QLatin1Char('-')
                       && m_lastButOne == QLatin1Char('-')
                   ? Between
                   : Comment;
    case Instruction:
        return c == QLatin1Char('>') && m_last == QLatin1Char('?') ? Between : Instruction;
    case Declaration:
        return inDeclaration(c);
    default:
        return inLiteral(c);
    }
}

Declarations::State Declarations::inDeclaration(QChar c)
{
    switch (c.unicode()) {
    case '-':  // the second one of "<!--"
        return m_last == QLatin1Char('-') && m_lastButOne.isNull() ? Comment : Declaration;
    case '"':
    case '\'':
        m_quote = c;
        return Literal;
    case '(':
        m_deepest = std::max(m_deepest, ++m_depth);
        return Declaration;
    case ')':
        --m_depth;
        return Declaration;
    case '[':  // the declarations of the document type
    case '>':
        m_depth = 0;
        return Between;
    default:
        return Declaration;
    }
}

Declarations::State Declarations::inLiteral(QChar c)
{
    if (m_state == Literal && c == m_quote)
        return Declaration;
    ++m_literals;
    if (c == QLatin1Char('&'))
        ++m_references;
    if (c == QLatin1Char('('))
        openGroups(1);
    return m_state;
}

void Declarations::openGroups(int count)
{
    if (m_state != Lost)
        return;
    m_depth += count;
    m_deepest = std::max(m_deepest, m_depth);
}

}  // namespace velm::detail::xml
