#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/object_list.h"
#include "query/result_field.h"

namespace ts4 {

class TDSField;
class TQueryResult;
class TSectionIndex;
class TStrings;
class TWCustomDBStructure;

/// The select list of a query: result fields in order (owned) and the
/// settings they are written with. The list of a query tells the query of
/// every change to it or to its fields (qaResultFields).
class TRFieldList {
 public:
  explicit TRFieldList(TWCustomDBStructure* structure = nullptr) : structure_(structure) {}
  TRFieldList(const TRFieldList&) = delete;
  TRFieldList& operator=(const TRFieldList&) = delete;

  /// Written as the list's version in query texts.
  static constexpr std::string_view Version = "3.3";

  [[nodiscard]] TWCustomDBStructure* Structure() const { return structure_; }
  void SetStructure(TWCustomDBStructure* structure) { structure_ = structure; }
  /// Quote aliases in the SQL (follows soQuoteAliases).
  [[nodiscard]] bool QuoteAliases() const { return quoteAliases_; }
  void SetQuoteAliases(bool on) { quoteAliases_ = on; }
  /// The list only describes sorting; the statement selects "*".
  [[nodiscard]] bool JustSorting() const { return justSorting_; }
  void SetJustSorting(bool on);
  /// Generated aliases are made of ASCII characters (follows soASCIIRFields).
  [[nodiscard]] bool ASCIIAliases() const { return asciiAliases_; }
  void SetASCIIAliases(bool on) { asciiAliases_ = on; }
  /// New fields get an alias made from their caption.
  [[nodiscard]] bool AutoAliases() const { return autoAliases_; }
  void SetAutoAliases(bool on);

  [[nodiscard]] int Count() const { return fields_.Count(); }
  /// The field at the index; a bad index raises EWTessalyError.
  [[nodiscard]] TResultField* GetRField(int index) const { return fields_.Items(index); }
  [[nodiscard]] TResultField* operator[](int index) const { return fields_.Items(index); }
  [[nodiscard]] int IndexOf(const TResultField* field) const { return fields_.IndexOf(field); }
  /// An empty field (formula "@1", no structure field) at the index; -1 appends.
  TResultField* New(int index = -1);
  /// The structure field as it stands ("@1"), captioned by its caption.
  TResultField* Add(TDSField& field, TSortingType sorting = stNoSort) { return Insert(-1, field, sorting); }
  TResultField* Insert(int index, TDSField& field, TSortingType sorting = stNoSort);
  /// A field from the user's expression; an empty caption is generated.
  TResultField* AddByExpression(std::string_view expression, TSortingType sorting,
                                std::string_view caption = {}, std::string_view alias = {}) {
    return InsertByExpression(-1, expression, sorting, caption, alias);
  }
  TResultField* InsertByExpression(int index, std::string_view expression, TSortingType sorting,
                                   std::string_view caption = {}, std::string_view alias = {});
  /// A field from an SQL expression; captioned by the alias, else generated.
  TResultField* AddBySQLExpr(std::string_view sqlExpr, TSortingType sorting, std::string_view alias = {}) {
    return InsertBySQLExpr(-1, sqlExpr, sorting, alias);
  }
  TResultField* InsertBySQLExpr(int index, std::string_view sqlExpr, TSortingType sorting,
                                std::string_view alias = {});
  void Delete(int index);
  void Move(int from, int to);
  void Clear();
  /// Index of the first field whose SQL expression is the text (case ignored), or -1.
  [[nodiscard]] int IndexByExpr(std::string_view sqlExpr) const;

  /// True when no field other than `except` has the alias (case ignored).
  [[nodiscard]] bool CheckUniqAlias(std::string_view alias, const TResultField* except = nullptr) const;
  [[nodiscard]] bool CheckUniqCaption(std::string_view caption, const TResultField* except = nullptr) const;
  /// The alias itself when unique, else with the first number 1, 2 ... that makes it so.
  [[nodiscard]] std::string GetUniqAlias(std::string_view alias, const TResultField* except = nullptr) const;
  [[nodiscard]] std::string GetUniqCaption(std::string_view caption,
                                           const TResultField* except = nullptr) const;

  /// Sets each field's Number to its 1-based position (for a build; not a change).
  void GenerateNumbers();
  /// Gives every field a newly generated alias (when aliases are generated).
  void RegenerateAliases();
  /// Number of sorted fields.
  [[nodiscard]] int GetSortCount() const;
  /// The sorted fields in the order ORDER BY names them: by SortOrder, equal
  /// SortOrders in list order.
  [[nodiscard]] std::vector<TResultField*> SortedFields() const;
  /// Sorts the field at the index; one that was not sorted comes after the
  /// fields that are.
  void SetSorting(int index, TSortingType sorting);
  /// Moves the sorted field at `from` of SortedFields to `to`; the sorted
  /// fields are ranked 1, 2 ... in the new order.
  void MoveSortedField(int from, int to);
  /// The caption of the field at the index, its expression when it has none.
  [[nodiscard]] std::string GetCaption(int index) const;

  /// Appends the list as sections of a query text: "[RFields]" (Count,
  /// Version, JustSorting) and "[RField<i>]" per field, each section
  /// followed by one empty line.
  void SaveToStrings(TStrings& list) const;
  /// Reads the fields and JustSorting from such sections (no "[RFields]":
  /// no fields); structure fields are found by their IDs, and a field that
  /// refers to an ID the structure lacks is left out. All or nothing:
  /// raises EWQueryPanelError code 9 for a promised "[RField<i>]" section
  /// the text lacks, and the list stays as it was.
  void LoadFromStrings(const TStrings& list);
  /// The same, reading on with a query text's reader.
  void LoadFromSections(TSectionIndex& reader);

  /// Makes this list a copy of the other (fields and settings).
  void Assign(const TRFieldList& source);
  void AssignTo(TRFieldList& dest) const { dest.Assign(*this); }

  [[nodiscard]] auto begin() const { return fields_.begin(); }
  [[nodiscard]] auto end() const { return fields_.end(); }

 private:
  friend class TQueryResult;
  friend class TResultField;
  /// Takes the field in at the index (-1 appends) and tells once.
  TResultField* Place(int index, std::unique_ptr<TResultField> field);
  /// Tells the query the list belongs to, if any.
  void Changed() const;

  TQueryResult* result_ = nullptr;
  TWObjectList<TResultField> fields_;
  TWCustomDBStructure* structure_;
  bool quoteAliases_ = false;
  bool justSorting_ = false;
  bool asciiAliases_ = true;
  bool autoAliases_ = false;
};

}  // namespace ts4
