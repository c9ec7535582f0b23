#include "check/CheckedSet.h"
#include "check/Rules.h"
#include "check/RuleTable.h"

#include "set/TextImport.h"

#include "CVelmFindFile.h"
#include "CVelmSystemGlobal.h"

#include <QDir>
#include <QFileInfo>

namespace {

constexpr const Rule& kTextFileLines = rules::named("text-file-lines");
constexpr const Rule& kTextFileField = rules::named("text-file-field");

/// The place of a line; of the file as a whole for line 0.
Place placeOf(const QFileInfo& file, int line)
{
    const QDir config = QFileInfo(CVelmSystemGlobal::Instance()->getSystemConfigDb()).dir();
    Place place;
    place.database = config.relativeFilePath(file.filePath());
    place.row = line;
    return place;
}

/// Reports a file whose reader takes one line of it, and gets another number.
void checkLineCount(const QFileInfo& file, int lines, Problems& problems)
{
    if (lines > 1)
        problems.add(kTextFileLines, placeOf(file, 0),
                     QStringLiteral("has more than one line, so none is read"));
    else if (lines == 0)
        problems.add(kTextFileLines, placeOf(file, 0),
                     QStringLiteral("is empty, and read as a record without a code"));
}

}  // namespace

void rules::checkTextFiles(const CheckedSet& set, Problems& problems)
{
    struct TextFile
    {
        const char* name;
        const char* table;  // which it stands in for
        bool hasOneLine;    // or its reader takes none
    };
    for (const TextFile& text :
         {TextFile{"index.ini", "indexini", true}, TextFile{"work.def", "Workdef", true},
          TextFile{"attribute.def", "Attributetable", false}}) {
        const QString name = QLatin1String(text.name);
        const QFileInfo file(CVelmFindFile::Instance()->findFile(name, true));
        TextImport import;
        if (set.table(text.table).size() > 0 || !file.isFile()
            || !import.readFile(file.path(), name).isEmpty())
            continue;
        if (text.hasOneLine)
            checkLineCount(file, import.lineCount(), problems);
        for (const UnusedLine& line : import.unused())
            problems.add(kTextFileField, placeOf(file, line.line), line.reason);
    }
}
