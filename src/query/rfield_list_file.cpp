// Result fields as sections of a query text:
//
//   [RFields]
//   Count=<number of fields>
//   Version=3.3
//   JustSorting=<0 or 1>
//   <empty line>
//   [RField<i>]            one per field, i = 1 .. Count
//   Formula=<formula with markers @1, @2 ...>
//   Fields=<IDs of the structure fields, in marker order, joined by ",">
//   Alias=<alias>
//   Caption=<caption>
//   Sorting=<0 none, 1 ascending, 2 descending>
//   SortOrder=<rank among the sorted fields>
//   <empty line>
//
// A formula, alias or caption with a line break is written escaped
// (foundation/sections.h); the section reader gives it back as it was.
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "foundation/error.h"
#include "foundation/messages.h"
#include "foundation/section_index.h"
#include "foundation/sections.h"
#include "foundation/string_utils.h"
#include "foundation/strings.h"
#include "query/rfield_list.h"
#include "structure/field.h"
#include "structure/structure.h"

namespace ts4 {
namespace {

/// The structure fields the IDs name, in order; nothing when one is unknown.
std::optional<std::vector<TDSField*>> FieldsByIDs(const TWCustomDBStructure* structure,
                                                  std::string_view ids) {
  std::vector<TDSField*> fields;
  if (ids.empty()) return fields;
  std::size_t start = 0;
  while (start <= ids.size()) {
    std::size_t comma = ids.find(',', start);
    if (comma == std::string_view::npos) comma = ids.size();
    const int id = XStrToInt(ids.substr(start, comma - start), -1);
    TDSField* field = structure != nullptr && id >= 0 ? structure->FieldByID(id) : nullptr;
    if (field == nullptr) return std::nullopt;
    fields.push_back(field);
    start = comma + 1;
  }
  return fields;
}

}  // namespace

void TRFieldList::SaveToStrings(TStrings& list) const {
  list.Add("[RFields]");
  list.Add("Count=" + std::to_string(Count()));
  list.Add("Version=" + std::string(Version));
  list.Add("JustSorting=" + XBoolToStr(justSorting_));
  list.Add("");
  int number = 0;
  for (const TResultField* field : fields_) {
    std::string ids;
    for (std::size_t k = 0; k < field->Fields().size(); ++k) {
      if (k > 0) ids += ',';
      if (const TDSField* used = field->Fields()[k]) ids += std::to_string(used->ID());
    }
    list.Add("[RField" + std::to_string(++number) + "]");
    list.Add(EscapeSectionLine("Formula=" + field->Formula()));
    list.Add("Fields=" + ids);
    list.Add(EscapeSectionLine("Alias=" + field->Alias()));
    list.Add(EscapeSectionLine("Caption=" + field->Caption()));
    list.Add("Sorting=" + std::to_string(static_cast<int>(field->Sorting())));
    list.Add("SortOrder=" + std::to_string(field->SortOrder()));
    list.Add("");
  }
}

void TRFieldList::LoadFromStrings(const TStrings& list) {
  TSectionIndex reader(list);
  LoadFromSections(reader);
}

void TRFieldList::LoadFromSections(TSectionIndex& reader) {
  TStrings body;
  TWObjectList<TResultField> loaded;
  bool justSorting = false;
  if (reader.Read("RFields", body)) {
    justSorting = XStrToBool(body.Values("JustSorting"));
    const int count = XStrToInt(body.Values("Count"));
    // Fields are read one section at a time: a count that the text does not
    // back fails at the first missing section, before anything is reserved.
    for (int i = 1; i <= count; ++i) {
      const std::string section = "RField" + std::to_string(i);
      if (!reader.Read(section, body))
        throw EWQueryPanelError(qecSectionNotFound, msg::SectionNotFound, section);
      std::optional<std::vector<TDSField*>> fields = FieldsByIDs(structure_, body.Values("Fields"));
      if (!fields) continue;
      auto field = std::make_unique<TResultField>(this);
      field->formula_ = {body.Values("Formula"), std::move(*fields)};
      field->alias_ = body.Values("Alias");
      field->caption_ = body.Values("Caption");
      const int sorting = XStrToInt(body.Values("Sorting"));
      field->sorting_ = sorting >= 0 && sorting <= 2 ? static_cast<TSortingType>(sorting) : stNoSort;
      field->sortOrder_ = XStrToInt(body.Values("SortOrder"));
      loaded.Add(std::move(field));
    }
  }
  fields_ = std::move(loaded);
  justSorting_ = justSorting;
  Changed();
}

}  // namespace ts4
