#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ts4 {

class TStrings;

/// Reads many sections of one sectioned list, as XReadSLSectionValues does,
/// in time linear in the list: each search starts where the previous section
/// ended, so a list read in the order it was written is read once. Should
/// the sections stand in another order, an index of the header lines takes
/// over before the searches add up to more than a few passes over the list.
class TSectionReader {
 public:
  /// The list must outlive the reader and stay unchanged while it is used.
  explicit TSectionReader(const TStrings& list) : list_(list) {}

  /// Makes `dest` hold exactly the body of the first section of that name at
  /// or after the end of the section read last (else the first from the
  /// top); false, with `dest` emptied, when the list has no such section.
  bool Read(std::string_view section, TStrings& dest);

 private:
  /// Index of the header line of the section, searched through the index.
  [[nodiscard]] int FindIndexed(std::string_view section);

  const TStrings& list_;
  int position_ = 0;
  long long scanned_ = 0;
  bool indexed_ = false;
  std::unordered_map<std::string, std::vector<int>> headers_;
};

}  // namespace ts4
