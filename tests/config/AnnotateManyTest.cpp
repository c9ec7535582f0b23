#include "CVelmAnnotate.h"
#include "CVelmConfigManager.h"

#include "support/TemporaryRoot.h"

namespace {

class AnnotateMany : public TemporaryRoot
{};

}  // namespace

TEST_F(AnnotateMany, ReadsManyAnnotationsAsOneByOne)
{
    runSql({created(u"VelmAnnotate"_s), u"create index by_code on VelmAnnotate (CODE)"_s,
            u"insert into VelmAnnotate (CODE, TEXT, HEIGHT, EXTDATA, INPUT) values "
            "('310301', 'first', 2.5, '{\"a\": 1}', 1), ('BAD', 'bad', 1, '', 7), "
            "('310301', 'second', 1, '', 1), ('', 'of no code', 1, '', 1)"_s});
    CVelmAnnotate& annotate = *CVelmConfigManager::Instance()->GetVelmAnnotate();
    const QStringList codes{u"310301"_s, u"nobody"_s, u"BAD"_s, QString(), u"310301"_s};
    for (const char* index : {"", "drop index by_code"}) {
        if (*index)
            runSql({QLatin1String(index)});
        QStringList seen;
        annotate.getAnnotateItems(
            codes, [&](const QString& code, Velm::ErrorStatus status, const VelmAnnItem& item) {
                VelmAnnItem single;
                EXPECT_EQ(status, annotate.getAnnotateItem(code, single)) << code.toStdString();
                EXPECT_EQ(item.text, single.text);
                EXPECT_EQ(item.extdata, single.extdata);
                EXPECT_EQ(item.height, single.height);
                seen.append(code);
                return seen.size() < 4;
            });
        EXPECT_EQ(seen, codes.mid(0, 4)) << "until the visitor has enough";
    }
    runSql({u"drop table VelmAnnotate"_s});
    annotate.getAnnotateItems(codes,
                              [](const QString&, Velm::ErrorStatus status, const VelmAnnItem&) {
                                  EXPECT_EQ(status, Velm::VelmNoData);
                                  return true;
                              });
}

TEST_F(AnnotateMany, FindsTheRowsThatSingleReadsFind)
{
    CVelmAnnotate& annotate = *CVelmConfigManager::Instance()->GetVelmAnnotate();
    const QStringList codes{u"A"_s,   u"a"_s,      u"A "_s,          u"1"_s, u"01"_s,
                            u"o'k"_s, u"' or 1"_s, u"' or '1'='1"_s, u""_s,  u"A"_s + QChar(0)};
    for (const char* column : {"CODE", "CODE varchar(20)", "CODE integer", "CODE numeric",
                               "CODE text collate nocase", "CODE collate rtrim", "OTHER"}) {
        runSql(
            {u"drop table if exists VelmAnnotate"_s,
             u"create table VelmAnnotate (%1, TEXT)"_s.arg(QLatin1String(column)),
             u"insert into VelmAnnotate values (x'41', 'bytes'), (null, 'none'), ('a', 'small'), "
             "('A', 'great'), (1, 'number'), ('o''k', 'quote'), ('', 'empty')"_s});
        int visited = 0;
        annotate.getAnnotateItems(
            codes, [&](const QString& code, Velm::ErrorStatus status, const VelmAnnItem& item) {
                VelmAnnItem single;
                EXPECT_EQ(status, annotate.getAnnotateItem(code, single));
                EXPECT_EQ(item.text, single.text) << column << ": " << code.toStdString();
                return ++visited > 0;
            });
        EXPECT_EQ(visited, codes.size());
    }
}
