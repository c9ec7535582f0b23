#pragma once

#include <QString>

namespace velm::detail {

/// What becomes of a file that is there when a new one takes its place.
enum class Replace
{
    Yes,
    No
};

/// A file that takes its place whole: it is made under another name, and commit() renames it over
/// the one that is there. Whenever the process ends, the place holds the old file or the new one.
/// Not guarded: one thread at a time.
class AtomicFile
{
public:
    /// Whether @p path is free or holds an ordinary file. What a link leads to, a folder or a
    /// device is not replaced.
    static bool canReplace(const QString& path);

    /// @p made is where the content is made, in the same file system as @p target. @p spare is a
    /// free name there, which keeps the old file for undo(); empty if there will be no undo().
    AtomicFile(const QString& target, const QString& made, const QString& spare = QString());

    QString target() const { return m_target; }

    /// Waits until the content is on the disk and puts it into its place. A file that is replaced
    /// passes its permissions on, and its owner where this process may give files away. False
    /// leaves the place as it was; then @p problem says why. With Replace::No, whatever has come
    /// there until the last moment stays, and isTaken().
    bool commit(QString& problem, Replace replace = Replace::Yes);

    /// Whether commit() with Replace::No found something there.
    bool isTaken() const { return m_isTaken; }

    /// After commit(): puts the old file back, or removes the new one if there was none.
    bool undo();

private:
    bool keepOld() const;
    bool place(QString& problem);
    bool claim(QString& problem);
    bool sync(QString& problem) const;

    QString m_target;
    QString m_made;
    QString m_spare;
    bool m_replaced = false;
    bool m_isTaken = false;
};

}  // namespace velm::detail
