#include "common/json/JsonMerge.h"
#include "config/parameters/GlobalParamBinding.h"

#include "support/StarvedMemory.h"
#include "support/Values.h"

#include <gtest/gtest.h>

#include <limits>

using namespace velm::detail;

struct Pair
{
    int needed = 7;
    int spare = 8;
};

VELM_JSON_RECORD(Pair, VELM_JSON_MANDATORY(needed, "Needed"), VELM_JSON(spare, "Spare"))

namespace {

/// What is told of a document that cannot be read as a whole.
QString errors(const QString& text, VelmGlobalParam& record)
{
    try {
        json::read(json::parse(text), record);
        return QString();
    } catch (const json::Error& error) {
        EXPECT_EQ(QString::fromUtf8(error.what()), error.messages().join(u"\n"_s));
        return error.messages().join(u"; "_s);
    }
}

/// What is not as in a new record.
QString written(const VelmGlobalParam& record)
{
    json::Document now = json::toDocument(record);
    const json::Document before = json::toDocument(VelmGlobalParam());
    return json::toText(json::difference(now, before, now.GetAllocator()));
}

}  // namespace

TEST(JsonBinding, WritesWhatItReads)
{
    const QString text =
        u"{\"SortRule\":{\"SortMode\":-2147483648,\"OneSortDir\":true,\"XOff\":0.1},"
        "\"MustFieldData\":{\"SymbolText\":\"引'\\\"\\u0000\"},"
        "\"AreaAboutSetting\":{\"AboutOfAreaType\":2}}"_s;
    VelmGlobalParam record;
    EXPECT_EQ(errors(text, record), QString());
    EXPECT_EQ(record.m_mustFieldData.m_symbolText, QString(u"引'\""_s + QChar(0)));
    EXPECT_EQ(written(record), text);
    record.m_sortRule.m_yOff = std::numeric_limits<double>::infinity();
    EXPECT_EQ(written(record), text) << "JSON has no infinity";
}

TEST(JsonBinding, ReadsTheOtherMembersWhenSomeFail)
{
    struct Case
    {
        const char *sort, *formats, *errors;
    };
    for (const Case& c : {
             Case{"[]", "[]", "not object. (path:m_sortRule"},
             Case{R"({"STypePath":"true","SortType":2.5,"XOff":"1","SortMode":3,"SortDir1":null})",
                  "[]",
                  "not integer. (path:m_sortRule.m_SortType; not integer. "
                  "(path:m_sortRule.m_SortDir1; "
                  "not bool or integer. (path:m_sortRule.m_bSTypePath; not number. "
                  "(path:m_sortRule.m_xOff"},
             Case{R"({"SortType":2147483648,"STypePath":2.0,"SortMode":3})", R"("a")",
                  "not integer. (path:m_sortRule.m_SortType; not bool or integer. "
                  "(path:m_sortRule.m_bSTypePath; not array. (path:m_dataFormatArray"},
             Case{R"({"SortMode":3})", R"([{"FormatName":"x"},{"FormatName":{}},5])",
                  "not string. (path:m_dataFormatArray[1].m_formatName; not object. "
                  "(path:m_dataFormatArray[2]"},
         }) {
        VelmGlobalParam record;
        const QString text = u"{\"SortRule\":%1,\"DataFormat\":%2}"_s;
        EXPECT_EQ(errors(text.arg(QLatin1String(c.sort), QLatin1String(c.formats)), record),
                  QString::fromLatin1(c.errors));
        EXPECT_EQ(record.m_sortRule.m_SortMode, c.sort[0] == '[' ? 0 : 3) << c.errors;
        EXPECT_EQ(record.m_sortRule.m_SortType, 0) << c.errors;
    }
}

TEST(JsonBinding, MissesOnlyAMandatoryKey)
{
    Pair pair;
    EXPECT_THROW(json::read(json::parse(u"{\"Spare\":1}"_s), pair), json::Error);
    EXPECT_NO_THROW(json::read(json::parse(u"{\"Needed\":2}"_s), pair));
    EXPECT_EQ(pair.needed, 2);
    EXPECT_EQ(pair.spare, 1) << "read although the other one was missing";
}

TEST(JsonBinding, TakesEveryIntegerForABool)
{
    for (const char* value : {"2", "-1", "18446744073709551615", "true"}) {
        VelmGlobalParam record;
        errors(u"{\"SortRule\":{\"OneSortDir\":%1}}"_s.arg(QLatin1String(value)), record);
        EXPECT_TRUE(record.m_sortRule.m_bOneSortDir) << value;
    }
}

TEST(Json, TellsWhereATextDoesNotParse)
{
    const auto failure = [](const QString& text) {
        VelmGlobalParam record;
        return errors(text, record);
    };
    EXPECT_EQ(failure(QString()), u"Parse json fail. err=The document is empty.. offset=0"_s);
    EXPECT_EQ(failure(u"{\"名称\":tru}"_s), u"Parse json fail. err=Invalid value.. offset=9"_s)
        << "counted in characters, not in bytes";
    const auto nested = [](int depth) {
        return QString(depth, QLatin1Char('[')) + QString(depth, QLatin1Char(']'));
    };
    EXPECT_NO_THROW(json::parse(nested(json::kDeepestNesting)));
    EXPECT_THROW(json::parse(nested(json::kDeepestNesting + 1)), json::Error);
    EXPECT_TRUE(failure(nested(100000)).startsWith(u"Parse json fail. err="_s));
    EXPECT_TRUE(failure(u"{\"a\":"_s.repeated(100000)).startsWith(u"Parse json fail. err="_s));
}

TEST(Json, ThrowsWhereMemoryRunsOut)
{
    if (!StarvedMemory::isPossible())
        GTEST_SKIP();
    const QString longText(40000, u'x');
    const QString text = u"{\"MustFieldData\":{\"SymbolText\":\"%1\"},\"DataFormat\":[%2{}]}"_s.arg(
        longText, u"{\"FormatName\":\"y\"},"_s.repeated(3000));
    bool failed = true;
    for (int which = 1; failed; ++which) {
        QString result;
        {
            const StarvedMemory starved(30000, which);
            try {
                VelmGlobalParam record;
                json::Document read = json::parse(text);
                json::read(read, record);
                json::Document changed = json::toDocument(record);
                json::overlay(changed, read, changed.GetAllocator());
                result = written(record);
            } catch (const json::OutOfMemory&) {
            }
            failed = starved.hasFailed();
        }
        EXPECT_EQ(result.contains(longText), !failed) << "request " << which;
    }
}

namespace {

struct MergeCase
{
    const char *name, *stored, *before, *now, *saved;
};

class JsonMerge : public testing::TestWithParam<MergeCase>
{};

constexpr MergeCase kMerges[] = {
    {"WrongTypeStaysUntilSet", R"({"a":"bad","b":"bad"})", R"({"a":1,"b":{"x":1}})",
     R"({"a":1,"b":{"x":2}})", R"({"a":"bad","b":{"x":2}})"},
    {"ElementRemoved", R"({"l":[{"n":"a","u":1},{"n":"b","u":2}]})",
     R"({"l":[{"n":"a"},{"n":"b"}]})", R"({"l":[{"n":"b"}]})", R"({"l":[{"n":"b","u":2}]})"},
    {"ElementAddedInFront", R"({"l":[{"n":"a","u":1}]})", R"({"l":[{"n":"a"}]})",
     R"({"l":[{"n":"c"},{"n":"a"}]})", R"({"l":[{"n":"c"},{"n":"a","u":1}]})"},
    {"ElementChanged", R"({"l":[{"n":"a","v":1,"u":1}]})", R"({"l":[{"n":"a","v":1}]})",
     R"({"l":[{"n":"a","v":2}]})", R"({"l":[{"n":"a","v":2,"u":1}]})"},
    {"ListOfTexts", R"({"l":["a","b"]})", R"({"l":["a","b"]})", R"({"l":["b"]})", R"({"l":["b"]})"},
};

}  // namespace

TEST_P(JsonMerge, PutsChangesIntoTheStoredText)
{
    const auto parsed = [](const char* text) { return json::parse(QString::fromLatin1(text)); };
    json::Document stored = parsed(GetParam().stored);
    const json::Value changes =
        json::difference(parsed(GetParam().now), parsed(GetParam().before), stored.GetAllocator());
    json::overlay(stored, changes, stored.GetAllocator());
    EXPECT_EQ(json::toText(stored), QString::fromLatin1(GetParam().saved));
}
INSTANTIATE_TEST_SUITE_P(Cases, JsonMerge, testing::ValuesIn(kMerges),
                         [](const auto& info) { return std::string(info.param.name); });
