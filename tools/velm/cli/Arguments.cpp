#include "cli/Arguments.h"

#include "cli/Console.h"
#include "cli/Suggestions.h"
#include "cli/TerminalText.h"

#include <QPair>

#include <algorithm>

Arguments::Arguments(const QString& command, const QString& synopsis, const QString& description,
                     const QStringList& examples)
    : m_command(command), m_synopsis(synopsis), m_description(description), m_examples(examples)
{}

QString Arguments::Option::written() const
{
    return (name.size() == 1 ? QStringLiteral("-") : QStringLiteral("--")) + name;
}

void Arguments::addOption(const QString& name, const QString& description, const QString& valueName)
{
    m_options.append({name, description, valueName});
}

void Arguments::addCommonOptions()
{
    addOption(QStringLiteral("root"),
              m_needsRoot
                  ? QStringLiteral("Folder that holds the folder \"config\"; else VELM_ROOT.")
                  : QString(),
              QStringLiteral("DIR"));
    addOption(QStringLiteral("json"), m_needsJson ? QStringLiteral("Answer in JSON.") : QString());
    addOption(QStringLiteral("help"), QStringLiteral("Show this help."));
}

std::optional<int> Arguments::parse(const QStringList& arguments)
{
    addCommonOptions();
    const QString problem = read(arguments);
    if (!problem.isEmpty())
        return usageError(problem);
    if (isSet(QStringLiteral("help"))) {
        console::print(helpText());
        return ExitFine;
    }
    if (!m_needsRoot && isSet(QStringLiteral("root")))
        return usageError(m_command + QStringLiteral(" reads no configuration: leave --root out"));
    if (!m_needsJson && json())
        return usageError(m_command + QStringLiteral(" has no answer: leave --json out"));
    return std::nullopt;
}

const Arguments::Option* Arguments::find(const QString& written) const
{
    const auto found =
        std::find_if(m_options.begin(), m_options.end(),
                     [&written](const Option& option) { return option.written() == written; });
    return found == m_options.end() ? nullptr : &*found;
}

/// Our own, for the words of Qt's parser are in Qt's language. @return what is wrong; empty if
/// nothing is
QString Arguments::read(QStringList arguments)
{
    while (!arguments.isEmpty()) {
        QString argument = arguments.takeFirst();
        if (argument == QLatin1String("-h"))
            argument = QStringLiteral("--help");
        if (argument == QLatin1String("--")) {
            m_positional += arguments;
            return QString();
        }
        if (!argument.startsWith(QLatin1Char('-')) || argument.size() == 1) {
            m_positional.append(argument);
            continue;
        }
        QString problem = readOption(argument, arguments);
        if (!problem.isEmpty())
            return problem;
    }
    return QString();
}

/// "--name", "--name=VALUE", "--name VALUE", "-n", "-nVALUE", "-n=VALUE" or "-n VALUE". A value
/// that begins with "--" stands behind "=", since mostly one was forgotten.
QString Arguments::readOption(const QString& argument, QStringList& behind)
{
    const bool isLong = argument.startsWith(QLatin1String("--"));
    const QString written = isLong ? argument.section(QLatin1Char('='), 0, 0) : argument.left(2);
    QString value = argument.mid(written.size());
    const Option* option = find(written);
    if (!option)
        return unknown(argument);
    if (option->valueName.isEmpty()) {
        m_given.insert(option->name, {});
        return value.isEmpty() ? QString() : written + QStringLiteral(" takes no value");
    }
    if (value.startsWith(QLatin1Char('=')))
        value.remove(0, 1);
    else if (value.isEmpty() && !behind.isEmpty()
             && !behind.first().startsWith(QLatin1String("--")))
        value = behind.takeFirst();
    else if (value.isEmpty())
        return QStringLiteral("%1 needs a value: %2").arg(written, option->valueName);
    m_given[option->name].append(value);
    return QString();
}

QString Arguments::unknown(const QString& argument) const
{
    const QString written = argument.section(QLatin1Char('='), 0, 0);
    QStringList options;
    for (const Option& option : m_options)
        options.append(option.written());
    return QStringLiteral("there is no option \"") + written + QLatin1Char('"')
           + didYouMean(similarTo(written, options));
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

QString Arguments::optionsText() const
{
    constexpr int kGap = 2;
    QVector<QPair<QString, QString>> shown;
    int width = 0;
    for (const Option& option : m_options) {
        QString written = option.written();
        if (option.name == QLatin1String("help"))
            written.prepend(QStringLiteral("-h, "));
        if (!option.valueName.isEmpty())
            written += QLatin1Char(' ') + option.valueName;
        if (option.description.isEmpty())
            continue;
        width = std::max(width, console::displayWidth(written));
        shown.append({written, option.description});
    }
    const int column = kGap + width + kGap;
    const QString indent = QLatin1Char('\n') + QString(column, QLatin1Char(' '));
    QString text;
    for (const auto& [written, description] : shown) {
        const QString start = QString(kGap, QLatin1Char(' ')) + written;
        const QStringList lines = console::wrapped(description, console::lineWidth() - column);
        text += QLatin1Char('\n') + console::padded(start, column) + lines.join(indent);
    }
    return text;
}
