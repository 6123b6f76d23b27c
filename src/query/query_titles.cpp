#include <algorithm>
#include <array>
#include <string_view>

#include "foundation/sections.h"
#include "foundation/string_utils.h"
#include "query/captions.h"
#include "query/query.h"
#include "query/query_notifier_p.h"

namespace ts4 {
namespace {

// The built-in captions table, in this order; the lone blank line parts the sections.
constexpr std::array<std::string_view, 51> DefaultTitles = {
    "[Query Panel]",
    "ttlFilter=Choose records where @ of the following apply",
    "ttlBracket=@ of the following apply",
    "ttlAll=all",
    "ttlAny=any",
    "ttlNone=none",
    "ttlNotAll=not all",
    "ttlAddBracket=Add &Bracket",
    "ttlAddCond=Add &Condition",
    "ttlDelRow=&Delete Current Row",
    "ttlEnableDisable=&Enable/Disable Row",
    "ttlClickToAdd=Click here to add new condition",
    "ttlSubQueryCaption=Sub-query",
    "ttlResultField=Result Field",
    "ttlAnd=and",
    "ttlOr=or",
    "ttlConstant=Constant value",
    "ttlParameter=Parameter",
    " ",
    "[Result Fields Editor]",
    "ttlRFETitle=Result Fields Editor",
    "ttlFields=&Available fields",
    "ttlResFields=Result fields",
    "ttlMakeFldHint=Create result field",
    "ttlDelFldHint=Delete result field",
    "ttlNewFldHint=New result field",
    "ttlAddRFldHint=Add to result field",
    "ttlSubRFldHint=Subtract from result field",
    "ttlMulRFldHint=Multiply by result field",
    "ttlDivRFldHint=Divide by result field",
    "ttlSortRFldHint=Sort result field",
    "ttlNotSorted=Not Sorted",
    "ttlAscending=Ascending",
    "ttlDescending=Descending",
    "ttlSortCaption=Sorted fields",
    "ttlSortingColName=Sorting type",
    "ttlFieldNmColName=Field Name",
    "ttlFieldExprColName=Expression",
    "ttlMgsDeleteField=Delete Field \"%s\"?",
    "ttlOkBtnCaption=OK",
    "ttlCancelBtnCaption=Cancel",
    "ttlAsIs=as is",
    "ttlJustSorting=just sorting",
    "ttlAddBtnCaption=&Add",
    "ttlAddBtnHint=Add result field",
    "ttlHelpBtnCaption=&Help",
    "ttlSUMCaption=SUM",
    "ttlCOUNTCaption=COUNT",
    "ttlMINCaption=MIN",
    "ttlMAXCaption=MAX",
    "ttlAVERAGECaption=AVERAGE",
};

// Names of the captions that tables of earlier versions kept by number. The
// names at 13 and 18 to 21 are not in the table any more, so SetTitle drops them.
constexpr std::array<std::string_view, 22> OldTitleNames = {
    "ttlFilter",       "ttlBracket",     "ttlAll",         "ttlAny",          "ttlNone",
    "ttlNotAll",       "ttlAddBracket",  "ttlAddCond",     "ttlDelRow",       "ttlFields",
    "ttlResFields",    "ttlMakeFldHint", "ttlDelFldHint",  "ttlSortTypeHint", "ttlNotSorted",
    "ttlAscending",    "ttlDescending",  "ttlSortCaption", "ttlRename",       "ttlDelete",
    "ttlWithoutGroup", "ttlAllResFieds",
};
constexpr int OldTitleCount = static_cast<int>(OldTitleNames.size());

/// Query texts of this version and later keep their captions in sections.
constexpr double SectionedTitlesVersion = 2.2;

}  // namespace

void TWQuery::LoadDefTitles() {
  defTitles_.Clear();
  for (std::string_view line : DefaultTitles) defTitles_.Add(std::string(line));
}

std::string TWQuery::GetTitle(std::string_view name) const {
  return titles_.Values(name);
}

void TWQuery::CaptionsChanged(const TStrings& before) {
  if (titles_ == before) return;
  notifier_->QueryChanged({qaCaptions});
  Changed();
}

void TWQuery::SetTitle(std::string_view name, std::string_view value) {
  const int index = titles_.IndexOfName(name);
  if (index < 0) return;
  std::string line = titles_.Names(index) + "=" + std::string(value);
  if (line == titles_[index]) return;
  titles_.SetStrings(index, std::move(line));
  notifier_->QueryChanged({qaCaptions});
  Changed();
}

void TWQuery::SetTitles(TStrings& value) {
  const TStrings before = titles_;
  LoadTitlesFromStrings(defTitles_, titles_, value);
  CaptionsChanged(before);
}

void TWQuery::MergeDFMTitles(const TStrings& source) {
  const detail::TQueryOperation operation(*notifier_);
  const int count = std::min(source.Count(), OldTitleCount);
  for (int i = 0; i < count; ++i) {
    const std::string_view line = Trim(source[i]);
    if (!line.empty()) SetTitle(OldTitleNames[static_cast<std::size_t>(i)], line);
  }
}

void TWQuery::LoadOldTitlesFromStrings(const TStrings& source) {
  // The keys up to the line count are looked up (one more than there are
  // lines); numbers without an old name cannot change anything, so the
  // search stops at the last old name.
  const detail::TQueryOperation operation(*notifier_);
  const int last = std::min(source.Count(), OldTitleCount - 1);
  for (int i = 0; i <= last; ++i) {
    const std::string value = source.Values("Title" + std::to_string(i));
    const std::string_view trimmed = Trim(value);
    if (!trimmed.empty()) SetTitle(OldTitleNames[static_cast<std::size_t>(i)], trimmed);
  }
}

void TWQuery::LoadStoredTitles(const TStrings& stored) {
  const detail::TQueryOperation operation(*notifier_);
  const TStrings before = titles_;
  TStrings work = stored;
  // The sectioned format starts with a header and has a name=value line
  // third; a table too short to tell is sectioned when it starts with "[".
  const auto has = [&](int index, char c) {
    return index < work.Count() && work[index].find(c) != std::string::npos;
  };
  const bool sectioned = work.Count() >= 3 ? has(0, '[') && has(2, '=') : has(0, '[');
  if (sectioned || work.Empty()) {
    LoadTitlesFromStrings(defTitles_, titles_, work);
  } else {
    // Old lines carry no names: they are laid over the built-in table.
    titles_ = defTitles_;
    MergeDFMTitles(work);
  }
  designTitles_ = titles_;
  CaptionsChanged(before);
}

void TWQuery::LoadTitlesFromQueryText(const TStrings& list, double version) {
  if (version >= SectionedTitlesVersion) {
    TStrings source = list;  // the loader renames old sections in its source
    LoadTitlesFromStrings(designTitles_, titles_, source);
    return;
  }
  TStrings old;
  XReadSLSectionValues(0, list, "Titles", old);
  if (!old.Empty()) LoadOldTitlesFromStrings(old);
}

}  // namespace ts4
