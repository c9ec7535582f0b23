#include "CVelmAnnotate.h"
#include "CVelmConfigManager.h"

#include "support/TemporaryRoot.h"

#include <string>

namespace {

class AnnotateMany : public TemporaryRoot
{};

/// Compares the first items of many codes with what single reads answer. @return their codes
QStringList compared(const QStringList& codes, int most)
{
    CVelmAnnotate& annotate = *CVelmConfigManager::Instance()->GetVelmAnnotate();
    QStringList seen;
    annotate.getAnnotateItems(
        codes, [&](const QString& code, Velm::ErrorStatus status, const VelmAnnItem& item) {
            VelmAnnItem single;
            EXPECT_EQ(status, annotate.getAnnotateItem(code, single)) << code.toStdString();
            EXPECT_EQ(item.text, single.text) << code.toStdString();
            EXPECT_EQ(item.extdata, single.extdata);
            EXPECT_EQ(item.height, single.height);
            seen.append(code);
            return seen.size() < most;
        });
    return seen;
}

}  // namespace

TEST_F(AnnotateMany, ReadsManyAnnotationsAsOneByOne)
{
    runSql({created(u"VelmAnnotate"_s), u"create index by_code on VelmAnnotate (CODE)"_s,
            u"insert into VelmAnnotate (CODE, TEXT, HEIGHT, EXTDATA, INPUT) values "
            "('310301', 'first', 2.5, '{\"a\": 1}', 1), ('BAD', 'bad', 1, '', 7), "
            "('310301', 'second', 1, '', 1), ('', 'of no code', 1, '', 1)"_s});
    const QStringList codes{u"310301"_s, u"nobody"_s, u"BAD"_s, QString(), u"310301"_s};
    EXPECT_EQ(compared(codes, 4), codes.mid(0, 4)) << "until the visitor has enough";
    runSql({u"drop index by_code"_s});
    EXPECT_EQ(compared(codes, 4), codes.mid(0, 4));
    runSql({u"drop table VelmAnnotate"_s});
    EXPECT_EQ(compared(codes, 9), codes);
}

TEST_F(AnnotateMany, ComparesCodesAsTheColumnDoes)
{
    const QStringList codes{u"A"_s, u"A "_s, u"1"_s, u"01"_s, u""_s};
    for (const char* column : {"CODE", "CODE varchar(20)", "CODE integer", "CODE numeric",
                               "CODE text collate nocase", "CODE collate rtrim", "OTHER"}) {
        SCOPED_TRACE(column);
        runSql(
            {u"drop table if exists VelmAnnotate"_s,
             u"create table VelmAnnotate (%1, TEXT)"_s.arg(QLatin1String(column)),
             u"insert into VelmAnnotate values (x'41', 'bytes'), (null, 'none'), ('a', 'small'), "
             "('A', 'great'), (1, 'number'), ('o''k', 'quote'), ('', 'empty')"_s});
        EXPECT_EQ(compared(codes, 99), codes);
        // What getAnnotateItem() puts into a statement as it is counts as a text here.
        QStringList texts;
        CVelmConfigManager::Instance()->GetVelmAnnotate()->getAnnotateItems(
            {u"o'k"_s, u"' or '1'='1"_s, u"A"_s + QChar(0)},
            [&](const QString&, Velm::ErrorStatus, const VelmAnnItem& item) {
                texts.append(item.text);
                return true;
            });
        const bool isKnown = column != std::string("OTHER");
        EXPECT_EQ(texts.join(QLatin1Char('|')), isKnown ? u"quote||"_s : u"||"_s);
    }
}
