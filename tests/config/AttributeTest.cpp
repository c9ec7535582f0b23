#include "CVelmAttribute.h"
#include "CVelmConfigManager.h"

#include "config/Told.h"
#include "support/TemporaryRoot.h"

namespace {

const QStringList kTables{
    u"create table Attributetable ([TABLE], TEXT, GISTABLE, TYPE)"_s,
    u"insert into Attributetable values ('JMD_pg', '房屋面', 'G', '2'), ('DL', '道路', 'H', 1)"_s,
    u"create table Attributefield ([TABLE], NAME, TEXT, TYPE, LENGTH, DECIMAL, [DEFAULT], "
    u"[NOTNULL], "
    "BEXPORT)"_s,
    u"insert into Attributefield values ('jmd_PG', 'FWJG', '结构', 0, '2', 0, 'tbl_FWJG', 1, 0),"
    "('JMD_PG', 'CS', '层数', 3, 6, 2, '1', '0', 'yes'), ('none', 'x', 'x', 0, 0, 0, '', 0, 0),"
    "('JMD_PG', 'cs', 'second', 10, null, 'x', null, null, 2)"_s,
    u"create table globaldefines (KEY, VALUE)"_s};

class AttributeTest : public TemporaryRoot
{
protected:
    CVelmAttribute& load()
    {
        runSql(kTables);
        EXPECT_TRUE(m_manager->flushVelmConfig());
        return *m_manager->GetVelmAttribute();
    }
    /// Behind the decimals: default, dictionary, must, export, edit, show.
    static QString describe(const VelmFieldItem& f)
    {
        return told({f.m_tableName, f.m_fieldName, f.m_fieldText, f.m_fieldType, f.m_fieldLength,
                     f.m_fieldDecimal, f.m_defaultValue, f.m_fieldDict, int(f.m_fieldMust),
                     int(f.m_fieldExport), int(f.m_fieldEdit), int(f.m_fieldShow)});
    }
    void convert(const QString& document)
    {
        runSql({u"delete from globaldefines"_s,
                u"insert into globaldefines values ('字段转换', '%1')"_s.arg(document)});
        EXPECT_TRUE(m_manager->flushVelmConfig());
    }

    CVelmConfigManager* const m_manager = CVelmConfigManager::Instance();
    const CVelmConfigManager* const m_const = m_manager;
    const VelmAttParam m_stored{};
    const VelmAttParam m_converted{true};
};

}  // namespace

TEST_F(AttributeTest, HoldsTablesAndFieldsOfTheDatabase)
{
    const CVelmAttribute& attribute = load();
    VelmTableItem table;
    EXPECT_TRUE(attribute.existTable(u"jmd_pG"_s));
    EXPECT_EQ(attribute.getGisTableItem(u"Jmd_pg"_s, table, m_stored), Velm::VelmOk);
    EXPECT_EQ(told({table.tableName, table.tableText, table.gisTable, table._tableType}),
              u"JMD_pg|房屋面|G|2"_s);
    ASSERT_EQ(table.fields.size(), 3);
    EXPECT_EQ(describe(table.fields[0]), u"jmd_PG|FWJG|结构|0|2|0||tbl_FWJG|1|0|1|1"_s);
    EXPECT_EQ(describe(table.fields[1]), u"JMD_PG|CS|层数|3|6|2|1||0|0|1|1"_s);
    EXPECT_EQ(describe(table.fields[2]), u"JMD_PG|cs|second|10|0|0|||0|1|1|0"_s);

    VelmFieldItem field;
    EXPECT_EQ(attribute.getGisTableFieldItem(u"JMD_PG"_s, u"Cs"_s, field, m_stored), Velm::VelmOk);
    EXPECT_EQ(field.m_fieldText, u"层数"_s) << "the first of that name";
    int number = 0;
    EXPECT_EQ(attribute.getGisFieldPrecision(u"JMD_PG"_s, u"CS"_s, number, m_stored), Velm::VelmOk);
    EXPECT_EQ(number, 2);
    EXPECT_EQ(attribute.getGisFieldType(u"JMD_PG"_s, u"none"_s, number, m_stored),
              Velm::VelmNotFound);
    EXPECT_EQ(attribute.getGisTableItem(u"none"_s, table, m_stored), Velm::VelmNotFound);
    EXPECT_EQ(table.fields.size(), 3);
    EXPECT_EQ(attribute.getGisTableNameArray(m_stored), (QStringList{u"DL"_s, u"JMD_pg"_s}));
    EXPECT_EQ(attribute.getGisTableNameByTableType(Velm::TableLine, m_stored),
              QStringList{u"DL"_s});
    EXPECT_EQ(attribute.getGisFieldNameArrayByFieldType(u"JMD_PG"_s, Velm::FieldReal, m_stored),
              QStringList{u"CS"_s});
    EXPECT_TRUE(attribute.getGisFieldNameArray(u"none"_s, m_stored).isEmpty());
}

TEST_F(AttributeTest, AddsThePipeTablesBehindItsOwn)
{
    runSql(
        {u"create table SYS_GISTABLE (LAYERNAME, ALIASNAME, LAYERTYPE)"_s,
         u"insert into SYS_GISTABLE values ('dl', 'lost', 5), ('PIP', '管线', '5')"_s,
         u"create table SYS_ATTRIBUTEDEF (TABLENAME, FIELDNAME, FIELDTEXT, FIELDTYPE, FIELDLENGTH,"
         " FIELDDECIMAL, DEFAULTVALUE, DICTIONARY, [NOTNULL])"_s,
         u"insert into SYS_ATTRIBUTEDEF values ('Dl', 'F', 't', 12, 1, 2, 'TBL_x', 'D', 1),"
         "('New', 'N', 't', 0, 1, 2, 'v', '', 0)"_s,
         u"create table globaldefines (KEY, VALUE)"_s,
         u"insert into globaldefines values ('字段转换', '{\"TableInfo\":{\"TableName\":\"DL\","
         "\"TableText\":\"管线道路\"}}')"_s},
        u"config/PipeConfig.db"_s);
    const CVelmAttribute& attribute = load();
    EXPECT_EQ(attribute.getGisTableNameArray(m_stored),
              (QStringList{u"DL"_s, u"JMD_pg"_s, u"New"_s, u"PIP"_s}));
    VelmTableItem table;
    attribute.getGisTableItem(u"DL"_s, table, m_stored);
    EXPECT_EQ(table.tableText, u"道路"_s);
    EXPECT_EQ(m_const->GetVelmAttribute(), &attribute);
    m_manager->switchVersion(Velm::VersionTextFiles);
    EXPECT_EQ(m_const->GetVelmAttribute(), &attribute) << "the const form follows no version";
    EXPECT_NE(m_manager->GetVelmAttribute(), &attribute);
    m_manager->switchVersion(Velm::VersionDatabase);
    VelmTableInfo converted;
    attribute.getGisTableInfo(u"DL"_s, converted, m_converted);
    EXPECT_EQ(converted.tableText, u"管线道路"_s) << "of the pipe database, as the other has none";
    EXPECT_EQ(describe(table.fields.value(0)), u"Dl|F|t|12|1|2|TBL_x|D|1|0|1|0"_s);
}

TEST_F(AttributeTest, AppliesTheConversionOnRequest)
{
    load();
    convert(u"{\"TableInfo\":{\"TableName\":\"Jmd_PG\",\"TableText\":\"新面\",\"TableType\":0},"
            "\"FieldMap\":[{\"FieldName\":\"CS\",\"FieldText\":\"新\",\"FieldMust\":2}]}"_s);
    const CVelmAttribute& attribute = *m_manager->GetVelmAttribute();
    VelmTableInfo info;
    EXPECT_EQ(attribute.getGisTableInfo(u"JMD_PG"_s, info, m_converted), Velm::VelmOk);
    EXPECT_EQ(told({info.tableName, info.tableText, info.gisTable, info._tableType}),
              u"Jmd_PG|新面|G|2"_s)
        << "the type is not converted";
    EXPECT_EQ(attribute.getGisTableNameArray(m_converted), (QStringList{u"DL"_s, u"Jmd_PG"_s}));
    QList<VelmFieldItem> stored, all;
    attribute.getGisTableFieldArray(u"JMD_PG"_s, stored, m_stored);
    attribute.getGisTableFieldArray(u"JMD_PG"_s, all, m_converted);
    EXPECT_EQ(describe(all.value(1)), u"JMD_PG|CS|新|3|6|2|1||1|0|1|1"_s);
    EXPECT_EQ(stored.value(1).m_fieldText, u"层数"_s) << "stored definitions stay";
}

TEST_F(AttributeTest, ConvertsEachMemberOfAFieldByItself)
{
    const struct
    {
        const char* member;
        int place;  // in the description
        const char* value;
    } cases[] = {{"\"FieldMust\":1", 8, "1"},     {"\"FieldEdit\":0", 10, "0"},
                 {"\"FieldName\":\"N\"", 1, "N"}, {"\"FieldText\":\"名\"", 2, "名"},
                 {"\"FieldType\":3", 3, "3"},     {"\"FieldDecimal\":5", 5, "5"},
                 {"\"FieldLength\":9", 4, "9"},   {"\"FieldShow\":false", 11, "0"},
                 {"\"TableName\":\"X\"", 0, "X"}, {"\"DefaultValue\":\"v\"", 6, "v"},
                 {"\"FieldDict\":\"D\"", 7, "D"}, {"\"FieldExport\":1", 9, "0"}};
    load();
    QStringList members;
    for (const auto& c : cases) {
        const QString name = u"f%1"_s.arg(members.size());
        members.append(u"\"%1\":{%2}"_s.arg(name, QString::fromUtf8(c.member)));
        runSql({u"insert into Attributefield values ('DL','%1','x',2,1,2,'d',0,0)"_s.arg(
            name.toUpper())});
    }
    convert(u"{\"TableInfo\":{\"TableName\":\"DL\"},\"FieldMap\":{%1}}"_s.arg(members.join(u',')));
    const CVelmAttribute& attribute = *m_manager->GetVelmAttribute();
    for (size_t i = 0; i < std::size(cases); ++i) {
        QStringList expected = u"DL|F%1|x|2|1|2|d||0|0|1|1"_s.arg(i).split(u'|');
        expected[cases[i].place] = QString::fromUtf8(cases[i].value);
        VelmFieldItem field;
        EXPECT_EQ(attribute.getGisTableFieldItem(u"DL"_s, expected[1], field, m_converted), 0);
        EXPECT_EQ(describe(field), expected.join(u'|')) << cases[i].member;
    }
}

TEST_F(AttributeTest, KeepsTheTablesAsTheyAreWithoutAReadableConversion)
{
    load();
    for (const char16_t* text :
         {u"{\"", u"[]",
          u"{\"TableInfo\":{\"TableName\":\"JMD_PG\",\"TableText\":\"x\",\"TableType\":\"?\"}}",
          u"{\"TableInfo\":{\"TableName\":\"JMD_PG\",\"TableText\":\"x\"},\"FieldMap\":[5]}"}) {
        convert(QString::fromUtf16(text));
        VelmTableInfo info;
        EXPECT_EQ(m_manager->GetVelmAttribute()->getGisTableInfo(u"JMD_PG"_s, info, m_converted),
                  Velm::VelmOk);
        EXPECT_EQ(info.tableText, u"房屋面"_s);
    }
}

TEST_F(AttributeTest, ReadsEveryLineOfTheTextFile)
{
    const QString text = u"F,A,lost,before its table\r\nT,A,房屋,G,2\r\n\r\n"
                         "F,a,N,名,11,5,1,TBL_D,1,0,0\nF,A,M\nX,unknown\nT,\n"_s;
    writeFile(u"config/attribute.def"_s, text.toLocal8Bit());
    load();
    m_manager->switchVersion(Velm::VersionTextFiles);
    const CVelmAttribute* attribute = m_manager->GetVelmAttribute();
    ASSERT_NE(attribute, nullptr);
    VelmTableItem table;
    EXPECT_EQ(attribute->getGisTableItem(u"a"_s, table, m_stored), Velm::VelmOk);
    EXPECT_EQ(table.tableText, u"房屋"_s);
    ASSERT_EQ(table.fields.size(), 2);
    EXPECT_EQ(describe(table.fields[0]), u"a|N|名|11|5|1||TBL_D|1|0|0|0"_s);
    EXPECT_EQ(attribute->getGisTableNameArray(m_stored), QStringList{u"A"_s});
    m_manager->switchVersion(Velm::VersionDatabase);
}
