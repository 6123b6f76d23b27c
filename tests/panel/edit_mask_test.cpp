#include "panel/edit_mask.h"

#include <gtest/gtest.h>

namespace {

using ts4::TQtInputMask;

TEST(EditMask, OlderMasksBecomeQtInputMasks) {
  const struct {
    const char* editMask;
    TQtInputMask expected;
  } cases[] = {
      {"!99/99/0000;1;_", {"00/00/9999;_", true, '_'}},
      {"!90:00:00>LL;1;_", {"09:99:99>AA;_", true, '_'}},
      {"(999)000-0000;0;*", {"(000)999-9999;*", false, '*'}},
      {">L<llllll", {">A<aaaaaa;_", true, '_'}},
      {">LL<>aa", {">AA!nn;_", true, '_'}},
      {"AaCc#", {"NnXx#;_", true, '_'}},
      {"\\A\\9-00", {"\\A\\9-99;_", true, '_'}},   // escaped: the characters themselves
      {"NO_0", {"\\NO 9;_", true, '_'}},           // Qt's own mask letters as literals
      {"99\\;99;0; ", {"00\\;00; ", false, ' '}},  // an escaped semicolon stays in the mask
      {"", {"", true, '_'}},
      {";0", {"", false, '_'}},
  };
  for (const auto& c : cases) {
    const TQtInputMask mask = ts4::InputMaskFromEditMask(c.editMask);
    EXPECT_TRUE(mask == c.expected) << c.editMask << " gave " << mask.Mask << ", " << mask.SaveLiterals
                                    << ", '" << mask.BlankChar << "'";
  }
}

}  // namespace
