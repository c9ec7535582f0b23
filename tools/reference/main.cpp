// velm_reference [--check] FILE...
//
// Fills the generated places of pages in Markdown: what stands between "<!-- columns: TABLE -->" or
// "<!-- rules -->" and the next "<!-- end -->". With --check the files stay as they are, and exit
// code 1 tells that one is out of date.

#include "check/RuleTable.h"
#include "set/Schema.h"

#include <QCoreApplication>
#include <QFile>
#include <QRegularExpression>
#include <QSaveFile>

#include <cstdio>

namespace {

QString rowOf(const QStringList& cells)
{
    return QStringLiteral("| ") + cells.join(QStringLiteral(" | ")) + QStringLiteral(" |\n");
}

QString quoted(const QString& name)
{
    return QLatin1Char('`') + name + QLatin1Char('`');
}

QString columnsOf(const TableSchema& table)
{
    QString text = QStringLiteral("| Column | Type | Meaning |\n|---|---|---|\n");
    for (const ColumnSchema& column : table.columns)
        text += rowOf({quoted(column.name), column.sqlType(), column.meaning});
    return text;
}

QString rulesTable()
{
    QString text = QStringLiteral("| Id | Severity | Looks for |\n|---|---|---|\n");
    for (const Rule& rule : rules::kAll)
        text += rowOf({quoted(QLatin1String(rule.id)), rules::nameOf(rule.severity),
                       QString::fromUtf8(rule.explanation)});
    return text;
}

QString contentOf(const QRegularExpressionMatch& place)
{
    const QString table = place.captured(QStringLiteral("table"));
    return table.isEmpty() ? rulesTable() : columnsOf(schema::table(table));
}

QString filled(const QString& page)
{
    static const QRegularExpression place(
        QStringLiteral("(?<begin><!-- (?:rules|columns: (?<table>\\w+)) -->\n)"
                       ".*?(?<end><!-- end -->)"),
        QRegularExpression::DotMatchesEverythingOption);
    QString result;
    int copied = 0;
    auto places = place.globalMatch(page);
    while (places.hasNext()) {
        const QRegularExpressionMatch match = places.next();
        result += page.midRef(copied, match.capturedEnd(QStringLiteral("begin")) - copied);
        result += contentOf(match);
        copied = match.capturedStart(QStringLiteral("end"));
    }
    return result + page.mid(copied);
}

bool tell(const QString& path, const char* problem)
{
    std::fprintf(stderr, "velm_reference: %s: %s\n", qUtf8Printable(path), problem);
    return false;
}

bool bringUpToDate(const QString& path, bool checkOnly)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return tell(path, "cannot be read");
    const QByteArray page = file.readAll();
    const QByteArray wanted = filled(QString::fromUtf8(page)).toUtf8();
    if (page == wanted)
        return true;
    if (checkOnly)
        return tell(path, "is out of date; scripts/docs brings it up to date");
    QSaveFile target(path);
    return (target.open(QIODevice::WriteOnly) && target.write(wanted) == wanted.size()
            && target.commit())
           || tell(path, "cannot be written");
}

}  // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    QStringList files = QCoreApplication::arguments().mid(1);
    const bool checkOnly = files.removeAll(QStringLiteral("--check")) > 0;
    bool fine = true;
    for (const QString& file : qAsConst(files))
        fine = bringUpToDate(file, checkOnly) && fine;
    return fine ? 0 : 1;
}
