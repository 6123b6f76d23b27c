// The statements a query writes over the structure made from each engine's
// sample database, run on that engine, and an SQL list editor there.
#include <gtest/gtest.h>

#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <algorithm>

#include "qtsql/qt_sql_info.h"
#include "query/query.h"
#include "sample_databases.h"
#include "structure/structure.h"
#include "structure/value_editor.h"

namespace {

class DatabaseImportOn : public testing::TestWithParam<std::string> {
 protected:
  void SetUp() override {
    TS4_REQUIRE_ENGINE(GetParam());
    connection_ = std::make_unique<ts4test::SampleConnection>(GetParam());
    info_.SetDatabaseName(connection_->Name());
    structure_.SetDatabaseInfo(&info_);
    structure_.SetAutoAddFields(true);
    structure_.UpdateDatabaseInfo();
  }

  ts4::TDSField& Field(std::string_view sqlExpr) {
    ts4::TDSField* field = structure_.FieldByName(ts4::fsSQLExpr, sqlExpr);
    if (field == nullptr) throw std::runtime_error("no field " + std::string(sqlExpr));
    return *field;
  }

  void AddCondition(std::string_view field, std::string_view op, std::string value1,
                    std::string value2 = {}) {
    ts4::TFilterCond& cond = *query_.Root().AddCond();
    cond.SetField(&Field(field));
    cond.SetOperator(structure_.OperatorByName(op));
    cond.SetValue(1, std::move(value1));
    if (!value2.empty()) cond.SetValue(2, std::move(value2));
  }

  /// The rows the statement gives, each as its columns joined by "/".
  std::vector<std::string> Run(const std::string& sql) {
    QSqlQuery query(connection_->Database());
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

  std::unique_ptr<ts4test::SampleConnection> connection_;
  ts4::TWQtSqlInfo info_;
  ts4::TWDBStructure structure_;
  ts4::TWQuery query_{&structure_};
};

TEST_P(DatabaseImportOn, GeneratedStatementsRunAndFindTheRowsAHandWrittenOneFinds) {
  query_.QResult().ResultFields().Add(Field("C.COMPANY"), ts4::stAscending);
  query_.QResult().ResultFields().Add(Field("O.ORDER_ID"), ts4::stAscending);
  AddCondition("O.STATUS", "Equal", "S");
  AddCondition("O.ORDER_DATE", "Between", "2024-01-01", "2024-06-30");
  AddCondition("C.COUNTRY", "InList", "DE,FR");
  AddCondition("P.CATEGORY", "StartsWith", "Spare");
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

}  // namespace
