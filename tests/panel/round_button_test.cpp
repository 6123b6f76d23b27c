#include "panel/round_button.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QAccessibleActionInterface>
#include <QApplication>
#include <QEnterEvent>
#include <QImage>
#include <QMetaProperty>
#include <QSignalSpy>
#include <QTest>

namespace {

using ts4::TWRndBtn;

TEST(RndBtn, CaptionIsCentredOrAtTheMarginAndShiftedWhenPressed) {
  const struct {
    const char* name;
    QSize text;
    bool shifted;
    int margin;
    Qt::LayoutDirection direction;
    QPoint expected;
  } cases[] = {
      {"centred, odd leftovers round down", {19, 9}, false, -1, Qt::LeftToRight, {10, 5}},
      {"wider than the button", {50, 10}, false, -1, Qt::LeftToRight, {-5, 5}},
      {"centring ignores the direction", {20, 10}, false, -1, Qt::RightToLeft, {10, 5}},
      {"margin from the left", {20, 10}, false, 3, Qt::LeftToRight, {3, 5}},
      {"margin from the right", {20, 10}, false, 3, Qt::RightToLeft, {17, 5}},
      {"margin, pressed", {20, 10}, true, 0, Qt::LeftToRight, {1, 6}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(ts4::RndBtnCaptionPos({40, 20}, c.text, c.shifted, c.margin, c.direction), c.expected)
        << c.name;
  }
}

// A button at (10, 10) in a shown window, so that presses go through Qt's
// routing and the implicit grab as the user's do.
class RndBtnMouse : public testing::Test {
 protected:
  void SetUp() override {
    window_.resize(200, 100);
    button_ = new TWRndBtn(&window_);
    button_->setGeometry(10, 10, 40, 20);
    window_.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window_));
  }

  void Press(QPoint pos, Qt::MouseButton mouse = Qt::LeftButton) {
    QTest::mousePress(window_.windowHandle(), mouse, {}, pos);
  }
  void Release(QPoint pos, Qt::MouseButton mouse = Qt::LeftButton) {
    QTest::mouseRelease(window_.windowHandle(), mouse, {}, pos);
  }

  static constexpr QPoint Inside{30, 20};
  static constexpr QPoint Outside{150, 80};

  QWidget window_;
  TWRndBtn* button_ = nullptr;
};

TEST_F(RndBtnMouse, ClicksOnlyWhenReleasedOverTheButton) {
  const struct {
    const char* name;
    bool enabled;
    bool flat;
    Qt::MouseButton mouse;
    QPoint press;
    QPoint release;
    int clicks;
    bool overAfter;
  } cases[] = {
      {"inside", true, true, Qt::LeftButton, Inside, Inside, 1, true},
      {"right button", true, true, Qt::RightButton, Inside, Inside, 0, true},
      {"released outside", true, true, Qt::LeftButton, Inside, Outside, 0, false},
      {"pressed outside", true, true, Qt::LeftButton, Outside, Inside, 0, true},  // ends over it
      {"disabled", false, true, Qt::LeftButton, Inside, Inside, 0, false},
  };
  for (const auto& c : cases) {
    button_->setEnabled(c.enabled);
    button_->SetFlat(c.flat);
    QSignalSpy clicked(button_, &TWRndBtn::clicked);
    Press(c.press, c.mouse);
    EXPECT_EQ(button_->IsDown(), c.enabled && c.mouse == Qt::LeftButton && c.press == Inside) << c.name;
    Release(c.release, c.mouse);
    EXPECT_FALSE(button_->IsDown()) << c.name;
    EXPECT_EQ(clicked.count(), c.clicks) << c.name;
    EXPECT_EQ(button_->IsMouseOver(), c.overAfter) << c.name;
  }
}

TEST_F(RndBtnMouse, DisablingWhileHeldLeavesTheButtonUp) {
  Press(Inside);
  ASSERT_TRUE(button_->IsDown());
  button_->setEnabled(false);
  EXPECT_FALSE(button_->IsDown());
  button_->setEnabled(true);
  QSignalSpy clicked(button_, &TWRndBtn::clicked);
  Release(Inside);
  EXPECT_EQ(clicked.count(), 0);
}

TEST_F(RndBtnMouse, DoubleClickPressesAgain) {
  QSignalSpy clicked(button_, &TWRndBtn::clicked);
  QSignalSpy doubleClicked(button_, &TWRndBtn::doubleClicked);
  QTest::mouseDClick(window_.windowHandle(), Qt::LeftButton, {}, Inside);
  EXPECT_EQ(doubleClicked.count(), 1);
  EXPECT_EQ(clicked.count(), 2);
  EXPECT_FALSE(button_->IsDown());
}

TEST_F(RndBtnMouse, SpaceAndEnterClickTheFocusedButton) {
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
  button_->clearFocus();
  const QImage unfocused = button_->grab().toImage();
  QTest::keyClick(window_.windowHandle(), Qt::Key_Tab);
  ASSERT_TRUE(button_->hasFocus());
  EXPECT_NE(button_->grab().toImage(), unfocused) << "the focus frame shows";
  const struct {
    const char* name;
    Qt::Key key;
    Qt::KeyboardModifiers modifiers;
    int clicks;
  } cases[] = {
      {"Space", Qt::Key_Space, {}, 1},
      {"keypad Enter", Qt::Key_Enter, Qt::KeypadModifier, 1},
      {"Down", Qt::Key_Down, {}, 0},
      {"Ctrl+Space", Qt::Key_Space, Qt::ControlModifier, 0},
  };
  for (const auto& c : cases) {
    QSignalSpy clicked(button_, &TWRndBtn::clicked);
    QTest::keyClick(window_.windowHandle(), c.key, c.modifiers);
    EXPECT_EQ(clicked.count(), c.clicks) << c.name;
  }
}

TEST(RndBtn, ScreenReadersSeeAButtonNamedByItsCaption) {
  TWRndBtn button;
  button.SetCaption(QStringLiteral("+"));
  QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&button);
  ASSERT_NE(accessible, nullptr);
  EXPECT_EQ(accessible->role(), QAccessible::Button);
  EXPECT_EQ(accessible->text(QAccessible::Name), QStringLiteral("+"));
  QSignalSpy clicked(&button, &TWRndBtn::clicked);
  accessible->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_EQ(clicked.count(), 1);
}

// Rendering, with the parent's background in a colour no state uses.
class RndBtnPaint : public testing::Test {
 protected:
  void SetUp() override {
    QPalette palette = parent_.palette();
    palette.setColor(QPalette::Window, QColor::fromRgb(Background));
    parent_.setPalette(palette);
    button_ = new TWRndBtn(&parent_);
    button_->resize(80, 30);
  }

  QImage Render() const { return button_->grab().toImage(); }
  // Pixels as RGB: a palette colour may carry more precision than the image.
  QRgb Pixel(int x, int y) const { return Render().pixel(x, y); }
  QRgb Centre() const { return Pixel(40, 15); }

  void Enter() {
    QEnterEvent event(QPointF(5, 5), QPointF(5, 5), button_->mapToGlobal(QPointF(5, 5)));
    QApplication::sendEvent(button_, &event);
  }
  void Leave() {
    QEvent event(QEvent::Leave);
    QApplication::sendEvent(button_, &event);
  }
  void Press() { QTest::mousePress(button_, Qt::LeftButton, {}, QPoint(40, 15)); }
  void Release(QPoint pos = {40, 15}) { QTest::mouseRelease(button_, Qt::LeftButton, {}, pos); }

  QRgb Dark() const { return button_->palette().color(QPalette::Dark).rgb(); }
  QRgb Light() const { return button_->palette().color(QPalette::Light).rgb(); }

  // The box around the pixels inside the outline that are not the fill.
  QRect CaptionBox() const {
    const QImage image = Render();
    const QRgb fill = image.pixel(4, 4);
    QRect box;
    for (int y = 4; y < image.height() - 4; ++y) {
      for (int x = 4; x < image.width() - 4; ++x) {
        if (image.pixel(x, y) != fill) box |= QRect(x, y, 1, 1);
      }
    }
    return box;
  }

  static constexpr QRgb Background = 0xff0a78c8;
  QWidget parent_;
  TWRndBtn* button_ = nullptr;
};

TEST_F(RndBtnPaint, FillFollowsTheMouseAndRoundedCornersShowTheParent) {
  button_->SetOverColor(QColor(0, 200, 0));
  button_->SetPressedColor(QColor(200, 0, 0));
  EXPECT_EQ(Centre(), Background) << "idle: the parent's colour";
  Enter();
  EXPECT_EQ(Centre(), qRgb(0, 200, 0)) << "hovered";
  Press();
  EXPECT_EQ(Centre(), qRgb(200, 0, 0)) << "pressed";
  EXPECT_EQ(Pixel(0, 0), Background) << "a rounded corner";
  Leave();
  EXPECT_EQ(Centre(), qRgb(200, 0, 0)) << "dragged off, still held";
  Release({100, 100});
  EXPECT_EQ(Centre(), Background) << "released outside";
  button_->SetRounded(false);
  Press();
  EXPECT_EQ(Pixel(0, 0), Dark()) << "a square corner";
}

// A flat button shows a plain outline; only when pressing is allowed does the
// mouse raise it, and a press sink it with the caption one pixel down and right.
// The plain outline runs along the top edge; the sunken bevel's dark side is
// the inner one, which leaves the top edge in the fill.
TEST_F(RndBtnPaint, FlatButtonRaisesUnderTheMouseAndSinksOnlyWhenAllowed) {
  button_->SetRounded(false);
  button_->SetCaption(QStringLiteral("Hg"));
  for (const bool allowPress : {false, true}) {
    SCOPED_TRACE(allowPress ? "press allowed" : "press not allowed");
    button_->SetAllowPress(allowPress);
    EXPECT_EQ(Pixel(40, 0), Dark()) << "idle: plain outline";
    EXPECT_EQ(Pixel(40, 2), Background);
    Enter();
    if (allowPress) {
      EXPECT_EQ(Pixel(40, 2), Light()) << "raised: light inner top";
      EXPECT_EQ(Pixel(40, 28), Dark()) << "raised: dark bottom";
    } else {
      EXPECT_EQ(Pixel(40, 0), Dark()) << "hovered: still the plain outline";
    }
    const QRect up = CaptionBox();
    ASSERT_FALSE(up.isEmpty());
    Press();
    EXPECT_EQ(CaptionBox(), up.translated(allowPress ? QPoint(1, 1) : QPoint()));
    EXPECT_EQ(Pixel(40, 0) == Dark(), !allowPress);
    if (allowPress) {
      EXPECT_EQ(Pixel(40, 2), Dark()) << "sunken: dark inner top";
      EXPECT_EQ(Pixel(40, 28), Light()) << "sunken: light bottom";
    }
    Release();
    Leave();
  }
  button_->SetFlat(false);
  EXPECT_EQ(Pixel(40, 2), Light()) << "not flat: always raised";
}

TEST(RndBtn, AutoSizeFollowsTheCaptionAndTheFont) {
  TWRndBtn button;
  button.SetCaption(QStringLiteral("All of the following"));
  const QSize fixed = button.size();
  button.SetAutoSize(true);
  const QSize wide = button.size();
  EXPECT_GT(wide.width(), QFontMetrics(button.font()).horizontalAdvance(button.Caption()));
  EXPECT_GT(wide.width(), fixed.width()) << "not until asked";
  EXPECT_EQ(button.sizeHint(), wide);
  button.SetCaption(QStringLiteral("Any"));
  EXPECT_LT(button.width(), wide.width());
  QFont font = button.font();
  font.setPixelSize(QFontInfo(font).pixelSize() * 2);
  button.setFont(font);
  EXPECT_GT(button.height(), wide.height());
}

}  // namespace
