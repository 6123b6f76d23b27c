#include <gtest/gtest.h>

#include <string>

#include "fake_db_info.h"
#include "structure/db_info.h"

namespace {

using FakeInfo = ts4test::FakeDBInfo;

TEST(DBInfo, FieldListIsCachedPerTable) {
  FakeInfo info;
  info.catalogue["customer"] = {{"CustNo", 4, ts4::ftInteger}, {"Company", 30, ts4::ftString}};
  info.catalogue["orders"] = {{"OrderNo", 4, ts4::ftInteger}};
  EXPECT_EQ(info.GetFieldList("customer").Count(), 2);
  EXPECT_EQ(info.GetFieldList("customer").Count(), 2);
  EXPECT_EQ(info.fieldReads, 1);
  EXPECT_EQ(info.GetFieldList("orders").Count(), 1);
  EXPECT_EQ(info.GetFieldList("customer").Count(), 2);
  EXPECT_EQ(info.fieldReads, 3);
  ts4::TStrings names;
  info.GetFieldNamesByTable("customer", names);
  EXPECT_EQ(names.Lines(), (std::vector<std::string>{"CustNo", "Company"}));
  info.Update();
  (void)info.GetFieldList("customer");
  EXPECT_EQ(info.fieldReads, 4) << "Update forgets the cache";
}

TEST(DBInfo, TableNamesAreReadOnce) {
  FakeInfo info;
  info.catalogue["b"] = {};
  info.catalogue["a"] = {};
  EXPECT_EQ(info.GetTableNames().Lines(), (std::vector<std::string>{"a", "b"}));
  (void)info.GetTableNames();
  EXPECT_EQ(info.tableReads, 1);
  info.ConnectionChanged();
  (void)info.GetTableNames();
  EXPECT_EQ(info.tableReads, 2);
}

TEST(DBFieldList, FindByNameAndStoredAttributes) {
  ts4::TDBFieldList list;
  list.Add("CustNo", 4, ts4::ftInteger);
  list.Add("Notes", 70000, ts4::ftUnknown);
  ASSERT_NE(list.FindByName("custno"), nullptr);
  EXPECT_EQ(list.FindByName("custno")->FieldName, "CustNo");
  EXPECT_EQ(list.FindByName("missing"), nullptr);
  EXPECT_EQ(list.Items(1)->FieldType, ts4::ftString) << "an unknown type is reported as a string";
  EXPECT_EQ(list.Items(1)->FieldSize, 70000 - 65536) << "sizes are 16-bit";
  list.Clear();
  EXPECT_EQ(list.Count(), 0);
}

}  // namespace
