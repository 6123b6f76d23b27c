// A query panel over the sample structure, shown on the offscreen screen.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <memory>

#include "panel/dropdown_label.h"
#include "panel/query_panel.h"
#include "structure/structure.h"

// Test messages show texts as texts.
inline void PrintTo(const QString& text, std::ostream* out) {
  *out << '"' << text.toStdString() << '"';
}

namespace ts4test {

class QueryPanelTest : public testing::Test {
 protected:
  void SetUp() override {
    structure_ = std::make_unique<ts4::TWDBStructure>();
    structure_->LoadFromFile(TS4_EXAMPLE_DATA "/sales.str");
    panel_ = std::make_unique<ts4::TWQueryPanel>();
    // A font whose row buttons are 16 pixels high, as the layout examples assume.
    QFont font = panel_->font();
    font.setPixelSize(13);
    panel_->setFont(font);
    panel_->resize(400, 300);
    panel_->SetDbStruct(structure_.get());
    panel_->show();
  }
  void TearDown() override {
    panel_.reset();
    QApplication::processEvents();
  }

  [[nodiscard]] ts4::TWQuery& Query() { return panel_->Query(); }
  [[nodiscard]] ts4::TFilterBracket& Root() { return panel_->Query().Root(); }
  /// A condition on the field with that ID, with its first operator.
  ts4::TFilterCond* AddCond(ts4::TFilterBracket& bracket, int fieldID, const char* op = nullptr);
  void Load(const char* exampleQuery);
  /// Opens the word's menu and chooses the item with that text (sub-menus included).
  static void Choose(ts4::TDropDownLabel* word, const QString& item);
  /// Opens the word's editor, types the text and presses Enter.
  static void Type(ts4::TDropDownLabel* word, const QString& text);
  /// The text of the row's word at the control index ("" when it has none).
  [[nodiscard]] QString Word(const ts4::TFilterRow& row, int index) const;

  std::unique_ptr<ts4::TWDBStructure> structure_;
  std::unique_ptr<ts4::TWQueryPanel> panel_;
};

}  // namespace ts4test
