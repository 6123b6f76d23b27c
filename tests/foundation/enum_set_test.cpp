#include "foundation/enum_set.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace {

enum class Color : std::uint8_t { Red, Green, Blue, Alpha };

// An enumeration using the whole width of the set.
enum class Wide : std::uint8_t { First = 0, Middle = 31, Last = 63, Beyond = 64 };

using Colors = ts4::TEnumSet<Color>;

TEST(EnumSetMembers, StartsEmpty) {
  const Colors set;
  EXPECT_TRUE(set.Empty());
  EXPECT_EQ(set.Bits(), 0u);
  for (Color c : {Color::Red, Color::Green, Color::Blue, Color::Alpha}) EXPECT_FALSE(set.Contains(c));
}

TEST(EnumSetMembers, IncludeAndExclude) {
  Colors set;
  set.Include(Color::Green).Include(Color::Alpha);
  EXPECT_TRUE(set.Contains(Color::Green));
  EXPECT_TRUE(set.Contains(Color::Alpha));
  EXPECT_FALSE(set.Contains(Color::Red));
  EXPECT_FALSE(set.Contains(Color::Blue));
  set.Include(Color::Green);  // including twice changes nothing
  EXPECT_EQ(set, (Colors{Color::Green, Color::Alpha}));
  set.Exclude(Color::Green).Exclude(Color::Blue);  // excluding an absent member is harmless
  EXPECT_EQ(set, Colors{Color::Alpha});
  set.Exclude(Color::Alpha);
  EXPECT_TRUE(set.Empty());
}

TEST(EnumSetMembers, BitNIsMemberOfOrdinalN) {
  EXPECT_EQ((Colors{Color::Red}).Bits(), 0b0001u);
  EXPECT_EQ((Colors{Color::Blue}).Bits(), 0b0100u);
  EXPECT_EQ((Colors{Color::Red, Color::Alpha}).Bits(), 0b1001u);
  const Colors fromBits = Colors::FromBits(0b0110);
  EXPECT_EQ(fromBits, (Colors{Color::Green, Color::Blue}));
  EXPECT_TRUE(fromBits.Contains(Color::Green));
  EXPECT_FALSE(fromBits.Contains(Color::Alpha));
  for (std::uint64_t bits = 0; bits < 16; ++bits) EXPECT_EQ(Colors::FromBits(bits).Bits(), bits);
}

TEST(EnumSetMembers, WholeWidth) {
  ts4::TEnumSet<Wide> set{Wide::First, Wide::Middle, Wide::Last};
  EXPECT_EQ(set.Bits(), (std::uint64_t{1} << 63) | (std::uint64_t{1} << 31) | 1u);
  EXPECT_TRUE(set.Contains(Wide::Last));
  // A member past bit 63 cannot be stored: it is never contained and
  // including it changes nothing.
  set.Include(Wide::Beyond);
  EXPECT_FALSE(set.Contains(Wide::Beyond));
  EXPECT_EQ(set.Bits(), (std::uint64_t{1} << 63) | (std::uint64_t{1} << 31) | 1u);
  set.Exclude(Wide::Beyond);
  EXPECT_EQ(set.Bits(), (std::uint64_t{1} << 63) | (std::uint64_t{1} << 31) | 1u);
}

TEST(EnumSetOperators, UnionIntersectionDifference) {
  const Colors warm{Color::Red, Color::Green};
  const Colors cool{Color::Green, Color::Blue};
  EXPECT_EQ(warm | cool, (Colors{Color::Red, Color::Green, Color::Blue}));
  EXPECT_EQ(warm & cool, Colors{Color::Green});
  EXPECT_EQ(warm - cool, Colors{Color::Red});
  EXPECT_EQ(cool - warm, Colors{Color::Blue});
  EXPECT_EQ(warm - warm, Colors{});
  EXPECT_EQ(warm | Colors{}, warm);
  EXPECT_EQ(warm & Colors{}, Colors{});
  // The operands are left unchanged.
  EXPECT_EQ(warm, (Colors{Color::Red, Color::Green}));
  EXPECT_EQ(cool, (Colors{Color::Green, Color::Blue}));
}

TEST(EnumSetOperators, Equality) {
  EXPECT_EQ((Colors{Color::Red, Color::Blue}), (Colors{Color::Blue, Color::Red}));
  EXPECT_NE((Colors{Color::Red}), (Colors{Color::Blue}));
  EXPECT_NE((Colors{Color::Red}), Colors{});
  EXPECT_TRUE(Colors{} == Colors::FromBits(0));
}

TEST(EnumSetOperators, UsableInConstantExpressions) {
  constexpr Colors set = Colors{Color::Red} | Colors{Color::Blue};
  static_assert(set.Contains(Color::Blue));
  static_assert(!set.Contains(Color::Green));
  static_assert((set - Colors{Color::Red}).Bits() == 0b0100);
  static_assert(Colors{}.Empty());
  SUCCEED();
}

}  // namespace
