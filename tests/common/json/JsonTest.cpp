#include "common/json/JsonBinding.h"
#include "common/json/JsonMerge.h"

#include "support/StarvedMemory.h"
#include "support/Values.h"

#include <gtest/gtest.h>

#include <limits>

using namespace velm::detail;

namespace {

enum Kind
{
    KindNone,
    KindTree = 7,
};

struct Leaf
{
    QString text;
};

struct Sample
{
    bool flag = false;
    int number = -1;
    double real = -1.0;
    Kind kind = KindNone;
    QString text = u"默认"_s;
    QStringList list{u"kept"_s};
    Leaf leaf;
    QVector<Leaf> leaves;
    int required = -1;
};

/// The value of "error" for a document that cannot be read as a whole.
QString errors(const QString& text, Sample& sample)
{
    try {
        json::read(json::parse(text), sample);
        return QString();
    } catch (const json::Error& error) {
        EXPECT_EQ(QString::fromUtf8(error.what()), error.messages().join(u"\n"_s));
        return error.messages().join(u"; "_s);
    }
}

QString written(const Sample& sample)
{
    return json::toText(json::toDocument(sample));
}

}  // namespace

VELM_JSON_RECORD(Leaf, VELM_JSON(text, "Text"))
// clang-format off
VELM_JSON_RECORD(Sample,
    VELM_JSON(flag, "Flag"),
    VELM_JSON(number, "Number"),
    VELM_JSON(real, "Real"),
    VELM_JSON(kind, "Kind"),
    VELM_JSON(text, "Text"),
    VELM_JSON(list, "List"),
    VELM_JSON(leaf, "Leaf"),
    VELM_JSON(leaves, "Leaves"),
    VELM_JSON_MANDATORY(required, "Required"))
// clang-format on

TEST(JsonBinding, WritesWhatItReads)
{
    const QString text =
        u"{\"Flag\":true,\"Number\":-2147483648,\"Real\":0.1,\"Kind\":7,\"Text\":\"引'"
        u"\\\"\\u0000\","
        "\"List\":[\"a\",\"\"],\"Leaf\":{\"Text\":\"叶\"},\"Leaves\":[{\"Text\":\"x\"}],"
        "\"Required\":1}"_s;
    Sample sample;
    EXPECT_EQ(errors(text, sample), QString());
    EXPECT_EQ(sample.kind, KindTree);
    EXPECT_EQ(sample.text, QString(u"引'\""_s + QChar(0)));
    EXPECT_EQ(written(sample), text);
    sample.real = std::numeric_limits<double>::infinity();
    EXPECT_EQ(written(sample), QString(text).remove(u"\"Real\":0.1,"_s)) << "JSON has no infinity";
}

TEST(JsonBinding, ReadsTheOtherMembersWhenSomeFail)
{
    struct Case
    {
        const char* text;
        const char* errors;
    };
    const Case cases[] = {
        {"{\"Required\":3}", ""},
        {"{}", "mandatory key not found. (path:required"},
        {"[]", "not object. (path:"},
        {"{\"Required\":3,\"Flag\":\"true\",\"Number\":2.5,\"Real\":\"1\",\"Kind\":null}",
         "not bool or integer. (path:flag; not integer. (path:number; not number. (path:real; "
         "not integer. (path:kind"},
        {"{\"Required\":3,\"Flag\":2.0,\"Number\":2147483648,\"Text\":1,\"List\":\"a\"}",
         "not bool or integer. (path:flag; not integer. (path:number; not string. (path:text; "
         "not array. (path:list"},
        {"{\"Required\":3,\"Leaf\":{\"Text\":{}},\"Leaves\":[{},{\"Text\":[]},5]}",
         "not string. (path:leaf.text; not string. (path:leaves[1].text; not object. "
         "(path:leaves[2]"},
    };
    for (const Case& c : cases) {
        Sample sample;
        EXPECT_EQ(errors(QString::fromUtf8(c.text), sample), QString::fromUtf8(c.errors));
        EXPECT_EQ(sample.required, QString::fromUtf8(c.text).contains(u"Required"_s) ? 3 : -1);
        EXPECT_EQ(sample.text, u"默认"_s) << c.text;
        EXPECT_FALSE(sample.flag) << c.text;
    }
}

TEST(JsonBinding, TakesEveryIntegerForABool)
{
    for (const char* value : {"2", "-1", "18446744073709551615", "true"}) {
        Sample sample;
        errors(u"{\"Flag\":%1}"_s.arg(QLatin1String(value)), sample);
        EXPECT_TRUE(sample.flag) << value;
    }
}

TEST(Json, TellsWhereATextDoesNotParse)
{
    const auto failure = [](const QString& text) {
        Sample sample;
        return errors(text, sample);
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
    QStringList texts;
    for (int i = 0; i < 3000; ++i)
        texts.append(u"\"%1\""_s.arg(i).repeated(i == 7 ? 20000 : 1).replace(u"\"\""_s, u""_s));
    const QString text = u"{\"Required\":1,\"Text\":"_s + texts.at(7) + u",\"List\":["_s
                         + texts.join(u","_s) + u"]}"_s;
    bool failed = true;
    for (int which = 1; failed; ++which) {
        QString result;
        {
            const StarvedMemory starved(30000, which);
            try {
                Sample sample;
                json::Document before = json::parse(text);
                json::read(before, sample);
                json::Document changed = json::toDocument(Sample());
                json::overlay(changed, before, changed.GetAllocator());
                const json::Value difference = json::difference(
                    changed, json::Document(rapidjson::kObjectType), changed.GetAllocator());
                result = json::toText(difference);
            } catch (const json::OutOfMemory&) {
            }
            failed = starved.hasFailed();
        }
        EXPECT_EQ(result.contains(texts.at(7)), !failed) << "request " << which;
    }
}

struct MergeCase
{
    const char* name;
    const char* stored;
    const char* before;
    const char* now;
    const char* saved;
};
class JsonMerge : public testing::TestWithParam<MergeCase>
{};

TEST_P(JsonMerge, PutsChangesIntoTheStoredText)
{
    const MergeCase& c = GetParam();
    json::Document stored = json::parse(QString::fromUtf8(c.stored));
    const json::Document before = json::parse(QString::fromUtf8(c.before));
    const json::Document now = json::parse(QString::fromUtf8(c.now));
    const json::Value changes = json::difference(now, before, stored.GetAllocator());
    json::overlay(stored, changes, stored.GetAllocator());
    EXPECT_EQ(json::toText(stored), QString::fromUtf8(c.saved));
}

INSTANTIATE_TEST_SUITE_P(
    Cases, JsonMerge,
    testing::Values(MergeCase{"WrongTypeStaysUntilSet", R"({"a":"bad","b":"bad"})",
                              R"({"a":1,"b":{"x":1}})", R"({"a":1,"b":{"x":2}})",
                              R"({"a":"bad","b":{"x":2}})"},
                    MergeCase{"ElementRemoved", R"({"l":[{"n":"a","u":1},{"n":"b","u":2}]})",
                              R"({"l":[{"n":"a"},{"n":"b"}]})", R"({"l":[{"n":"b"}]})",
                              R"({"l":[{"n":"b","u":2}]})"},
                    MergeCase{"ElementAddedInFront", R"({"l":[{"n":"a","u":1}]})",
                              R"({"l":[{"n":"a"}]})", R"({"l":[{"n":"c"},{"n":"a"}]})",
                              R"({"l":[{"n":"c"},{"n":"a","u":1}]})"},
                    MergeCase{"ElementChanged", R"({"l":[{"n":"a","v":1,"u":1}]})",
                              R"({"l":[{"n":"a","v":1}]})", R"({"l":[{"n":"a","v":2}]})",
                              R"({"l":[{"n":"a","v":2,"u":1}]})"},
                    MergeCase{"ListOfTexts", R"({"l":["a","b"]})", R"({"l":["a","b"]})",
                              R"({"l":["b"]})", R"({"l":["b"]})"}),
    [](const auto& info) { return std::string(info.param.name); });
