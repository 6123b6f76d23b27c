#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "foundation/error.h"
#include "foundation/strings.h"

namespace ts4test {

/// Runs `f` and checks that it raises exactly the error type, code and message.
template <typename Error = ts4::EWTessalyError, typename F>
void ExpectError(F&& f, int code, const std::string& message) {
  try {
    f();
    ADD_FAILURE() << "expected error " << code << ": " << message;
  } catch (const Error& e) {
    EXPECT_EQ(e.ErrorCode(), code);
    EXPECT_EQ(std::string(e.what()), message);
  }
}

/// Checks that `f` raises the list's own index error for `index`.
template <typename F>
void ExpectIndexError(F&& f, int index) {
  ExpectError(f, 0, "List index out of bounds (" + std::to_string(index) + ")");
}

inline std::vector<std::string> Lines(const ts4::TStrings& list) {
  return list.Lines();
}

inline ts4::TStrings StringsOf(const std::vector<std::string>& lines) {
  ts4::TStrings list;
  for (const std::string& line : lines) list.Add(line);
  return list;
}

inline ts4::TStrings StringsOfFile(const std::string& file) {
  ts4::TStrings list;
  list.LoadFromFile(file);
  return list;
}

/// Checks that the expected lines occur in the list in this order, other lines between them allowed.
inline void ExpectLinesInOrder(const ts4::TStrings& list, const std::vector<std::string>& expected) {
  std::size_t found = 0;
  for (const std::string& line : list)
    if (found < expected.size() && line == expected[found]) ++found;
  EXPECT_EQ(found, expected.size()) << "not found in order: "
                                    << (found < expected.size() ? expected[found] : "") << "\n"
                                    << list.Text();
}

}  // namespace ts4test
