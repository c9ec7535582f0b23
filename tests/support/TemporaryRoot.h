#pragma once

#include "support/Values.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

/// A fixture with a system root of its own: an empty folder with an empty "config" in it, named by
/// VELM_ROOT while the test runs. Its name holds Chinese characters and a blank.
class TemporaryRoot : public testing::Test
{
protected:
    TemporaryRoot();
    ~TemporaryRoot() override;

    /// The root, and a path below it.
    QString root() const { return m_root; }
    QString path(const QString& relative) const { return m_root + QLatin1Char('/') + relative; }

    /// Writes a file below the root, with the folders it needs.
    void writeFile(const QString& relative, const QByteArray& content) const;

    /// Executes statements on a SQLite file below the root, the system configuration database
    /// unless told otherwise.
    void runSql(const QStringList& statements,
                const QString& relative = QStringLiteral("config/peltaconfig.db")) const;

    /// The statement that makes a table of the configuration, with the columns and types of its
    /// schema.
    static QString created(const QString& table);

    /// Makes the tables of both configuration databases, without rows.
    void createTables() const;

    /// The first column of the rows of a query on such a file.
    QStringList querySql(const QString& statement,
                         const QString& relative = QStringLiteral("config/peltaconfig.db")) const;

private:
    QTemporaryDir m_folder;
    QString m_root;
    QByteArray m_previousRoot;
};
