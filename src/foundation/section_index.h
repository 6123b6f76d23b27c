#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ts4 {

class TStrings;

/// Hands out the sections of a sectioned list by name, so that a reader
/// fetches every section without searching the list again: reading a whole
/// text costs one pass over it, whatever order its sections stand in.
/// Sections asked for in the order they stand are found by looking at the
/// next header; when requests out of order have looked at the headers twice
/// over, a name index takes over.
class TSectionIndex {
 public:
  /// The list must outlive the index and stay unchanged while it is used.
  explicit TSectionIndex(const TStrings& list);

  /// Makes `body` the body of the named section (name compared ignoring
  /// ASCII case) and returns true; empties it and returns false when there is
  /// no such section. Each occurrence of a name is handed out once (two
  /// links between the same tables have two sections), the one after the
  /// section read last first, so no text makes a reader go over one body
  /// twice.
  bool Read(std::string_view name, TStrings& body);

 private:
  /// The next header of that name not handed out yet, from the one after the
  /// header read last round to the top, or -1.
  int FindByScan(std::string_view name);
  /// The first header of that name not handed out yet, or -1.
  int FindIndexed(std::string_view name);
  void Take(std::size_t header, TStrings& body);

  const TStrings* list_;
  std::vector<int> lines_;          // line of each header, in order
  std::vector<std::string> names_;  // name of each header
  std::vector<char> taken_;
  std::size_t next_ = 0;     // the header after the one read last
  std::size_t scanned_ = 0;  // headers looked at by scans so far
  struct TOccurrences {
    std::vector<std::size_t> Headers;
    std::size_t Next = 0;
  };
  std::unordered_map<std::string, TOccurrences> byName_;
  bool indexed_ = false;
};

}  // namespace ts4
