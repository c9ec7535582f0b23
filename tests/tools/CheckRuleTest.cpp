// What `velm check` finds: each rule broken in the sample set, and what follows from a fault.

#include "tools/CheckFixture.h"

namespace {

constexpr char kPipe[] = "PipeConfig.db";
constexpr char kSystem[] = "peltaconfig.db";

/// What breaks a rule in the sample set, and what is found then, parted by line breaks.
struct Broken
{
    const char* rule;
    const char* database;
    const char16_t* statement;
    const char16_t* place;              // "table column value"
    const char16_t* message = nullptr;  // where its words are not those of other rows
};

// Each rule has a row at least, and finds nothing but that.
const Broken kBroken[] = {
    {"missing-table", kSystem, u"drop table VelmFrame", u"VelmFrame"},
    {"missing-table", kSystem, u"drop table Attributetable", u"Attributetable"},
    {"view-for-table", kSystem,
     u"drop table VelmFrame; create view VelmFrame as with recursive n(i) as (select 1 union all "
     "select i + 1 from n) select i as ConfigName from n",
     u"VelmFrame"},
    {"view-for-table", kSystem,
     u"alter table TBL_SF rename to T; create view TBL_SF as select * from T", u"TBL_SF"},
    {"missing-column", kSystem, u"alter table RecordConfigType rename column EXTEND to X",
     u"RecordConfigType EXTEND"},
    {"missing-column", kSystem, u"alter table Attributefield rename column [TABLE] to X",
     u"Attributefield TABLE"},
    {"missing-column", kSystem, u"alter table VelmFrame rename column ConfigName to X",
     u"VelmFrame ConfigName"},
    {"missing-column", kSystem, u"create table TBL_NEW (a)", u"TBL_NEW"},
    {"missing-index", kSystem,
     u"drop index IX_Workdef_CODE; create index p on Workdef (CODE) where CODE > 'A'; create index "
     "n on Workdef (CODE collate nocase)",
     u"Workdef CODE"},
    {"trigger", kPipe,
     u"create trigger t after insert on SYS_GISTABLE begin delete from SYS_GISTABLE;end",
     u"SYS_GISTABLE  t"},
    {"empty-table", kSystem, u"delete from Attributetable", u"Attributetable"},
    {"empty-table", kSystem, u"delete from Attributefield where [TABLE] = 'JMD_PG'",
     u"Attributetable TABLE JMD_PG"},
    {"empty-table", kPipe, u"delete from PIP_SysConfig", u"PIP_SysConfig"},
    {"empty-table", kPipe, u"delete from SYS_ATTRIBUTEDEF", u"SYS_ATTRIBUTEDEF"},
    {"empty-table", kPipe, u"delete from SYS_DICTIONARY", u"SYS_DICTIONARY"},
    {"empty-table", kPipe, u"delete from SYS_GISTABLE; delete from SYS_ATTRIBUTEDEF",
     u"SYS_GISTABLE"},
    {"key-type", kSystem,
     u"create table c as select * from IndexiniExtend; drop table IndexiniExtend; create table "
     "IndexiniExtend (CODE STRING, EXTTABLE); insert into IndexiniExtend select * from c",
     u"IndexiniExtend CODE"},
    {"not-a-number", kSystem, u"update QuobAreaLine set LINEWIDTH = 'wide' where CODE = '310301'",
     u"QuobAreaLine LINEWIDTH wide"},
    {"not-a-number", kSystem, u"update Attributefield set LENGTH = 'x' where rowid = 1",
     u"Attributefield LENGTH x"},
    {"not-finite", kSystem, u"update indexini set WIDTH = 9e999 where CODE = '310301'",
     u"indexini WIDTH inf"},
    {"not-finite", kSystem, u"update VelmAnnotate set ROTATE = 'nan' where CODE = '310301'",
     u"VelmAnnotate ROTATE nan"},
    {"not-a-number", kSystem,
     u"update Attributefield set TYPE = 99999999999 where [TABLE] = 'JMD_PG' and NAME = 'FWCS'",
     u"Attributefield TYPE 99999999999",
     u"is to be a whole number from -2147483647 to 2147483647, and counts as 0"},
    {"fraction", kSystem, u"update Workdef set COLOR = 2.5 where CODE = '310301'",
     u"Workdef COLOR 2.5", u"is to be a whole number, and counts as 3"},
    {"json-syntax", kSystem, u"update VelmCmdSetting set CmdText = '{' where CmdName = 'CONTOUR'",
     u"VelmCmdSetting CMDTEXT {", u"is JSON without its end, behind \"{\""},
    {"json-syntax", kSystem,
     u"update globaldefines set value = '{\"名称\":tru}' where key = 'GlobalParam'",
     u"globaldefines VALUE {\"名称\":tru}",
     u"is no JSON at character 10, behind \"{\"名称\":tru\""},
    {"json-type", kSystem, u"update VelmAnnotate set EXTDATA = '[1]' where CODE = '310301'",
     u"VelmAnnotate EXTDATA [1]"},
    {"json-type", kSystem,
     u"update globaldefines set value = '{\"FieldMap\":[{\"FieldName\":\"FWJG\"},{}]}' where key = "
     "'字段转换'",
     u"globaldefines VALUE {\"FieldMap\":[{\"FieldName\":\"FWJG\"",
     u"FieldMap[1] has no FieldName"},
    {"invalid-utf8", kSystem,
     u"update indexini set NAME = cast(x'41FF' as text) where CODE = '310301'",
     u"indexini NAME A\xFFFD", u"is no valid UTF-8"},
    {"invalid-utf8", kSystem,
     u"update indexini set CODE = cast(x'B7BF' as text) where CODE = '110101'; update Workdef set "
     "CODE = '房' where CODE = '110101'",
     u"indexini CODE \xFFFD\xFFFD", u"is no valid UTF-8; as GBK it reads \"房\""},
    {"invalid-utf8", kSystem,
     u"update indexini set CODE = CODE || cast(x'ff' as text) where CODE = '110101'",
     u"indexini CODE 110101\xFFFD"},
    {"embedded-nul", kSystem,
     u"update indexini set NAME = 'a' || char(0) || 'b' where CODE = '310301'",
     u"indexini NAME a␀b"},
    {"embedded-nul", kSystem, u"update indexini set CODE = CODE || char(0) where CODE = '310301'",
     u"indexini CODE 310301␀"},
    {"embedded-nul", kSystem,
     u"update indexini set CODE = CODE || char(0) || 'b' where CODE = '110109'",
     u"indexini CODE 110109␀b"},
    {"control-character", kSystem,
     u"update indexini set NAME = 'a' || char(9) || 'b' where CODE = '310301'",
     u"indexini NAME a\tb"},
    {"control-character", kSystem,
     u"update Attributetable set [TABLE] = 'JMD_PG' || char(9) where [TABLE] = 'JMD_PG'",
     u"Attributetable TABLE JMD_PG"},
    {"control-character", kSystem,
     u"update indexini set CODE = CODE || char(65279) where CODE = '310301'",
     u"indexini CODE 310301\xFEFF", u"holds U+FEFF, which nobody sees"},
    {"blank-at-end", kSystem,
     u"update indexini set NAME = '房屋' || char(12288) where CODE = '310301'",
     u"indexini NAME 房屋"},
    {"blank-at-end", kSystem,
     u"update Attributefield set NAME = 'FWJG ' where [TABLE] = 'JMD_PG' and NAME = 'FWJG'",
     u"Attributefield NAME FWJG"},
    {"blank-at-end", kSystem, u"update indexini set CODE = ' 310301' where CODE = '310301'",
     u"indexini CODE  310301"},
    {"blank-at-end", kPipe, u"update SYS_DICTIONARY set NAME = 'DX_GC ' where NAME = 'DX_GC'",
     u"SYS_DICTIONARY NAME DX_GC"},
    {"blank-at-end", kSystem, u"update indexini set NAME = NAME || char(160) where CODE = '310301'",
     u"indexini NAME 一般房屋\xA0"},
    {"blank-at-end", kSystem,
     u"update Workdef set LAYER = printf('%300s', LAYER) where CODE = '310301'",
     u"Workdef LAYER                                 "},
    {"single-quote", kSystem, u"update Workdef set TEXT = 'O''Brien' where CODE = '310301'",
     u"Workdef TEXT O'Brien"},
    {"comma", kSystem, u"update Workdef set TEXT = 'a,b' where CODE = '310301'",
     u"Workdef TEXT a,b"},
    {"not-in-gbk", kSystem, u"update Workdef set PAR1 = '\U0001F600' where CODE = '310301'",
     u"Workdef PAR1 \U0001F600"},
    {"not-in-gbk", kSystem, u"update Workdef set PAR1 = char(8203) where CODE = '310301'",
     u"Workdef PAR1 \x200B", u"holds U+200B, which GBK does not have"},
    {"empty-code", kSystem, u"insert into VelmCmdSetting values ('', '[]')",
     u"VelmCmdSetting CMDNAME"},
    {"empty-code", kSystem, u"insert into VelmCmdSetting values ('  ', '[]')",
     u"VelmCmdSetting CMDNAME", u"holds nothing but blanks"},
    {"duplicate-code", kSystem, u"insert into globaldefines values ('图属库', '')",
     u"globaldefines KEY 图属库", u"stands in row 5 too; row 5 counts, as the first"},
    {"duplicate-code", kSystem,
     u"insert into Attributetable values ('jmd_pg', '', '', 2), ('Jmd_pg', '', '', 2)",
     u"Attributetable TABLE Jmd_pg\nAttributetable TABLE jmd_pg",
     u"differs from \"JMD_PG\" in row 25 in letter case only; row 50 counts, as the last"},
    {"duplicate-code", kSystem,
     u"insert into Attributefield select [TABLE], 'fwjg', TEXT, TYPE, LENGTH, DECIMAL, '', 0, 0, 0 "
     "from Attributefield where [TABLE] = 'JMD_PG' and NAME = 'FWJG'",
     u"Attributefield NAME fwjg", u"is a field of \"JMD_PG\" in row 207 already; both are shown"},
    {"code-differs-in-case", kSystem, u"insert into VelmCmdSetting values ('contour', '[]')",
     u"VelmCmdSetting CMDNAME contour"},
    {"code-without-drawing", kSystem,
     u"insert into indexini (CODE, NAME, WIDTH) values ('lone', '', 0)", u"indexini CODE lone"},
    {"drawing-without-code", kSystem,
     u"insert into Workdef (CODE, LAYER, ENTTYPE) values ('wild', 'A', -1)", u"Workdef CODE wild"},
    {"unknown-code", kSystem, u"insert into QuobAreaLine (CODE, LINETYPESCALE) values ('wild', 1)",
     u"QuobAreaLine CODE wild"},
    {"unknown-code", kSystem, u"insert into RecordConfig (CODE) values ('wild')",
     u"RecordConfig CODE wild"},
    {"unknown-code", kSystem, u"update QuobAreaLine set CODE = '[Default]' where CODE = '310302'",
     u"QuobAreaLine CODE [Default]"},
    {"unknown-code", kSystem,
     u"update RecordConfig set CODE = '[default]' where rowid = (select min(rowid) from "
     "RecordConfig where CODE = '[Default]')",
     u"RecordConfig CODE [default]", u"has no row in indexini; did you mean \"[Default]\"?"},
    {"duplicate-user-code", kSystem, u"update indexini set USECODE = 'Sjd' where CODE = '310301'",
     u"indexini USECODE Sjd"},
    {"user-code-is-code", kSystem, u"update indexini set USECODE = '110102' where CODE = '310301'",
     u"indexini USECODE 110102"},
    {"special-line-type", kSystem, u"update indexini set LTYPE = 'GC9' where CODE = '310301'",
     u"Workdef ENTTYPE 1"},
    {"entity-type-range", kSystem, u"update Workdef set ENTTYPE = 9 where CODE = '310301'",
     u"Workdef ENTTYPE 9"},
    {"entity-type-range", kSystem,
     u"alter table Workdef add column ROWID; update Workdef set ROWID = 7; update Workdef set "
     "ENTTYPE = 9 where CODE in ('310301', '110102')",
     u"Workdef ENTTYPE 9\nWorkdef ENTTYPE 9"},
    {"entity-type-range", kSystem,
     u"update Workdef set ENTTYPE = 99999999999 where CODE = '310301'; update indexini set LTYPE = "
     "'GC9' where CODE = '310301'",
     u"Workdef ENTTYPE 99999999999",
     u"is not one of -1 to 8: -1 not given, 1 general, 3 text, 5 special line"},
    {"entity-type-range", kSystem, u"update QuobAreaLine set ENTTYPE = 'x' where CODE = '310301'",
     u"QuobAreaLine ENTTYPE x"},
    {"entity-type-range", kSystem, u"update VelmAnnotate set ENTTYPE = -1 where CODE = '310301'",
     u"VelmAnnotate ENTTYPE -1"},
    {"annotation-type-range", kSystem, u"update VelmAnnotate set ANNTYPE = 6 where CODE = '310301'",
     u"VelmAnnotate ANNTYPE 6"},
    {"input-type-range", kSystem, u"update VelmAnnotate set INPUT = 3 where CODE = '310301'",
     u"VelmAnnotate INPUT 3"},
    {"colour-range", kSystem, u"update Workdef set COLOR = 257 where CODE = '310301'",
     u"Workdef COLOR 257"},
    {"colour-range", kSystem, u"update QuobAreaLine set HATCHCOLOR = -1 where CODE = '310301'",
     u"QuobAreaLine HATCHCOLOR -1"},
    {"negative-width", kSystem, u"update QuobAreaLine set LINEWIDTH = -0.1 where CODE = '310301'",
     u"QuobAreaLine LINEWIDTH -0.1"},
    {"not-positive", kSystem, u"update VelmAnnotate set HEIGHT = 0 where CODE = '310301'",
     u"VelmAnnotate HEIGHT 0"},
    {"not-positive", kSystem, u"update VelmAnnotate set HEIGHT = '' where CODE = '310301'",
     u"VelmAnnotate HEIGHT", u"is empty"},
    {"layer-name", kSystem, u"update Workdef set LAYER = 'A*' where CODE = '310301'",
     u"Workdef LAYER A*"},
    {"layer-name", kSystem, u"update Workdef set LAYER = '' where CODE = '310301'",
     u"Workdef LAYER"},
    {"layer-differs-in-case", kSystem, u"update Workdef set LAYER = 'jmd_m' where CODE = '320102'",
     u"Workdef LAYER jmd_m"},
    {"unknown-gis-table", kSystem, u"update indexini set [TABLE] = 'JMD_PX' where CODE = '910101'",
     u"indexini TABLE JMD_PX", u"names no GIS table; did you mean \"JMD_PG\" or \"JZD_PT\"?"},
    {"unknown-gis-table", kSystem,
     u"update Attributefield set [TABLE] = 'JMD_PQ' where [TABLE] = 'JMD_PG'",
     u"Attributefield TABLE JMD_PQ",
     u"names no GIS table, and so do 13 more rows; did you mean \"JMD_PG\" or \"JZD_PT\"?"},
    {"unknown-gis-table", kSystem, u"update indexini set [TABLE] = 'ZZ' where CODE = '910101'",
     u"indexini TABLE ZZ", u"names no GIS table"},
    {"unknown-extension-table", kSystem,
     u"update IndexiniExtend set EXTTABLE = 'EXT_DMXX；EXT_FWDC' where CODE = '110102'",
     u"IndexiniExtend EXTTABLE EXT_DMXX；EXT_FWDC",
     u"names no GIS table; names are separated by \";\""},
    {"unknown-extension-table", kSystem,
     u"update IndexiniExtend set EXTTABLE = 'EXT_FWDC;EXT_NO' where CODE = '310301'",
     u"IndexiniExtend EXTTABLE EXT_FWDC;EXT_NO", u"has \"EXT_NO\", which names no GIS table"},
    {"table-type-range", kSystem, u"update Attributetable set TYPE = 6 where [TABLE] = 'JMD_PG'",
     u"Attributetable TYPE 6"},
    {"empty-field-name", kSystem,
     u"insert into Attributefield values ('JMD_PG', '', '', 0, 1, 0, '', 0, 0, 0)",
     u"Attributefield NAME"},
    {"empty-field-name", kPipe, u"insert into PIP_SysConfig values (99, '')",
     u"PIP_SysConfig FIELDNAME"},
    {"field-type-range", kPipe, u"update SYS_ATTRIBUTEDEF set FIELDTYPE = 5 where rowid = 2",
     u"SYS_ATTRIBUTEDEF FIELDTYPE 5"},
    {"field-type-range", kSystem,
     u"update globaldefines set value = '{\"TableInfo\":{\"TableName\":\"JMD_PG\"},\"FieldMap\":"
     "{\"FWJG\":{\"FieldType\":7}}}' where key = '字段转换'",
     u"globaldefines VALUE {\"TableInfo\":{\"TableName\":\"JMD_P",
     u"FieldMap.FWJG.FieldType is 7, not one of 0 text, 1 integer, 2 long, 3 real, 4 date, or 10 "
     "more for a hidden field"},
    {"field-length", kSystem,
     u"insert into Attributefield values ('JMD_PG', 'N', '', 10, 65536, 0, '', 0, 0, 0)",
     u"Attributefield LENGTH 65536"},
    {"field-length", kSystem,
     u"insert into Attributefield values ('JMD_PG', 'N', '', 0, '', 0, '', 0, 0, 0)",
     u"Attributefield LENGTH", u"is empty"},
    {"field-decimals", kSystem,
     u"insert into Attributefield values ('JMD_PG', 'N', '', 3, 4, 5, '', 0, 0, 0)",
     u"Attributefield DECIMAL 5"},
    {"default-does-not-fit", kSystem,
     u"insert into Attributefield values ('JMD_PG', 'N', '', 0, 2, 0, '三个字', 0, 0, 0)",
     u"Attributefield DEFAULT 三个字"},
    {"default-does-not-fit", kSystem,
     u"insert into Attributefield values ('JMD_PG', 'N', '', 1, 2, 0, '1.5', 0, 0, 0)",
     u"Attributefield DEFAULT 1.5"},
    {"default-does-not-fit", kSystem,
     u"insert into Attributefield values ('JMD_PG', 'N', '', 1, 2, 0, '0100', 0, 0, 0)",
     u"Attributefield DEFAULT 0100", u"has more than 2 digits"},
    {"default-does-not-fit", kSystem,
     u"insert into Attributefield values ('JMD_PG', 'N', '', 1, 0, 0, '-2147483649', 0, 0, 0)",
     u"Attributefield DEFAULT -2147483649", u"is too large; the field takes 2147483647 at most"},
    {"default-does-not-fit", kSystem,
     u"insert into Attributefield values ('JMD_PG', 'N', '', 0, 9, 0, 'TB_BLC', 0, 0, 0)",
     u"Attributefield DEFAULT TB_BLC"},
    {"default-does-not-fit", kPipe,
     u"update SYS_ATTRIBUTEDEF set DEFAULTVALUE = '5' where DICTIONARY = 'DL_DY'",
     u"SYS_ATTRIBUTEDEF DEFAULTVALUE 5", u"is no code of the dictionary \"DL_DY\": 0, 1, 2, 3, 4"},
    {"default-does-not-fit", kSystem,
     u"insert into Attributefield values ('JMD_PG', 'N', '', 3, 2, 0, '100', 0, 0, 0)",
     u"Attributefield DEFAULT 100"},
    {"default-does-not-fit", kPipe,
     u"update SYS_ATTRIBUTEDEF set DEFAULTVALUE = 'TBL_SF' where rowid = 1",
     u"SYS_ATTRIBUTEDEF DEFAULTVALUE TBL_SF"},
    {"default-does-not-fit", kSystem,
     u"insert into Attributefield values ('JMD_PG', 'N', '', 3, 5, 2, '99999.10', 0, 0, 0), "
     "('JMD_PG', 'O', '', 3, 5, 0, '1.5', 0, 0, 0), ('JMD_PG', 'P', '', 3, 5, 1, '1.50', 0, 0, 0), "
     "('JMD_PG', 'Q', '', 4, 9, 0, '2026-01-31junk', 0, 0, 0), "
     "('JMD_PG', 'R', '', 4, 9, 0, '2026/01/31', 0, 0, 0), "
     "('JMD_PG', 'S', '', 4, 9, 0, '2026-01-31 12:30:00', 0, 0, 0)",
     u"Attributefield DEFAULT 1.5\nAttributefield DEFAULT 2026-01-31junk\nAttributefield DEFAULT "
     "2026/01/31\nAttributefield DEFAULT 99999.10",
     u"has more than 5 digits"},
    {"in-both-databases", kPipe,
     u"insert into SYS_GISTABLE values ('jmd_pg', '', 2); insert into SYS_ATTRIBUTEDEF values "
     "('JMD_PG', 'FWJG', '', 0, 9, 0, '', '', 0); insert into SYS_DICTIONARY values ('TBL_SF', "
     "'a;b')",
     u"SYS_ATTRIBUTEDEF FIELDNAME FWJG\nSYS_DICTIONARY NAME TBL_SF\nSYS_GISTABLE LAYERNAME jmd_pg"},
    {"unknown-dictionary", kSystem,
     u"update Attributefield set [DEFAULT] = 'TBL_NONE' where [TABLE] = 'JMD_PG' and NAME = 'FWCS'",
     u"Attributefield DEFAULT TBL_NONE"},
    {"unknown-dictionary", kSystem, u"drop table TBL_FWJG", u"Attributefield DEFAULT TBL_FWJG"},
    {"unknown-dictionary", kSystem, u"drop table TBL_SF", u"Attributefield DEFAULT TBL_SF",
     u"names no dictionary, and so do 2 more fields; did you mean \"TBL_SZ\" or \"TBL_CB\"?"},
    {"unknown-dictionary", kSystem,
     u"update Attributefield set [DEFAULT] = 'tbl_sf' where [TABLE] = 'JMD_PG' and NAME = 'FWCS'",
     u"Attributefield DEFAULT tbl_sf",
     u"names no dictionary; letter case counts; did you mean \"TBL_SF\"?"},
    {"unknown-dictionary", kSystem,
     u"update globaldefines set value = '{\"TableInfo\":{\"TableName\":\"JMD_PG\"},\"FieldMap\":["
     "{\"FieldName\":\"FWJG\",\"FieldDict\":\"X\"}]}' where key = '字段转换'",
     u"globaldefines VALUE {\"TableInfo\":{\"TableName\":\"JMD_P",
     u"FieldMap[0].FieldDict is \"X\", which names no dictionary"},
    {"unknown-dictionary", kPipe, u"update SYS_ATTRIBUTEDEF set DICTIONARY = 'X' where rowid = 2",
     u"SYS_ATTRIBUTEDEF DICTIONARY X"},
    {"unknown-pipe-field", kSystem,
     u"insert into RecordConfig values ('310301', '99999999999', 'JMD_PG', 'FWJG')",
     u"RecordConfig SHOWFIELD 99999999999"},
    {"unknown-record-field", kSystem,
     u"insert into RecordConfig values ('310301', 'FWJG', 'JMD_PG', 'NO_F')",
     u"RecordConfig ACTUALFIELD NO_F"},
    {"unknown-record-field", kSystem,
     u"insert into RecordConfig values ('310301', 'FWJG', 'JMD_PG', '2')",
     u"RecordConfig ACTUALFIELD 2",
     u"stands for \"GDBH\", a field that the table \"JMD_PG\" does not have"},
    {"unknown-template-field", kSystem,
     u"update QuobAreaLine set ANNRULE = '[FWJG][NO_F]' where CODE = '310301'",
     u"QuobAreaLine ANNRULE [FWJG][NO_F]"},
    {"unknown-annotation-field", kSystem,
     u"update VelmAnnotate set EXTDATA = '{\"Fields\":[\"NO_F\"]}' where CODE = '310301'",
     u"VelmAnnotate EXTDATA {\"Fields\":[\"NO_F\"]}"},
    {"unknown-annotation-dictionary", kSystem,
     u"update VelmAnnotate set EXTDATA = '{\"Dictionary\":{\"FWJG\":\"X\"}}' where CODE = '310301'",
     u"VelmAnnotate EXTDATA {\"Dictionary\":{\"FWJG\":\"X\"}}"},
    {"unknown-annotation-dictionary", kSystem,
     u"update VelmAnnotate set EXTDATA = '{\"Dictionary\":\"TBL_LMCX\"}' where CODE in ('430404', "
     "'430501')",
     u"VelmAnnotate EXTDATA {\"Dictionary\":\"TBL_LMCX\"}",
     u"has \"TBL_LMCX\", which names no dictionary, and so does 1 more annotation; did you mean "
     "\"TBL_LMCL\"?"},
    {"dictionary-without-entries", kSystem, u"create table TBL_NEW (code, value)", u"TBL_NEW"},
    {"dictionary-without-entries", kPipe,
     u"update SYS_DICTIONARY set LISTVALUE = '' where NAME = 'DL_DY'", u"SYS_DICTIONARY LISTVALUE"},
    {"dictionary-name", kSystem,
     u"create table [TBL_A B] as select * from TBL_SF; alter table TBL_SF rename to [TBL_SF ]",
     u"TBL_A B\nTBL_SF"},
    {"dictionary-empty-entry", kSystem, u"insert into TBL_FWJG values ('  ', 'x'), ('', '')",
     u"TBL_FWJG CODE\nTBL_FWJG CODE"},
    {"dictionary-empty-entry", kPipe, u"insert into SYS_DICTIONARY values ('NEW', 'a;;b')",
     u"SYS_DICTIONARY LISTVALUE a;;b"},
    {"dictionary-duplicate-entry", kSystem, u"insert into TBL_SF values ('1', 'new')",
     u"TBL_SF CODE 1", u"stands in row 2 too"},
    {"json-key", kSystem,
     u"update VelmFrame set FRAMEMODE = '{\"SelMod\":1}' where ConfigName = '1:500 50x50'",
     u"VelmFrame FRAMEMODE {\"SelMod\":1}"},
    {"json-key", kSystem,
     u"update globaldefines set value = '{\"FrameData\":{\"FrameSise\":{}}}' where key = "
     "'GlobalParam'",
     u"globaldefines VALUE {\"FrameData\":{\"FrameSise\":{}}}",
     u"the key \"FrameData.FrameSise\" is not known; did you mean \"FrameSize\" or "
     "\"FrameSave\"?"},
    {"json-key", kSystem,
     u"update globaldefines set value = '{\"Headerlist\":[\"a\"],\"FieldType\":[0],"
     "\"FieldDecimal\":[0]}' where key = '图属库'",
     u"globaldefines VALUE {\"Headerlist\":[\"a\"],\"FieldType\":"},
    {"json-syntax", kSystem, u"update VelmFrame set FRAMEMODE = ' ' where rowid = 1",
     u"VelmFrame FRAMEMODE", u"is empty"},
    {"json-syntax", kSystem,
     u"update globaldefines set value = '{\"[\":' || replace(hex(zeroblob(300)), '0', '[') || "
     "replace(hex(zeroblob(300)), '0', ']') || '}' where key = 'GlobalParam'",
     u"globaldefines VALUE {\"[\":[[[[[[[[[[[[[[[[[[[[[[[[[[[",
     u"is nested deeper than 512 levels, the most that are read, at character 517"},
    {"conversion-table", kSystem,
     u"update globaldefines set value = '{\"TableInfo\":{\"TableName\":\"NO\"}}' where key = "
     "'字段转换'",
     u"globaldefines VALUE {\"TableInfo\":{\"TableName\":\"NO\"}}"},
    {"conversion-table", kSystem,
     u"update globaldefines set value = '{\"TableInfo\":{}}' where key = '字段转换'",
     u"globaldefines VALUE {\"TableInfo\":{}}", u"TableInfo has no TableName"},
    {"conversion-field", kSystem,
     u"update globaldefines set value = '{\"TableInfo\":{\"TableName\":\"jmd_pg\"},\"FieldMap\":"
     "[{\"FieldName\":\"NO_F\"}]}' where key = '字段转换'",
     u"globaldefines VALUE {\"TableInfo\":{\"TableName\":\"jmd_p",
     u"FieldMap[0] is for \"NO_F\", a field that the table \"jmd_pg\" does not have"},
    {"layout-lists", kSystem,
     u"update globaldefines set value = '{\"HeaderList\":[\"a\"],\"FieldType\":[0,1],"
     "\"FieldDecimal\":[0]}' where key = '图属库'",
     u"globaldefines VALUE {\"HeaderList\":[\"a\"],\"FieldType\":"},
};

/// A row of the table is whole tests, and much of each is the start of two programs.
class CheckRule : public CheckTest
{
protected:
    void restore() const
    {
        for (const char* name : {kSystem, kPipe}) {
            const QString file = path(u"config/"_s + QLatin1String(name));
            QFile::remove(file);
            EXPECT_TRUE(QFile::copy(file + u".sample"_s, file));
        }
    }
    void keep() const
    {
        for (const char* name : {kSystem, kPipe}) {
            const QString file = path(u"config/"_s + QLatin1String(name));
            EXPECT_TRUE(QFile::copy(file, file + u".sample"_s));
        }
    }
};

}  // namespace

TEST_F(CheckTest, FindsNothingInTheSampleSet)
{
    const Answer answer = check({u"--strict"_s});
    EXPECT_EQ(answer.exitCode, 0);
    EXPECT_EQ(answer.output, u"0 errors, 0 warnings, 0 notes\n"_s);
}

TEST_F(CheckRule, FindsWhatBreaksItAndNothingElse)
{
    QStringList rules;
    for (const QJsonValue& rule : check({u"--rules"_s, u"--json"_s}).json.array())
        rules.append(rule[u"id"_s].toString());
    EXPECT_GT(rules.size(), 50);
    keep();
    for (const Broken& broken : kBroken) {
        const QString rule = QLatin1String(broken.rule);
        SCOPED_TRACE(rule.toStdString() + ": "
                     + QString::fromUtf16(broken.statement).toStdString());
        restore();
        runSql(QString::fromUtf16(broken.statement).split(u"; "_s),
               u"config/"_s + QLatin1String(broken.database));
        QStringList expected;
        for (const QString& place : QString::fromUtf16(broken.place).split(u'\n'))
            expected.append((rule + u' ' + place).trimmed());
        const Answer answer = check({u"--json"_s});
        EXPECT_EQ(found(answer), expected);
        const QString message = QString::fromUtf16(broken.message ? broken.message : u"");
        EXPECT_TRUE(message.isEmpty() || answer.json[0][u"message"_s].toString() == message)
            << answer.json.toJson().toStdString();
        rules.removeAll(rule);
    }
    // Those of files have tests of their own.
    EXPECT_EQ(rules,
              (QStringList{u"missing-database"_s, u"text-file-lines"_s, u"text-file-field"_s}));
}

TEST_F(CheckTest, ReportsWhatIsMissingOnce)
{
    ASSERT_TRUE(QFile::remove(path(u"config/PipeConfig.db"_s)));
    const Answer missing = check({u"--json"_s});
    EXPECT_EQ(found(missing), QStringList{u"missing-database"_s});
    EXPECT_EQ(missing.json[0].toObject().keys(),
              (QStringList{u"database"_s, u"message"_s, u"rule"_s, u"severity"_s}))
        << "nothing of what it does not have";
    runSql({u"delete from indexini"_s});
    EXPECT_EQ(
        found(check({u"--json"_s})),
        (QStringList{u"empty-table indexini"_s, u"missing-database"_s, u"text-file-lines"_s}));
    EXPECT_TRUE(check({}).output.contains(u" index.ini: has more than one line"_s)) << "no line of";
    runSql({u"drop table indexini"_s});
    EXPECT_EQ(
        found(check({u"--json"_s})),
        (QStringList{u"missing-database"_s, u"missing-table indexini"_s, u"text-file-lines"_s}))
        << "the text file stands in for the table";
    writeFile(u"config/attribute.def"_s, "F,A,n\n");
    EXPECT_FALSE(found(check({u"--json"_s})).contains(u"text-file-field"_s));
    runSql({u"delete from Attributetable"_s});
    EXPECT_TRUE(found(check({u"--json"_s})).contains(u"text-file-field"_s));
}

TEST_F(CheckTest, ChecksTheLinesThatStandInForATable)
{
    runSql({u"delete from Workdef"_s, u"delete from Attributetable"_s,
            u"delete from Attributefield"_s});
    writeFile(u"config/work.def"_s, "110101,<bad>,99,kz,1.0,t,999\n");
    writeFile(u"config/attribute.def"_s,
              "T,A,a,A,9\nF,A,n,n,77,1,0\nF,A,m,m,0,-4,0\nF,A,,o,0,1,0\nF,A,N,n,0,1,0\n");
    QStringList lines;
    for (const QString& line : check({}).output.split(u'\n'))
        lines.append(line.section(u": "_s, 0, 1).section(u' ', 1));
    for (const char* line : {"layer-name: work.def line 1 (CODE 110101) LAYER",
                             "entity-type-range: work.def line 1 (CODE 110101) ENTTYPE",
                             "colour-range: work.def line 1 (CODE 110101) COLOR",
                             "table-type-range: attribute.def line 1 (TABLE A) TYPE",
                             "field-type-range: attribute.def line 2 (TABLE A, NAME n) TYPE",
                             "field-length: attribute.def line 3 (TABLE A, NAME m) LENGTH",
                             "empty-field-name: attribute.def line 4 (TABLE A, NAME ) NAME",
                             "duplicate-code: attribute.def line 5 (TABLE A, NAME N) NAME"})
        EXPECT_EQ(lines.count(QLatin1String(line)), 1) << line << lines.join(u'\n').toStdString();
    EXPECT_EQ(lines.filter(u"Workdef"_s), QStringList()) << "not empty";
    ASSERT_TRUE(QFile::remove(path(u"config/work.def"_s)));
    ASSERT_TRUE(QDir().mkdir(path(u"config/work.def"_s)));
    const Answer refused = check({});
    EXPECT_EQ(refused.exitCode, 3);
    EXPECT_TRUE(refused.talk.trimmed().endsWith(u"config/work.def: it is no file"_s));
}

TEST_F(CheckTest, ReadsDocumentsAsTheLibraryDoes)
{
    runSql(
        {u"delete from globaldefines where key in ('GlobalParam', '字段转换', '图属库')"_s,
         u"insert into globaldefines values ('GlobalParam', '{\"FrameData\":{\"FrameSize\":"
         "{\"FrameWidth\":\"50\"}},\"SortRule\":[],\"ProgressBarParam\":{\"Any\":1}}'), ('图属库', '\uFEFF{}')"_s,
         u"update VelmFrame set FRAMEMODE = '{\"SelMode\":\"1\",\"TrimMode\":3000000000}',"
         "FRAMETAG = '{\"a\":{},\"b\":1}' where rowid = 1"_s});
    runSql({u"create table globaldefines (KEY, VALUE)"_s,
            u"insert into globaldefines values ('字段转换', '{\"TableInfo\":{\"TableName\":"
            "\"JMD_PG\"},\"FieldMap\":{\"FWJG\":{\"FieldLength\":\"8\"},\"NO_F\":{}}}')"_s},
           u"config/PipeConfig.db"_s);
    QStringList messages;
    const Answer answer = check({u"--json"_s, u"--ignore"_s, u"not-in-gbk"_s});
    for (const QJsonValue& finding : answer.json.array())
        messages.append(finding[u"rule"_s].toString() + u' ' + finding[u"message"_s].toString());
    messages.sort();
    EXPECT_EQ(messages,
              (QStringList{u"json-syntax is no JSON at character 1"_s,
                           u"json-type FieldMap.FWJG.FieldLength is to be a whole number"_s,
                           u"json-type FrameData.FrameSize.FrameWidth is to be a whole number"_s,
                           u"json-type SelMode is to be a whole number"_s,
                           u"json-type SortRule is to be an object"_s,
                           u"json-type TrimMode is to be a whole number"_s,
                           u"json-type the tag \"b\" is to be an object"_s}));
}

TEST_F(CheckTest, KnowsWhichDictionariesTheLibraryCanUse)
{
    runSql({u"create table [TBL_A-B] (code, value)"_s, u"insert into [TBL_A-B] values (1, 2)"_s,
            u"update Attributefield set [DEFAULT] = 'TBL_A-B' where rowid = 2"_s,
            u"create table tb_quote (code, value)"_s,
            u"insert into tb_quote values (1, 'it''s')"_s});
    EXPECT_EQ(
        check({}).output.section(u'\n', 0, 0),
        u"error unknown-dictionary: peltaconfig.db Attributefield row 2 (TABLE DGX_LN, NAME GC) "
        "DEFAULT: \"TBL_A-B\" names no dictionary; there is a table of that name, but that of "
        "a dictionary has letters, digits, _ and $ only"_s);
}
