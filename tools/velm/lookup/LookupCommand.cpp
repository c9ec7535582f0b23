#include "Commands.h"

#include "cli/Arguments.h"
#include "cli/Console.h"
#include "cli/Suggestions.h"
#include "lookup/FeatureCard.h"
#include "set/Configuration.h"

#include "CVelmIndex.h"
#include "CVelmWork.h"

namespace {

/// What the arguments of the command are.
enum class Key
{
    Code,
    UserCode,
    Table
};

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

bool isDefined(const QString& code, const Configuration& configuration)
{
    QString name;
    return configuration.index().getName(code, name) == Velm::VelmOk
           || configuration.work().isValidCode(code);
}

/// The feature codes that one argument stands for; none if it stands for nothing.
QStringList codesOf(const QString& argument, Key key, const Configuration& configuration)
{
    QStringList codes;
    if (key == Key::Table) {
        configuration.index().getCodes(argument, codes);
        return codes;
    }
    QString code = argument;
    if (key == Key::UserCode
        && configuration.index().getCodeByUsercode(argument, code) != Velm::VelmOk)
        return codes;
    if (isDefined(code, configuration))
        codes.append(code);
    return codes;
}

/// What an argument that stands for nothing may have been meant as.
QStringList suggestionsFor(const QString& argument, Key key, const CVelmIndex& index)
{
    QStringList candidates;
    const QMap<QString, VelmIndexItem> items = index.getIndexMap();
    for (const VelmIndexItem& item : items) {
        const QString& candidate = key == Key::Code       ? item.code
                                   : key == Key::UserCode ? item.usecode
                                                          : item.table;
        candidates.append(candidate);
    }
    candidates.removeDuplicates();
    return similarTo(argument, candidates);
}

/// Another option under which the argument would have been found; empty if there is none.
QString otherKeyHint(const QString& argument, Key key, const Configuration& configuration)
{
    if (key != Key::UserCode && !codesOf(argument, Key::UserCode, configuration).isEmpty())
        return QStringLiteral("; it is a user code: use --by usercode");
    if (key != Key::Table && !codesOf(argument, Key::Table, configuration).isEmpty())
        return QStringLiteral("; it is a GIS table: use --by table");
    if (key != Key::Code && !codesOf(argument, Key::Code, configuration).isEmpty())
        return QStringLiteral("; it is a feature code: leave --by out");
    return QString();
}

QString nameOf(Key key)
{
    switch (key) {
    case Key::UserCode:
        return QStringLiteral("user code");
    case Key::Table:
        return QStringLiteral("GIS table with feature codes");
    default:
        return QStringLiteral("feature code");
    }
}

/// Collects or prints the cards of all arguments.
class Lookup
{
public:
    Lookup(const Configuration& configuration, Key key, bool json)
        : m_configuration(configuration), m_key(key), m_json(json)
    {}

    void answer(const QString& argument)
    {
        const QStringList codes = codesOf(argument, m_key, m_configuration);
        if (codes.isEmpty())
            answerNothing(argument);
        for (const QString& code : codes)
            answerCard(FeatureCard(code, m_configuration));
    }

    int finish() const
    {
        if (m_json)
            console::print(m_answers);
        return m_missing ? ExitNothingFound : ExitFine;
    }

private:
    void answerCard(const FeatureCard& card)
    {
        if (m_json) {
            m_answers.append(card.toJson());
            return;
        }
        if (m_printed)
            console::print(QString());
        card.print();
        m_printed = true;
    }

    void answerNothing(const QString& argument)
    {
        m_missing = true;
        const QStringList suggestions = suggestionsFor(argument, m_key, m_configuration.index());
        if (m_json) {
            QJsonObject answer = FeatureCard::unknown(argument).toJson();
            answer.insert(QStringLiteral("suggestions"), QJsonArray::fromStringList(suggestions));
            m_answers.append(answer);
            return;
        }
        const QString hint = otherKeyHint(argument, m_key, m_configuration);
        console::tell(QStringLiteral("there is no ") + nameOf(m_key) + QStringLiteral(" \"")
                      + argument + QLatin1Char('"')
                      + (hint.isEmpty() ? didYouMean(suggestions) : hint));
    }

    const Configuration& m_configuration;
    Key m_key;
    bool m_json;
    bool m_printed = false;
    bool m_missing = false;
    QJsonArray m_answers;
};

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
    const int opened = Configuration::open(args, configuration);
    if (opened != ExitFine)
        return opened;
    Lookup lookup(configuration, *key, args.json());
    const QStringList names = args.positional();
    for (const QString& name : names)
        lookup.answer(name);
    return lookup.finish();
}
