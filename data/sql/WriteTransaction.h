#pragma once

#include "VelmTypes.h"

#include <QSqlDatabase>
#include <QSqlError>

namespace velm::detail {

/// Makes reading and writing one step: on SQLite it holds the write lock from its beginning, so
/// that nothing that was read can have changed when it is written. Within a transaction that is
/// open already it is a part of that one, which can be taken back alone. Rolled back at its end
/// unless committed. Access gets no transaction: each statement counts at once.
class WriteTransaction
{
public:
    /// Waits for the lock as long as the connection does. @p isWithin tells that there is a
    /// transaction for certain, which is found out otherwise.
    explicit WriteTransaction(const QSqlDatabase& database, bool isWithin = false);
    ~WriteTransaction();
    Q_DISABLE_COPY(WriteTransaction)

    /// Why there is none; no error if it has begun.
    const QSqlError& error() const { return m_error; }

    /// Makes the changes permanent, or part of the outer transaction. If that fails, they are
    /// rolled back. @return no error, or what went wrong
    QSqlError commit();

    /// Takes the changes back before the end of its scope.
    void rollBack();

    /// Whether SQLite has rolled everything back by itself, as it does when a disk is full. To be
    /// asked after a statement that failed: what comes then would count at once.
    bool isLost();

private:
    enum class Kind
    {
        None,
        Own,
        Part
    };

    void begin();
    void beginPart();
    QSqlError run(const char* sql) const;

    QSqlDatabase m_database;
    Kind m_kind = Kind::None;
    QSqlError m_error;
};

}  // namespace velm::detail
