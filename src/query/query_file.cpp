// The query text: a query as sectioned text, in the order written.
//
//   <captions table>        only when SaveTitles: the Titles laid over the
//   <empty line>            built-in table (sections "[Query Panel]" ...), then a blank
//   [Main]
//   QueryName=<name>
//   Version=3.3
//   Options=<SQL options as a number, SQLOptionsToInt; empty unless SaveSQLOptions>
//   <empty line>
//   [Description]
//   <the description's lines as they are>
//   <empty line>
//   [UserData]
//   <the user data's lines as they are>
//   <empty line>
//   [RFields] and [RField<i>]   the result fields (rfield_list_file.cpp)
//   [Row]                       the condition rows, depth first
//
// Each row is a section named "Row" and its row ID: "[Row]" for the root,
// "[Row1.]" for its first row, "[Row1.2.]" for the second row inside that.
//
//   Enabled=<0 or 1>
//   RowType=<0 condition, 1 bracket>
//   a bracket:   LinkType=<0 all, 1 any, 2 none, 3 not all>
//                RowCount=<number of rows in it>
//   a condition: FieldID=<the structure field's ID>   (old texts: FldName=<its name>)
//                Operator=<the operator's name>
//                Param1=<0 or 1>, Param2=<0 or 1>     (value is a parameter)
//                Value1=<value>, Value2=<value>
//                Caption1=<caption> or, for a parameter, VFormat1=<its value format>
//                Caption2=<caption> or VFormat2=<...>
//                SubQuery=<the sub-query's lines as comma text>
//                SubQueryOptions=<its SQL options as a number>
//   <empty line>
//
// A bracket's rows follow it at once, each with its own rows before the
// next. A parameter's value is stored in place of the condition's own. In a
// condition whose values are dates, times or date-times each value (each
// item of a list) is stored as its date-time number: days since 1899-12-30
// with the time as the fraction, "." as the separator, the shortest text
// that reads back (36526 is 2000-01-01, 36526.5 its noon). Value 2 is
// converted from the condition's own value even when a parameter stands in
// for it, as texts have always been written.
//
// Texts before version 2.2 kept their captions by number, as "Title<i>="
// lines of a section "[Titles]".
//
// A line that the format cannot hold as it is (a value, caption or name with
// a line break, a description or user data line that would read as a
// header) is written escaped as "[\...]" and read back as it was
// (foundation/sections.h).
#include <string>

#include "foundation/error.h"
#include "foundation/messages.h"
#include "foundation/section_index.h"
#include "foundation/sections.h"
#include "foundation/string_utils.h"
#include "foundation/strings.h"
#include "query/builder_state_p.h"
#include "query/captions.h"
#include "query/query.h"
#include "query/query_notifier_p.h"

namespace ts4 {
namespace {

/// The format version this library writes.
constexpr double QueryTextVersion = 3.3;

/// The SQL options a query text stores, with their numbers.
struct TStoredOption {
  TSQLOption Option;
  int Bit;
};
constexpr TStoredOption StoredOptions[] = {
    {soSelectDistinct, 2}, {soQuoteAliases, 8}, {soBracketJoins, 16}, {soBracketConditions, 32}};

void WriteSection(TStrings& list, std::string_view name, const TStrings& lines) {
  list.Add("[" + std::string(name) + "]");
  for (const std::string& line : lines) list.Add(EscapeSectionLine(line));
  list.Add("");
}

/// The body of a section written by WriteSection: its lines without the empty line after them.
void ReadLinesSection(TSectionIndex& reader, std::string_view name, TStrings& dest) {
  reader.Read(name, dest);
  if (!dest.Empty() && dest[dest.Count() - 1].empty()) dest.Delete(dest.Count() - 1);
}

}  // namespace

int SQLOptionsToInt(TSQLOptions options) {
  int value = 0;
  for (const TStoredOption& stored : StoredOptions)
    if (options.Contains(stored.Option)) value |= stored.Bit;
  return value;
}

TSQLOptions IntToSQLOptions(int value) {
  TSQLOptions options;
  for (const TStoredOption& stored : StoredOptions)
    if ((value & stored.Bit) != 0) options.Include(stored.Option);
  return options;
}

void TWQuery::SaveToStrings(TStrings& list) {
  const TStateRestorer saving(state_, stSaving);
  TStrings text;
  if (saveTitles_) {
    // Written in the form loading gives them (the table's sections each
    // ended by an empty line), so that a saved query reads back and saves
    // to the same text even while it holds the built-in table as it is.
    TStrings source = titles_;
    TStrings captions;
    LoadTitlesFromStrings(defTitles_, captions, source);
    // The headers are the built-in table's; every other line is a caption
    // named by the built-in table, or a separator, and so never a header.
    for (const std::string& line : captions) text.Add(IsSectionHeader(line) ? line : EscapeSectionLine(line));
    text.Add("");
  }
  text.Add("[Main]");
  text.Add(EscapeSectionLine("QueryName=" + queryName_));
  text.Add("Version=" + XFloatToStr(QueryTextVersion));
  text.Add("Options=" + (saveSQLOptions_ ? std::to_string(SQLOptionsToInt(SQLOptions())) : std::string()));
  text.Add("");
  WriteSection(text, "Description", description_);
  WriteSection(text, "UserData", userData_);
  result_->ResultFields().SaveToStrings(text);
  WriteRows(text);  // may raise for a date value: the caller's list stays as it was
  list = std::move(text);
}

void TWQuery::LoadFromStrings(const TStrings& list) {
  if (structure_ == nullptr) throw EWQueryPanelError(qecNoDbStruct, std::string(msg::NoDbStruct));
  const TStateRestorer loading(state_, stLoading);
  // The text is read into a new query that starts with every setting the
  // text does not hold; only when it has been read completely does this
  // query take the content over, so it never shows half a text and needs
  // no deactivating while it reads.
  TWQuery loaded(structure_);
  PrepareForReading(loaded);
  loaded.ReadQueryText(list);
  TakeOverLoaded(loaded);
}

void TWQuery::SaveToFile(const std::string& fileName) {
  TStrings list;
  SaveToStrings(list);
  list.SaveToFile(fileName);
}

void TWQuery::LoadFromFile(const std::string& fileName) {
  TStrings list;
  list.LoadFromFile(fileName);
  LoadFromStrings(list);
}

void TWQuery::ReadQueryText(const TStrings& list) {
  if (list.Empty()) return;
  TSectionIndex reader(list);
  TStrings body;
  // The version decides how the captions are read, so [Main] comes first.
  reader.Read("Main", body);
  queryName_ = body.Values("QueryName");
  loadedVersion_ = XStrToFloat(body.Values("Version"));
  const int options = XStrToInt(body.Values("Options"), -1);
  if (options >= 0) result_->SetSQLOptions(IntToSQLOptions(options));  // empty or no number: kept
  if (saveTitles_) LoadTitlesFromQueryText(list, loadedVersion_);
  ReadLinesSection(reader, "Description", description_);
  ReadLinesSection(reader, "UserData", userData_);
  result_->ResultFields().LoadFromSections(reader);
  ReadRows(reader);
}

void TWQuery::PrepareForReading(TWQuery& fresh) const {
  fresh.state_ = stLoading;
  fresh.active_ = false;
  fresh.result_->SetSQLSyntax(SQLSyntax());
  fresh.result_->SetSQLOptions(SQLOptions());
  fresh.result_->SetParamBase(result_->ParamBase());
  fresh.result_->ResultFields().SetAutoAliases(result_->ResultFields().AutoAliases());
  fresh.mainTableName_ = mainTableName_;
  fresh.nonEmptyBrackets_ = nonEmptyBrackets_;
  fresh.titles_ = titles_;
  fresh.designTitles_ = designTitles_;
  fresh.saveTitles_ = saveTitles_;
  fresh.paramValues_ = paramValues_;
}

void TWQuery::TakeOverConditions(TWQuery& other) {
  notifier_->StartReset();
  // The rows and the parameters change places whole: the old ones go to
  // the other query, which frees them. Both roots have the empty ID, so the
  // rows keep theirs.
  std::swap(root_->rows_, other.root_->rows_);
  std::swap(result_->params_, other.result_->params_);
  root_->linkType_ = other.root_->linkType_;
  root_->enabled_ = other.root_->enabled_;
  for (TFilterBracket* root : {root_.get(), other.root_.get()}) {
    std::vector<TFilterRow*> pending;
    for (const auto& row : root->rows_) {
      row->parent_ = root;
      pending.push_back(row.get());
    }
    while (!pending.empty()) {
      TFilterRow* current = pending.back();
      pending.pop_back();
      current->query_ = &root->Query();
      if (current->IsBracket()) {
        for (const auto& child : static_cast<TFilterBracket*>(current)->rows_) pending.push_back(child.get());
      }
    }
  }
  result_->ResultFields().Assign(other.result_->ResultFields());
  ParametersListChanged();
  Changed();
}

void TWQuery::TakeOverLoaded(TWQuery& loaded) {
  BeginUpdate();
  TakeOverConditions(loaded);
  result_->SetSQLOptions(loaded.SQLOptions());
  SetQueryName(std::move(loaded.queryName_));
  SetDescription(loaded.description_);
  SetUserData(loaded.userData_);
  const TStrings captionsBefore = titles_;
  titles_ = std::move(loaded.titles_);
  CaptionsChanged(captionsBefore);
  if (paramValues_ != loaded.paramValues_) {
    paramValues_ = std::move(loaded.paramValues_);
    notifier_->QueryChanged({qaParameters});
  }
  loadedVersion_ = loaded.loadedVersion_;
  EndUpdate();
}

}  // namespace ts4
