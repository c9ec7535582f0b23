#include "lookup/Lookup.h"

#include "cli/Console.h"
#include "cli/Suggestions.h"
#include "set/Configuration.h"

#include "CVelmConfigManager.h"
#include "CVelmDatabase.h"
#include "CVelmIndex.h"
#include "CVelmWork.h"

#include <QJsonArray>

namespace {

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

/// " in the index; A and B have rows of it"; empty without tables.
QString elsewhere(const QStringList& tables)
{
    if (tables.isEmpty())
        return QString();
    return QStringLiteral(" in the index; ") + tables.join(QStringLiteral(" and "))
           + (tables.size() == 1 ? QStringLiteral(" has a row of it")
                                 : QStringLiteral(" have rows of it"));
}

}  // namespace

Lookup::Lookup(Configuration& configuration, Key key, bool json)
    : m_configuration(configuration), m_index(configuration.index()),
      m_cards(configuration.manager()), m_key(key), m_json(json)
{}

int Lookup::answer(const QStringList& arguments)
{
    const QVector<Step> steps = stepsOf(arguments);
    QStringList codes;
    for (const Step& step : steps) {
        if (step.isCode)
            codes.append(step.code);
    }
    if (!findElsewhere(steps))
        return m_exitCode;
    int next = 0;
    const auto visit = [&](const QString& code, Velm::ErrorStatus status, const VelmAnnItem& item) {
        answerNothings(steps, next);
        ++next;
        return answerCode(code, status, item);
    };
    if (!codes.isEmpty())
        m_configuration.manager().GetVelmAnnotate()->getAnnotateItems(codes, visit);
    if (m_exitCode != ExitCannotOpen)
        answerNothings(steps, next);
    return m_exitCode;
}

void Lookup::end()
{
    if (m_json)
        m_array.end();
}

QVector<Lookup::Step> Lookup::stepsOf(const QStringList& arguments)
{
    QVector<Step> steps;
    for (const QString& argument : arguments) {
        const QStringList codes = codesOf(argument, m_key);
        if (codes.isEmpty())
            steps.append({argument, QString(), false});
        for (const QString& code : codes)
            steps.append({argument, code, true});
    }
    return steps;
}

/// The feature codes that one argument stands for; none if it stands for nothing.
QStringList Lookup::codesOf(const QString& argument, Key key)
{
    if (key == Key::Table)
        return m_index.codesOfTable(argument);
    const QString code = key == Key::UserCode ? m_index.codeOfUserCode(argument) : argument;
    return isDefined(code) ? QStringList{code} : QStringList();
}

bool Lookup::isDefined(const QString& code) const
{
    QString name;
    return m_configuration.index().getName(code, name) == Velm::VelmOk
           || m_configuration.work().isValidCode(code);
}

/// Another option under which the argument would have been found; empty if there is none.
QString Lookup::otherKeyHint(const QString& argument)
{
    if (m_key != Key::UserCode && !codesOf(argument, Key::UserCode).isEmpty())
        return QStringLiteral("; it is a user code: use --by usercode");
    if (m_key != Key::Table && !codesOf(argument, Key::Table).isEmpty())
        return QStringLiteral("; it is a GIS table: use --by table");
    if (m_key != Key::Code && !codesOf(argument, Key::Code).isEmpty())
        return QStringLiteral("; it is a feature code: leave --by out");
    return QString();
}

/// Answers the arguments up to the next code.
void Lookup::answerNothings(const QVector<Step>& steps, int& next)
{
    for (; next < steps.size() && !steps.at(next).isCode; ++next)
        answerNothing(steps.at(next).argument);
}

void Lookup::answerNothing(const QString& argument)
{
    const QStringList tables = m_otherTables.value(argument);
    m_exitCode = ExitNothingFound;
    const QStringList suggestions = m_index.suggestionsFor(argument, m_key);
    if (m_json) {
        QJsonObject answer = FeatureCard::unknown(argument);
        answer.insert(QStringLiteral("suggestions"), QJsonArray::fromStringList(suggestions));
        answer.insert(QStringLiteral("otherTables"), QJsonArray::fromStringList(tables));
        m_array.add(answer);
        return;
    }
    QString hint = elsewhere(tables);
    if (hint.isEmpty())
        hint = otherKeyHint(argument);
    console::tell(QStringLiteral("there is no ") + nameOf(m_key) + QStringLiteral(" \"") + argument
                  + QLatin1Char('"') + (hint.isEmpty() ? didYouMean(suggestions) : hint));
}

/// Looks for the tables that know the arguments that stand for nothing. False if it cannot.
bool Lookup::findElsewhere(const QVector<Step>& steps)
{
    QSet<QString> unknown;
    for (const Step& step : steps) {
        if (!step.isCode)
            unknown.insert(step.argument);
    }
    if (m_key == Key::Code && !unknown.isEmpty())
        m_exitCode = m_configuration.tablesWith(unknown, m_otherTables);
    return m_exitCode != ExitCannotOpen;
}

/// Whether the data of the code's annotation are no JSON. False if it cannot be known.
bool Lookup::findDataProblem(const QString& code, bool& isBroken)
{
    if (!m_codesWithBrokenData) {
        m_codesWithBrokenData.emplace();
        if (m_configuration.codesWithBrokenData(*m_codesWithBrokenData) != ExitFine) {
            m_exitCode = ExitCannotOpen;
            return false;
        }
    }
    isBroken = m_codesWithBrokenData->contains(code);
    return true;
}

bool Lookup::answerCode(const QString& code, Velm::ErrorStatus status, const VelmAnnItem& item)
{
    if (status == Velm::VelmSqlExecFailed || status == Velm::VelmDatabaseOpenFailed) {
        m_exitCode =
            cannotReadTable(QStringLiteral("VelmAnnotate"), CVelmDatabase().getLastErrorText());
        return false;
    }
    bool isBroken = false;
    const bool hasRow = status == Velm::VelmOk || status == Velm::VelmInvalidValue;
    if (hasRow && item.extdata.isEmpty() && !findDataProblem(code, isBroken))
        return false;
    const FeatureCard card = m_cards.card(code, {status, item, isBroken});
    if (m_json)
        m_array.add(card.jsonText());
    else
        print(card);
    return true;
}

void Lookup::print(const FeatureCard& card)
{
    if (m_printed)
        console::print(QString());
    card.print();
    m_printed = true;
}
