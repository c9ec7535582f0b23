#pragma once

#include <QChar>

namespace velm::detail::xml {

/// Follows the characters of a document type: the parser tells of no groups, and of entities only
/// when it has read them.
class Declarations
{
public:
    void read(QChar c);

    /// Groups within one another, at most.
    int deepest() const { return m_deepest; }
    /// Characters of literals, and references in them.
    int literals() const { return m_literals; }
    int references() const { return m_references; }
    /// Whether no declaration is open.
    bool isBetween() const { return m_state == Between; }

    /// To be called when what follows may stand anywhere: from now on no group ends, and everything
    /// stands in a literal.
    void loseTrack() { m_state = Lost; }
    /// To be called for groups that are opened elsewhere. They count if the track is lost.
    void openGroups(int count);

private:
    enum State
    {
        Between,
        Opened,  // behind "<"
        Comment,
        Instruction,
        Declaration,
        Literal,
        Lost
    };

    State following(QChar c);
    State inDeclaration(QChar c);
    State inLiteral(QChar c);

    State m_state = Between;
    QChar m_last, m_lastButOne;  // in the state
    QChar m_quote;
    int m_depth = 0;
    int m_deepest = 0;
    int m_literals = 0;
    int m_references = 0;
};

}  // namespace velm::detail::xml
