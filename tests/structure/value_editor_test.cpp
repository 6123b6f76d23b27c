#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "structure/db_info.h"
#include "structure/structure.h"
#include "test_support.h"

namespace {

// A provider that answers every query with two rows and records the SQL.
class RecordingInfo : public ts4::TWDBInfo {
 public:
  std::vector<std::string> queries;
  void GetSQLValues(std::string_view sql, ts4::TStrings& values, ts4::TStrings& items) override {
    queries.emplace_back(sql);
    values.Add("1");
    items.Add("one");
    values.Add("2");
    items.Add("two");
  }
};

struct EditorFixture : ::testing::Test {
  ts4::TWDBStructure structure;
  ts4::TDSField* field = structure.AddField(ts4::wfkVirtual, "1", "One", nullptr);
};

TEST_F(EditorFixture, EditTypeChoosesTheEditorClass) {
  EXPECT_EQ(field->ValueEditor(), nullptr);
  field->SetEditType(ts4::etEdit);
  EXPECT_NE(field->TextEditor(), nullptr);
  field->SetEditType(ts4::etList);
  ASSERT_NE(field->ListEditor(), nullptr);
  EXPECT_EQ(field->SQLEditor(), nullptr);
  field->ListEditor()->Items().Add("Red");
  field->SetEditType(ts4::etList);
  EXPECT_EQ(field->ListEditor()->Items().Count(), 1) << "the same edit type keeps the editor and its data";
  field->SetEditType(ts4::etCustom);
  EXPECT_NE(field->CustomEditor(), nullptr);
  field->SetEditType(ts4::etSQL);
  EXPECT_NE(field->SQLEditor(), nullptr);
  EXPECT_EQ(field->ListEditor(), field->SQLEditor());
  field->SetEditType(ts4::etAuto);
  EXPECT_EQ(field->ValueEditor(), nullptr);
}

TEST(TextEditor, CaseOptionsExcludeEachOther) {
  ts4::TDSTextEditor editor;
  editor.SetOption(0, true);
  editor.SetOption(ts4::teoUpperCase, true);
  editor.SetOption(ts4::teoLowerCase, true);
  EXPECT_EQ(editor.Options(), 0b101U);
  editor.SetOption(ts4::teoUpperCase, true);
  EXPECT_EQ(editor.Options(), 0b011U);
  editor.SetOption(0, false);
  editor.SetOption(40, true);
  EXPECT_EQ(editor.Options(), 0b010U);
  EXPECT_TRUE(editor.GetOption(ts4::teoUpperCase));
  EXPECT_FALSE(editor.GetOption(40));
}

TEST_F(EditorFixture, SqlEditorOpensOnceAndRefreshRunsAgain) {
  RecordingInfo info;
  structure.SetDatabaseInfo(&info);
  field->SetEditType(ts4::etSQL);
  ts4::TDSSQLEditor& editor = *field->SQLEditor();
  editor.SQL().Add("SELECT id, name FROM colour");
  editor.SetOpened(true);
  editor.SetOpened(true);
  EXPECT_EQ(info.queries.size(), 1U);
  EXPECT_EQ(editor.Items(), (ts4::TStrings{"one", "two"}));
  EXPECT_EQ(editor.Values(), (ts4::TStrings{"1", "2"}));
  editor.Refresh();
  EXPECT_EQ(info.queries.size(), 2U);
  EXPECT_EQ(editor.Items().Count(), 2);
  editor.SetOpened(false);
  EXPECT_TRUE(editor.Items().Empty());
  // Without a provider opening fails, yet the editor counts as opened.
  structure.SetDatabaseInfo(nullptr);
  ts4test::ExpectError<ts4::EWDBStructError>([&] { editor.SetOpened(true); }, 11,
                                             "DatabaseInfo is not specified");
  EXPECT_TRUE(editor.Opened());
}

TEST_F(EditorFixture, NewParametersCloseTheEditorSoTheQueryRunsAgain) {
  RecordingInfo info;
  structure.SetDatabaseInfo(&info);
  field->SetEditType(ts4::etSQL);
  ts4::TDSSQLEditor& editor = *field->SQLEditor();
  editor.SQL().Add("SELECT id FROM orders WHERE cust = :Cust");
  editor.SetSQLParams({"Cust=7"});
  editor.SetOpened(true);
  editor.SetSQLParams({"Cust=7"});
  EXPECT_TRUE(editor.Opened());
  editor.SetSQLParams({"Cust=8"});
  EXPECT_FALSE(editor.Opened());
  editor.SetOpened(true);
  EXPECT_EQ(info.queries, (std::vector<std::string>{"SELECT id FROM orders WHERE cust = 7",
                                                    "SELECT id FROM orders WHERE cust = 8"}));
}

TEST(SqlEditor, ApplyParams) {
  ts4::TWDBStructure structure;
  ts4::TDSSQLEditor editor(structure);
  editor.SetSQLParams({"Cust=7", "CustNo=':Cust'", "Day=2"});
  const struct {
    const char* text;
    const char* expected;
  } cases[] = {
      {"a = :Cust", "a = 7"},
      {"a = :cust AND b = :CUSTNO", "a = 7 AND b = ':Cust'"},  // values are not read again
      {"a = ':Cust' OR b = :Day", "a = ':Cust' OR b = 2"},     // literals stay
      {"a::text = :Other", "a::text = :Other"},
      {"a = :Cust_2 :", "a = :Cust_2 :"},
      {"'open :Cust", "'open :Cust"},
  };
  for (const auto& c : cases) EXPECT_EQ(editor.ApplyParams(c.text), c.expected) << c.text;
  // HasParameter looks for the colon and the name only.
  editor.SQL().Add("SELECT * FROM t WHERE a = :CustNo");
  EXPECT_TRUE(editor.HasParameter("Cust"));
  EXPECT_TRUE(editor.HasParameter("custno"));
  EXPECT_FALSE(editor.HasParameter("No"));
}

}  // namespace
