#include <gtest/gtest.h>

#include "foundation/section_index.h"
#include "foundation/strings.h"

namespace {

TEST(SectionIndex, EachOccurrenceOnceInAnyOrder) {
  const ts4::TStrings list = {"[A]", "x=1", "[B]", "x=2", " [a] ", "x=3", "[C]"};
  ts4::TSectionIndex sections(list);
  ts4::TStrings body;
  // Each search starts after the section read last and rounds to the top.
  const std::pair<const char*, const char*> reads[] = {
      {"C", ""}, {"b", "x=2"}, {"A", "x=3"}, {"a", "x=1"}, {"A", nullptr}, {"D", nullptr}, {"B", nullptr}};
  for (auto [section, expected] : reads) {
    body.Add("stale");
    EXPECT_EQ(sections.Read(section, body), expected != nullptr) << section;
    EXPECT_EQ(body, expected && *expected ? ts4::TStrings{expected} : ts4::TStrings{}) << section;
  }
}

TEST(SectionIndex, ManyReadsOutOfOrderUseTheIndex) {
  ts4::TStrings list;
  for (int i = 0; i < 500; ++i) list.AddStrings({"[S" + std::to_string(i) + "]", std::to_string(i)});
  ts4::TSectionIndex sections(list);
  ts4::TStrings body;
  for (int i = 499; i >= 0; --i) {
    ASSERT_TRUE(sections.Read("s" + std::to_string(i), body));
    EXPECT_EQ(body, ts4::TStrings{std::to_string(i)});
  }
  EXPECT_FALSE(sections.Read("S7", body));
}

}  // namespace
