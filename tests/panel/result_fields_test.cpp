// The result fields panel and editor over a query of the sample structure:
// what the panel shows as the query changes, and the SQL the editor's
// gestures give once OK writes them back.
#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QTreeWidget>
#include <memory>
#include <utility>

#include "panel/result_fields_editor.h"
#include "panel/result_fields_panel.h"
#include "query/query.h"
#include "structure/structure.h"

using namespace Qt::StringLiterals;

namespace ts4test {
namespace {

using namespace ts4;

// Counts the announcements of changed result fields.
struct TResultFieldsCounter : TQueryObserver {
  void QueryChanged(TQueryAspects aspects) override { count += aspects.Contains(qaResultFields) ? 1 : 0; }
  int count = 0;
};

class ResultFieldsTest : public testing::Test {
 protected:
  void SetUp() override {
    structure_.LoadFromFile(TS4_EXAMPLE_DATA "/sales.str");
    query_ = std::make_unique<TWQuery>(&structure_);
    query_->AddObserver(&counter_);
  }
  void TearDown() override { query_->RemoveObserver(&counter_); }

  TDSField& Field(const char* caption) { return *structure_.FieldByName(fsDisplayName, caption); }
  TRFieldList& Fields() { return query_->QResult().ResultFields(); }
  template <typename Widget>
  static Widget* Child(const QWidget& parent, const char* name) {
    auto* child = parent.findChild<Widget*>(QLatin1String(name));
    EXPECT_NE(child, nullptr) << name;
    return child;
  }
  static void Click(const QWidget& parent, const char* name) {
    Child<QAbstractButton>(parent, name)->click();
  }
  // Selects the structure field among the available ones.
  static void Select(const QWidget& editor, const char* caption) {
    auto* tree = Child<QTreeWidget>(editor, "availableFields");
    const auto found = tree->findItems(QString::fromUtf8(caption), Qt::MatchExactly | Qt::MatchRecursive);
    ASSERT_EQ(found.size(), 1) << caption;
    tree->setCurrentItem(found.front());
  }
  static void Make(const QWidget& editor, const char* caption) {
    Select(editor, caption);
    Click(editor, "makeButton");
  }
  // The editor's result fields as "caption=formula" lines.
  static QStringList Rows(TRFieldList& fields) {
    QStringList rows;
    for (const TResultField* field : fields)
      rows.append(QString::fromStdString(field->Caption() + "=" + field->Formula()));
    return rows;
  }

  TWDBStructure structure_;
  std::unique_ptr<TWQuery> query_;
  TResultFieldsCounter counter_;
};

// ---- Panel ---------------------------------------------------------------------------

TEST_F(ResultFieldsTest, PanelFollowsTheQueryUntilItGoes) {
  TWResultFieldsPanel panel;
  panel.SetQuery(query_.get());
  QTreeWidget& list = *panel.FieldList();
  EXPECT_EQ(list.headerItem()->text(2), u"Sorting type"_s);
  EXPECT_EQ(panel.EditButton()->text(), u"Result Fields Editor"_s);

  Fields().Add(Field("Company"));
  Fields().AddByExpression("SUM({Order total})", stDescending, "Total");
  ASSERT_EQ(list.topLevelItemCount(), 2);
  EXPECT_EQ(list.topLevelItem(1)->text(0), u"Total"_s);
  EXPECT_EQ(list.topLevelItem(1)->text(1), u"SUM({Order total})"_s);
  EXPECT_EQ(list.topLevelItem(1)->text(2), u"Descending"_s);

  query_->SetTitle("ttlDescending", "absteigend");
  EXPECT_EQ(list.topLevelItem(1)->text(2), u"absteigend"_s);

  // The sorting column edits in place and writes to the query.
  list.setCurrentItem(list.topLevelItem(0));
  QTest::keyClick(&list, Qt::Key_F2);
  auto* box = list.viewport()->findChild<QComboBox*>();
  ASSERT_NE(box, nullptr);
  QTest::keyClick(box, Qt::Key_Down);
  EXPECT_EQ(Fields()[0]->Sorting(), stAscending);
  EXPECT_EQ(list.topLevelItem(0)->text(2), u"Ascending"_s);

  query_->ClearQuery();
  EXPECT_EQ(list.topLevelItemCount(), 0);
  Fields().Add(Field("City"));
  ASSERT_EQ(list.topLevelItemCount(), 1);
  query_->RemoveObserver(&counter_);
  query_.reset();
  EXPECT_EQ(panel.Query(), nullptr);
  EXPECT_EQ(list.topLevelItemCount(), 0);
  EXPECT_FALSE(panel.EditButton()->isEnabled());
  query_ = std::make_unique<TWQuery>(&structure_);  // for TearDown
}

// ---- Editor ----------------------------------------------------------------------------

TEST_F(ResultFieldsTest, SumOfAFieldGroupsByTheOthers) {
  TWResultFieldsEditor editor(*query_);
  Make(editor, "Company");
  Make(editor, "Order total");
  Child<QComboBox>(editor, "aggregateBox")->setCurrentIndex(1);
  EXPECT_EQ(Rows(editor.Fields()), QStringList({u"Company=@1"_s, u"SUM(Order total)=SUM(@1)"_s}));
  EXPECT_EQ(counter_.count, 0);  // the copy is edited, not the query

  Child<QDialogButtonBox>(editor, "")->button(QDialogButtonBox::Ok)->click();
  EXPECT_EQ(counter_.count, 1);
  const std::string sql = query_->GetQueryText();
  EXPECT_NE(sql.find("SUM(O.TOTAL)"), std::string::npos) << sql;
  EXPECT_NE(sql.find("GROUP BY C.COMPANY"), std::string::npos) << sql;
}

TEST_F(ResultFieldsTest, DeletingAsksAndCancelForgetsEveryEdit) {
  query_->LoadFromFile(TS4_EXAMPLE_DATA "/big-orders.qry");
  const std::string before = query_->GetQueryText();
  const int told = counter_.count;
  {
    TWResultFieldsEditor editor(*query_);
    QStringList asked;
    bool answer = false;
    editor.ConfirmDelete = [&](const QString& question) {
      asked.append(question);
      return answer;
    };
    Click(editor, "deleteButton");
    EXPECT_EQ(editor.Fields().Count(), 4);
    answer = true;
    Click(editor, "deleteButton");
    EXPECT_EQ(editor.Fields().Count(), 3);
    EXPECT_EQ(asked, QStringList({u"Delete Field \"Company\"?"_s, u"Delete Field \"Company\"?"_s}));
    Click(editor, "newButton");
    Child<QAbstractButton>(editor, "justSorting")->click();
    editor.reject();
  }
  TWResultFieldsEditor(*query_).accept();  // OK without a change tells nothing
  {
    TWResultFieldsEditor editor(*query_);
    Click(editor, "newButton");  // a new field never given an expression is not kept
    editor.accept();
  }
  EXPECT_EQ(query_->GetQueryText(), before);
  EXPECT_EQ(counter_.count, told);
}

TEST_F(ResultFieldsTest, OperatorButtonsExtendTheFormula) {
  const std::pair<const char*, const char*> cases[] = {
      {"subtractButton", "Order total - Quantity=@1 - @2"},
      {"divideButton", "Order total / Quantity=@1 / @2"},
  };
  for (const auto& [button, row] : cases) {
    TWResultFieldsEditor editor(*query_);
    Make(editor, "Order total");
    Select(editor, "Quantity");
    Click(editor, button);
    EXPECT_EQ(Rows(editor.Fields()), QStringList({QString::fromUtf8(row)}));
  }
  // A caption the user wrote stays as it is.
  TWResultFieldsEditor editor(*query_);
  Make(editor, "Order total");
  Child<QLineEdit>(editor, "captionEdit")->setText(QStringLiteral("Net"));
  Click(editor, "divideButton");
  EXPECT_EQ(Rows(editor.Fields()), QStringList({u"Net=@1 / @2"_s}));
}

TEST_F(ResultFieldsTest, SortedFieldsOrderTheStatement) {
  TWResultFieldsEditor editor(*query_);
  auto* sorting = Child<QComboBox>(editor, "sortingBox");
  for (const char* caption : {"Company", "City"}) {
    Make(editor, caption);
    sorting->setCurrentIndex(static_cast<int>(stAscending));
  }
  auto* sorted = Child<QListWidget>(editor, "sortedFields");
  ASSERT_EQ(sorted->count(), 2);
  EXPECT_EQ(sorted->item(1)->text(), u"City"_s);  // sorted last goes last
  EXPECT_FALSE(Child<QWidget>(editor, "sortUpButton")->isEnabled());
  sorted->setCurrentRow(1);
  Click(editor, "sortUpButton");
  EXPECT_EQ(sorted->item(0)->text(), u"City"_s);
  EXPECT_EQ(sorted->currentRow(), 0);
  // Ctrl+Up moves a column; the positions ORDER BY names follow it.
  auto* fields = Child<QTreeWidget>(editor, "resultFields");
  editor.show();
  editor.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&editor));
  fields->setFocus();
  fields->setCurrentItem(fields->topLevelItem(1));
  QTest::keyClick(fields, Qt::Key_Up, Qt::ControlModifier);
  EXPECT_EQ(fields->topLevelItem(0)->text(0), u"City"_s);
  EXPECT_EQ(fields->currentItem(), fields->topLevelItem(0));
  editor.accept();
  const std::string sql = query_->GetQueryText();
  EXPECT_NE(sql.find("ORDER BY 1 ASC, 2 ASC"), std::string::npos) << sql;
}

TEST_F(ResultFieldsTest, AnUnknownNameKeepsTheFormula) {
  Fields().AddByExpression("{Order total} * 2", stNoSort);
  const int told = counter_.count;
  TWResultFieldsEditor editor(*query_);
  QStringList errors;
  editor.ShowError = [&](const QString& message) { errors.append(message); };
  auto* expression = Child<QLineEdit>(editor, "expressionEdit");
  expression->setText(QStringLiteral("{Nothing} * 2"));
  editor.accept();  // refused: the dialog stays open, the query as it was
  EXPECT_EQ(counter_.count, told);
  EXPECT_EQ(errors, QStringList({u"Unknown field in expression: Nothing"_s}));
  EXPECT_EQ(expression->text(), u"{Order total} * 2"_s);
  EXPECT_EQ(Rows(editor.Fields()), QStringList({u"Order total * 2=@1 * 2"_s}));

  expression->setText(QStringLiteral("{Quantity} * {List price}"));
  emit expression->editingFinished();
  EXPECT_EQ(Rows(editor.Fields()), QStringList({u"Quantity * List price=@1 * @2"_s}));
}

}  // namespace
}  // namespace ts4test
