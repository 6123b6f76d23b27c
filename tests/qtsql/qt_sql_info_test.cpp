// The Qt SQL metadata provider on the sample database of each engine, and the
// statements a query writes over the structure made from it, run on that engine.
#include "qtsql/qt_sql_info.h"

#include <gtest/gtest.h>

#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <algorithm>
#include <set>

#include "foundation/error.h"
#include "foundation/string_utils.h"
#include "qtsql/busy_indicator.h"
#include "qtsql/database_url.h"
#include "query/query.h"
#include "sample_databases.h"
#include "structure/structure.h"
#include "structure/value_editor.h"
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
}

TEST_P(QtSqlInfo, ValueQueriesFailWithTheDriversMessage) {
  ts4::TStrings values;
  ts4::TStrings items;
  ts4test::ExpectError<ts4::EWDBInfoError>(
      [&] { info_.GetSQLValues("SELECT CUST_ID FROM CUSTOMERS", values, items); }, 0,
      "Field count must be >= 2");
  try {
    info_.GetSQLValues("SELECT FROM WHERE", values, items);
    FAIL() << "bad SQL ran";
  } catch (const ts4::EWDBInfoError& e) {
    EXPECT_NE(std::string(e.what()).find_first_not_of(' '), std::string::npos) << "the driver says why";
  }
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

// A structure imported through a connection, and queries over it run there.
class ImportedStructure : public testing::TestWithParam<std::string> {
 protected:
  void Import(const std::string& connection) {
    connection_ = QString::fromStdString(connection);
    ts4::ImportStructure(connection, structure_);
  }

  ts4::TDSField& Field(std::string_view name, ts4::TDSFieldSearch mode = ts4::fsSQLExpr) {
    ts4::TDSField* field = structure_.FieldByName(mode, name);
    if (field == nullptr) throw std::runtime_error("no field " + std::string(name));
    return *field;
  }

  void AddCondition(ts4::TDSField& field, std::string_view op, std::string value1, std::string value2 = {}) {
    ts4::TFilterCond& cond = *query_.Root().AddCond();
    cond.SetField(&field);
    cond.SetOperator(structure_.OperatorByName(op));
    cond.SetValue(1, std::move(value1));
    if (!value2.empty()) cond.SetValue(2, std::move(value2));
  }

  /// The rows the statement gives, each as its columns joined by "/".
  std::vector<std::string> Run(const std::string& sql) {
    QSqlQuery query(QSqlDatabase::database(connection_));
    if (!query.exec(QString::fromStdString(sql)))
      throw std::runtime_error(query.lastError().text().toStdString() + " in\n" + sql);
    std::vector<std::string> rows;
    while (query.next()) {
      std::string row;
      for (int i = 0; i < query.record().count(); ++i)
        row += (i > 0 ? "/" : "") + query.value(i).toString().toStdString();
      rows.push_back(row);
    }
    std::sort(rows.begin(), rows.end());
    return rows;
  }

  QString connection_;
  ts4::TWDBStructure structure_;
  ts4::TWQuery query_{&structure_};
};

// The structure made from the sample database, and a query over it.
class DatabaseImportOn : public ImportedStructure {
 protected:
  void SetUp() override {
    TS4_REQUIRE_ENGINE(GetParam());
    sample_ = std::make_unique<SampleConnection>(GetParam());
    Import(sample_->Name());
  }

  std::unique_ptr<SampleConnection> sample_;
};

TEST_P(DatabaseImportOn, GeneratedStatementsRunAndFindTheRowsAHandWrittenOneFinds) {
  query_.QResult().ResultFields().Add(Field("C.COMPANY"), ts4::stAscending);
  query_.QResult().ResultFields().Add(Field("O.ORDER_ID"), ts4::stAscending);
  AddCondition(Field("O.STATUS"), "Equal", "S");
  AddCondition(Field("O.ORDER_DATE"), "Between", "2024-01-01", "2024-06-30");
  AddCondition(Field("C.COUNTRY"), "InList", "DE,FR");
  AddCondition(Field("P.CATEGORY"), "StartsWith", "Spare");
  const std::vector<std::string> expected =
      Run("SELECT DISTINCT C.COMPANY, O.ORDER_ID FROM CUSTOMERS C "
          "JOIN ORDERS O ON O.CUST_ID = C.CUST_ID JOIN ORDER_ITEMS OI ON OI.ORDER_ID = O.ORDER_ID "
          "JOIN PRODUCTS P ON P.PRODUCT_ID = OI.PRODUCT_ID "
          "WHERE O.STATUS = 'S' AND O.ORDER_DATE BETWEEN '2024-01-01' AND '2024-06-30' "
          "AND C.COUNTRY IN ('DE', 'FR') AND P.CATEGORY LIKE 'Spare%'");
  ASSERT_FALSE(expected.empty()) << "the sample data has such orders";
  for (ts4::TSQLSyntax syntax : {ts4::ssSQL2, ts4::ssSQL1}) {
    query_.SetSQLSyntax(syntax);
    const std::string sql = query_.GetQueryText();
    EXPECT_EQ(Run(sql), expected) << sql;
  }
}

TEST_P(DatabaseImportOn, AnSQLListEditorFillsItsValuesAndItems) {
  ts4::TWQtSqlInfo info;
  info.SetDatabaseName(sample_->Name());
  structure_.SetDatabaseInfo(&info);
  ts4::TDSField& company = Field("O.CUST_ID");
  company.SetEditType(ts4::etSQL);
  ts4::TDSSQLEditor& editor = *company.SQLEditor();
  editor.SQL().Add("SELECT CUST_ID, COMPANY FROM CUSTOMERS WHERE CUST_ID <= :Last ORDER BY CUST_ID");
  editor.SetSQLParams(ts4::TStrings{"Last=20"});
  editor.SetOpened(true);
  ASSERT_EQ(editor.Values().Count(), 20);
  EXPECT_EQ(editor.Values()[16], "17");
  EXPECT_EQ(editor.Items()[16], "O'Brien Hardware");
}

INSTANTIATE_TEST_SUITE_P(Engines, DatabaseImportOn, testing::Values("sqlite", "postgresql"));

// Tables whose names need quotes (a blank, capitals, which PostgreSQL folds
// when bare, and reserved words) with a foreign key between them, beside
// names that read bare. Each test makes them in a database of its own: a new
// in-memory one on SQLite, an open transaction that no other test sees on
// PostgreSQL.
class QuotedNamesOn : public ImportedStructure {
 protected:
  static constexpr const char* Memory = "ts4-test-names";

  void SetUp() override {
    TS4_REQUIRE_ENGINE(GetParam());
    std::string name = Memory;
    if (GetParam() == "sqlite") {
      QSqlDatabase memory = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QString::fromLatin1(Memory));
      memory.setDatabaseName(QStringLiteral(":memory:"));
      ASSERT_TRUE(memory.open());
    } else {
      sample_ = std::make_unique<SampleConnection>(GetParam());
      ASSERT_TRUE(sample_->Database().transaction());
      name = sample_->Name();
    }
    connection_ = QString::fromStdString(name);
    for (const char* statement :
         {"CREATE TABLE \"Customer List\" (\"CustId\" INTEGER PRIMARY KEY, \"Name\" VARCHAR(20), "
          "\"order\" INTEGER, \"left\" INTEGER, position INTEGER, city VARCHAR(20))",
          "CREATE TABLE \"LineItems\" (\"ItemNo\" INTEGER PRIMARY KEY, "
          "\"CustId\" INTEGER REFERENCES \"Customer List\" (\"CustId\"), \"UnitPrice\" INTEGER)",
          "INSERT INTO \"Customer List\" (\"CustId\", \"Name\", \"order\") "
          "VALUES (1, 'Ann', 2), (2, 'Bob', 1), (3, 'Cy', 1)",
          "INSERT INTO \"LineItems\" VALUES (10, 1, 9), (11, 2, 4), (12, 2, 8), (13, 3, 9), (14, 3, 3)"})
      (void)Run(statement);
    Import(name);
  }

  void TearDown() override {
    if (sample_ != nullptr) sample_->Database().rollback();
    ts4::RemoveDatabase(Memory);
  }

  std::unique_ptr<SampleConnection> sample_;
};

TEST_P(QuotedNamesOn, AreQuotedWhereTheEngineNeedsItAndQueriesOverThemRun) {
  const bool postgresql = GetParam() == "postgresql";
  const struct {
    const char* field;  // as the user sees it: captions stay readable
    const char* postgresql;
    const char* sqlite;
  } fields[] = {
      {"Customer List.Cust Id", "CL.\"CustId\"", "CL.CustId"},
      {"Customer List.Order", "CL.\"order\"", "CL.\"order\""},
      {"Customer List.Left", "CL.\"left\"", "CL.left"},
      {"Customer List.Position", "CL.position", "CL.position"},
      {"Customer List.City", "CL.city", "CL.city"},
      {"Line Items.Unit Price", "LI.\"UnitPrice\"", "LI.UnitPrice"},
  };
  for (const auto& f : fields)
    EXPECT_EQ(Field(f.field, ts4::fsCompoundName).GetSQLExpr(), postgresql ? f.postgresql : f.sqlite);
  const ts4::TDSTable& items = *structure_.TableByName(ts4::tsName, "LineItems");
  EXPECT_EQ(structure_.TableByName(ts4::tsName, "Customer List")->GetSQLExpr(), "\"Customer List\" CL");
  EXPECT_EQ(items.GetSQLExpr(), postgresql ? "\"LineItems\" LI" : "LineItems LI");
  ASSERT_EQ(items.LinkCount(), 1);
  EXPECT_EQ(items.Links(0)->GetSQLExpr(ts4::ssSQL2),
            postgresql ? "(CL.\"CustId\"=LI.\"CustId\")" : "(CL.CustId=LI.CustId)");

  query_.QResult().ResultFields().Add(Field("Customer List.Name", ts4::fsCompoundName), ts4::stAscending);
  query_.QResult().ResultFields().Add(Field("Line Items.Unit Price", ts4::fsCompoundName), ts4::stAscending);
  AddCondition(Field("Customer List.Order", ts4::fsCompoundName), "Equal", "1");
  AddCondition(Field("Line Items.Unit Price", ts4::fsCompoundName), "GreaterThan", "5");
  for (ts4::TSQLSyntax syntax : {ts4::ssSQL2, ts4::ssSQL1}) {
    query_.SetSQLSyntax(syntax);
    const std::string sql = query_.GetQueryText();
    EXPECT_EQ(Run(sql), (std::vector<std::string>{"Bob/8", "Cy/9"})) << sql;
  }
}

INSTANTIATE_TEST_SUITE_P(Engines, QuotedNamesOn, testing::Values("sqlite", "postgresql"));

// The application's busy indicator is shown around an import and a value
// query, and ended when the work fails. Without one (the other tests) the
// work runs all the same.
TEST(QtSqlBusyIndicator, IsShownWhileTheDatabaseWorks) {
  const SampleConnection sample("sqlite");
  ts4::TWDBStructure structure;
  std::vector<std::string> calls;
  ts4::SetBusyIndicator({[&] { calls.push_back("begin " + std::to_string(structure.TableCount())); },
                         [&] { calls.push_back("end " + std::to_string(structure.TableCount())); }});
  const struct TReset {
    ~TReset() { ts4::SetBusyIndicator({}); }
  } reset;
  ts4::ImportStructure(sample.Name(), structure);
  ts4::TWQtSqlInfo info;
  info.SetDatabaseName(sample.Name());
  ts4::TStrings values;
  ts4::TStrings items;
  EXPECT_THROW(info.GetSQLValues("SELECT FROM WHERE", values, items), ts4::EWDBInfoError);
  EXPECT_EQ(calls, (std::vector<std::string>{"begin 0", "end 5", "begin 5", "end 5"}));
}

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
    EXPECT_FALSE(QSqlDatabase::contains(QStringLiteral("ts4-test-bad")))
        << c.url << " left its connection behind";
  }
}

}  // namespace
