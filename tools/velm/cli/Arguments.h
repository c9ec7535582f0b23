#pragma once

#include <QCommandLineParser>
#include <QStringList>
#include <QVector>

#include <optional>

/// The arguments of one command: its own options and the two that every command has, --root and
/// --json.
class Arguments
{
public:
    /// @p examples are whole command lines, one a line, shown first by --help; @p synopsis names
    /// the arguments.
    Arguments(const QString& command, const QString& synopsis, const QString& description,
              const QStringList& examples);

    /// Declares an option of this command. One with a @p valueName takes a value.
    void addOption(const QString& name, const QString& description,
                   const QString& valueName = QString());

    /// Refuses --root, for a command that reads no configuration.
    void needsNoRoot() { m_needsRoot = false; }

    /// Reads @p arguments, which begin behind the command's name. If that ends the command (--help,
    /// or an error, which is told), the answer is its exit code.
    std::optional<int> parse(const QStringList& arguments);

    bool isSet(const QString& name) const { return m_parser.isSet(name); }
    QString value(const QString& name) const { return m_parser.value(name); }
    QStringList values(const QString& name) const { return m_parser.values(name); }
    QStringList positional() const { return m_parser.positionalArguments(); }
    bool json() const { return isSet(QStringLiteral("json")); }

    /// Tells what is wrong with the arguments and where to read on. @return ExitUsage
    int usageError(const QString& problem) const;

private:
    void addCommonOptions();
    QString helpText() const;
    QString optionsText() const;

    QString m_command;
    QString m_synopsis;
    QString m_description;
    QStringList m_examples;
    bool m_needsRoot = true;
    QVector<QStringList> m_shownOptions;  // how it is written, and what it does
    QCommandLineParser m_parser;
};
