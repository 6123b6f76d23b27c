#include "foundation/enum_set.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace {

enum class Color : std::uint8_t { Red, Green, Blue, Alpha };
enum class Wide : std::uint8_t { First = 0, Middle = 31, Last = 63, Beyond = 64 };
using Colors = ts4::TEnumSet<Color>;

// Stored option sets are integers: bit n must stand for the member of ordinal n.
TEST(EnumSet, BitNIsTheMemberOfOrdinalN) {
  EXPECT_EQ((Colors{Color::Red, Color::Alpha}).Bits(), 0b1001u);
  for (std::uint64_t bits = 0; bits < 16; ++bits) EXPECT_EQ(Colors::FromBits(bits).Bits(), bits);
  EXPECT_TRUE(Colors::FromBits(0b0110).Contains(Color::Blue));
  EXPECT_FALSE(Colors::FromBits(0b0110).Contains(Color::Alpha));

  ts4::TEnumSet<Wide> wide{Wide::First, Wide::Middle, Wide::Last};
  const std::uint64_t bits = (std::uint64_t{1} << 63) | (std::uint64_t{1} << 31) | 1u;
  EXPECT_EQ(wide.Bits(), bits);
  wide.Include(Wide::Beyond);  // past bit 63: never stored
  EXPECT_FALSE(wide.Contains(Wide::Beyond));
  EXPECT_EQ(wide.Bits(), bits);
}

TEST(EnumSet, MembersAndOperators) {
  Colors set;
  EXPECT_TRUE(set.Empty());
  set.Include(Color::Green).Include(Color::Alpha).Include(Color::Green);
  EXPECT_EQ(set, (Colors{Color::Alpha, Color::Green}));
  set.Exclude(Color::Green).Exclude(Color::Blue);
  EXPECT_EQ(set, Colors{Color::Alpha});

  constexpr Colors warm{Color::Red, Color::Green};
  constexpr Colors cool{Color::Green, Color::Blue};
  static_assert((warm | cool) == Colors{Color::Red, Color::Green, Color::Blue});
  static_assert((warm & cool) == Colors{Color::Green});
  static_assert((warm - cool) == Colors{Color::Red});
  static_assert((cool - warm) == Colors{Color::Blue});
}

}  // namespace
