#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "foundation/section_index.h"
#include "foundation/strings.h"

namespace ts4 {

class TDSField;
class TDSOperator;
class TDSTable;
class TWCustomDBStructure;

namespace detail {

/// The stored names of the link types, indexed by TDSLinkType.
inline constexpr std::array<std::string_view, 4> LinkTypeNames = {"Inner", "Left", "Right", "Full"};

/// TSectionIndex::Read, raising EWDBStructError code 9 when the section is missing.
void RequireSection(TSectionIndex& sections, std::string_view name, TStrings& body);

/// Reads a structure text into a structure that has no tables, fields or
/// operators yet, through the structure's public operations (fields through
/// AddLoadedField and AddLoadedLink). Field group membership and the metadata provider's lines
/// are handed back for the structure to apply.
class TStructureReader {
 public:
  TStructureReader(const TStrings& list, TWCustomDBStructure& target);

  /// Reads the whole text; raises the coded errors of a bad text.
  void Read();

  /// The fields each group lists (one entry per group of the target, in
  /// order) and those the root group lists, as found in the text.
  std::vector<std::vector<TDSField*>> GroupFields;
  std::vector<TDSField*> RootFields;
  /// The [DBSpecInfo] lines, when the text has that section.
  bool HasDBSpecInfo = false;
  TStrings DBSpecInfo;

 private:
  struct TPendingLinks {
    TDSTable* Table;
    std::string Alias;
    TStrings Targets;
  };

  void ReadMain();
  void ReadOperators();
  TDSOperator& AddOperator(std::string_view name);
  void ReadOperatorKeys(TDSOperator& op, const TStrings& body) const;
  void ReadTables();
  void AddTable(const std::string& name, const std::string& alias, const TStrings& body,
                std::string_view captionIfAbsent);
  void ReadLinks();
  void ReadFields();
  void ReadField(const TStrings& body, const std::string& sqlSection, std::string_view captionIfAbsent);
  [[nodiscard]] TDSTable* FieldTable(const TStrings& body) const;
  void ReadEditor(TDSField& field, const TStrings& body, const std::string& sqlSection);
  void NumberFieldsWithoutID();
  void ReadGroups();
  [[nodiscard]] TDSTable* TableByAlias(std::string_view alias) const;
  void AddQualifyingTables(TDSField& field) const;
  [[nodiscard]] TDSOperator& OperatorNamed(std::string_view name) const;

  // Older layouts (structure_file_legacy.cpp).
  void ReadOperationSections();
  void ReadOperationLines();
  void ReadTableList();
  void ReadFieldList();
  [[nodiscard]] std::string DefaultCaption(std::string_view name) const;

  TSectionIndex sections_;
  TWCustomDBStructure& target_;
  double version_ = 1.1;
  int operatCount_ = 0;
  int tableCount_ = 0;
  int fieldCount_ = 0;
  int groupCount_ = 0;
  std::unordered_map<std::string, TDSTable*> tablesByAlias_;
  std::unordered_map<std::string, TDSTable*> tablesByName_;
  std::unordered_map<std::string, TDSOperator*> operatorsByName_;
  std::vector<TPendingLinks> pendingLinks_;
  std::vector<TDSField*> fieldsWithoutID_;
  int maxStoredID_ = 0;
};

}  // namespace detail
}  // namespace ts4
