#include "Commands.h"

#include "cli/Arguments.h"
#include "cli/Console.h"
#include "cli/JsonArray.h"
#include "cli/TextTable.h"
#include "lookup/TypeNames.h"
#include "set/Configuration.h"

#include "CVelmIndex.h"
#include "CVelmString.h"
#include "CVelmWork.h"

namespace {

/// The codes that the options ask for.
struct Filter
{
    QString table;            // empty for any
    std::optional<int> type;  // none for any
    QString match;            // empty for any
};

bool matchesText(const VelmIndexItem& item, const QString& text)
{
    static CVelmString pinyin;
    constexpr int kMostSpelled = 1000;  // characters of a name
    return item.code.contains(text, Qt::CaseInsensitive)
           || item.name.contains(text, Qt::CaseInsensitive)
           || pinyin.getChineseSpell(item.name.left(kMostSpelled))
                  .contains(text, Qt::CaseInsensitive);
}

bool passes(const VelmIndexItem& item, Velm::EntityType type, const Filter& filter)
{
    return (filter.table.isEmpty() || item.table.compare(filter.table, Qt::CaseInsensitive) == 0)
           && (!filter.type || *filter.type == type)
           && (filter.match.isEmpty() || matchesText(item, filter.match));
}

struct Row
{
    VelmIndexItem item;
    Velm::EntityType type;
    QString layer;
};

QVector<Row> rowsOf(const Configuration& configuration, const Filter& filter)
{
    QVector<Row> rows;
    const QMap<QString, VelmIndexItem> items = configuration.index().getIndexMap();
    for (const VelmIndexItem& item : items) {
        Row row{item, Velm::EntityUnset, QString()};
        configuration.index().getEntType(item.code, row.type);
        configuration.work().get_layer(item.code, row.layer, false);
        if (passes(item, row.type, filter))
            rows.append(row);
    }
    return rows;
}

void printTable(const QVector<Row>& rows)
{
    TextTable table({QStringLiteral("CODE"), QStringLiteral("NAME"), QStringLiteral("TYPE"),
                     QStringLiteral("TABLE"), QStringLiteral("LAYER"),
                     QStringLiteral("USER CODE")});
    for (const Row& row : rows)
        table.addRow({row.item.code, row.item.name, entityTypeName(row.type), row.item.table,
                      row.layer, row.item.usecode});
    table.print();
}

void printJson(const QVector<Row>& rows)
{
    JsonArray answer;
    for (const Row& row : rows)
        answer.add(QJsonObject{{QStringLiteral("code"), row.item.code},
                               {QStringLiteral("name"), row.item.name},
                               {QStringLiteral("entityType"), row.type},
                               {QStringLiteral("gisTable"), row.item.table},
                               {QStringLiteral("layer"), row.layer},
                               {QStringLiteral("userCode"), row.item.usecode}});
    answer.end();
}

/// @return what is wrong with the options; empty if nothing is
QString readFilter(const Arguments& args, Filter& filter)
{
    if (!args.positional().isEmpty())
        return QStringLiteral("unexpected argument \"%1\"; use --match TEXT to search")
            .arg(args.positional().first());
    filter.table = args.value(QStringLiteral("table"));
    filter.match = args.value(QStringLiteral("match"));
    const QString type = args.value(QStringLiteral("type"));
    if (!args.isSet(QStringLiteral("type")))
        return QString();
    bool isNumber = false;
    filter.type = type.toInt(&isNumber);
    return isNumber ? QString() : QStringLiteral("--type takes a number, not \"%1\"").arg(type);
}

}  // namespace

int commands::list(const QStringList& arguments)
{
    Arguments args(QStringLiteral("list"), QStringLiteral("[options]"),
                   QStringLiteral("Lists the feature codes, all or those that pass every option.\n"
                                  "Exit code 1 if there is none."),
                   {QStringLiteral("velm list --match 三角点"),
                    QStringLiteral("velm list --match SJD"),
                    QStringLiteral("velm list --table JMD_PG --type 1 --json")});
    args.addOption(QStringLiteral("table"), QStringLiteral("Codes of this GIS table."),
                   QStringLiteral("TABLE"));
    args.addOption(QStringLiteral("type"),
                   QStringLiteral("Codes of this entity type: 1 general, 3 text, 5 special line."),
                   QStringLiteral("N"));
    args.addOption(
        QStringLiteral("match"),
        QStringLiteral("Codes whose code, name, or name's pinyin initials contain TEXT."),
        QStringLiteral("TEXT"));
    if (const auto ended = args.parse(arguments))
        return *ended;
    Filter filter;
    const QString problem = readFilter(args, filter);
    if (!problem.isEmpty())
        return args.usageError(problem);

    Configuration configuration;
    const int opened = configuration.open(args);
    if (opened != ExitFine)
        return opened;
    const QVector<Row> rows = rowsOf(configuration, filter);
    if (configuration.close() != ExitFine)
        return ExitCannotOpen;
    if (args.json())
        printJson(rows);
    else if (rows.isEmpty())
        console::tell(QStringLiteral("no feature code matches"));
    else
        printTable(rows);
    return rows.isEmpty() ? ExitNothingFound : ExitFine;
}
