// Reading many sections of one list, as XReadSLSectionValues would, in any order.
#include <gtest/gtest.h>

#include "foundation/section_reader.h"
#include "foundation/strings.h"

namespace {

TEST(SectionReader, SameSectionsAsOneSearchEach) {
  ts4::TStrings list = {"[A]", "x=1", "[B]", "x=2", "[a]", "x=3"};
  for (int i = 300; i >= 1; --i) list.AddStrings({"[S" + std::to_string(i) + "]", "x=" + std::to_string(i)});
  ts4::TSectionReader reader(list);
  ts4::TStrings body;
  // From the section read last on, round to the top after the end.
  const std::pair<const char*, const char*> reads[] = {{"A", "x=1"}, {"B", "x=2"},   {"A", "x=3"},
                                                       {"A", "x=1"}, {"C", nullptr}, {"S300", "x=300"}};
  for (auto [section, expected] : reads) {
    EXPECT_EQ(reader.Read(section, body), expected != nullptr) << section;
    EXPECT_EQ(body, expected ? ts4::TStrings{expected} : ts4::TStrings{}) << section;
  }
  // Read against the order they were written in: the header index takes over.
  for (int i = 1; i <= 300; ++i) {
    ASSERT_TRUE(reader.Read("S" + std::to_string(i), body));
    EXPECT_EQ(body, ts4::TStrings{"x=" + std::to_string(i)});
  }
  for (const char* expected : {"x=1", "x=3"}) {  // S1 is the last section: round to the top
    ASSERT_TRUE(reader.Read("a", body));
    EXPECT_EQ(body, ts4::TStrings{expected});
  }
  EXPECT_FALSE(reader.Read("C", body));
}

}  // namespace
