#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "structure/structure.h"
#include "test_support.h"

namespace {

using Lines = std::vector<std::string>;
using ts4test::StringsOf;

// An older text and lines that its structure, written again, must show in order.
struct OldText {
  const char* what;
  const char* text;
  const char* written;
};

const OldText OldTexts[] = {
    {"without a version: 1.1, no counts, operator lines, table and field lists", R"([Main]
TableCount=7
FieldCount=7
OperatCount=7
FieldGroups=7
RootFieldsFirst=1
[Operations]
EqualTo=@f = '@1',
Between=@f between '@1' and '@2',and
Odd=mod(@f, 2) = 1,
[Tables]
C=customer
O=orders
[Table:C]
DisplayName=Customers
Links=O
[Table:O]
[Link:C-O]
FldName1=CustNo
FldName2=CustNo
LinkType=left
[Fields]
co=Company name
[Field:co]
FieldName=Company
TableName=customer
FieldType=1
EditType=1
DefaultValue=ACME
Operats=EqualTo,Between
CondField=0)",
     R"(OperatCount=3
TableCount=2
FieldCount=1
FieldGroups=0
RootFieldsFirst=0
Name=Equal
DisplayName=is equal to
SQLName=@f = '@1'
ValFormat=
Name=Between
DisplayName=is between
SQLName=@f between '@1' and '@2'
ValFormat=and
Name=Odd
DisplayName=Odd
SQLName=mod(@f, 2) = 1
ValFormat=
Name=customer
DisplayName=Customers
Alias=C
Links=O
[Link:C-O]
Operators==
LinkType=Left
Name=orders
DisplayName=orders
Alias=O
[Field:1]
ID=1
Kind=wfkData
FieldExpr=Company
DisplayName=Company name
TableAlias=C
EditType=1
FieldType=1
UIC=0
UIR=1
Operators=Equal,Between
DefValue=ACME)"},
    {"1.2: operation sections with ordinal types, tables still listed", R"([Main]
Version=1.2
TableCount=3
[Operations]
Equal
[Operation:Equal]
SQLName=@f = '@1'
AppliedTypes=1,16,
ValueIsList=1
[Tables]
C=customer
[Table:C])",
     R"(OperatCount=1
TableCount=1
Name=Equal
DisplayName=is equal to
AppliedTypes=ftString,ftMemo,
ValueType=vtList
Alias=C)"},
    {"1.5: numbered tables, listed fields, groups listing positions", R"([Main]
Version=1.5
TableCount=1
FieldGroups=1
[Table:1]
Name=customer
Alias=C
[Fields]
a=A
b=B
[Field:a]
FieldName=A
TableAlias=C
[Field:b]
FieldName=B
TableAlias=C
[FieldGroup1]
GroupName=G
Fields=2)",
     R"(TableCount=1
FieldCount=2
FieldGroups=1
FieldExpr=A
DisplayName=A
FieldExpr=B
[FieldGroup1]
GroupName=G
Fields=2
[RootGroup]
Fields=1)"},
    {"2.0: FieldCount but no OperatCount, type names, kind ordinals", R"([Main]
Version=2
OperatCount=5
FieldCount=1
[Operations]
Equal
[Operation:Equal]
SQLName=@f = '@1'
AppliedTypes=ftString,ftMemo,
[Operator:1]
Name=Ignored
[Field:1]
ID=7
Kind=1
FieldExpr=1+1)",
     R"(OperatCount=1
FieldCount=1
Name=Equal
AppliedTypes=ftString,ftMemo,
[Field:1]
ID=7
Kind=wfkVirtual
FieldExpr=1+1)"},
    {"2.01: numbered operators with ValueIsList, groups still by position", R"([Main]
Version=2.01
OperatCount=1
FieldCount=2
FieldGroups=1
[Operator:1]
Name=EqualTo
SQLName=@f = '@1'
AppliedTypes=ftString,
ValueIsList=1
ValueType=vtSubQuery
[Field:1]
ID=10
Kind=1
FieldExpr=x
Operators=EqualTo
[Field:2]
ID=20
Kind=1
FieldExpr=y
[FieldGroup1]
GroupName=G
Fields=2
[RootGroup]
Fields=1)",
     R"(Name=Equal
ValueType=vtList
ID=10
Operators=Equal
ID=20
[FieldGroup1]
Fields=20
[RootGroup]
Fields=10)"},
    {"2.61: groups list IDs, RootFieldsFirst not yet", R"([Main]
Version=2.61
FieldCount=2
FieldGroups=1
RootFieldsFirst=1
[Field:1]
ID=10
Kind=1
FieldExpr=x
[Field:2]
ID=20
Kind=1
FieldExpr=y
[FieldGroup1]
GroupName=G
Fields=20
[RootGroup]
Fields=10)",
     R"(RootFieldsFirst=0
[FieldGroup1]
Fields=20
[RootGroup]
Fields=10)"},
    {"2.62: RootFieldsFirst", "[Main]\nVersion=2.62\nRootFieldsFirst=1", "RootFieldsFirst=1"},
    {"3.0: value type and kind by name", R"([Main]
Version=3.0
OperatCount=1
FieldCount=1
[Operator:1]
Name=Sub
ValueIsList=1
ValueType=vtSubQuery
[Field:1]
ID=1
Kind=wfkVirtual
FieldExpr=x)",
     "ValueType=vtSubQuery\nKind=wfkVirtual"},
};

TEST(StructureFileVersions, OlderTextsReadIntoTodaysStructure) {
  for (const OldText& old : OldTexts) {
    SCOPED_TRACE(old.what);
    ts4::TWDBStructure db;
    db.SetStructString(old.text);
    ts4::TStrings written;
    db.SaveToStrings(written);
    ts4::TStrings expected;
    expected.SetText(old.written);
    ts4test::ExpectLinesInOrder(written, expected.Lines());
  }
}

TEST(StructureFileVersions, MissingOldSectionsAndNames) {
  struct Case {
    Lines text;
    int code;
    std::string message;
  };
  const Case cases[] = {
      {{"[Main]", "Version=1.2", "[Operations]", "Equal"}, 9, "Can not find section Operation:Equal"},
      {{"[Main]", "[Tables]", "C=customer"}, 9, "Can not find section Table:C"},
      {{"[Main]", "[Fields]", "co=Company"}, 9, "Can not find section Field:co"},
      {{"[Main]", "[Fields]", "co=Company", "[Field:co]", "TableName=nope"}, 4, "No such table nope"},
      {{"[Main]", "Version=1.2", "[Operations]", "Equal", "[Operation:Equal]", "AppliedTypes=1,30,"},
       0,
       "Unknown field type: 30"},
  };
  for (const Case& c : cases) {
    ts4::TWDBStructure db;
    const std::string before = db.GetStructString();
    ts4test::ExpectError([&] { db.LoadFromStrings(StringsOf(c.text)); }, c.code, c.message);
    EXPECT_EQ(db.GetStructString(), before);
  }
}

}  // namespace
