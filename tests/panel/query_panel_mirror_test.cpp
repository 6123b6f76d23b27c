// Random gestures and random changes through the query's own members: after
// each, every line the panel shows says what its row holds, where the
// documented geometry puts it.
#include <QLabel>
#include <QScrollBar>
#include <QTest>
#include <random>

#include "panel/dropdown_edit.h"
#include "panel/dropdown_popup.h"
#include "panel/query_panel_fixture.h"
#include "panel/row_controls.h"
#include "query/sql_param.h"

using namespace Qt::StringLiterals;

namespace ts4test {
namespace {

using namespace ts4;

class PanelMirrorTest : public QueryPanelTest {
 protected:
  std::mt19937 random_{1};

  int Pick(int count) { return std::uniform_int_distribution<int>(0, count - 1)(random_); }

  // The rows of the tree in the order the panel numbers its lines.
  void Walk(TFilterRow& row, std::vector<TFilterRow*>& out) {
    if (row.Hidden()) return;
    if (!(row.IsBracket() && &row != &Root() && panel_->Appearance()->Style() == psAndOr))
      out.push_back(&row);
    if (row.IsBracket())
      for (int i = 0; i < static_cast<TFilterBracket&>(row).GetRowCount(); ++i)
        Walk(*static_cast<TFilterBracket&>(row).GetRow(i), out);
  }

  QString Shown(const TFilterCond& cond, int index) {
    if (cond.Param(index) != nullptr) return QStringLiteral(":Parameter");
    const std::string& value = cond.Value(index);
    if (value.empty()) return QStringLiteral("_____");
    const auto* list =
        qobject_cast<const TDropDownList*>(panel_->RowControl(cond, index == 1 ? rciValue1 : rciValue2));
    if (list != nullptr && list->ItemIndex() >= 0) return list->Items()[list->ItemIndex()];
    // A value no item has: its caption, when the condition keeps one for it.
    if (list != nullptr && !cond.GetCaption(index).empty())
      return QString::fromStdString(cond.GetCaption(index));
    return QString::fromStdString(value);
  }

  void ExpectMirror(const std::string& step) {
    SCOPED_TRACE(step);
    std::vector<TFilterRow*> rows;
    Walk(Root(), rows);
    ASSERT_EQ(panel_->LineCount(), static_cast<int>(rows.size()));
    const int scroll = panel_->verticalScrollBar()->value();
    for (int line = 0; line < static_cast<int>(rows.size()); ++line) {
      TFilterRow& row = *rows[static_cast<std::size_t>(line)];
      ASSERT_EQ(panel_->GetRowByNum(line), &row);
      const TFilterBtn* button = panel_->RowButton(row);
      if (button == nullptr) continue;
      SCOPED_TRACE(row.RowID());
      if (line > 0) {
        EXPECT_EQ(button->Caption().toStdString() + ".", row.RowID());
        EXPECT_EQ(button->y(), 22 * line + 5 - scroll);
        EXPECT_EQ(button->x(), 20 * row.Level() + 5 - panel_->horizontalScrollBar()->value());
        EXPECT_EQ(panel_->RowCheckBox(row)->isChecked(), row.Enabled());
      }
      if (row.IsBracket()) {
        if (panel_->Appearance()->Style() == psGroups) {
          const auto link = static_cast<std::size_t>(static_cast<TFilterBracket&>(row).LinkType());
          EXPECT_EQ(Word(row, rciSecond).toStdString(),
                    Query().GetTitle(std::array{"ttlAll", "ttlAny", "ttlNone", "ttlNotAll"}[link]));
        }
        continue;
      }
      const auto& cond = static_cast<const TFilterCond&>(row);
      EXPECT_EQ(Word(cond, rciFirst).toStdString(), cond.Field() ? cond.Field()->DisplayName() : "_____");
      EXPECT_EQ(Word(cond, rciSecond).toStdString(), cond.Operator() ? cond.Operator()->DisplayName() : "");
      const int values = cond.Operator() != nullptr ? cond.Operator()->GetParamCount() : 0;
      for (const int index : {1, 2})
        EXPECT_EQ(Word(cond, index == 1 ? rciValue1 : rciValue2),
                  index <= values ? Shown(cond, index) : QString());
    }
  }

  std::vector<TFilterRow*> Shown() {
    std::vector<TFilterRow*> rows;
    for (int line = 1; line < panel_->LineCount(); ++line)
      if (panel_->RowButton(*panel_->GetRowByNum(line)) != nullptr) rows.push_back(panel_->GetRowByNum(line));
    return rows;
  }
  std::vector<TFilterCond*> ShownConditions() {
    std::vector<TFilterCond*> conds;
    for (TFilterRow* row : Shown())
      if (!row->IsBracket()) conds.push_back(static_cast<TFilterCond*>(row));
    return conds;
  }

  // One gesture of the user, or one change a program makes; returns its name.
  std::string Step() {
    static const QStringList fields = {u"City"_s, u"Country"_s, u"Order date"_s, u"Credit limit"_s,
                                       u"Status"_s};
    const std::vector<TFilterCond*> conds = ShownConditions();
    TFilterCond* cond =
        conds.empty() ? nullptr : conds[static_cast<std::size_t>(Pick(static_cast<int>(conds.size())))];
    switch (Pick(12)) {
      case 0: {
        static const std::pair<Qt::Key, Qt::KeyboardModifiers> keys[] = {
            {Qt::Key_Down, {}},
            {Qt::Key_Up, {}},
            {Qt::Key_Left, {}},
            {Qt::Key_Right, {}},
            {Qt::Key_Insert, {}},
            {Qt::Key_Insert, Qt::AltModifier},
            {Qt::Key_Delete, Qt::ControlModifier}};
        const auto& [key, modifiers] = keys[Pick(7)];
        QTest::keyClick(panel_.get(), key, modifiers);
        return "key " + std::to_string(key);
      }
      case 1:
        if (!Shown().empty()) {
          panel_->RowButtonClick(
              *panel_->RowButton(*Shown()[static_cast<std::size_t>(Pick(static_cast<int>(Shown().size())))]));
          panel_->RowMenu()->hide();
        }
        panel_->MenuItemClick(1 + Pick(4));
        return "row menu";
      case 2:
        if (cond == nullptr) return "no field";
        Choose(static_cast<TDropDownLabel*>(panel_->RowControl(*cond, rciFirst)), fields[Pick(5)]);
        return "field";
      case 3:
        if (cond == nullptr || cond->Operator() == nullptr || cond->Value1IsParam()) return "no value";
        if (auto* list = qobject_cast<TDropDownList*>(panel_->RowControl(*cond, rciValue1))) {
          if (list->Items().isEmpty() || qobject_cast<TDropDownPopup*>(list) == nullptr) return "no list";
          Choose(list, list->Items()[Pick(static_cast<int>(list->Items().size()))]);
        } else if (qobject_cast<TDropDownEdit*>(panel_->RowControl(*cond, rciValue1)) != nullptr) {
          Type(static_cast<TDropDownLabel*>(panel_->RowControl(*cond, rciValue1)),
               QString::number(Pick(100)));
        }
        return "value";
      case 4:
        if (cond == nullptr) return "no value";
        // A date field takes a date: the query text would refuse anything else.
        cond->SetValue(1, cond->GetExprType() == ftDate ? "2024-05-1" + std::to_string(Pick(10))
                                                        : std::to_string(Pick(1000)));
        return "program value";
      case 5:
        if (cond != nullptr) cond->SetValueIsParam(1, !cond->Value1IsParam());
        return "parameter";
      case 6:
        if (!Shown().empty())
          Shown()[static_cast<std::size_t>(Pick(static_cast<int>(Shown().size())))]->SetEnabled(Pick(2) == 1);
        return "enabled";
      case 7:
        if (TFilterBracket* bracket = panel_->GetCurrentBracket())
          bracket->SetLinkType(static_cast<TFilterLinkType>(Pick(4)));
        return "link type";
      case 8:
        if (Root().GetRowCount() > 1)
          Root().MoveRow(Pick(Root().GetRowCount()), Root(), Pick(Root().GetRowCount()));
        return "move";
      case 9: panel_->Appearance()->SetStyle(Pick(2) == 0 ? psGroups : psAndOr); return "style";
      case 10:
        panel_->verticalScrollBar()->setValue(Pick(panel_->verticalScrollBar()->maximum() + 1));
        return "scroll";
      default: {
        TStrings saved;
        Query().SaveToStrings(saved);
        panel_->LoadFromStrings(saved);
        return "reload";
      }
    }
  }
};

TEST_F(PanelMirrorTest, EveryShownLineSaysWhatItsRowHolds) {
  panel_->resize(400, 200);
  for (const unsigned seed : {1u, 2u, 3u}) {
    random_.seed(seed);
    panel_->ClearQuery();
    for (int i = 0; i < 8; ++i) AddCond(Root(), 3)->SetValue(1, "City " + std::to_string(i));
    panel_->SetCurrentRowNum(1);
    for (int i = 0; i < 250 && !HasFatalFailure(); ++i) {
      const std::string step = Step();
      ExpectMirror("seed " + std::to_string(seed) + " step " + std::to_string(i) + ": " + step);
      while (Root().GetRowCount() > 40) Root().DeleteRow(0);
    }
  }
}

}  // namespace
}  // namespace ts4test
