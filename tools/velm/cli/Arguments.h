#pragma once

#include <QHash>
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

    /// Refuses --json, for a command that has no answer.
    void needsNoJson() { m_needsJson = false; }

    /// Reads @p arguments, which begin behind the command's name. If that ends the command (--help,
    /// or an error, which is told), the answer is its exit code.
    std::optional<int> parse(const QStringList& arguments);

    bool isSet(const QString& name) const { return m_given.contains(name); }
    /// The last one that was given; empty if none was.
    QString value(const QString& name) const { return values(name).value(values(name).size() - 1); }
    QStringList values(const QString& name) const { return m_given.value(name); }
    QStringList positional() const { return m_positional; }
    bool json() const { return isSet(QStringLiteral("json")); }

    /// Tells what is wrong with the arguments and where to read on. @return ExitUsage
    int usageError(const QString& problem) const;

private:
    struct Option
    {
        QString name;
        QString description;  // empty for one that --help does not show
        QString valueName;    // empty if it takes no value

        QString written() const;
    };

    void addCommonOptions();
    const Option* find(const QString& written) const;
    QString read(QStringList arguments);
    QString readOption(const QString& argument, QStringList& behind);
    QString unknown(const QString& argument) const;
    QString helpText() const;
    QString optionsText() const;

    QString m_command;
    QString m_synopsis;
    QString m_description;
    QStringList m_examples;
    bool m_needsRoot = true;
    bool m_needsJson = true;
    QVector<Option> m_options;
    QHash<QString, QStringList> m_given;  // values by name; empty ones of options without
    QStringList m_positional;
};
