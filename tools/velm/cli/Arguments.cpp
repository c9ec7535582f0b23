#include "cli/Arguments.h"

#include "cli/Console.h"

Arguments::Arguments(const QString& command, const QString& synopsis, const QString& description,
                     const QStringList& examples)
    : m_command(command), m_synopsis(synopsis), m_description(description), m_examples(examples)
{}

void Arguments::addOption(const QString& name, const QString& description, const QString& valueName)
{
    m_parser.addOption({name, description, valueName});
}

std::optional<int> Arguments::parse(const QStringList& arguments)
{
    if (m_needsRoot)
        addOption(QStringLiteral("root"),
                  QStringLiteral("Folder that holds the folder \"config\"; else VELM_ROOT."),
                  QStringLiteral("DIR"));
    addOption(QStringLiteral("json"), QStringLiteral("Answer in JSON."));
    m_parser.addOption(
        {{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Show this help.")});
    const QString program = QStringLiteral("velm ") + m_command;
    if (!m_parser.parse(QStringList{program} + arguments))
        return usageError(m_parser.errorText());
    if (isSet(QStringLiteral("help"))) {
        console::print(helpText());
        return ExitFine;
    }
    return std::nullopt;
}

int Arguments::usageError(const QString& problem) const
{
    console::tell(problem);
    console::tell(QStringLiteral("see \"velm %1 --help\"").arg(m_command));
    return ExitUsage;
}

QString Arguments::helpText() const
{
    // Qt's text begins with a usage line of its own, which knows no command.
    const QString options = m_parser.helpText().section(QStringLiteral("Options:"), 1).trimmed();
    return QStringLiteral("Examples:\n  ") + m_examples.join(QStringLiteral("\n  "))
           + QStringLiteral("\n\nUsage: velm ") + m_command + QLatin1Char(' ') + m_synopsis
           + QStringLiteral("\n\n") + m_description + QStringLiteral("\n\nOptions:\n  ") + options;
}
