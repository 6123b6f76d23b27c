// The drop-down label and its in-place editors: captions, clicks, dropping
// down and up with their events, and what the editors let through.
#include "panel/dropdown_label.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QAccessibleActionInterface>
#include <QDateEdit>
#include <QDialog>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimeEdit>

#include "panel/dropdown_datetime.h"
#include "panel/dropdown_edit.h"
#include "panel/dropdown_list.h"
#include "panel/silent_edit.h"
#include "test_support.h"

using namespace Qt::StringLiterals;

namespace {

using ts4::TDropDownLabel;

// A window holding one label, shown, so that clicks and keys reach it.
template <typename Label>
struct Shown {
  Shown() : label(new Label(&window)) {
    window.resize(300, 80);
    label->move(20, 20);
    label->SetValue(u"old"_s);
    window.show();
  }
  QWidget window;
  Label* label;
};

void Click(QWidget* widget, Qt::KeyboardModifiers modifiers = {}, Qt::MouseButton button = Qt::LeftButton) {
  QTest::mouseClick(widget, button, modifiers, QPoint(2, 2));
}

TEST(DropDownLabel, CaptionsShowTextAsItIsAndBlanksAsUnderscores) {
  TDropDownLabel label;
  label.SetCaption(u""_s);
  EXPECT_EQ(label.text(), u"_____"_s);
  label.SetCaption(u"A&B"_s);
  EXPECT_EQ(label.text(), u"A&B"_s) << "no accelerator";
  EXPECT_TRUE(label.font().underline());
  QSignalSpy changed(&label, &TDropDownLabel::valueChanged);
  label.SetValue(u"Lisbon"_s);
  label.SetValue(u"Lisbon"_s);
  EXPECT_EQ(label.GetCaption(), u"Lisbon"_s) << "the base shows its value";
  EXPECT_EQ(changed.count(), 1) << "only changes are told";
}

TEST(DropDownLabel, ClicksDropDownAltClickAndRightClick) {
  Shown<TDropDownLabel> shown;
  TDropDownLabel& label = *shown.label;
  QSignalSpy before(&label, &TDropDownLabel::beforeDropDown);
  QSignalSpy after(&label, &TDropDownLabel::afterDropDown);
  QSignalSpy alt(&label, &TDropDownLabel::altClicked);
  QSignalSpy right(&label, &TDropDownLabel::rightClicked);

  Click(&label, Qt::ControlModifier);
  EXPECT_EQ(alt.count(), 1);
  EXPECT_FALSE(label.Dropped()) << "Ctrl+click opens nothing";
  EXPECT_EQ(before.count(), 0);

  Click(&label);
  EXPECT_TRUE(label.Dropped());
  EXPECT_EQ(before.count(), 1);
  EXPECT_EQ(after.count(), 1);
  Click(&label);
  EXPECT_FALSE(label.Dropped()) << "a second click drops up";

  Click(&label, {}, Qt::RightButton);
  EXPECT_EQ(right.count(), 1);
  EXPECT_FALSE(label.Dropped());

  label.SetFixed(true);
  Click(&label);
  label.DropDown();
  EXPECT_FALSE(label.Dropped()) << "a fixed label never drops down";
  EXPECT_EQ(before.count(), 1);
}

TEST(DropDownLabel, CustomDropDownAndBeforeDropUpDecide) {
  TDropDownLabel label;
  label.SetValue(u"old"_s);
  QSignalSpy afterUp(&label, &TDropDownLabel::afterDropUp);
  label.OnCustomDropDown = [](TDropDownLabel&, QString& value, bool& accept) {
    value = u"chosen"_s;
    accept = true;
  };
  label.DropDown();
  EXPECT_FALSE(label.Dropped()) << "the handler's answer drops it up at once";
  EXPECT_EQ(label.Value(), u"chosen"_s);
  ASSERT_EQ(afterUp.count(), 1);
  EXPECT_TRUE(afterUp.at(0).at(0).toBool());

  label.BeforeDropUp = [](TDropDownLabel&, QString&, bool& accept) { accept = false; };
  label.OnCustomDropDown = [](TDropDownLabel&, QString& value, bool& accept) {
    value = u"vetoed"_s;
    accept = true;
  };
  label.DropDown();
  EXPECT_EQ(label.Value(), u"chosen"_s) << "BeforeDropUp took the acceptance back";
  EXPECT_FALSE(afterUp.at(1).at(0).toBool());
}

ts4::TSilentEdit* OpenEditor(ts4::TDropDownCustomEdit& label) {
  label.DropDown();
  return qobject_cast<ts4::TSilentEdit*>(label.Editor());
}

// In a dialog, whose default button and Escape must not see the editor's keys.
TEST(DropDownEdit, EnterAcceptsEscapeCancelsLeavingAccepts) {
  QDialog dialog;
  auto* label = new ts4::TDropDownEdit(&dialog);
  auto* ok = new QPushButton(u"OK"_s, &dialog);
  ok->setDefault(true);
  ok->move(0, 40);
  label->SetValue(u"old"_s);
  dialog.show();
  QSignalSpy okClicked(ok, &QPushButton::clicked);
  QSignalSpy afterUp(label, &TDropDownLabel::afterDropUp);

  ts4::TSilentEdit* edit = OpenEditor(*label);
  ASSERT_NE(edit, nullptr);
  EXPECT_EQ(edit->text(), u"old"_s);
  EXPECT_EQ(edit->selectedText(), u"old"_s) << "typing replaces the value";
  QTest::keyClicks(edit, u"new"_s);
  QTest::keyClick(edit, Qt::Key_Escape);
  EXPECT_EQ(label->Value(), u"old"_s);
  EXPECT_EQ(label->GetCaption(), u"old"_s);
  EXPECT_FALSE(afterUp.at(0).at(0).toBool()) << "cancelling still reports the drop-up";

  edit = OpenEditor(*label);
  QTest::keyClicks(edit, u"Porto"_s);
  QTest::keyClick(edit, Qt::Key_Return);
  EXPECT_EQ(label->Value(), u"Porto"_s);
  EXPECT_EQ(label->GetCaption(), u"Porto"_s);
  EXPECT_FALSE(label->Dropped());

  edit = OpenEditor(*label);
  QTest::keyClicks(edit, u"Faro"_s);
  QFocusEvent leave(QEvent::FocusOut, Qt::MouseFocusReason);
  QApplication::sendEvent(edit, &leave);
  EXPECT_EQ(label->Value(), u"Faro"_s) << "leaving the editor accepts";

  edit = OpenEditor(*label);
  edit->clear();
  QTest::keyClick(edit, Qt::Key_Enter);
  EXPECT_EQ(label->Value(), u"Faro"_s) << "an empty input changes nothing";
  EXPECT_EQ(okClicked.count(), 0) << "the dialog's default button did not see Enter";
  EXPECT_TRUE(dialog.isVisible()) << "nor did the dialog see Escape";
}

TEST(DropDownEdit, ValueTypesAndCaseOptionsFilterTyping) {
  const struct {
    ts4::TDropDownCustomEdit::TValueType type;
    bool upper, lower;
    const char* typed;
    const char* value;
  } cases[] = {
      {ts4::TDropDownCustomEdit::vtInteger, false, false, "-12a-3", "-123"},
      {ts4::TDropDownCustomEdit::vtFloat, false, false, "1.5.2x", "1.52"},
      {ts4::TDropDownCustomEdit::vtString, true, false, "abc-d", "ABC-D"},
      {ts4::TDropDownCustomEdit::vtString, false, true, "AbC", "abc"},
  };
  for (const auto& c : cases) {
    ts4::TDropDownEdit label;
    label.SetValueType(c.type);
    label.SetOption(1, c.upper);
    label.SetAutoLowerCase(c.lower);
    ts4::TSilentEdit* edit = OpenEditor(label);
    edit->clear();
    QTest::keyClicks(edit, QString::fromUtf8(c.typed));
    QTest::keyClick(edit, Qt::Key_Return);
    EXPECT_EQ(label.Value().toStdString(), c.value) << c.typed;
  }
  ts4test::ExpectError<ts4::EDDLabelError>([] { ts4::TDropDownEdit().SetOption(3, true); }, 0,
                                           "Unknown edit option 3");
  ts4test::ExpectIndexError([] { ts4::TDropDownList().SetItemIndex(0); }, 0);  // the library's error and text
}

TEST(DropDownMaskEdit, TheValueIsTheTypedOrTheFormattedText) {
  for (const bool formatted : {false, true}) {
    ts4::TDropDownMaskEdit label;
    label.SetEditMask(u"!99/99/0000;1;_"_s);
    label.SetUseFormattedValue(formatted);
    ts4::TSilentEdit* edit = OpenEditor(label);
    edit->setCursorPosition(0);
    QTest::keyClicks(edit, u"24122026"_s);
    QTest::keyClick(edit, Qt::Key_Return);
    EXPECT_EQ(label.Value(), formatted ? u"24/12/2026"_s : u"24122026"_s);
  }
}

TEST(DropDownDateTimeEdit, PicksDatesAndTimesAsISOText) {
  ts4::TDropDownDateTimeEdit date;
  date.SetValue(u"2026-11-22"_s);
  date.DropDown();
  auto* dateEdit = qobject_cast<QDateEdit*>(date.Editor());
  ASSERT_NE(dateEdit, nullptr);
  EXPECT_EQ(dateEdit->date(), QDate(2026, 11, 22));
  dateEdit->setDate(QDate(2027, 1, 5));
  QTest::keyClick(dateEdit, Qt::Key_Escape);
  EXPECT_EQ(date.Value(), u"2026-11-22"_s) << "Escape keeps the old date";
  date.DropDown();
  dateEdit = qobject_cast<QDateEdit*>(date.Editor());
  dateEdit->setDate(QDate(2027, 1, 5));
  QTest::keyClick(dateEdit, Qt::Key_Return);
  EXPECT_EQ(date.Value(), u"2027-01-05"_s);

  ts4::TDropDownDateTimeEdit time;
  time.SetKind(ts4::TDropDownDateTimeEdit::ekTime);
  time.SetValue(u"not a time"_s);
  time.DropDown();
  auto* timeEdit = qobject_cast<QTimeEdit*>(time.Editor());
  ASSERT_NE(timeEdit, nullptr);
  EXPECT_EQ(timeEdit->time(), QTime(0, 0));
  timeEdit->setTime(QTime(14, 30));
  time.DropUp(true);
  EXPECT_EQ(time.Value(), u"14:30:00"_s);
}

// Records the keys that reach a widget.
class KeyLog : public QObject {
 public:
  QList<int> keys;

 protected:
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() == QEvent::KeyPress) keys.append(static_cast<QKeyEvent*>(event)->key());
    return false;
  }
};

TEST(DropDownLabel, OpeningKeysDropDownOthersGoToTheParent) {
  const struct {
    const char* name;
    Qt::Key key;
    Qt::KeyboardModifiers modifiers;
    bool fixed;
    bool opens;
  } cases[] = {
      {"Space", Qt::Key_Space, {}, false, true},
      {"keypad Enter", Qt::Key_Enter, Qt::KeypadModifier, false, true},
      {"F4", Qt::Key_F4, {}, false, true},
      {"Alt+Down", Qt::Key_Down, Qt::AltModifier, false, true},
      {"Down", Qt::Key_Down, {}, false, false},
      {"Ctrl+Delete", Qt::Key_Delete, Qt::ControlModifier, false, false},
      {"Alt+F4", Qt::Key_F4, Qt::AltModifier, false, false},
      {"Space, fixed", Qt::Key_Space, {}, true, false},
  };
  for (const auto& c : cases) {
    Shown<TDropDownLabel> shown;
    KeyLog parent;
    shown.window.installEventFilter(&parent);
    shown.label->SetFixed(c.fixed);
    QTest::keyClick(shown.label, c.key, c.modifiers);
    EXPECT_EQ(shown.label->Dropped(), c.opens) << c.name;
    EXPECT_EQ(parent.keys.contains(c.key), !c.opens) << c.name;
  }
}

TEST(DropDownEdit, TheKeyboardOpensTheEditorAndGetsTheFocusBack) {
  QWidget window;
  // First in the tab order: where Qt itself would move the focus of a closing editor.
  auto* first = new ts4::TDropDownEdit(&window);
  auto* label = new ts4::TDropDownEdit(&window);
  label->move(0, 30);
  window.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  first->setFocus();
  const QImage unfocused = label->grab().toImage();
  QTest::keyClick(window.windowHandle(), Qt::Key_Tab);
  ASSERT_TRUE(label->hasFocus());
  EXPECT_NE(label->grab().toImage(), unfocused) << "the focus frame shows";
  QTest::keyClick(window.windowHandle(), Qt::Key_F4);
  auto* edit = qobject_cast<ts4::TSilentEdit*>(label->Editor());
  ASSERT_NE(edit, nullptr);
  ASSERT_TRUE(edit->hasFocus());
  QTest::keyClicks(edit, u"Braga"_s);
  QTest::keyClick(edit, Qt::Key_Return);
  EXPECT_EQ(label->Value(), u"Braga"_s);
  EXPECT_TRUE(label->hasFocus()) << "back where the keyboard left off";

  // The label may go away while its editor is open with the focus in it.
  QTest::keyClick(window.windowHandle(), Qt::Key_F4);
  const QPointer<QWidget> editor = label->Editor();
  ASSERT_TRUE(editor != nullptr && editor->hasFocus());
  delete label;
  EXPECT_TRUE(editor.isNull()) << "the editor went with it";
  first->DropDown();  // focus moves on without anyone to tell
  EXPECT_TRUE(first->Dropped());
}

TEST(DropDownLabel, ScreenReadersReadCaptionValueAndStateAndMayOpenIt) {
  EXPECT_EQ(QAccessible::queryAccessibleInterface(std::make_unique<TDropDownLabel>().get())->role(),
            QAccessible::Button);
  ts4::TDropDownList list;
  list.AddItem({}, u"Lisbon"_s, u"LIS"_s);
  list.SetValue(u"LIS"_s);
  QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&list);
  ASSERT_NE(accessible, nullptr);
  EXPECT_EQ(accessible->role(), QAccessible::ComboBox);
  EXPECT_EQ(accessible->text(QAccessible::Name), u"Lisbon"_s);
  EXPECT_EQ(accessible->text(QAccessible::Value), u"LIS"_s);
  accessible->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_TRUE(list.Dropped());
  EXPECT_TRUE(accessible->state().expanded);
  list.DropUp(false);
  list.SetValue(u"Porto"_s);
  EXPECT_EQ(accessible->text(QAccessible::Name), u"Porto"_s) << "the name follows the value";

  list.SetValue(u""_s);
  EXPECT_EQ(accessible->text(QAccessible::Name), u""_s) << "the blank reads as no caption";
  list.SetFixed(true);
  EXPECT_TRUE(accessible->state().readOnly);
  EXPECT_TRUE(accessible->state().focusable) << "still there to be read";
  accessible->actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
  EXPECT_FALSE(list.Dropped());
}

}  // namespace
