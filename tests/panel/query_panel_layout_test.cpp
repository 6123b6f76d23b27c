// Where the query panel puts its lines and their controls.
#include <QLabel>
#include <QScrollBar>

#include "foundation/error.h"
#include "panel/dropdown_label.h"
#include "panel/query_panel_fixture.h"
#include "panel/row_controls.h"

namespace ts4test {
namespace {

using namespace ts4;

// The placement of one line, without widgets.
struct PlacementCase {
  const char* name;
  TRowPlacementInput input;
  QRect button, checkBox, first, value1, andOr;
};

TRowPlacementInput Line(int rowNum, int depth, bool rightToLeft = false, QPoint scroll = {}) {
  TRowPlacementInput input;
  input.RowNum = rowNum;
  input.Depth = depth;
  input.Header = rowNum == 0;
  input.Button = rowNum == 0 ? QSize(14, 14) : QSize(20, 16);
  input.CheckBox = rowNum == 0 ? QSize() : QSize(13, 13);
  input.Controls[rciFirst] = {40, 15};
  input.Controls[rciSecond] = {30, 15};
  input.Controls[rciValue1] = {0, 15};  // an empty text still takes its gap
  input.Controls[rciAndOr] = {10, 15};
  input.Scroll = scroll;
  input.ClientWidth = 400;
  input.RightToLeft = rightToLeft;
  return input;
}

TEST(QueryPanelGeometry, PlacesLinesAsDocumented) {
  const PlacementCase cases[] = {
      {"header at the margins",
       Line(0, 0),
       {5, 5, 14, 14},
       {},
       {24, 5, 40, 15},
       {104, 5, 0, 15},
       {114, 5, 10, 15}},
      {"line 3 at depth 2",
       Line(3, 2),
       {45, 71, 20, 16},
       {5, 71, 13, 13},
       {70, 71, 40, 15},
       {150, 71, 0, 15},
       {160, 71, 10, 15}},
      {"scrolled",
       Line(1, 1, false, {7, 20}),
       {18, 7, 20, 16},
       {-2, 7, 13, 13},
       {43, 7, 40, 15},
       {123, 7, 0, 15},
       {133, 7, 10, 15}},
      {"right to left",
       Line(0, 0, true),
       {376, 5, 14, 14},
       {},
       {331, 5, 40, 15},
       {291, 5, 0, 15},
       {271, 5, 10, 15}},
      {"right to left, check box at the right",
       Line(1, 1, true),
       {350, 27, 20, 16},
       {377, 27, 13, 13},
       {305, 27, 40, 15},
       {265, 27, 0, 15},
       {245, 27, 10, 15}},
  };
  for (const PlacementCase& c : cases) {
    SCOPED_TRACE(c.name);
    const TRowPlacement placed = PlaceRowControls(c.input, TPanelSpacing{});
    EXPECT_EQ(placed.Button, c.button);
    EXPECT_EQ(placed.CheckBox, c.checkBox);
    EXPECT_EQ(placed.Controls[rciFirst], c.first);
    EXPECT_EQ(placed.Controls[rciValue1], c.value1);
    EXPECT_EQ(placed.Controls[rciAndOr], c.andOr);
    EXPECT_TRUE(placed.Controls[rciBetween].isNull());
  }
  EXPECT_EQ(PlaceAddRowLine({45, 71, 20, 16}, {100, 15}, TPanelSpacing{}, false), QRect(45, 92, 100, 15));
  EXPECT_EQ(PlaceAddRowLine({350, 27, 20, 16}, {100, 15}, TPanelSpacing{}, true), QRect(270, 48, 100, 15));
}

// The current row's band and the frame around its current word, painted
// only with keyboard navigation on.
TEST_F(QueryPanelTest, TheCurrentRowIsPaintedWithItsWordFramed) {
  TFilterCond* cond = AddCond(Root(), 3);
  panel_->Appearance()->SetActiveRowColor(Qt::yellow);
  panel_->Appearance()->SetControlBorderColor(Qt::red);
  panel_->SetCurrentRow(cond);
  const QRect word = panel_->RowControl(*cond, rciFirst)->geometry();
  const auto pixel = [&](QPoint at) { return panel_->viewport()->grab().toImage().pixelColor(at); };
  EXPECT_EQ(pixel({1, word.center().y()}), QColor(Qt::yellow));
  EXPECT_EQ(pixel(word.topLeft() - QPoint(2, 2)), QColor(Qt::red));
  EXPECT_EQ(pixel(word.bottomRight() + QPoint(2, 2)), QColor(Qt::red));
  TQPAppearanceOptions options = panel_->Appearance()->Options();
  panel_->Appearance()->SetOptions(options.Exclude(aoAllowKeyboard));
  EXPECT_EQ(pixel({1, word.center().y()}), panel_->viewport()->palette().color(QPalette::Window));
}

TEST_F(QueryPanelTest, AppearanceStoresWhatDiffersFromItsDeclaredDefault) {
  TQPAppearance& look = *panel_->ViewOptions();
  EXPECT_EQ(&look, panel_->Appearance());
  EXPECT_EQ(look.BoolOpColor(), QColor(Qt::black));
  EXPECT_TRUE(look.IsStored("BoolOpColor")) << "black is not its declared blue";
  EXPECT_FALSE(look.IsStored("FieldColor"));
  look.SetBoolOpColor(QColor(0, 0, 255));
  EXPECT_FALSE(look.IsStored("BoolOpColor"));
  EXPECT_THROW(look.SetStyleOrdinal(2), EWQueryPanelError);
  EXPECT_EQ(look.Style(), psGroups);
}

}  // namespace
}  // namespace ts4test
