#pragma once

#include "cli/JsonArray.h"
#include "lookup/CodeIndex.h"
#include "lookup/FeatureCards.h"

class Configuration;

/// Answers a look-up: the cards of all arguments in their order, each printed as soon as it is
/// made.
class Lookup
{
public:
    /// In a configuration that is open and lives longer.
    Lookup(Configuration& configuration, Key key, bool json);

    /// @return ExitFine; ExitNothingFound if an argument stands for nothing; ExitCannotOpen if
    /// something cannot be read, and then the answer breaks off
    int answer(const QStringList& arguments);
    /// Prints the end of the answer.
    void end();

private:
    /// An argument, and a code that it stands for or none.
    struct Step
    {
        QString argument;
        QString code;
        bool isCode;
    };

    QVector<Step> stepsOf(const QStringList& arguments);
    QStringList codesOf(const QString& argument, Key key);
    bool isDefined(const QString& code) const;
    QString otherKeyHint(const QString& argument);

    void answerNothings(const QVector<Step>& steps, int& next);
    void answerNothing(const QString& argument);
    bool answerCode(const QString& code, Velm::ErrorStatus status, const VelmAnnItem& item);
    void print(const FeatureCard& card);

    bool findElsewhere(const QVector<Step>& steps);
    bool findDataProblem(const QString& code, bool& isBroken);

    Configuration& m_configuration;
    CodeIndex m_index;
    FeatureCards m_cards;
    Key m_key;
    bool m_json;
    JsonArray m_array;
    QHash<QString, QStringList> m_otherTables;           // of arguments that stand for nothing
    std::optional<QSet<QString>> m_codesWithBrokenData;  // none before the first question
    bool m_printed = false;
    int m_exitCode = 0;
};
