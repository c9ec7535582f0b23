#include "CVelmAttribute.h"
#include "CVelmConfigManager.h"

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
    CVelmAttribute& load(const QStringList& more = {})
    {
        runSql(kTables + more);
        EXPECT_TRUE(m_manager->flushVelmConfig());
        return *m_manager->GetVelmAttribute();
    }
    static QString describe(const VelmFieldItem& f)
    {
        return u"%1|%2|%3|%4|%5|%6|%7|must%8 export%9 "_s
                   .arg(f.m_tableName, f.m_fieldName, f.m_fieldText)
                   .arg(f.m_fieldType)
                   .arg(f.m_fieldLength)
                   .arg(f.m_fieldDecimal)
                   .arg(f.m_defaultValue + u"/"_s + f.m_fieldDict)
                   .arg(f.m_fieldMust)
                   .arg(f.m_fieldExport)
               + u"edit%1 show%2"_s.arg(f.m_fieldEdit).arg(f.m_fieldShow);
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
    EXPECT_EQ(table.tableName + table.tableText + table.gisTable, u"JMD_pg房屋面G"_s);
    EXPECT_EQ(table._tableType, Velm::TableArea);
    ASSERT_EQ(table.fields.size(), 3);
    EXPECT_EQ(describe(table.fields[0]),
              u"jmd_PG|FWJG|结构|0|2|0|/tbl_FWJG|must1 export0 edit1 show1"_s);
    EXPECT_EQ(describe(table.fields[1]), u"JMD_PG|CS|层数|3|6|2|1/|must0 export0 edit1 show1"_s);
    EXPECT_EQ(describe(table.fields[2]), u"JMD_PG|cs|second|10|0|0|/|must0 export1 edit1 show0"_s);

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
    EXPECT_EQ(describe(table.fields.value(0)),
              u"Dl|F|t|12|1|2|TBL_x/D|must1 export0 edit1 show0"_s);
}

TEST_F(AttributeTest, AppliesTheConversionOnRequest)
{
    for (const bool asArray : {false, true}) {
        const QString fields =
            asArray ? u"[{\"FieldName\":\"cs\",\"FieldText\":\"新\",\"FieldMust\":2}]"_s
                    : u"{\"cs\":{\"FieldName\":\"CENG\",\"FieldText\":\"新\","
                      "\"FieldMust\":2}}"_s;
        const CVelmAttribute& attribute =
            load({u"delete from Attributetable"_s, u"delete from Attributefield"_s,
                  u"delete from globaldefines"_s, kTables[1], kTables[3],
                  u"insert into globaldefines values ('字段转换', '{\"TableInfo\":{\"TableName\":"
                  "\"Jmd_PG\",\"TableText\":\"新面\",\"TableType\":0},\"FieldMap\":%1}')"_s.arg(
                      fields)});
        VelmTableInfo info;
        EXPECT_EQ(attribute.getGisTableInfo(u"JMD_PG"_s, info, m_converted), Velm::VelmOk);
        EXPECT_EQ(info.tableName + info.tableText + info.gisTable, u"Jmd_PG新面G"_s);
        EXPECT_EQ(info._tableType, Velm::TableArea) << "the type is not converted";
        EXPECT_EQ(attribute.getGisTableNameArray(m_converted), (QStringList{u"DL"_s, u"Jmd_PG"_s}));
        const QString name = asArray ? u"cs"_s : u"CENG"_s;
        VelmFieldItem field;
        EXPECT_EQ(attribute.getGisTableFieldItem(u"JMD_PG"_s, name, field, m_converted),
                  Velm::VelmOk);
        EXPECT_EQ(describe(field), u"JMD_PG|%1|新|3|6|2|1/|must1 export0 edit1 show1"_s.arg(name));
        QList<VelmFieldItem> all;
        attribute.getGisTableFieldArray(u"JMD_PG"_s, all, m_stored);
        EXPECT_EQ(all.value(1).m_fieldText, u"层数"_s) << "stored definitions stay";
        runSql({u"drop table Attributetable"_s, u"drop table Attributefield"_s,
                u"drop table globaldefines"_s});
    }
}

TEST_F(AttributeTest, KeepsTheTablesAsTheyAreWithoutAReadableConversion)
{
    load();
    for (const char16_t* text :
         {u"{\"", u"[]",
          u"{\"TableInfo\":{\"TableName\":\"JMD_PG\",\"TableText\":\"x\",\"TableType\":"
          u"\"?\"}}",
          u"{\"TableInfo\":{\"TableName\":\"JMD_PG\",\"TableText\":\"x\"},\"FieldMap\":[5]}"}) {
        runSql({u"delete from globaldefines"_s,
                u"insert into globaldefines values ('字段转换', '%1')"_s.arg(
                    QString::fromUtf16(text))});
        ASSERT_TRUE(m_manager->flushVelmConfig());
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
    EXPECT_EQ(describe(table.fields[0]), u"a|N|名|11|5|1|/TBL_D|must1 export0 edit0 show0"_s);
    EXPECT_EQ(attribute->getGisTableNameArray(m_stored), QStringList{u"A"_s});
    m_manager->switchVersion(Velm::VersionDatabase);
}
