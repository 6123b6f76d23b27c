// The query panel as the end user meets it: the lines it shows, the keys,
// the menus, the words, and the SQL that follows every gesture.
#include <QDialog>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include "foundation/error.h"
#include "panel/dropdown_datetime.h"
#include "panel/dropdown_edit.h"
#include "panel/dropdown_listbox.h"
#include "panel/dropdown_popup.h"
#include "panel/popup_menu.h"
#include "panel/query_panel_fixture.h"
#include "panel/row_controls.h"
#include "panel/value_label_kind.h"
#include "qtsql/busy_indicator.h"
#include "query/sql_param.h"
#include "structure/db_info.h"
#include "test_support.h"

using namespace Qt::StringLiterals;

namespace ts4test {
namespace {

using namespace ts4;

// ---- Lines ------------------------------------------------------------------------

// Root: 1 condition, 2 bracket { 2.1 bracket { 2.1.1 condition } }, 3 condition.
class PanelLinesTest : public QueryPanelTest {
 protected:
  void SetUp() override {
    QueryPanelTest::SetUp();
    first_ = AddCond(Root(), 3);
    TFilterBracket* outer = Root().AddBracket();
    inner_ = outer->AddBracket();
    deep_ = AddCond(*inner_, 2);
    last_ = AddCond(Root(), 1);
  }
  TFilterCond* first_ = nullptr;
  TFilterBracket* inner_ = nullptr;
  TFilterCond* deep_ = nullptr;
  TFilterCond* last_ = nullptr;
};

TEST_F(PanelLinesTest, LinesStandAtTheirNumbersIndentedByDepth) {
  ASSERT_EQ(panel_->RowButton(*first_)->height(), 16);
  ASSERT_EQ(panel_->LineCount(), 6);
  for (int line = 1; line < panel_->LineCount(); ++line) {
    const TFilterRow& row = *panel_->GetRowByNum(line);
    SCOPED_TRACE(row.RowID());
    EXPECT_EQ(panel_->RowButton(row)->y(), 22 * line + 5);
    EXPECT_EQ(panel_->RowButton(row)->x(), row.Level() * 20 + 5);
    EXPECT_EQ(panel_->RowCheckBox(row)->x(), 5);
    EXPECT_EQ(panel_->RowCheckBox(row)->y(), 22 * line + 5);
  }
  EXPECT_EQ(panel_->RowButton(*deep_)->Caption(), u"2.1.1"_s);
  EXPECT_EQ(Word(Root(), rciFirst), u"Choose records where "_s);
  EXPECT_EQ(Word(Root(), rciSecond), u"all"_s);
  EXPECT_EQ(Word(*inner_, rciValue1), u" of the following apply"_s);

  // The add-row line under the last line, at its button's left.
  const QLabel* addRow = panel_->AddRowLabel();
  EXPECT_EQ(addRow->text(), u"< Click here to add new condition >"_s);
  EXPECT_EQ(addRow->pos(), QPoint(25, 22 * 5 + 5 + 16 + 3 + 2));
  TQPAppearanceOptions options = panel_->Appearance()->Options();
  panel_->Appearance()->SetOptions(options.Exclude(aoShowAddRow));
  EXPECT_TRUE(addRow->isHidden());

  // Scrolled: everything moves up by the scroll position.
  panel_->resize(400, 60);
  panel_->verticalScrollBar()->setValue(30);
  EXPECT_EQ(panel_->RowButton(*last_)->y(), 22 * 5 + 5 - 30);
  EXPECT_GT(panel_->verticalScrollBar()->maximum(), 0) << "the scroll bar follows the lines' extent";
}

TEST_F(PanelLinesTest, AndOrStyleGivesBracketsNoLineAndJoinsRowsByTheirBracketsWord) {
  auto& outer = static_cast<TFilterBracket&>(*Root().GetRow(1));
  AddCond(outer, 4);
  panel_->Appearance()->SetStyle(psAndOr);
  EXPECT_EQ(first_->RowNum(), 1);
  EXPECT_EQ(deep_->RowNum(), 2);
  EXPECT_EQ(outer.GetRow(1)->RowNum(), 3);
  EXPECT_EQ(last_->RowNum(), 4);
  EXPECT_EQ(panel_->LineCount(), 5);
  EXPECT_EQ(Word(*first_, rciAndOr), u"and"_s);
  EXPECT_EQ(Word(*last_, rciAndOr), u""_s) << "nothing follows the last row of a bracket";
  EXPECT_EQ(panel_->RowControl(*first_, rciAndOr)->palette().color(QPalette::WindowText), QColor(Qt::black));

  Choose(static_cast<TDropDownLabel*>(panel_->RowControl(*first_, rciAndOr)), u"or"_s);
  EXPECT_EQ(Root().LinkType(), fltAny);
  EXPECT_EQ(Word(*outer.GetRow(1), rciAndOr), u"or"_s)
      << "the last row of a bracket is joined by the one around it";
  EXPECT_EQ(Word(*deep_, rciAndOr), u"and"_s);
  EXPECT_EQ(Word(Root(), rciFirst), u"Choose records where"_s);
  Root().SetLinkType(fltNotAll);
  EXPECT_EQ(Word(*first_, rciAndOr), u"and"_s) << "not all joins by and";
}

TEST_F(PanelLinesTest, OnlyLinesNearTheViewHaveWidgetsAndTheCurrentRowCanBeAnywhere) {
  panel_->BeginUpdate();
  for (int i = 0; i < 2000; ++i) AddCond(Root(), 3)->SetValue(1, "City " + std::to_string(i));
  panel_->EndUpdate();
  const TFilterRow& far = *panel_->GetRowByNum(1500);
  EXPECT_EQ(panel_->RowButton(far), nullptr);
  panel_->SetCurrentRowNum(1500);
  ASSERT_NE(panel_->RowButton(far), nullptr) << "the current row is scrolled into view";
  QTest::keyClick(panel_.get(), Qt::Key_Down);
  EXPECT_EQ(panel_->GetCurrentRowNum(), 1501);
  const TFilterRow& next = *panel_->GetRowByNum(1501);
  EXPECT_EQ(Word(next, rciValue1), u"City 1495"_s);
  const int top = panel_->RowButton(next)->y();
  EXPECT_EQ(top, 22 * 1501 + 5 - panel_->verticalScrollBar()->value());
  EXPECT_TRUE(panel_->viewport()->rect().contains(panel_->RowButton(next)->geometry()));
}

// ---- Keys ---------------------------------------------------------------------------

struct KeyCase {
  const char* name;
  int line, control;  // where the current row and word are first
  Qt::Key key;
  Qt::KeyboardModifiers modifiers;
  int wantLine, wantControl, wantRootRows;
};

TEST_F(PanelLinesTest, KeysMoveInsertAndDelete) {
  const KeyCase cases[] = {
      {"down", 1, rciFirst, Qt::Key_Down, {}, 2, rciSecond, 3},
      {"up from the header stays", 0, rciSecond, Qt::Key_Up, {}, 0, rciSecond, 3},
      {"down from the last line stays", 5, rciFirst, Qt::Key_Down, {}, 5, rciFirst, 3},
      {"right on the last word stays", 1, rciValue1, Qt::Key_Right, {}, 1, rciValue1, 3},
      {"left", 1, rciValue1, Qt::Key_Left, {}, 1, rciSecond, 3},
      {"right skips the bracket's plain text", 2, rciSecond, Qt::Key_Right, {}, 2, rciSecond, 3},
      {"insert on the header adds at the end", 0, rciSecond, Qt::Key_Insert, {}, 6, rciFirst, 4},
      {"ctrl+delete", 1, rciFirst, Qt::Key_Delete, Qt::ControlModifier, 1, rciSecond, 2},
      {"ctrl+delete on the header does nothing", 0, rciSecond, Qt::Key_Delete, Qt::ControlModifier, 0,
       rciSecond, 3},
      {"delete without ctrl does nothing", 1, rciFirst, Qt::Key_Delete, {}, 1, rciFirst, 3},
      {"down with shift does nothing", 1, rciFirst, Qt::Key_Down, Qt::ShiftModifier, 1, rciFirst, 3},
  };
  for (const KeyCase& c : cases) {
    SCOPED_TRACE(c.name);
    SetUp();
    panel_->SetCurrentRowNum(c.line);
    while (panel_->CurrentControlIndex(*panel_->GetCurrentRow()) < c.control) panel_->NextCurControl();
    QTest::keyClick(panel_.get(), c.key, c.modifiers);
    EXPECT_EQ(panel_->GetCurrentRowNum(), c.wantLine);
    EXPECT_EQ(panel_->CurrentControlIndex(*panel_->GetCurrentRow()), c.wantControl);
    EXPECT_EQ(Root().GetRowCount(), c.wantRootRows);
  }
}

TEST_F(PanelLinesTest, EnterOpensTheCurrentWordAndAltInsertAddsABracketWithACondition) {
  panel_->SetCurrentRowNum(1);
  QTest::keyClick(panel_.get(), Qt::Key_Return);
  auto* field = qobject_cast<TDropDownLabel*>(panel_->GetCurrentControl());
  ASSERT_NE(field, nullptr);
  EXPECT_TRUE(field->Dropped());
  field->DropUp(false);

  QTest::keyClick(panel_.get(), Qt::Key_Insert, Qt::AltModifier);
  ASSERT_EQ(Root().GetRowCount(), 4);
  const auto& added = static_cast<const TFilterBracket&>(*Root().GetRow(3));
  ASSERT_EQ(added.GetRowCount(), 1);
  EXPECT_EQ(panel_->GetCurrentRow(), added.GetRow(0));

  // Keys do nothing while the query is inactive or without keyboard navigation.
  panel_->Deactivate();
  QTest::keyClick(panel_.get(), Qt::Key_Up);
  EXPECT_EQ(panel_->GetCurrentRow(), added.GetRow(0));
}

TEST_F(QueryPanelTest, AGestureTheQueryRefusesIsReportedAndChangesNothing) {
  panel_->BeginUpdate();
  TFilterBracket* deepest = &Root();
  for (int level = 0; level < MaxBracketDepth; ++level) deepest = deepest->AddBracket();
  panel_->EndUpdate();
  QSignalSpy errors(panel_.get(), &TWQueryPanel::OnError);
  panel_->SetCurrentRow(deepest);
  QTest::keyClick(panel_.get(), Qt::Key_Insert, Qt::AltModifier);
  ASSERT_EQ(errors.count(), 1);
  EXPECT_EQ(deepest->GetRowCount(), 0);
  EXPECT_EQ(panel_->LineCount(), MaxBracketDepth + 1);
}

TEST_F(PanelLinesTest, DeletingTheOnlyRowOfABracketTakesTheBracketAndRenumbers) {
  panel_->SetCurrentRow(deep_);
  QTest::keyClick(panel_.get(), Qt::Key_Delete, Qt::ControlModifier);
  ASSERT_EQ(Root().GetRowCount(), 2) << "the empty brackets went with it";
  EXPECT_EQ(panel_->LineCount(), 3);
  EXPECT_EQ(panel_->RowButton(*last_)->Caption(), u"2"_s);
  EXPECT_EQ(panel_->RowButton(*last_)->y(), 22 * 2 + 5);
  EXPECT_EQ(panel_->GetCurrentRow(), last_)
      << "moved onto the line that took its place... or up from the end";
}

// ---- Menus ---------------------------------------------------------------------------

TEST_F(PanelLinesTest, RowMenuActsOnTheRowOfItsButtonAndThePanelMenuNeedsFields) {
  panel_->RowButtonClick(*panel_->RowButton(*first_));
  EXPECT_TRUE(panel_->RowMenu()->isVisible() || panel_->RowMenu()->PopupWidget() != nullptr);
  panel_->SetCurrentRow(last_);  // the keyboard moves on; the menu still belongs to row 1
  panel_->MenuItemClick(TWQueryPanel::mtDelRow);
  EXPECT_EQ(Root().GetRow(0)->RowID(), "1.");
  EXPECT_TRUE(Root().GetRow(0)->IsBracket());

  panel_->MenuItemClick(TWQueryPanel::mtEnableDisable);
  EXPECT_FALSE(last_->Enabled());
  EXPECT_FALSE(panel_->RowCheckBox(*last_)->isChecked());
  panel_->MenuItemClick(TWQueryPanel::mtAddCond);
  EXPECT_EQ(Root().GetRowCount(), 3);

  structure_.reset();  // the rows lose their fields and show it
  EXPECT_EQ(Word(*last_, rciFirst), u"_____"_s);
  TWDBStructure empty;
  panel_->SetDbStruct(&empty);
  panel_->MainButtonClick();
  EXPECT_FALSE(panel_->PanelMenu()->isVisible());
  EXPECT_EQ(panel_->PanelMenu()->PopupWidget(), nullptr);
}

// ---- Values and parameters ----------------------------------------------------------------

TEST(ValueLabelChoice, FollowsEditTypeDataTypeAndOperator) {
  using enum TOpValueType;
  struct Case {
    TDSEditType edit;
    TTextEditKind text;
    TFieldType type;
    TOpValueType op;
    bool popup;
    TValueLabelChoice want;
  } const cases[] = {
      {etAuto, tekSimple, ftInteger, vtSubQuery, true, {vlkSubQuery}},
      {etAuto, tekSimple, ftCurrency, vtScalar, true, {vlkEdit, vttFloat}},
      {etAuto, tekSimple, ftDateTime, vtScalar, true, {vlkDate}},
      {etEdit, tekSimple, ftTime, vtScalar, true, {vlkEdit, vttString}},
      {etEdit, tekSimple, ftSmallint, vtScalar, true, {vlkEdit, vttInteger}},
      {etEdit, tekMask, ftString, vtScalar, true, {vlkMaskEdit}},
      {etEdit, tekTime, ftString, vtScalar, true, {vlkTime}},
      {etList, tekSimple, ftString, vtList, true, {vlkCheckList}},
      {etSQL, tekSimple, ftString, vtScalar, true, {vlkPopup}},
      {etList, tekSimple, ftString, vtScalar, false, {vlkListBox}},
      {etCustom, tekSimple, ftString, vtScalar, true, {vlkCustom}},
  };
  for (const Case& c : cases)
    EXPECT_EQ(ChooseValueLabel(c.edit, c.text, c.type, c.op, c.popup), c.want)
        << static_cast<int>(c.edit) << " " << static_cast<int>(c.type);
}

TEST_F(QueryPanelTest, ValuesGetTheEditorsTheirFieldsAsk) {
  TFilterCond* date = AddCond(Root(), 7);     // Order date: a date editor
  TFilterCond* country = AddCond(Root(), 4);  // a list
  TFilterCond* inList = AddCond(Root(), 4, "InList");
  TFilterCond* between = AddCond(Root(), 5, "Between");
  EXPECT_NE(qobject_cast<TDropDownDateTimeEdit*>(panel_->RowControl(*date, rciValue1)), nullptr);
  EXPECT_NE(qobject_cast<TDropDownPopup*>(panel_->RowControl(*country, rciValue1)), nullptr);
  EXPECT_NE(qobject_cast<TDropDownCheckListBox*>(panel_->RowControl(*inList, rciValue1)), nullptr);
  EXPECT_EQ(qobject_cast<TDropDownEdit*>(panel_->RowControl(*between, rciValue2))->ValueType(),
            TDropDownCustomEdit::vtFloat);
  EXPECT_EQ(Word(*between, rciBetween), u"and"_s);
  EXPECT_EQ(Word(*date, rciValue2), u""_s);
  // Another operator makes the value's editor again.
  between->SetOperator(structure_->OperatorByName("InList"));
  EXPECT_EQ(Word(*between, rciBetween), u""_s);
  EXPECT_EQ(panel_->RowControl(*between, rciValue2), nullptr);
}

TEST_F(QueryPanelTest, EveryGestureLandsInTheQueryAndTheSQLFollows) {
  QTest::mouseClick(panel_->AddRowLabel(), Qt::LeftButton);
  ASSERT_EQ(Root().GetRowCount(), 1);
  auto* cond = static_cast<TFilterCond*>(Root().GetRow(0));
  EXPECT_EQ(panel_->GetCurrentRow(), cond);
  EXPECT_EQ(Word(*cond, rciFirst), u"_____"_s);
  Choose(static_cast<TDropDownLabel*>(panel_->RowControl(*cond, rciFirst)), u"City"_s);
  EXPECT_EQ(cond->Field(), structure_->FieldByID(3));
  EXPECT_EQ(Word(*cond, rciSecond), u"is equal to"_s) << "a field comes with its first operator";
  Choose(static_cast<TDropDownLabel*>(panel_->RowControl(*cond, rciSecond)), u"starts with"_s);
  Type(static_cast<TDropDownLabel*>(panel_->RowControl(*cond, rciValue1)), u"Par"_s);
  EXPECT_EQ(cond->Value1(), "Par");
  EXPECT_NE(panel_->GetQueryText().indexOf(u"C.CITY like 'Par%'"_s), -1)
      << panel_->GetQueryText().toStdString();
  EXPECT_EQ(panel_->RowButton(*cond)->accessibleDescription(), u"City starts with Par"_s);

  TFilterCond* country = AddCond(Root(), 4);
  Choose(static_cast<TDropDownLabel*>(panel_->RowControl(*country, rciValue1)), u"Germany"_s);
  EXPECT_EQ(country->Value1(), "DE");
  EXPECT_EQ(country->GetCaption(1), "Germany");
  Choose(static_cast<TDropDownLabel*>(panel_->RowControl(Root(), rciSecond)), u"any"_s);
  EXPECT_NE(panel_->GetQueryText().indexOf(u"C.COUNTRY = 'DE'"_s), -1);
  EXPECT_NE(panel_->GetQueryText().indexOf(u"'Par%' OR"_s), -1) << panel_->GetQueryText().toStdString();

  panel_->RowCheckBox(*country)->click();
  EXPECT_FALSE(country->Enabled());
  EXPECT_EQ(panel_->GetQueryText().indexOf(u"COUNTRY"_s), -1);

  // A program changing the query shows at once.
  cond->SetValue(1, "Lyon");
  EXPECT_EQ(Word(*cond, rciValue1), u"Lyon"_s);
  EXPECT_EQ(panel_->RowButton(*cond)->accessibleDescription(), u"City starts with Lyon"_s);
}

TEST_F(QueryPanelTest, ValuesBecomeParametersByMenuAndByCtrlClickAndComeBack) {
  TFilterCond* cond = AddCond(Root(), 3);
  cond->SetValue(1, "Paris");
  auto* value = static_cast<TDropDownLabel*>(panel_->RowControl(*cond, rciValue1));
  QTest::mouseClick(value, Qt::RightButton);
  EXPECT_EQ(panel_->GetCurrentControl(), value);
  panel_->ValueMenu()->hide();
  panel_->ValueMenuItemClick(TWQueryPanel::vmtParameter);
  ASSERT_TRUE(cond->Value1IsParam());
  EXPECT_EQ(Word(*cond, rciValue1), u":Parameter"_s);
  EXPECT_TRUE(value->Fixed());
  EXPECT_NE(panel_->GetQueryText().indexOf(u":Param"_s), -1);
  panel_->VPopup();
  EXPECT_TRUE(panel_->ValueMenu()->actions()[1]->isChecked());

  panel_->ValueMenuItemClick(TWQueryPanel::vmtConstant);
  EXPECT_FALSE(cond->Value1IsParam());
  EXPECT_EQ(Word(*cond, rciValue1), u"Paris"_s) << "the stored value comes back";
  EXPECT_FALSE(value->Fixed());

  QTest::mouseClick(value, Qt::LeftButton, Qt::ControlModifier);
  EXPECT_TRUE(cond->Value1IsParam());
  cond->SetValue1IsParam(false);
  TQPAppearanceOptions options = panel_->Appearance()->Options();
  panel_->Appearance()->SetOptions(options.Exclude(aoAllowParams));
  value = static_cast<TDropDownLabel*>(panel_->RowControl(*cond, rciValue1));
  QTest::mouseClick(value, Qt::LeftButton, Qt::ControlModifier);
  EXPECT_FALSE(cond->Value1IsParam());
}

TEST_F(QueryPanelTest, TheApplicationHearsOfEditsAndMayChangeThem) {
  TFilterCond* cond = AddCond(Root(), 3);
  QSignalSpy changes(panel_.get(), &TWQueryPanel::OnChange);
  QSignalSpy conditions(panel_.get(), &TWQueryPanel::OnConditionChange);
  QSignalSpy params(panel_.get(), &TWQueryPanel::OnParamListChange);
  panel_->OnChangeValue = [](TFilterCond&, int index, QString& value) {
    value = value.toUpper() + QString::number(index);
  };
  panel_->OnSetValue = [](TFilterCond&, int, QString& caption) {
    caption = QStringLiteral("<") + caption + QStringLiteral(">");
  };
  Type(static_cast<TDropDownLabel*>(panel_->RowControl(*cond, rciValue1)), QStringLiteral("paris"));
  EXPECT_EQ(cond->Value1(), "PARIS1");
  EXPECT_EQ(cond->GetCaption(1), "<PARIS1>");
  EXPECT_EQ(changes.count(), 1) << "one edit, one change";
  ASSERT_EQ(conditions.count(), 1);
  EXPECT_EQ(conditions.at(0).at(0).value<const TFilterCond*>(), cond);
  cond->SetValue1IsParam(true);
  EXPECT_EQ(params.count(), 1);
}

TEST_F(QueryPanelTest, SQLListsAreFilledThroughTheStructuresProvider) {
  struct Provider : TWDBInfo {
    std::string asked;
    void GetSQLValues(std::string_view sql, TStrings& values, TStrings& items) override {
      asked = sql;
      values = {"7", "9"};
      items = {"Ann Lee", "Bo Ek"};
    }
  } provider;
  structure_->SetDatabaseInfo(&provider);
  TFilterCond* rep = AddCond(Root(), 11);
  rep->SetValue(1, "9");
  EXPECT_NE(provider.asked.find("FROM EMPLOYEES"), std::string::npos);
  EXPECT_EQ(Word(*rep, rciValue1), u"Bo Ek"_s);
  Choose(static_cast<TDropDownLabel*>(panel_->RowControl(*rep, rciValue1)), QStringLiteral("Ann Lee"));
  EXPECT_EQ(rep->Value1(), "7");
  structure_->SetDatabaseInfo(nullptr);
}

// Making a panel lets Qt SQL work show the wait cursor, unless the
// application has an indicator of its own.
TEST(QueryPanelWaitCursor, IsInstalledByThePanelUnlessTheApplicationHasItsOwn) {
  SetBusyIndicator({});
  { TWQueryPanel panel; }
  const TBusyIndicator installed = BusyIndicator();
  ASSERT_TRUE(installed.Begin && installed.End);
  installed.Begin();
  ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
  EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
  installed.End();
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
  int own = 0;
  SetBusyIndicator({[&own] { ++own; }, [] {}});
  { TWQueryPanel panel; }
  BusyIndicator().Begin();
  EXPECT_EQ(own, 1);
  SetBusyIndicator({});
}

TEST_F(QueryPanelTest, SubQueriesAreEditedInTheirDialog) {
  TDSOperator* in = structure_->Operators(
      structure_->AddOperator("InSub", "is in the result of", "@f in (@1)", "", TAppliedTypes{ftString}));
  in->SetValueType(TOpValueType::vtSubQuery);
  TFilterCond* cond = AddCond(Root(), 3);
  cond->SetOperator(in);
  EXPECT_EQ(Word(*cond, rciValue1), u"Sub-query"_s);
  QTimer::singleShot(0, [] {
    auto* dialog = QApplication::activeModalWidget();
    ASSERT_NE(dialog, nullptr);
    dialog->findChild<QPlainTextEdit*>()->setPlainText(QStringLiteral("SELECT CITY FROM CUSTOMERS"));
    static_cast<QDialog*>(dialog)->accept();
  });
  static_cast<TDropDownLabel*>(panel_->RowControl(*cond, rciValue1))->DropDown();
  EXPECT_EQ(cond->SubQuery().Text(), "SELECT CITY FROM CUSTOMERS");
}

TEST_F(QueryPanelTest, TabGoesThroughTheWordsInLineOrderAndOut) {
  QWidget window;
  auto* before = new QLineEdit(&window);
  panel_->setParent(&window);
  auto* after = new QLineEdit(&window);
  AddCond(Root(), 3);
  TFilterCond* second = AddCond(Root(), 4);
  window.show();
  QApplication::setActiveWindow(&window);
  before->setFocus();
  QStringList visited;
  for (int i = 0; i < 20 && !after->hasFocus() && QApplication::focusWidget() != nullptr; ++i) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    if (auto* label = qobject_cast<QLabel*>(QApplication::focusWidget())) visited.append(label->text());
  }
  EXPECT_EQ(visited, (QStringList{u"all"_s, u"City"_s, u"is equal to"_s, u"_____"_s, u"Country"_s,
                                  u"is equal to"_s, u"_____"_s, u"< Click here to add new condition >"_s}))
      << "words, with the lines' buttons and check boxes between them";
  EXPECT_TRUE(after->hasFocus());
  QTest::keyClick(after, Qt::Key_Backtab);
  EXPECT_TRUE(panel_->hasFocus()) << "coming back, the panel first";
  QTest::keyClick(panel_.get(), Qt::Key_Backtab);
  EXPECT_EQ(panel_->GetCurrentRow(), second);
  EXPECT_EQ(QApplication::focusWidget(), panel_->RowControl(*second, rciValue1)) << "its last word";

  // A focused word whose row goes leaves the keys with the panel; a panel
  // that goes with the focus on a word takes its words down quietly.
  Root().DeleteRow(1);
  EXPECT_TRUE(panel_->hasFocus());
  panel_->RowControl(*Root().GetRow(0), rciFirst)->setFocus();
  panel_.reset();
}

// ---- Captions ------------------------------------------------------------------------------

TEST_F(QueryPanelTest, SentencesWithoutTheirAtAreRefusedAndTheCaptionsStay) {
  const QStringList before = panel_->Titles();
  ExpectError<EWQueryPanelError>([&] { panel_->SetTitle(u"ttlFilter"_s, u"Choose records"_s); }, 4,
                                 "Invalid filter title");
  ExpectError<EWQueryPanelError>(
      [&] {
        panel_->SetTitles({u"[Query Panel]"_s, u"ttlBracket=of the following"_s});
      },
      5, "Invalid string format");
  EXPECT_EQ(panel_->Titles(), before);
  panel_->SetTitles({u"[Query Panel]"_s, u"ttlFilter=Show rows where @ hold"_s, u"ttlAll=all of these"_s});
  EXPECT_EQ(Word(Root(), rciFirst), u"Show rows where "_s);
  EXPECT_EQ(Word(Root(), rciSecond), u"all of these"_s);
  EXPECT_EQ(Word(Root(), rciValue1), u" hold"_s);
}

}  // namespace
}  // namespace ts4test
