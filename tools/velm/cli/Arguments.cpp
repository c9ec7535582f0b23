#include "cli/Arguments.h"

#include "cli/Console.h"
#include "cli/TerminalText.h"

#include <algorithm>

Arguments::Arguments(const QString& command, const QString& synopsis, const QString& description,
                     const QStringList& examples)
    : m_command(command), m_synopsis(synopsis), m_description(description), m_examples(examples)
{}

void Arguments::addOption(const QString& name, const QString& description, const QString& valueName)
{
    m_parser.addOption({name, description, valueName});
    QString written = (name.size() == 1 ? QStringLiteral("-") : QStringLiteral("--")) + name;
    if (!valueName.isEmpty())
        written += QLatin1Char(' ') + valueName;
    m_shownOptions.append({written, description});
}

void Arguments::addCommonOptions()
{
    const QString root = QStringLiteral("root");
    if (m_needsRoot)
        addOption(root, QStringLiteral("Folder that holds the folder \"config\"; else VELM_ROOT."),
                  QStringLiteral("DIR"));
    else
        m_parser.addOption({root, QString(), QStringLiteral("DIR")});
    addOption(QStringLiteral("json"), QStringLiteral("Answer in JSON."));
    m_parser.addOption({{QStringLiteral("h"), QStringLiteral("help")}, QString()});
    m_shownOptions.append({QStringLiteral("-h, --help"), QStringLiteral("Show this help.")});
}

std::optional<int> Arguments::parse(const QStringList& arguments)
{
    addCommonOptions();
    const QString program = QStringLiteral("velm ") + m_command;
    if (!m_parser.parse(QStringList{program} + arguments))
        return usageError(m_parser.errorText());
    if (isSet(QStringLiteral("help"))) {
        console::print(helpText());
        return ExitFine;
    }
    if (!m_needsRoot && isSet(QStringLiteral("root")))
        return usageError(m_command + QStringLiteral(" reads no configuration: leave --root out"));
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
    const QStringList description = console::wrapped(m_description, console::lineWidth());
    return QStringLiteral("Examples:\n  ") + m_examples.join(QStringLiteral("\n  "))
           + QStringLiteral("\n\nUsage: velm ") + m_command + QLatin1Char(' ') + m_synopsis
           + QStringLiteral("\n\n") + description.join(QLatin1Char('\n'))
           + QStringLiteral("\n\nOptions:") + optionsText();
}

/// Made here: the text of Qt's parser is in Qt's language, and knows no command.
QString Arguments::optionsText() const
{
    constexpr int kGap = 2;
    int width = 0;
    for (const QStringList& option : m_shownOptions)
        width = std::max(width, console::displayWidth(option.first()));
    const int column = kGap + width + kGap;
    const QString indent = QLatin1Char('\n') + QString(column, QLatin1Char(' '));
    QString text;
    for (const QStringList& option : m_shownOptions) {
        const QString start = QString(kGap, QLatin1Char(' ')) + option.first();
        const QStringList lines = console::wrapped(option.last(), console::lineWidth() - column);
        text += QLatin1Char('\n') + console::padded(start, column) + lines.join(indent);
    }
    return text;
}
