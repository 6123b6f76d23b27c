#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
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

/// A file under the temporary directory, removed again at the end of the test. Its name holds the
/// running test's name, so that tests run in parallel processes never share a file.
class TTempFile {
 public:
  explicit TTempFile(const std::string& name)
      : path_(std::filesystem::temp_directory_path() / Unique(name)) {}
  ~TTempFile() {
    std::error_code ignored;
    std::filesystem::remove(path_, ignored);
  }
  TTempFile(const TTempFile&) = delete;
  TTempFile& operator=(const TTempFile&) = delete;

  [[nodiscard]] std::string Name() const { return path_.string(); }
  void Write(const std::string& bytes) const {
    std::ofstream(path_, std::ios::binary | std::ios::trunc) << bytes;
  }
  [[nodiscard]] std::string Read() const {
    std::ifstream in(path_, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  }

 private:
  static std::string Unique(const std::string& name) {
    const ::testing::TestInfo* info = ::testing::UnitTest::GetInstance()->current_test_info();
    std::string unique = "ts4_" + std::string(info->test_suite_name()) + "_" + info->name() + "_" + name;
    for (char& c : unique)
      if (c == '/') c = '_';
    return unique;
  }
  std::filesystem::path path_;
};

}  // namespace ts4test
