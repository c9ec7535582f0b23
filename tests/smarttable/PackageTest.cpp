#include "smarttable/package/Package.h"
#include "archive/RawZip.h"
#include "support/StarvedMemory.h"
#include "support/TemporaryRoot.h"

#include <QProcess>
#include <QtEndian>

#include <zlib.h>

using namespace SmartTable::detail;

namespace {

constexpr char kTypes[] = "[Content_Types].xml";
const QString kSheetType = u"application/vnd.openxmlformats-officedocument.worksheet+xml"_s;

RawEntry stored(const QByteArray& name, const QByteArray& content)
{
    RawEntry entry{name, content};
    entry.crc = crc32(0, reinterpret_cast<const Bytef*>(content.constData()),
                      static_cast<uInt>(content.size()));
    return entry;
}

/// "deflate" is what zlib makes, without its head and its checksum.
RawEntry packed(const QByteArray& name, const QByteArray& content)
{
    RawEntry entry = stored(name, content);
    const QByteArray bytes = qCompress(content, 1);
    entry.content = bytes.mid(6, bytes.size() - 10);
    entry.method = 8;
    entry.claimedSize = content.size();
    return entry;
}

RawEntry types(const QByteArray& more = QByteArray())
{
    return packed(kTypes,
                  "<?xml version=\"1.0\"?>\n<t:Types xmlns:t=\"types\" foreign=\"1\">"
                  "<t:Default Extension=\"XML\" ContentType=\"application/xml\"/><t:Override "
                  "PartName=\"/xl/Sheet.xml\" ContentType=\"sheet\"/><unknown/>"
                      + more + "</t:Types>");
}

RawEntry relations(const QByteArray& items, const QByteArray& name = "xl/_rels/book.xml.rels")
{
    return packed(name, "<Relationships foreign=\"1\">" + items + "</Relationships>");
}

/// One relation, spelt as it is written back; a blank stands before what is @p more.
QByteArray item(const QByteArray& id, const QByteArray& target, const QByteArray& more = "")
{
    return "<Relationship Id=\"" + id + "\" Type=\"t\" Target=\"" + target + "\"" + more + "/>";
}

/// What lies in an archive, read by its directory: names and bytes as they lie.
QVector<QPair<QByteArray, QByteArray>> entriesOf(const QByteArray& zip)
{
    const auto number = [&zip](int at, int size) {
        return size == 2 ? int(qFromLittleEndian<quint16>(zip.constData() + at))
                         : int(qFromLittleEndian<quint32>(zip.constData() + at));
    };
    QVector<QPair<QByteArray, QByteArray>> entries;
    const int end = zip.size() - 22;
    for (int at = number(end + 16, 4); at < end;) {
        const QByteArray name = zip.mid(at + 46, number(at + 28, 2));
        const int head = number(at + 42, 4);
        const int begin = head + 30 + number(head + 26, 2) + number(head + 28, 2);
        entries.append({name, zip.mid(begin, number(at + 20, 4))});
        at += 46 + name.size() + number(at + 30, 2) + number(at + 32, 2);
    }
    return entries;
}

class PackageTest : public TemporaryRoot
{
protected:
    QString load(const QVector<RawEntry>& entries) { return load(rawZip(entries)); }
    QString load(const QByteArray& bytes)
    {
        writeFile(u"in.xlsx"_s, bytes);
        return m_package.load(path(u"in.xlsx"_s));
    }
    QByteArray saved(int level)
    {
        EXPECT_EQ(m_package.save(path(u"out.xlsx"_s), level), QString());
        return bytesOf(u"out.xlsx"_s);
    }
    QByteArray bytesOf(const QString& name) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }
    QByteArray content(const QString& part) const
    {
        QByteArray bytes;
        EXPECT_EQ(m_package.read(part, bytes), QString());
        return bytes;
    }

    const QVector<RawEntry> m_whole{packed("xl/book.xml", QByteArray(5000, 'b')),
                                    types(),
                                    relations(item("rId7", "Sheet.xml") + item("x", "/xl/pic.png")),
                                    packed("xl/Sheet.xml", "<sheet/>"),
                                    stored("xl/pic.png", QByteArray("\0\1\2", 3)),
                                    packed("xl/图.bin", QByteArray(70000, 'v')),
                                    stored("xl/empty/", "")};
    Package m_package;
};

/// A package that must be refused, or a text that must.
struct Refusal
{
    QVector<RawEntry> entries;
    const char* told;
};

}  // namespace

TEST_F(PackageTest, CopiesWhatNobodyTouchedAsItLies)
{
    const QByteArray original = rawZip(m_whole);
    ASSERT_EQ(load(original), QString());
    EXPECT_EQ(m_package.parts(), listOf(u"/xl/book.xml|/xl/_rels/book.xml.rels|/xl/Sheet.xml|"
                                        u"/xl/pic.png|/xl/图.bin"_s));
    EXPECT_EQ(content(u"/XL/%42ook.xml"_s), QByteArray(5000, 'b'));
    const QByteArray changed(100000, 's');
    m_package.write(u"/xl/sheet.xml"_s, changed, QString());
    m_package.write(u"/xl/new.xml"_s, "new", kSheetType);
    for (const int level : {6, 6, 1, 0, 12}) {
        auto expected = entriesOf(original);
        expected.move(1, 0);
        expected.removeLast();  // the folder
        expected.append(qMakePair(QByteArray("xl/new.xml"), QByteArray("new")));
        const QByteArray out = saved(level);
        const auto entries = entriesOf(out);
        ASSERT_EQ(entries.size(), expected.size());
        for (int i = 0; i < entries.size(); ++i) {
            EXPECT_EQ(entries.at(i).first, expected.at(i).first);
            if (i != 0 && i != 3) {
                EXPECT_EQ(entries.at(i).second, expected.at(i).second) << i;
            }
        }
        EXPECT_EQ(entries.at(3).second.size() < 1000, level > 0);
        EXPECT_EQ(out.mid(10, 4), QByteArray("\0\0\x21\0", 4)) << "no time of the machine's";
#ifndef Q_OS_WIN
        EXPECT_EQ(QProcess::execute(u"unzip"_s, {u"-qt"_s, path(u"out.xlsx"_s)}), 0);
#endif
    }
    const QByteArray last = saved(12);
    ASSERT_EQ(m_package.load(path(u"out.xlsx"_s)), QString());
    EXPECT_EQ(content(u"/xl/Sheet.xml"_s), changed);
    m_package.write(u"/xl/new.xml"_s, "new", kSheetType);  // the same is no change
    EXPECT_EQ(saved(1), last);
    EXPECT_EQ(m_package.contentType(u"/xl/new.xml"_s), kSheetType);
    EXPECT_EQ(m_package.contentType(u"/xl/other.xml"_s), u"application/xml"_s);
    m_package.remove(u"/XL/Book.xml"_s);
    m_package.remove(u"/xl/sheet.xml"_s);
    EXPECT_EQ(m_package.parts(), listOf(u"/xl/pic.png|/xl/图.bin|/xl/new.xml"_s));
    saved(6);
    Package again;
    ASSERT_EQ(again.load(path(u"out.xlsx"_s)), QString());
    EXPECT_EQ(again.contentType(u"/xl/sheet.xml"_s), u"application/xml"_s) << "its own went";
    QByteArray typesXml = entriesOf(bytesOf(u"out.xlsx"_s)).at(0).second;
    ASSERT_EQ(m_package.save(path(u"out.xlsx"_s), 0), QString());
    typesXml = entriesOf(bytesOf(u"out.xlsx"_s)).at(0).second;
    EXPECT_TRUE(typesXml.contains("foreign=\"1\"") && typesXml.contains("<unknown/>")
                && typesXml.contains("<t:Override PartName=\"/xl/new.xml\""))
        << typesXml.constData();
}

TEST_F(PackageTest, RefusesWhatIsNoSoundPackage)
{
    const RawEntry book = packed("xl/book.xml", "x");
    RawEntry encrypted = book, unknown = book, bomb = book, large = book, more = book, less = book;
    encrypted.flags = 1;
    unknown.method = 12;
    bomb.claimedSize = 70 << 20;
    large.claimedSize = 0x7FFFFFFF;
    more = relations("");
    ++more.claimedSize;
    less = relations("");
    --less.claimedSize;
    RawEntry broken = relations("");
    broken.crc ^= 1;
    RawEntry wrongStored = stored("a", "x");
    wrongStored.claimedSize = 2;
    QByteArray deep;
    for (int i = 0; i < 100000; ++i)
        deep += "<a>";
    QVector<RawEntry> many{types()};
    for (int i = 0; i < 10000; ++i)
        many.append(stored(QByteArray::number(i), "x"));
    QVector<Refusal> cases{
        {{book}, "[Content_Types].xml is missing"},
        {{types(), encrypted}, "it is encrypted"},
        {{types(), unknown}, "by a method that is not read (12)"},
        {{types(), bomb}, "500 times as large"},
        {{types(), large}, "larger than"},
        {{types(), more}, "damaged"},
        {{types(), less}, "damaged"},
        {{types(), broken}, "damaged"},
        {{types(), wrongStored}, "cannot be true"},
        {{types(), book, packed("XL/Book.xml", "x")}, "another part has this name"},
        {{types(), book, packed("xl/b%6Fok.xml", "x")}, "another part has this name"},
        {many, "more than 10000 entries"},
        {{types("<t:Override PartName=\"/xl/Sheet.xml\" ContentType=\"b\"/>")}, "two types"},
        {{types("<t:Default Extension=\"a\"/>")}, "no name or no type"},
        {{packed(kTypes, "<Types>")}, "no well-formed XML"},
        {{packed(kTypes, "<!DOCTYPE Types [<!ENTITY a \"b\">]><Types/>")}, "document type"},
        {{packed(kTypes, "<Other/>")}, "its root"},
        {{types(), relations(deep)}, "well-formed"},
        {{types(), relations(deep + QByteArray(deep).replace("<", "</"))}, "more than 256 deep"},
        {{types(), relations(QByteArray(1000000, '='))}, "elements and attributes"},
        {{types(), relations(item("a", "b") + item("a", "c"))}, "two relations"},
        {{types(), relations(item("", "b"))}, "has no id"},
        {{types(), relations("<Relationship Id=\"a\" Type=\"t\"/>")}, "has no id"},
        {{types(), relations(item("a", "../../b"))}, "leads out"},
        {{types(), relations(item("a", "file:///b"))}, "leads out"},
        {{types(), relations(item("a", "b", " TargetMode=\"?\""))}, "neither internal"}};
    for (const char* name : {"../a", "a/../b", "a//b", "/a", "C:/a", "a\\b", "a/%2e%2E/b", "a%2Fb",
                             "a%5cb", "a%00b", "a/.", "xl/con", "NUL.xml", "a./b"})
        cases.append({{types(), packed(name, "x")}, "its name"});
    ASSERT_EQ(load(m_whole), QString());
    const auto refuses = [this](const QByteArray& bytes, const char* told) {
        const QString problem = load(bytes);
        EXPECT_TRUE(problem.contains(QString::fromUtf8(told)))
            << told << "; not " << problem.toStdString();
        EXPECT_EQ(m_package.parts().size(), 5) << "what was there stays";
    };
    for (const Refusal& c : qAsConst(cases))
        refuses(rawZip(c.entries), c.told);
    refuses("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1 and more", "an older or an encrypted document");
    refuses("", "no zip archive");
    QByteArray shared = rawZip({types(), book, packed("xl/cook.xml", "x")});
    const int last = shared.lastIndexOf("PK\1\2"), before = shared.lastIndexOf("PK\1\2", last - 1);
    shared.replace(last + 42, 4, shared.mid(before + 42, 4));
    refuses(shared, "lie one over the other");
    EXPECT_TRUE(m_package.load(path(u"none.xlsx"_s)).contains(u"none.xlsx"_s));
}

TEST_F(PackageTest, SurvivesDamageWhereverItIs)
{
    const QByteArray whole = rawZip(m_whole);
    for (int size = 0; size < whole.size(); size += 7)
        EXPECT_NE(load(whole.left(size)), QString()) << size;
    for (int at = 0; at < whole.size(); at += 3) {
        QByteArray broken = whole;
        broken[at] = static_cast<char>(broken.at(at) ^ 0x55);
        if (!load(broken).isEmpty())
            continue;
        QByteArray bytes;
        for (const QString& part : m_package.parts())
            m_package.read(part, bytes);  // no fault, whatever it finds
    }
}

TEST_F(PackageTest, KeepsRelationsAndLeadsThemToParts)
{
    const QVector<RawEntry> entries{
        types(), packed("xl/book.xml", "x"),
        relations(item("rId7", "sheets/../Sheet.xml", " foreign=\"2\"") + "<!-- said -->"
                  + item("x", "../docProps/a.xml#b") + item("rId9", "#here")
                  + item("out", "http://a/b?c=d&amp;e", " TargetMode=\"External\"")
                  + "<unknown/>")};
    ASSERT_EQ(load(entries), QString());
    Relations found = m_package.relations(u"/XL/book.xml"_s);
    ASSERT_EQ(found.all().size(), 4);
    EXPECT_EQ(found.find(u"rId7"_s)->target, u"/xl/Sheet.xml"_s);
    EXPECT_EQ(found.find(u"x"_s)->target + u'|' + found.find(u"x"_s)->fragment,
              u"/docProps/a.xml|b"_s);
    EXPECT_EQ(found.find(u"rId9"_s)->target, u"/xl/book.xml"_s);
    EXPECT_EQ(found.find(u"out"_s)->target, u"http://a/b?c=d&e"_s);
    EXPECT_EQ(found.leadingTo(u"/xl/sheet.XML"_s).size(), 1);
    EXPECT_FALSE(found.remove(u"rId1"_s));
    EXPECT_TRUE(found.remove(u"rId9"_s));
    EXPECT_EQ(found.add(u"n"_s, u"/xl/sheets/s&.xml"_s), u"rId10"_s) << "never one that was";
    EXPECT_EQ(found.addExternal(u"n"_s, u"mailto:x"_s), u"rId11"_s);
    EXPECT_EQ(found.ofType(u"n"_s).size(), 2);
    m_package.setRelations(u"/xl/book.xml"_s, found);
    const QByteArray expected =
        "<?xml version=\"1.0\"?><Relationships foreign=\"1\">"
        + item("rId7", "sheets/../Sheet.xml", " foreign=\"2\"") + "<!-- said -->"
        + item("x", "../docProps/a.xml#b")
        + item("out", "http://a/b?c=d&amp;e", " TargetMode=\"External\"")
        + "<unknown/><Relationship Id=\"rId10\" Type=\"n\" Target=\"sheets/s&amp;.xml\"/>"
          "<Relationship Id=\"rId11\" Type=\"n\" Target=\"mailto:x\" "
          "TargetMode=\"External\"/></Relationships>";
    EXPECT_EQ(content(u"/xl/_rels/book.xml.rels"_s).toStdString(), expected.toStdString());
    m_package.setRelations(u"/xl/deep/er/copy.xml"_s, found);
    for (const char* id : {"rId7", "x", "out", "rId10"}) {
        const QString name = QString::fromUtf8(id);
        EXPECT_EQ(m_package.relations(u"/xl/deep/er/copy.xml"_s).find(name)->target,
                  found.find(name)->target);
    }
    m_package.setRelations(u"/xl/book.xml"_s, Relations());
    EXPECT_FALSE(m_package.has(u"/xl/_rels/book.xml.rels"_s));
}

TEST_F(PackageTest, DropsSignaturesWithTheFirstChange)
{
    const QByteArray original = rawZip(
        {types("<t:Override PartName=\"/_xmlsignatures/o.sigs\" ContentType=\"o\"/>"),
         relations(item("a", "xl/book.xml") + item("s", "_xmlsignatures/o.sigs"), "_rels/.rels"),
         packed("xl/book.xml", "x"), stored("_xmlsignatures/o.sigs", ""),
         relations(item("a", "sig1.xml"), "_xmlsignatures/_rels/o.sigs.rels"),
         packed("_xmlsignatures/sig1.xml", "signed")});
    ASSERT_EQ(load(original), QString());
    EXPECT_EQ(entriesOf(saved(6)), entriesOf(original));
    m_package.write(u"/xl/book.xml"_s, "y", QString());
    EXPECT_EQ(m_package.parts(), listOf(u"/_rels/.rels|/xl/book.xml"_s));
    EXPECT_EQ(m_package.relations(u"/"_s).all().size(), 1);
    EXPECT_EQ(m_package.contentType(u"/_xmlsignatures/o.sigs"_s), QString());
}

TEST_F(PackageTest, LeavesTheOldFileIfItFails)
{
    Package made;
    made.write(u"/a.xml"_s, "a", kSheetType);
    EXPECT_NE(made.save(path(u"none/out.xlsx"_s), 6), QString());
    EXPECT_FALSE(QFileInfo::exists(path(u"none"_s)));
    ASSERT_TRUE(QDir().mkpath(path(u"folder"_s)));
    EXPECT_NE(made.save(path(u"folder"_s), 6), QString());
    if (!StarvedMemory::isPossible())
        GTEST_SKIP() << "memory does not run out here";
    bool failed = true;
    for (int which = 1; failed; ++which) {
        ASSERT_EQ(load(m_whole), QString());
        m_package.write(u"/xl/new.xml"_s, QByteArray(100000, 's'), kSheetType);
        writeFile(u"old.xlsx"_s, "old");
        QString problem;
        {
            const StarvedMemory starved(1000, which);
            problem = m_package.save(path(u"old.xlsx"_s), 6);
            failed = starved.hasFailed();
        }
        EXPECT_EQ(bytesOf(u"old.xlsx"_s) == "old", !problem.isEmpty()) << which;
        ASSERT_EQ(m_package.save(path(u"old.xlsx"_s), 6), QString()) << which;
    }
    failed = true;
    for (int which = 1; failed; ++which) {
        Package package;
        QString problem;
        {
            const StarvedMemory starved(1000, which);
            problem = package.load(path(u"old.xlsx"_s));
            failed = starved.hasFailed();
        }
        EXPECT_EQ(package.parts().size(), problem.isEmpty() ? 6 : 0) << problem.toStdString();
    }
}
