#include "ConfigFixture.h"

#include "CVelmDatabase.h"

#include <QTemporaryDir>

#include <cstdlib>

namespace {

void require(Velm::ErrorStatus status)
{
    if (status != Velm::VelmOk)
        std::abort();
}

VelmFieldItem column(const char* name, Velm::FieldType type)
{
    VelmFieldItem item;
    item.m_fieldName = QString::fromLatin1(name);
    item.m_fieldType = type;
    return item;
}

void fill(CVelmDatabase& database)
{
    using namespace Velm;
    require(database.createTable(QStringLiteral("indexini"),
                                 {column("CODE", FieldText), column("NAME", FieldText),
                                  column("LTYPE", FieldText), column("WIDTH", FieldReal),
                                  column("TABLE", FieldText), column("USECODE", FieldText)}));
    require(database.createTable(QStringLiteral("Workdef"),
                                 {column("CODE", FieldText), column("LAYER", FieldText),
                                  column("ENTTYPE", FieldInt), column("PAR1", FieldText),
                                  column("PAR2", FieldText), column("TEXT", FieldText),
                                  column("COLOR", FieldInt)}));
    require(database.startTransaction(true));
    for (int i = 0; i < kCodeCount; ++i) {
        const QString number = QString::number(i);
        require(database.writeRecordBlob(
            QStringLiteral("indexini"),
            {{QStringLiteral("CODE"), codeOf(i)},
             {QStringLiteral("NAME"), QStringLiteral("要素名称") + number},
             {QStringLiteral("LTYPE"), QStringLiteral("continuous")},
             {QStringLiteral("WIDTH"), i % 10 * 0.05},
             {QStringLiteral("TABLE"), QStringLiteral("TABLE_") + QString::number(i % 50)},
             {QStringLiteral("USECODE"), QStringLiteral("U") + number}}));
        require(database.writeRecordBlob(
            QStringLiteral("Workdef"),
            {{QStringLiteral("CODE"), codeOf(i)},
             {QStringLiteral("LAYER"), QStringLiteral("LAYER_") + QString::number(i % 60)},
             {QStringLiteral("ENTTYPE"), 1},
             {QStringLiteral("PAR1"), QStringLiteral("block") + number},
             {QStringLiteral("PAR2"), QStringLiteral("1.0")},
             {QStringLiteral("TEXT"), QStringLiteral("要素名称") + number},
             {QStringLiteral("COLOR"), i % 256}}));
    }
    require(database.endTransaction());
}

}  // namespace

QString codeOf(int number)
{
    return QString::number(100000 + number);
}

const QString& configFile()
{
    static const QTemporaryDir folder;
    static const QString path = [] {
        const QString file = folder.filePath(QStringLiteral("peltaconfig.db"));
        CVelmDatabase database;
        require(database.initDatabase(file, QString()));
        fill(database);
        return file;
    }();
    return path;
}
