#include "CVelmXmlManager.h"

#include "support/StarvedMemory.h"
#include "support/TemporaryRoot.h"

namespace {

struct Parsed
{
    Velm::ErrorStatus status;
    QString error;
    int line = -7;
    int column = -7;
};

Parsed parse(const QString& text)
{
    CVelmXmlManager manager;
    Parsed parsed{};
    parsed.status = manager.setXmlData(text, &parsed.error, &parsed.line, &parsed.column);
    EXPECT_FALSE(manager.hasElement(u"a"_s));
    return parsed;
}

QString declared(const QString& declarations, const QString& content = u"<a/>"_s)
{
    return u"<!DOCTYPE a ["_s + declarations + u"]>"_s + content;
}

QString nested(int depth)
{
    return u"<a>"_s.repeated(depth) + u"</a>"_s.repeated(depth);
}

QString groups(int depth)
{
    return u"<!ELEMENT a "_s + QString(depth, u'(') + u"b"_s + QString(depth, u')') + u">"_s;
}

QString numbered(const QString& pattern, int count)
{
    QString text;
    for (int i = 0; i < count; ++i)
        text += pattern.arg(i);
    return text;
}

struct Bound
{
    const char* name;
    QString within, beyond;
    const char* error;
};

const QString kEntity = u"<!ENTITY e '%1'>"_s;
const QString kParameter = u"<!ENTITY % p '%1'>"_s;
const char kTooLong[] = "more than 8000000 characters with its entities";
const char kTooDeep[] = "elements nested deeper than 512";
const char kTooManyGroups[] = "groups nested deeper than 512";

const Bound kBounds[] = {
    {"Depth", nested(512), nested(513), kTooDeep},
    {"DepthInAnEntity", declared(kEntity.arg(nested(511)), u"<a>&e;</a>"_s),
     declared(kEntity.arg(nested(512)), u"<a>&e;</a>"_s), kTooDeep},
    {"Groups", declared(groups(512)), declared(groups(513)), kTooManyGroups},
    {"GroupsInAnEntity", declared(kParameter.arg(groups(512)) + u"%p;"_s),
     declared(kParameter.arg(groups(513)) + u"%p;"_s), kTooManyGroups},
    // An entity may be part of a declaration: here what follows "<!--" is no comment.
    {"GroupsBehindAnEntity",
     declared(kParameter.arg(u"<!ENTITY x &#34;"_s) + u"%p;<!-- \">"_s + groups(500)),
     declared(kParameter.arg(u"<!ENTITY x &#34;"_s) + u"%p;<!-- \">"_s + groups(513)),
     kTooManyGroups},
    {"GroupsOfAComment", declared(u"<!-- \" "_s + QString(9999, u'(') + u"-->"_s + groups(9)),
     declared(u"<!-- \" "_s + QString(9999, u'(') + u"-->"_s + groups(513)), kTooManyGroups},
    {"Characters", u"<a>"_s + QString(7999993, u'x') + u"</a>"_s,
     u"<a>"_s + QString(7999994, u'x') + u"</a>"_s, kTooLong},
    {"Expansion",
     declared(kEntity.arg(QString(100000, u'x')), u"<a>"_s + u"&e;"_s.repeated(78) + u"</a>"_s),
     declared(kEntity.arg(QString(100000, u'x')),
              u"<a b='"_s + u"&e;"_s.repeated(100000) + u"'/>"_s),
     kTooLong},
    {"ShortEntities",
     declared(kEntity.arg(u"x"_s), u"<a>"_s + u"&e;"_s.repeated(1900000) + u"</a>"_s),
     declared(kEntity.arg(u"x"_s), u"<a>"_s + u"&e;"_s.repeated(2000000) + u"</a>"_s), kTooLong},
    {"NoEntities",
     declared(u"<!-- <!ENTITY e '"_s + QString(400000, u'&') + u"'> -->"_s,
              u"<a><!--"_s + u"&e;"_s.repeated(900000) + u"--><![CDATA["_s
                  + u"&e;"_s.repeated(900000) + u"]]></a>"_s),
     declared(u"<!ATTLIST a b CDATA '"_s + QString(200001, u'x') + u"'>"_s),
     "more than 200000 characters in declarations"},
    {"Nodes", u"<a>"_s + u"<b c='1'/> x"_s.repeated(133333) + u"</a>"_s,
     u"<a>"_s + u"<b c='1'/> x"_s.repeated(133334) + u"</a>"_s,
     "more than 400000 elements, attributes and texts"},
    {"Attributes", u"<a"_s + numbered(u" b%1 = '2'"_s, 100000) + u"/>"_s,
     u"<a"_s + numbered(u" b%1 = '2'"_s, 100001) + u"/>"_s,
     "more than 100000 attributes of an element"},
    {"Entities", declared(numbered(u"<!ENTITY e%1 'x'>"_s, 2000)),
     declared(numbered(u"<!ENTITY e%1 'x'>"_s, 2001)), "more than 2000 entities"},
    {"References", declared(kEntity.arg(u"&u;"_s.repeated(1365))),
     declared(kEntity.arg(u"&u;"_s.repeated(2000000))),
     "more than 5000 references in declarations"},
};

class XmlBound : public testing::TestWithParam<Bound>
{};

}  // namespace

using XmlManager = TemporaryRoot;

TEST_F(XmlManager, AnswersTheWrongWayRound)
{
    EXPECT_EQ(parse(u"<a><b x='1'>文</b></a>"_s).status, Velm::VelmInvalidValue);
    CVelmXmlManager assigned;
    assigned = CVelmXmlManager(CVelmXmlManager());
    EXPECT_EQ(assigned.setXmlData(u"<a/>"_s, nullptr, nullptr, nullptr), Velm::VelmInvalidValue);
    const Parsed malformed = parse(u"<a>\n<b></a>"_s);
    EXPECT_EQ(malformed.status, Velm::VelmOk);
    EXPECT_EQ(malformed.error, u"tag mismatch"_s);
    EXPECT_EQ(malformed.line, 2);
    EXPECT_EQ(parse(QString()).status, Velm::VelmNoData);
    EXPECT_EQ(parse(QString(QChar(0)) + u"<a/>"_s).status, Velm::VelmOk) << "not empty";
}

TEST_F(XmlManager, ReadsFilesAndTellsNoPlaceOfTheirErrors)
{
    writeFile(u"good.xml"_s, "<?xml version='1.0' encoding='UTF-8'?><a>\xE6\x96\x87</a>");
    writeFile(u"bad.xml"_s, "<a>");
    writeFile(u"empty.xml"_s, "");
    writeFile(u"zero.xml"_s, QByteArray("<a/>\0", 5));
    CVelmXmlManager manager;
    QString error = u"before"_s;
    int line = -7;
    const auto init = [&](const QString& file) {
        return manager.initXmlFile(path(file), &error, &line, &line);
    };
    EXPECT_EQ(init(u"good.xml"_s), Velm::VelmInvalidValue);
    EXPECT_EQ(init(u"bad.xml"_s), Velm::VelmOk);
    EXPECT_EQ(init(u"empty.xml"_s), Velm::VelmNoData);
    EXPECT_EQ(init(u"zero.xml"_s), Velm::VelmOk) << "read with the NUL";
    EXPECT_EQ(init(u"missing.xml"_s), Velm::VelmXmlInitFailed);
    EXPECT_EQ(error, u"before"_s);
    EXPECT_EQ(line, -7);
}

TEST_P(XmlBound, RefusesWhatWouldTakeTooMuch)
{
    EXPECT_EQ(parse(GetParam().within).status, Velm::VelmInvalidValue);
    const Parsed refused = parse(GetParam().beyond);
    EXPECT_EQ(refused.status, Velm::VelmOk);
    EXPECT_EQ(refused.error, QString::fromUtf8(GetParam().error));
}
INSTANTIATE_TEST_SUITE_P(Texts, XmlBound, testing::ValuesIn(kBounds),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(XmlManager, TellsWhereMemoryRunsOut)
{
    if (!StarvedMemory::isPossible())
        GTEST_SKIP();
    const QString text = u"<a b='"_s + QString(99999, u'x') + u"'>"_s
                         + u"<c>y</c>"_s.repeated(20000) + QString(99999, u'z') + u"</a>"_s;
    writeFile(u"large.xml"_s, text.toUtf8());
    const QString file = path(u"large.xml"_s);
    for (const bool fromFile : {false, true}) {
        bool failed = true;
        for (int which = 1; failed; ++which) {
            CVelmXmlManager manager;
            const StarvedMemory starved(30000, which);
            const auto status = fromFile ? manager.initXmlFile(file, nullptr, nullptr, nullptr)
                                         : manager.setXmlData(text, nullptr, nullptr, nullptr);
            failed = starved.hasFailed();
            EXPECT_EQ(status, failed ? Velm::VelmXmlInitFailed : Velm::VelmInvalidValue) << which;
        }
    }
}
