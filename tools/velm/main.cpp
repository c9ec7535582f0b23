#include "Commands.h"

#include "cli/Console.h"
#include "cli/Guard.h"
#include "cli/Suggestions.h"
#include "cli/TerminalText.h"

#include "CVelmSystemGlobal.h"

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

constexpr std::array<Command, 8> kCommands{{
    {"check", "check a configuration set across all of its tables", &commands::check},
    {"crypt", "encrypt or decrypt a file", &commands::crypt},
    {"doctor", "tell what the library finds on this machine, and what is missing",
     &commands::doctor},
    {"import-text", "bring the text files of the older set into a database", &commands::importText},
    {"init", "write the sample configuration set into a folder", &commands::init},
    {"list", "list feature codes", &commands::list},
    {"lookup", "show what a feature code is and how it is drawn", &commands::lookup},
    {"zip", "make, list, extract or test a zip archive", &commands::zip},
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
        text += QStringLiteral("  ") + console::padded(QString::fromLatin1(command.name), 13)
                + QString::fromLatin1(command.summary) + QLatin1Char('\n');
    const QString notes = QStringLiteral(
        "\"velm COMMAND --help\" tells more. The configuration is --root DIR, else VELM_ROOT; "
        "crypt, import-text, init and zip read none and take no --root.\n"
        "Files and pipes get UTF-8, text and JSON alike; a terminal gets what it shows.\n"
        "Exit codes: 0 fine, 1 nothing found or something missing, 2 wrong usage, 3 a file cannot "
        "be read or written.");
    return text + QLatin1Char('\n')
           + console::wrapped(notes, console::lineWidth()).join(QLatin1Char('\n'));
}

/// Without a locale ("C") Qt takes the local code page for ASCII, and no Chinese name could be
/// given or shown.
void useUtf8WithoutLocale()
{
    const QTextCodec* local = QTextCodec::codecForLocale();
    if (!local->canEncode(QStringLiteral("测")))
        QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
}

int version()
{
    console::print(QStringLiteral("velm ") + CVelmSystemGlobal::libraryVersion());
    return ExitFine;
}

int help()
{
    console::print(helpText());
    return ExitFine;
}

int usageError(const QString& problem)
{
    console::tell(problem);
    console::tell(QStringLiteral("see \"velm --help\""));
    return ExitUsage;
}

/// Runs the command of that name with the arguments around the name.
int runCommand(const QString& name, const QStringList& arguments)
{
    QStringList names;
    for (const Command& command : kCommands) {
        if (name == QLatin1String(command.name))
            return command.run(arguments);
        names.append(QString::fromLatin1(command.name));
    }
    return usageError(QStringLiteral("there is no command \"") + name + QLatin1Char('"')
                      + didYouMean(similarTo(name, names)));
}

/// Options that every command has may stand before its name too.
int run(QStringList arguments)
{
    for (int i = 0; i < arguments.size(); ++i) {
        const QString argument = arguments.at(i);
        if (argument == QLatin1String("--help") || argument == QLatin1String("-h"))
            return help();
        if (argument == QLatin1String("--version"))
            return version();
        if (!argument.startsWith(QLatin1Char('-'))) {
            arguments.removeAt(i);
            return runCommand(argument, arguments);
        }
        if (argument == QLatin1String("--root") && ++i == arguments.size())
            return usageError(QStringLiteral("--root needs a folder behind it"));
        if (argument == QLatin1String("--root"))
            continue;
        if (argument != QLatin1String("--json") && !argument.startsWith(QLatin1String("--root=")))
            return usageError(QStringLiteral("there is no option \"") + argument
                              + QStringLiteral("\" before a command"));
    }
    return usageError(QStringLiteral("which command? None was given"));
}

}  // namespace

/// Tells the library, by being there, to load nothing from the folders of the configuration.
extern "C" Q_DECL_EXPORT void velmKeepsToLibraryFolder() {}

int main(int argc, char** argv)
{
    return guarded([&argc, argv] {
        const QCoreApplication application(argc, argv);
        useUtf8WithoutLocale();
        const int exitCode = guarded([] { return run(QCoreApplication::arguments().mid(1)); });
        if (console::printedAll())
            return exitCode;
        console::tell(QStringLiteral("the answer could not be written to standard output"));
        return static_cast<int>(ExitCannotOpen);
    });
}
