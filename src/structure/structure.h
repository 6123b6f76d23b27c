#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/component.h"
#include "foundation/field_types.h"
#include "foundation/object_list.h"
#include "foundation/strings.h"
#include "foundation/update_counter.h"
#include "structure/field.h"
#include "structure/field_group.h"
#include "structure/link.h"
#include "structure/operator.h"
#include "structure/path.h"
#include "structure/sql_formats.h"
#include "structure/table.h"

namespace ts4 {

class TWDBInfo;
namespace detail {
class TStructureReader;
}

/// Items the structure is about to free, reported in one batch.
struct TStructureRemoval {
  std::vector<const TDSField*> Fields;
  std::vector<const TDSOperator*> Operators;
  /// Tables or links go too (their pointers are not listed).
  bool TablesOrLinks = false;
};

/// Told before a structure frees fields, operators, tables or links, so that
/// objects holding plain pointers to them (queries) can let go in time, and
/// after anything in it changed (names, captions, a field's operators ...),
/// as often as OnChange fires.
class TDBStructureObserver {
 public:
  virtual ~TDBStructureObserver() = default;
  virtual void StructureItemsRemoving(const TStructureRemoval& removal) = 0;
  virtual void StructureChanged() {}
};

/// What TableByName compares the text with.
enum class TDSTableSearch : std::uint8_t { tsName, tsAlias, tsDisplayName, tsCompoundName, tsSQLExpr };
using enum TDSTableSearch;

/// What FieldByName compares the text with.
enum class TDSFieldSearch : std::uint8_t {
  fsFieldExpr,
  fsDisplayName,
  fsCompoundName,
  fsSQLExpr,
  fsFullName
};
using enum TDSFieldSearch;

/// The model of the database as the end user is meant to see it: tables,
/// links between them, fields, field groups and condition operators. It
/// owns all of them; everything else holds plain pointers.
class TWCustomDBStructure : public TWComponent {
 public:
  TWCustomDBStructure();
  ~TWCustomDBStructure() override;

  // ---- Change notification -------------------------------------------------
  /// Fired by Changed unless updates are suspended, after the observers.
  std::function<void(TWCustomDBStructure&)> OnChange;
  /// Fired when the user asks for help in the structure editor.
  std::function<void(TWCustomDBStructure&)> OnSEHelpClick;
  /// Fires OnChange, or remembers to fire it when the last EndUpdate comes.
  void Changed();
  void BeginUpdate() { updates_.Begin(); }
  /// Registers an object to be told before items are freed (not owned).
  void AddObserver(TDBStructureObserver* observer);
  void RemoveObserver(TDBStructureObserver* observer);
  /// Ends a BeginUpdate; the outermost one fires OnChange if anything changed.
  void EndUpdate();
  [[nodiscard]] int UpdateCount() const { return updates_.Count(); }

  // ---- Tables ----------------------------------------------------------------
  /// Adds a table with that name and alias; its caption is the name. An
  /// empty alias becomes the name.
  TDSTable* AddTable(std::string_view name, std::string_view alias);
  /// Deletes the table, its links and its data fields; virtual fields forget it.
  void DelTable(int index);
  /// The table at the index; a bad index raises EWDBStructError code 1.
  [[nodiscard]] TDSTable* Tables(int index) const;
  [[nodiscard]] int TableCount() const { return tables_.Count(); }
  /// The first table that matches in the given mode (case ignored), or null.
  [[nodiscard]] TDSTable* TableByName(TDSTableSearch mode, std::string_view text) const;
  /// Fills the list with the tables' names.
  void GetTableNames(TStrings& list) const;

  // ---- Fields ----------------------------------------------------------------
  /// Adds a field: for a data field `expr` is the column and `table` its
  /// table, for a virtual field `expr` is the SQL expression and `table` may
  /// be null. An empty caption becomes `expr`. With `checkColumn`, a data
  /// field's column is looked up through DatabaseInfo and its type and size
  /// taken from there (code 11 without a provider, code 10 for a column the
  /// provider does not know). Operators are offered by AddAppliedOperators.
  TDSField* AddField(TWFieldKind kind, std::string_view expr, std::string_view displayName, TDSTable* table,
                     bool checkColumn = false);
  void DelField(int index);
  /// The field at the index; a bad index raises EWTessalyError.
  [[nodiscard]] TDSField* Fields(int index) const { return fields_.Items(index); }
  [[nodiscard]] int FieldCount() const { return fields_.Count(); }
  [[nodiscard]] int IndexOfField(const TDSField* field) const { return fields_.IndexOf(field); }
  /// The first field that matches in the given mode (case ignored), or null.
  [[nodiscard]] TDSField* FieldByName(TDSFieldSearch mode, std::string_view text) const;
  [[nodiscard]] TDSField* FieldByID(int id) const;
  /// Fills the list with the fields' compound names.
  void GetFieldNames(TStrings& list) const;

  // ---- Links -----------------------------------------------------------------
  /// Creates a link between two tables of this structure (not yet added).
  [[nodiscard]] std::unique_ptr<TDSLink> NewLink(TDSTable& table1, TDSTable& table2) const;
  /// Takes the link and registers it with both its tables; returns it.
  TDSLink* AddLinkByRef(std::unique_ptr<TDSLink> link);
  /// Adds a link joining field pairs (comma text) with "=", the common case.
  TDSLink* AddLink(TDSTable& table1, TDSTable& table2, std::string_view fields1, std::string_view fields2,
                   TDSLinkType type = ltInner);
  void DelLink(int index);
  /// The link at the index; a bad index raises EWDBStructError code 2.
  [[nodiscard]] TDSLink* Links(int index) const;
  [[nodiscard]] int LinkCount() const { return links_.Count(); }
  [[nodiscard]] int IndexOfLink(const TDSLink* link) const { return links_.IndexOf(link); }
  /// The first link between the tables named so, in either order (exact names).
  [[nodiscard]] TDSLink* FindLink(std::string_view name1, std::string_view name2) const;

  // ---- Field groups ------------------------------------------------------------
  TDSFieldGroup* AddFieldGroup(std::string_view name);
  /// Deletes the group; its fields move to the end of the root group.
  void DelFieldGroup(int index);
  [[nodiscard]] TDSFieldGroup* FieldGroups(int index) const { return groups_.Items(index); }
  [[nodiscard]] int FieldGroupCount() const { return groups_.Count(); }
  /// The fields that belong to no group.
  [[nodiscard]] const TDSFieldGroup& RootGroup() const { return *rootGroup_; }
  /// Moves the field into the group (null: the root group) at the position
  /// (-1: at the end).
  void SetFieldGroup(TDSField& field, TDSFieldGroup* group, int position = -1);
  [[nodiscard]] bool RootFieldsFirst() const { return rootFieldsFirst_; }
  void SetRootFieldsFirst(bool first);

  // ---- Paths -------------------------------------------------------------------
  /// The shortest chain of links from the table with the first alias to the
  /// one with the second (aliases compared ignoring case). The result is the
  /// structure's own path, overwritten by the next call. Raises code 4 for
  /// an unknown alias and code 5 when no chain exists.
  const TDSPath& GetPath(std::string_view alias1, std::string_view alias2);

  // ---- Operators ---------------------------------------------------------------
  int AddOperator(std::string_view name, std::string_view displayName, std::string_view sqlName,
                  std::string_view valFormat, TAppliedTypes appliedTypes);
  void InitOperator(TDSOperator& op, std::string_view name, std::string_view displayName,
                    std::string_view sqlName, std::string_view valFormat, TAppliedTypes appliedTypes);
  /// With `update`, re-initialises an operator of that name in place; else adds.
  int AddUpdateOperator(bool update, std::string_view name, std::string_view displayName,
                        std::string_view sqlName, std::string_view valFormat, TAppliedTypes appliedTypes);
  /// Detaches the operator from every field, then frees it.
  void DelOperator(int index);
  void DeleteOperatorByName(std::string_view name);
  /// Frees every operator (fields forget them).
  void ClearOperators();
  /// Takes an operator built elsewhere (a loader) and appends it.
  int AddOperatorByRef(std::unique_ptr<TDSOperator> op);
  /// The operator at the index; a bad index raises EWDBStructError code 3.
  [[nodiscard]] TDSOperator* Operators(int index) const;
  [[nodiscard]] TDSOperator* GetOperator(int index) const { return Operators(index); }
  [[nodiscard]] int OperatCount() const { return operators_.Count(); }
  /// Index of the first operator of that name (case ignored; "EqualTo" is
  /// "Equal"), or -1.
  [[nodiscard]] int OperatorIndexByName(std::string_view name) const;
  [[nodiscard]] TDSOperator* OperatorByName(std::string_view name) const;
  /// The first operator whose template contains the text (case ignored), or null.
  [[nodiscard]] TDSOperator* OperatorByExpr(std::string_view text) const;
  [[nodiscard]] int IndexOfOperator(const TDSOperator* op) const { return operators_.IndexOf(op); }
  /// Fills the list with the operators' names.
  void GetOperatorNames(TStrings& list) const;

  /// Captions of the standard operators, lines name=caption.
  [[nodiscard]] const TStrings& DefOperators() const { return defOperators_; }
  /// Takes the captions, then re-initialises the standard set with them.
  void SetDefOperators(const TStrings& captions);
  /// The caption of that name in DefOperators (empty when not listed).
  [[nodiscard]] std::string GetDefOperator(std::string_view name) const;
  /// Resets DefOperators to the thirteen default captions.
  void LoadDefsOpertors();
  /// Appends the default caption of every standard name DefOperators lacks.
  void MergeDefOperators();
  /// Adds (or, with `update`, re-initialises) the standard operators that
  /// ExOperators selects.
  void AddDefOperators(bool update);
  void AddInListOperator(bool update);
  void AddStartsWithOperator(bool update);
  void AddNotStartsWithOperator(bool update);
  void AddContainsOperator(bool update);
  void AddNotContainsOperator(bool update);
  void AddBetweenOperator(bool update);
  void UpdateOperatorCaption(std::string_view name, std::string_view caption);
  /// Refreshes the standard operators' captions from DefOperators.
  void UpdateDefOperators();
  /// Adds or deletes the optional operators as ExOperators says.
  void UpdateExOperators();
  [[nodiscard]] TExOperators ExOperators() const { return exOperators_; }
  void SetExOperators(TExOperators operators);

  // ---- Settings ------------------------------------------------------------------
  [[nodiscard]] const TSQLFormats& SQLFormats() const { return sqlFormats_; }
  void SetSQLFormats(const TSQLFormats& formats);
  /// Field types whose list values are quoted item by item.
  [[nodiscard]] TFieldTypes QuotedTypes() const { return quotedTypes_; }
  void SetQuotedTypes(TFieldTypes types);
  [[nodiscard]] const std::string& DefaultMainTable() const { return defaultMainTable_; }
  void SetDefaultMainTable(std::string name);
  [[nodiscard]] TWDBInfo* DatabaseInfo() const { return databaseInfo_; }
  /// Attaches a metadata provider (not owned; forgotten when it is destroyed).
  void SetDatabaseInfo(TWDBInfo* info);
  [[nodiscard]] bool AutoAddFields() const { return autoAddFields_; }
  void SetAutoAddFields(bool on) { autoAddFields_ = on; }
  [[nodiscard]] bool StoreStruct() const { return storeStruct_; }
  void SetStoreStruct(bool on) { storeStruct_ = on; }
  [[nodiscard]] const std::string& HelpFileName() const { return helpFileName_; }
  void SetHelpFileName(std::string name) { helpFileName_ = std::move(name); }
  [[nodiscard]] int SEHelpContext() const { return seHelpContext_; }
  void SetSEHelpContext(int context) { seHelpContext_ = context; }
  [[nodiscard]] const std::string& InitialSEPath() const { return initialSEPath_; }
  void SetInitialSEPath(std::string path) { initialSEPath_ = std::move(path); }

  // ---- Whole structure -------------------------------------------------------------
  /// Deletes tables, fields, links and field groups (operators stay).
  void ClearStructure();
  /// True when the structure has fewer than two fields.
  [[nodiscard]] bool Empty() const { return FieldCount() < 2; }
  /// Asks the metadata provider to refresh what it knows; with AutoAddFields,
  /// a structure without tables then gets the database's tables, columns
  /// and foreign keys (AddDatabaseTables).
  virtual void UpdateDatabaseInfo();
  /// Completes a structure read from stored settings: refreshes database
  /// information, then brings the operators in line with ExOperators and
  /// DefOperators.
  void Loaded();

  /// Keeps the next automatic field ID above `id` (used when IDs are set).
  void NoteFieldID(int id);

  // ---- Structure text ----------------------------------------------------------------
  /// The format version the writer writes.
  static constexpr std::string_view FileVersion = "3.3";
  /// Clears the list and writes the whole structure as sectioned text.
  void SaveToStrings(TStrings& list) const;
  /// Replaces tables, links, fields, field groups and operators by those of
  /// the text, all or nothing: on an error (EWDBStructError code 4, 6 or 9,
  /// or EWTessalyError for an unknown type, kind or editor name) the
  /// structure stays exactly as it was. On success observers are told before
  /// the old items are freed, settings the text does not hold (SQLFormats,
  /// QuotedTypes, DefOperators, ExOperators, DatabaseInfo ...) stay, and
  /// OnChange fires once. The metadata provider's settings ([DBSpecInfo])
  /// are handed to it after the new content is in place, then
  /// UpdateDatabaseInfo runs; an error the provider raises there leaves the
  /// new content loaded.
  void LoadFromStrings(const TStrings& list);
  /// SaveToStrings into a file (lines ended by CR LF).
  void SaveToFile(const std::string& fileName) const;
  /// Reads the file (LF or CR LF), then LoadFromStrings.
  void LoadFromFile(const std::string& fileName);
  /// The text of SaveToStrings, lines joined by CR LF.
  [[nodiscard]] std::string GetStructString() const;
  /// Splits the text at its line breaks, then LoadFromStrings.
  void SetStructString(std::string_view text);

 protected:
  void Notification(TWComponent& component) override;

 private:
  void RenumberTables();
  void NotifyRemoving(const TStructureRemoval& removal);
  void RemoveFieldFromGroup(TDSField& field);
  void DeleteStandardOperator(TStdOp op);
  void AddStandardOperator(bool update, TStdOp op);
  friend class detail::TStructureReader;
  /// A field as the structure text loader makes it: no operators, in no group yet.
  TDSField* AddLoadedField(TWFieldKind kind, std::string expr, TDSTable* table);
  /// A new link as the loader adds it: registered with its tables without a search.
  void AddLoadedLink(std::unique_ptr<TDSLink> link);
  void ArrangeFieldGroups(const std::vector<std::vector<TDSField*>>& groupFields,
                          const std::vector<TDSField*>& rootFields);
  void TakeContent(TWCustomDBStructure& other);
  void PointItemsHere();

  TWObjectList<TDSTable> tables_;
  TWObjectList<TDSField> fields_;
  TWObjectList<TDSLink> links_;
  TWObjectList<TDSOperator> operators_;
  TWObjectList<TDSFieldGroup> groups_;
  std::unique_ptr<TDSFieldGroup> rootGroup_;
  TSQLFormats sqlFormats_;
  TFieldTypes quotedTypes_;
  TStrings defOperators_;
  TExOperators exOperators_;
  TDSPath path_;
  TWDBInfo* databaseInfo_ = nullptr;
  std::string defaultMainTable_;
  bool rootFieldsFirst_ = false;
  bool autoAddFields_ = false;
  bool storeStruct_ = true;
  std::string helpFileName_;
  int seHelpContext_ = 0;
  std::string initialSEPath_;
  int nextFieldID_ = 1;
  TUpdateCounter updates_;
  std::vector<TDBStructureObserver*> observers_;
};

/// The structure component as applications use it.
class TWDBStructure : public TWCustomDBStructure {
 public:
  using TWCustomDBStructure::TWCustomDBStructure;
};

/// The field types whose values are quoted when a list value is split.
inline constexpr TFieldTypes DefaultQuotedTypes = {ftString, ftDate,    ftTime,      ftDateTime,
                                                   ftMemo,   ftFmtMemo, ftFixedChar, ftWideString};

}  // namespace ts4
