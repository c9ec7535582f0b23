#include "Commands.h"

#include "Console.h"
#include "Suggestions.h"

#include <QCoreApplication>
#include <QTextCodec>

#include <array>

namespace {

struct Command
{
    const char* name;
    const char* summary;
    int (*run)(const QStringList& arguments);
};

constexpr std::array<Command, 3> kCommands{{
    {"init", "write the sample configuration set into a folder", &commands::init},
    {"list", "list feature codes", &commands::list},
    {"lookup", "show what a feature code is and how it is drawn", &commands::lookup},
}};

QString helpText()
{
    QString text =
        QStringLiteral("Examples:\n"
                       "  velm init demo\n"
                       "  velm --root demo lookup 310301\n"
                       "  velm --root demo list --match 三角点\n"
                       "\n"
                       "Usage: velm [--root DIR] [--json] COMMAND ...\n"
                       "\n"
                       "Asks and prepares the symbol configuration of a mapping standard.\n"
                       "\n"
                       "Commands:\n");
    for (const Command& command : kCommands)
        text += QStringLiteral("  ") + console::padded(QString::fromLatin1(command.name), 10)
                + QString::fromLatin1(command.summary) + QLatin1Char('\n');
    text += QStringLiteral(
        "\n"
        "\"velm COMMAND --help\" tells more. The configuration is --root DIR, else VELM_ROOT.\n"
        "Exit codes: 0 fine, 1 nothing found, 2 wrong usage, 3 a file cannot be opened.");
    return text;
}

/// Without a locale ("C") Qt takes the local code page for ASCII, and no Chinese name could be
/// given or shown.
void useUtf8WithoutLocale()
{
    const QTextCodec* local = QTextCodec::codecForLocale();
    if (!local->canEncode(QStringLiteral("测")))
        QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
}

int unknownCommand(const QString& name)
{
    QStringList names;
    for (const Command& command : kCommands)
        names.append(QString::fromLatin1(command.name));
    console::tell(QStringLiteral("there is no command \"") + name + QLatin1Char('"')
                  + didYouMean(similarTo(name, names)));
    console::tell(QStringLiteral("see \"velm --help\""));
    return ExitUsage;
}

/// The position of the command's name behind the options that may stand before it.
int commandPosition(const QStringList& arguments)
{
    int position = 0;
    while (position < arguments.size() && arguments.at(position).startsWith(QLatin1String("--")))
        position += arguments.at(position) == QLatin1String("--root") ? 2 : 1;
    return position;
}

int run(QStringList arguments)
{
    const QString first = arguments.value(0);
    if (first == QLatin1String("--help") || first == QLatin1String("-h")) {
        console::print(helpText());
        return ExitFine;
    }
    if (first == QLatin1String("--version")) {
        console::print(QStringLiteral("velm " VELM_VERSION));
        return ExitFine;
    }
    const int position = commandPosition(arguments);
    if (position >= arguments.size()) {
        console::tell(QStringLiteral("which command? None was given"));
        console::tell(QStringLiteral("see \"velm --help\""));
        return ExitUsage;
    }
    const QString name = arguments.takeAt(position);
    for (const Command& command : kCommands) {
        if (name == QLatin1String(command.name))
            return command.run(arguments);
    }
    return unknownCommand(name);
}

}  // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    useUtf8WithoutLocale();
    return run(QCoreApplication::arguments().mid(1));
}
