#include "CVelmXmlManager.h"

#include "support/Printers.h"
#include "support/TemporaryRoot.h"
#include "support/Text.h"

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

/// A document whose entities refer to one another, or that has one long one often.
QString entityBomb(int levels, int length, int references)
{
    QString text = u"<!DOCTYPE a [<!ENTITY e0 '"_s + QString(length, QLatin1Char('x')) + u"'>"_s;
    for (int i = 1; i <= levels; ++i)
        text += u"<!ENTITY e%1 '%2'>"_s.arg(QString::number(i), u"&e%1;"_s.arg(i - 1).repeated(10));
    return text + u"]><a>"_s + u"&e%1;"_s.arg(levels).repeated(references) + u"</a>"_s;
}

}  // namespace

using XmlManager = TemporaryRoot;

TEST_F(XmlManager, AnswersTheWrongWayRound)
{
    EXPECT_EQ(parse(u"<a><b x='1'>文</b></a>"_s).status, Velm::VelmInvalidValue);
    const Parsed malformed = parse(u"<a>\n<b></a>"_s);
    EXPECT_EQ(malformed.status, Velm::VelmOk);
    EXPECT_EQ(malformed.error, u"tag mismatch"_s);
    EXPECT_EQ(malformed.line, 2);
    EXPECT_EQ(parse(QString()).status, Velm::VelmNoData);
    EXPECT_EQ(parse(QString(QChar(0)) + u"<a/>"_s).status, Velm::VelmNoData);
}

TEST_F(XmlManager, ReadsFilesAndTellsNoPlaceOfTheirErrors)
{
    writeFile(u"good.xml"_s, "<?xml version='1.0' encoding='UTF-8'?><a>\xE6\x96\x87</a>");
    writeFile(u"bad.xml"_s, "<a>");
    writeFile(u"empty.xml"_s, "");
    CVelmXmlManager manager;
    QString error = u"before"_s;
    int line = -7;
    const auto init = [&](const QString& file) {
        return manager.initXmlFile(path(file), &error, &line, &line);
    };
    EXPECT_EQ(init(u"good.xml"_s), Velm::VelmInvalidValue);
    EXPECT_EQ(init(u"bad.xml"_s), Velm::VelmOk);
    EXPECT_EQ(init(u"empty.xml"_s), Velm::VelmNoData);
    EXPECT_EQ(init(u"missing.xml"_s), Velm::VelmXmlInitFailed);
    EXPECT_EQ(error, u"before"_s);
    EXPECT_EQ(line, -7);
}

TEST_F(XmlManager, RefusesWhatWouldTakeTooMuch)
{
    const QString open = u"<a>"_s.repeated(100000);
    const QString brackets(100000, QLatin1Char('('));
    EXPECT_EQ(parse(open + u"</a>"_s.repeated(100000)).status, Velm::VelmOk);
    EXPECT_EQ(parse(open).status, Velm::VelmOk);
    EXPECT_EQ(parse(u"<!DOCTYPE a [<!ELEMENT a "_s + brackets + u">]><a/>"_s).status, Velm::VelmOk);
    for (const QString& entity : {u"<!ENTITY e '"_s + open + u"'>]><a>&e;</a>"_s,
                                  u"<!ENTITY % e '<!ELEMENT a "_s + brackets + u">'>%e;]><a/>"_s})
        EXPECT_EQ(parse(u"<!DOCTYPE a ["_s + entity).status, Velm::VelmOk);
    EXPECT_EQ(parse(entityBomb(9, 10, 1)).status, Velm::VelmOk);
    EXPECT_EQ(parse(entityBomb(0, 100000, 100000)).status, Velm::VelmOk) << "ten thousand million";
    EXPECT_EQ(parse(entityBomb(1, 10, 1000)).status, Velm::VelmInvalidValue) << "a modest one";
    EXPECT_EQ(parse(u"<a>"_s.repeated(200) + u"</a>"_s.repeated(200)).status,
              Velm::VelmInvalidValue);
}

TEST_F(XmlManager, SharesItsDocumentWithCopies)
{
    auto source = std::make_unique<CVelmXmlManager>();
    CVelmXmlManager copy(*source);
    CVelmXmlManager assigned;
    assigned = copy;
    source.reset();
    EXPECT_EQ(assigned.setXmlData(u"<a/>"_s, nullptr, nullptr, nullptr), Velm::VelmInvalidValue);
    EXPECT_EQ(copy.setXmlData(u"<a"_s, nullptr, nullptr, nullptr), Velm::VelmOk);
}
