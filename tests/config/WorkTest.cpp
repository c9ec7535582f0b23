#include "config/tables/CVelmWorkDB.h"
#include "config/tables/CVelmWorkDef.h"

#include "CVelmDatabase.h"
#include "support/TemporaryRoot.h"

#include <QFile>

namespace {

class WorkTest : public TemporaryRoot
{
protected:
    Velm::ErrorStatus load(const char* columns, const QStringList& rows)
    {
        runSql({u"drop table if exists Workdef"_s,
                u"create table Workdef ("_s + QString::fromUtf8(columns) + QLatin1Char(')')});
        for (const QString& row : rows)
            runSql({u"insert into Workdef values ("_s + row + QLatin1Char(')')});
        CVelmDatabase database;
        EXPECT_EQ(database.initDatabase(path(u"config/peltaconfig.db"_s), QString()), Velm::VelmOk);
        return m_work.initVelmWork(database);
    }

    CVelmWorkDB m_work;
    const QString m_code = u"A"_s;
};

constexpr char kAllColumns[] =
    "code text, par1 text, par2 text, text text, color int, layer text, enttype int";

}  // namespace

TEST_F(WorkTest, AnswersEveryFieldOfTheLastRow)
{
    EXPECT_EQ(load(kAllColumns, {}), Velm::VelmNoData);
    EXPECT_EQ(
        load(kAllColumns, {u"'A','old','','',1,'',1"_s, u"'A','块','0.5','注','12','KZD','5'"_s}),
        Velm::VelmOk);
    QString text, par1, par2, layer;
    int color = 0, enttype = 0;
    EXPECT_EQ(m_work.get_text(m_code, text), 0);
    EXPECT_EQ(m_work.get_parOne(m_code, par1), 0);
    EXPECT_EQ(m_work.get_parTwo(m_code, par2), 0);
    EXPECT_EQ(m_work.get_layer(m_code, layer, true), 0);
    EXPECT_EQ(m_work.get_color(m_code, color), 0);
    EXPECT_EQ(m_work.get_enttype(m_code, enttype), 0);
    const QStringList expected{u"注"_s, u"块"_s, u"0.5"_s, u"KZD"_s};
    EXPECT_EQ(QStringList({text, par1, par2, layer}), expected);
    EXPECT_EQ(color, 12);
    EXPECT_EQ(enttype, 5);

    QString otherLayer;
    EXPECT_EQ(m_work.get_layer(m_code, otherLayer, false), 0);
    EXPECT_EQ(otherLayer, layer);
    QString t, p1, p2, l;
    int c = 0, e = 0;
    EXPECT_EQ(m_work.get_par(m_code, l, e, p1, p2, t, c), 0);
    EXPECT_EQ(QStringList({t, p1, p2, l}), expected);
    EXPECT_EQ(c * 100 + e, 1205);
    e = 0;
    EXPECT_EQ(m_work.get_par(m_code, l, e, p1, p2, t), 0);
    EXPECT_EQ(e, 5);
}

TEST_F(WorkTest, TellsAnEmptyCodeFromAnUnknownOne)
{
    load(kAllColumns, {u"'A','','','',1,'',1"_s});
    VelmWorkItem item;
    item.text = u"untouched"_s;
    EXPECT_EQ(m_work.getWorkItem(QString(), item), Velm::VelmEmptyArgument);
    EXPECT_EQ(m_work.getWorkItem(u"a"_s, item), Velm::VelmWorkCodeNotFound);
    QString text = item.text;
    EXPECT_EQ(m_work.get_text(QString(), text), Velm::VelmNotFound);
    int number = 42;
    EXPECT_EQ(m_work.get_par(u"B"_s, text, number, text, text, text, number), Velm::VelmNotFound);
    EXPECT_EQ(item.text + text, u"untoucheduntouched"_s);
    EXPECT_EQ(number, 42);
    EXPECT_TRUE(m_work.isValidCode(m_code));
    EXPECT_FALSE(m_work.isValidCode(QString()));
}

TEST_F(WorkTest, KeepsTheColourUnsetWithoutTheColumn)
{
    load("code text, enttype int", {u"'A',null"_s});
    VelmWorkItem item;
    ASSERT_EQ(m_work.getWorkItem(m_code, item), Velm::VelmOk);
    EXPECT_EQ(item.color, -1);
    EXPECT_EQ(item.enttype, 0) << "a null is 0, only a missing colour column is not";
    load("code text, color int", {u"'A',null"_s});
    ASSERT_EQ(m_work.getWorkItem(m_code, item), Velm::VelmOk);
    EXPECT_EQ(item.color, 0);
}

TEST_F(WorkTest, WritesThroughAndKeepsMemoryChangedWhenTheDatabaseIsGone)
{
    load(kAllColumns, {u"'A','','','',1,'',1"_s});
    VelmWorkItem item;
    item.code = u"新"_s;
    item.layer = u"图层"_s;
    item.color = 7;
    EXPECT_EQ(m_work.addItem(item), Velm::VelmOk);
    EXPECT_EQ(m_work.removeItem(m_code), Velm::VelmOk);
    EXPECT_EQ(m_work.removeItem(m_code), Velm::VelmNotFound);
    EXPECT_EQ(querySql(u"select code || layer || color || enttype from Workdef"_s),
              QStringList{u"新图层7-1"_s});

    ASSERT_TRUE(QFile::remove(path(u"config/peltaconfig.db"_s)));
    item.color = 8;
    EXPECT_EQ(m_work.addItem(item), Velm::VelmDatabaseOpenFailed);
    int color = 0;
    EXPECT_EQ(m_work.get_color(item.code, color), 0);
    EXPECT_EQ(color, 8);
}

TEST_F(WorkTest, ReadsOneLineOfTheTextFileAndNeverReportsNoData)
{
    const auto load = [this](const char* content) {
        writeFile(u"config/work.def"_s, content);
        CVelmWorkDef work;
        EXPECT_EQ(work.initVelmWork(), Velm::VelmOk);
        return work;
    };
    VelmWorkItem item;
    ASSERT_EQ(load(" A,L,3,p,q,t,12\n").getWorkItem(m_code, item), Velm::VelmOk);
    EXPECT_EQ(QStringList({item.layer, item.par1, item.par2, item.text}),
              QString::fromLatin1("L p q t").split(QLatin1Char(' ')));
    EXPECT_EQ(item.enttype * 100 + item.color, 312);
    ASSERT_EQ(load("A,L,x,p,q,t,y").getWorkItem(m_code, item), Velm::VelmOk);
    EXPECT_EQ(item.enttype, 0);
    EXPECT_EQ(item.color, 0);
    ASSERT_EQ(load("A,L").getWorkItem(m_code, item), Velm::VelmOk);
    EXPECT_EQ(item.enttype, -1);
    EXPECT_EQ(item.color, -1);
    EXPECT_TRUE(load("A,L,3,p,q,t,12,more").isValidCode(QString()));
    EXPECT_FALSE(load("A,L,3,p,q,t,12\nB,L,3,p,q,t,12").isValidCode(m_code));

    ASSERT_TRUE(QFile::remove(path(u"config/work.def"_s)));
    EXPECT_EQ(CVelmWorkDef().initVelmWork(), Velm::VelmNotFound);
}
