#include "Commands.h"

#include "cli/Arguments.h"
#include "cli/Console.h"
#include "lookup/Lookup.h"
#include "set/Configuration.h"

namespace {

std::optional<Key> keyOf(const QString& name)
{
    if (name.isEmpty() || name == QLatin1String("code"))
        return Key::Code;
    if (name == QLatin1String("usercode"))
        return Key::UserCode;
    if (name == QLatin1String("table"))
        return Key::Table;
    return std::nullopt;
}

}  // namespace

int commands::lookup(const QStringList& arguments)
{
    Arguments args(QStringLiteral("lookup"), QStringLiteral("[options] CODE..."),
                   QStringLiteral("Shows what each feature code is and how it is drawn.\n"
                                  "Exit code 1 if any of them does not exist."),
                   {QStringLiteral("velm lookup 310301"),
                    QStringLiteral("velm lookup --by usercode KZD --json"),
                    QStringLiteral("velm lookup --by table JMD_PG")});
    args.addOption(QStringLiteral("by"),
                   QStringLiteral("What CODE is: \"code\", \"usercode\" or \"table\"."),
                   QStringLiteral("KEY"));
    if (const auto ended = args.parse(arguments))
        return *ended;
    const std::optional<Key> key = keyOf(args.value(QStringLiteral("by")));
    if (!key)
        return args.usageError(QStringLiteral("--by takes code, usercode or table, not \"%1\"")
                                   .arg(args.value(QStringLiteral("by"))));
    if (args.positional().isEmpty())
        return args.usageError(QStringLiteral("which code? None was given"));

    Configuration configuration;
    const int opened = configuration.open(args);
    if (opened != ExitFine)
        return opened;
    Lookup lookup(configuration, *key, args.json());
    const int answered = lookup.answer(args.positional());
    if (answered == ExitCannotOpen || configuration.close() != ExitFine)
        return ExitCannotOpen;
    lookup.end();
    return answered;
}
