// The demo window driven as a person would: words clicked and typed into,
// the result fields editor, Run, undo, and pasted SQL. Row counts are checked
// against SQLite itself.
#include <sqlite3.h>

#include <QAbstractButton>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QStandardItemModel>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QTimer>
#include <QTreeWidget>
#include <QUndoStack>
#include <QtTest>
#include <memory>

#include "demo_database.h"
#include "demo_window.h"
#include "panel/dropdown_edit.h"
#include "panel/panel_geometry.h"
#include "panel/query_panel.h"
#include "query_history.h"
#include "sql_preview.h"

namespace {

// How many rows SQLite itself returns for the statement, with text parameters bound.
int SQLiteCount(const QString& sql, const QList<std::pair<QByteArray, QByteArray>>& params = {}) {
  sqlite3* db = nullptr;
  if (sqlite3_open_v2(TS4_SAMPLE_DB, &db, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK) return -1;
  sqlite3_stmt* statement = nullptr;
  int count = -1;
  if (sqlite3_prepare_v2(db, sql.toUtf8().constData(), -1, &statement, nullptr) == SQLITE_OK) {
    for (const auto& [name, value] : params)
      sqlite3_bind_text(statement, sqlite3_bind_parameter_index(statement, name.constData()),
                        value.constData(), -1, SQLITE_TRANSIENT);
    count = 0;
    int step = SQLITE_ROW;
    while ((step = sqlite3_step(statement)) == SQLITE_ROW) ++count;
    if (step != SQLITE_DONE) count = -1;
  }
  sqlite3_finalize(statement);
  sqlite3_close(db);
  return count;
}

int ShownCount(const QString& status) {
  return status.section(QLatin1Char(' '), 0, 0).toInt();
}

}  // namespace

class DemoTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QStandardPaths::setTestModeEnabled(true); }

  void init() {
    database_ = std::make_unique<ts4demo::TDemoDatabase>();
    database_->OpenDatabase(QStringLiteral("sqlite:" TS4_SAMPLE_DB));
    database_->LoadStructureFile(QStringLiteral(TS4_EXAMPLE_DATA "/sales.str"));
    window_ = std::make_unique<ts4demo::TDemoWindow>(*database_, false);
    window_->show();
    QVERIFY(QTest::qWaitForWindowExposed(window_.get()));
  }

  void cleanup() {
    window_.reset();
    database_.reset();
  }

  // A value typed into the panel's own word reaches the SQL, the rows and the undo stack.
  void valueTypedIntoTheWordRuns() {
    QVERIFY(window_->OpenQuery(QStringLiteral(TS4_EXAMPLE_DATA "/big-orders.qry"), false));
    ts4::TWQueryPanel& panel = *window_->Panel();
    const ts4::TFilterRow* total = panel.GetRowByNum(3);
    QVERIFY(total != nullptr);
    auto* word = qobject_cast<ts4::TDropDownEdit*>(panel.RowControl(*total, ts4::rciValue1));
    QVERIFY(word != nullptr);
    QCOMPARE(word->text(), QStringLiteral("1000"));

    QTest::mouseClick(word, Qt::LeftButton);
    auto* edit = qobject_cast<QLineEdit*>(word->Editor());
    QVERIFY(edit != nullptr && edit->isVisible());
    edit->selectAll();
    QTest::keyClicks(edit, QStringLiteral("250"));
    QTest::keyClick(edit, Qt::Key_Return);

    const QString sql = window_->Preview()->Text();
    QVERIFY2(sql.contains(QStringLiteral("O.TOTAL >= 250")), qPrintable(sql));
    QVERIFY(window_->isWindowModified());
    QVERIFY(window_->RunWithValues());
    const int expected = SQLiteCount(sql);
    QVERIFY(expected > 0);
    QCOMPARE(ShownCount(window_->RunStatus()), expected);
    QCOMPARE(window_->Rows()->rowCount(), expected);

    window_->History()->Stack()->undo();
    QVERIFY(window_->Preview()->Text().contains(QStringLiteral("O.TOTAL >= 1000")));
    QVERIFY(!window_->isWindowModified());
    window_->History()->Stack()->redo();
    QCOMPARE(window_->Preview()->Text(), sql);

    // Saved, and read back as it was.
    QTemporaryDir dir;
    QVERIFY(window_->SaveQuery(dir.filePath(QStringLiteral("total.qry"))));
    QVERIFY(!window_->isWindowModified());
    window_->NewQuery();
    QVERIFY(!window_->Preview()->Text().contains(QStringLiteral("O.TOTAL")));
    QVERIFY(window_->OpenQuery(dir.filePath(QStringLiteral("total.qry")), false));
    QCOMPARE(window_->Preview()->Text(), sql);
  }

  // A parameter's value is bound with its field's type, and the rows are those SQLite gives.
  void parameterValueIsBound() {
    QVERIFY(window_->OpenQuery(QStringLiteral(TS4_EXAMPLE_DATA "/customers-by-city.qry"), false));
    ts4::TQueryResult& result = window_->Panel()->QResult();
    QCOMPARE(result.GetParamCount(), 1);
    result.GetParam(0)->SetValue("Berlin");
    QVERIFY(window_->RunWithValues());
    const int expected = SQLiteCount(window_->Preview()->Text(), {{":Param1", "Berlin"}});
    QVERIFY(expected > 0);
    QCOMPARE(ShownCount(window_->RunStatus()), expected);
  }

  // The editor opened from the window makes a SUM field, and the SQL groups by the others.
  void sumThroughTheEditor() {
    QVERIFY(window_->OpenQuery(QStringLiteral(TS4_EXAMPLE_DATA "/big-orders.qry"), false));
    QVERIFY(!window_->Preview()->Text().contains(QStringLiteral("GROUP BY")));
    bool driven = false;
    QTimer::singleShot(0, this, [&driven] {
      QWidget* dialog = QApplication::activeModalWidget();
      QVERIFY(dialog != nullptr);
      auto* fields = dialog->findChild<QTreeWidget*>(QStringLiteral("availableFields"));
      QVERIFY(fields != nullptr);
      const QList<QTreeWidgetItem*> found =
          fields->findItems(QStringLiteral("Quantity"), Qt::MatchExactly | Qt::MatchRecursive);
      QVERIFY(!found.isEmpty());
      fields->setCurrentItem(found.first());
      QTest::mouseClick(dialog->findChild<QAbstractButton*>(QStringLiteral("makeButton")), Qt::LeftButton);
      auto* aggregate = dialog->findChild<QComboBox*>(QStringLiteral("aggregateBox"));
      QVERIFY(aggregate != nullptr);
      aggregate->setCurrentIndex(aggregate->findText(QStringLiteral("SUM")));
      auto* buttons = dialog->findChild<QDialogButtonBox*>();
      QTest::mouseClick(buttons->button(QDialogButtonBox::Ok), Qt::LeftButton);
      driven = true;
    });
    window_->EditResultFields();
    QVERIFY(driven);
    const QString sql = window_->Preview()->Text();
    QVERIFY2(sql.contains(QStringLiteral("SUM(I.QUANTITY)")), qPrintable(sql));
    QVERIFY2(sql.contains(QStringLiteral("GROUP BY C.COMPANY, O.ORDER_ID, O.ORDER_DATE, O.TOTAL")),
             qPrintable(sql));
    QVERIFY(window_->RunWithValues());
    QCOMPARE(ShownCount(window_->RunStatus()), SQLiteCount(sql));
  }

  // A database's own tables become the structure, on SQLite and (beside the
  // test server) on PostgreSQL: the panel moves over to it before the old one
  // goes, and a statement over it returns the rows SQLite gives.
  void structureImportedFromTheDatabase_data() {
    QTest::addColumn<QString>("url");
    QTest::newRow("sqlite") << QStringLiteral("sqlite:" TS4_SAMPLE_DB);
    if (const QByteArray server = qgetenv("TS4_PG_URL"); !server.isEmpty())
      QTest::newRow("postgresql") << QString::fromUtf8(server);
  }

  void structureImportedFromTheDatabase() {
    QFETCH(QString, url);
    QVERIFY(window_->OpenQuery(QStringLiteral(TS4_EXAMPLE_DATA "/big-orders.qry"), false));
    database_->ImportStructure(url);
    QCOMPARE(window_->Panel()->DbStruct(), &database_->Structure());
    QCOMPARE(database_->Structure().TableCount(), 5);
    QCOMPARE(window_->Panel()->Query().Root().GetRowCount(), 0);
    const QString sql = QStringLiteral("SELECT C.COMPANY FROM CUSTOMERS C WHERE C.CITY = 'Paris'");
    QVERIFY(window_->PasteSQL(sql));
    QVERIFY(window_->RunWithValues());
    QCOMPARE(ShownCount(window_->RunStatus()), SQLiteCount(sql));
  }

  // Pasted SQL replaces the query, or says why not and leaves it alone; a
  // statement the database rejects is reported, not run.
  void pastedSqlAndErrors() {
    QVERIFY(window_->OpenQuery(QStringLiteral(TS4_EXAMPLE_DATA "/big-orders.qry"), false));
    const QString before = window_->Preview()->Text();
    QString problem;
    QVERIFY(
        !window_->PasteSQL(QStringLiteral("SELECT C.COMPANY FROM CUSTOMERS C WHERE (C.CITY ="), &problem));
    QVERIFY(!problem.isEmpty());
    QCOMPARE(window_->Preview()->Text(), before);

    QVERIFY(window_->PasteSQL(
        QStringLiteral("SELECT C.COMPANY FROM CUSTOMERS C WHERE C.CITY = 'Berlin' ORDER BY 1"), &problem));
    QVERIFY(window_->Preview()->Text().contains(QStringLiteral("C.CITY = 'Berlin'")));

    QTemporaryFile empty;  // a database without tables gives no structure
    QVERIFY(empty.open());
    const ts4::TWDBStructure* structure = &database_->Structure();
    QVERIFY_THROWS_EXCEPTION(std::exception,
                             database_->ImportStructure(QStringLiteral("sqlite:") + empty.fileName()));
    QCOMPARE(&database_->Structure(), structure);

    database_->OpenDatabase(QStringLiteral("sqlite:" TS4_EXAMPLE_DATA "/sales.str"));  // not a database
    QVERIFY(!window_->RunWithValues());
    QVERIFY(window_->RunStatus().startsWith(QStringLiteral("The query could not run")));
  }

 private:
  std::unique_ptr<ts4demo::TDemoDatabase> database_;
  std::unique_ptr<ts4demo::TDemoWindow> window_;
};

QTEST_MAIN(DemoTest)
#include "demo_test.moc"
