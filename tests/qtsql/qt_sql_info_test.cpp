// The Qt SQL metadata provider on the sample database of each engine.
#include "qtsql/qt_sql_info.h"

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <algorithm>
#include <set>

#include "foundation/error.h"
#include "foundation/string_utils.h"
#include "qtsql/database_url.h"
#include "sample_databases.h"
#include "test_support.h"

namespace {

using ts4test::SampleConnection;

class QtSqlInfo : public testing::TestWithParam<std::string> {
 protected:
  void SetUp() override {
    TS4_REQUIRE_ENGINE(GetParam());
    connection_ = std::make_unique<SampleConnection>(GetParam());
    info_.SetDatabaseName(connection_->Name());
  }

  std::unique_ptr<SampleConnection> connection_;
  ts4::TWQtSqlInfo info_;
};

// PostgreSQL folds the unquoted names of the script to lower case.
std::string Upper(const std::string& name) {
  return ts4::UpperCase(name);
}

TEST_P(QtSqlInfo, ListsTheTablesSortedByName) {
  std::vector<std::string> tables;
  for (const std::string& name : info_.GetTableNames()) tables.push_back(Upper(name));
  EXPECT_EQ(tables,
            (std::vector<std::string>{"CUSTOMERS", "EMPLOYEES", "ORDERS", "ORDER_ITEMS", "PRODUCTS"}));
}

TEST_P(QtSqlInfo, ColumnsComeWithTheTypeTheDatabaseDeclares) {
  const std::string orders = GetParam() == "sqlite" ? "ORDERS" : "orders";
  const ts4::TDBFieldList& columns = info_.GetFieldList(orders);
  std::vector<std::string> described;
  for (int i = 0; i < columns.Count(); ++i) {
    const ts4::TDBFieldInfo& column = *columns.Items(i);
    described.push_back(Upper(column.FieldName) + " " + ts4::FldTypeToStr(column.FieldType) + " " +
                        std::to_string(column.FieldSize));
  }
  EXPECT_EQ(described,
            (std::vector<std::string>{"ORDER_ID ftInteger 0", "CUST_ID ftInteger 0", "EMP_ID ftInteger 0",
                                      "ORDER_DATE ftDate 0", "SHIP_DATE ftDate 0", "SHIP_TIME ftTime 0",
                                      "PLACED_AT ftDateTime 0", "STATUS ftString 12", "TOTAL ftBCD 2"}));
  const std::string products = GetParam() == "sqlite" ? "PRODUCTS" : "products";
  const ts4::TDBFieldInfo* discontinued = info_.GetFieldList(products).FindByName("DISCONTINUED");
  ASSERT_NE(discontinued, nullptr);
  EXPECT_EQ(discontinued->FieldType, ts4::ftBoolean);
  EXPECT_EQ(info_.GetFieldList("NO_SUCH_TABLE").Count(), 0);
}

TEST_P(QtSqlInfo, ForeignKeysNameBothEnds) {
  std::vector<ts4::TDBForeignKey> keys;
  info_.ForeignKeysByDatabase(keys);
  std::set<std::string> described;
  for (const ts4::TDBForeignKey& key : keys) {
    std::string text = Upper(key.Table) + "(";
    for (const std::string& column : key.Columns) text += Upper(column) + " ";
    text += ")->" + Upper(key.RefTable) + "(";
    for (const std::string& column : key.RefColumns) text += Upper(column) + " ";
    described.insert(text + ")");
  }
  EXPECT_EQ(described,
            (std::set<std::string>{
                "EMPLOYEES(REPORTS_TO )->EMPLOYEES(EMP_ID )", "ORDERS(CUST_ID )->CUSTOMERS(CUST_ID )",
                "ORDERS(EMP_ID )->EMPLOYEES(EMP_ID )", "ORDER_ITEMS(ORDER_ID )->ORDERS(ORDER_ID )",
                "ORDER_ITEMS(PRODUCT_ID )->PRODUCTS(PRODUCT_ID )"}));
}

TEST_P(QtSqlInfo, SQLValuesAreTheFirstTwoColumnsAsText) {
  ts4::TStrings values{"kept"};
  ts4::TStrings items;
  info_.GetSQLValues(
      "SELECT ORDER_ID, ORDER_DATE FROM ORDERS WHERE ORDER_ID <= 2 "
      "UNION ALL SELECT NULL, NULL FROM ORDERS WHERE ORDER_ID = 1 ORDER BY 1 NULLS LAST",
      values, items);
  ASSERT_EQ(values.Count(), 4) << "appended";
  EXPECT_EQ(values[1], "1");
  EXPECT_EQ(items[1].size(), 10u) << "a date as ISO text: " << items[1];
  EXPECT_EQ(items[1].substr(0, 2), "20");
  EXPECT_EQ(values[3], "") << "null";
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr) << "the wait cursor is gone again";
}

TEST_P(QtSqlInfo, ValueQueriesFailWithTheDriversMessageAndRestoreTheCursor) {
  ts4::TStrings values;
  ts4::TStrings items;
  ts4test::ExpectError<ts4::EWDBInfoError>(
      [&] { info_.GetSQLValues("SELECT CUST_ID FROM CUSTOMERS", values, items); }, 0,
      "Field count must be >= 2");
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
  try {
    info_.GetSQLValues("SELECT FROM WHERE", values, items);
    FAIL() << "bad SQL ran";
  } catch (const ts4::EWDBInfoError& e) {
    EXPECT_NE(std::string(e.what()).find_first_not_of(' '), std::string::npos) << "the driver says why";
  }
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
  EXPECT_TRUE(values.Empty());
}

TEST_P(QtSqlInfo, SettingsAreTheConnectionName) {
  ts4::TStrings saved;
  info_.SaveInfo(saved);
  EXPECT_EQ(saved.Lines(), (std::vector<std::string>{"DatabaseName=" + connection_->Name()}));
  ts4::TWQtSqlInfo other;
  other.LoadInfo(saved);
  EXPECT_EQ(other.DatabaseName(), connection_->Name());
  other.LoadInfo(ts4::TStrings{"DatabaseName="});
  EXPECT_EQ(other.DatabaseName(), connection_->Name()) << "an empty name changes nothing";
  ts4::TStrings names;
  other.GetDatabaseNames(names);
  EXPECT_GE(names.IndexOf(connection_->Name()), 0);
}

INSTANTIATE_TEST_SUITE_P(Engines, QtSqlInfo, testing::Values("sqlite", "postgresql"));

TEST(QtSqlInfoConnections, AConnectionThatIsNotThereIsAnError) {
  ts4::TWQtSqlInfo info;
  info.SetDatabaseName("nobody registered this");
  ts4test::ExpectError<ts4::EWDBInfoError>(
      [&] { (void)info.GetTableNames(); }, 0,
      "There is no database connection named \"nobody registered this\"");
}

TEST(QtSqlInfoConnections, DatabasesThatCannotBeOpenedGiveTheDriversMessage) {
  const struct {
    const char* url;
    const char* message;  // a part of it; empty: any driver message
  } cases[] = {
      {"sqlite:/no/such/folder/sales.db", ""},
      {"postgresql://ts4@127.0.0.1:1/ts4_sales", ""},
      {"mysql://host/db", "Unknown database \"mysql://host/db\""},
      {"postgresql://", "Unknown database"},
      {"", "Unknown database"},
  };
  for (const auto& c : cases) {
    try {
      ts4::AddDatabaseFromUrl(c.url, "ts4-test-bad");
      ADD_FAILURE() << c.url << " opened";
    } catch (const ts4::EWDBInfoError& e) {
      EXPECT_NE(std::string(e.what()).find(c.message), std::string::npos) << e.what();
      EXPECT_FALSE(std::string(e.what()).empty());
    }
    EXPECT_FALSE(QSqlDatabase::contains("ts4-test-bad")) << c.url << " left its connection behind";
  }
}

}  // namespace
