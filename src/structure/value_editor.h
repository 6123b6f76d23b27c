#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "foundation/strings.h"

namespace ts4 {

class TWCustomDBStructure;

/// How a field's value is entered; a field owns the editor that matches its
/// edit type and the query panel reads it when a value is edited.
class TDSValueEditor {
 public:
  TDSValueEditor() = default;
  TDSValueEditor(const TDSValueEditor&) = delete;
  TDSValueEditor& operator=(const TDSValueEditor&) = delete;
  virtual ~TDSValueEditor() = default;

  /// Fetches whatever the editor gets from elsewhere again; nothing here.
  virtual void Refresh() {}
};

/// What a free-text editor looks like.
enum class TTextEditKind : std::uint8_t { tekSimple, tekMask, tekDate, tekTime };
using enum TTextEditKind;

/// Option numbers of TDSTextEditor (bit 1 << n of Options). Upper and lower
/// case exclude each other; the other numbers are free for applications.
enum TTextEditOption : int { teoUpperCase = 1, teoLowerCase = 2 };

/// Free text, possibly masked, or a date or time picker.
class TDSTextEditor final : public TDSValueEditor {
 public:
  [[nodiscard]] std::uint32_t Options() const { return options_; }
  void SetOptions(std::uint32_t options) { options_ = options; }
  /// Sets or clears option `option` (0..31); switching 1 on clears 2 and
  /// switching 2 on clears 1. Other numbers are ignored.
  void SetOption(int option, bool on);
  [[nodiscard]] bool GetOption(int option) const;

  /// The value offered when a condition is made.
  [[nodiscard]] const std::string& DefValue() const { return defValue_; }
  void SetDefValue(std::string value) { defValue_ = std::move(value); }
  [[nodiscard]] const std::string& EditMask() const { return editMask_; }
  void SetEditMask(std::string mask) { editMask_ = std::move(mask); }
  [[nodiscard]] TTextEditKind EditKind() const { return editKind_; }
  void SetEditKind(TTextEditKind kind) { editKind_ = kind; }
  /// Application-defined formatting number, stored with the mask.
  [[nodiscard]] std::uint8_t FmtVal() const { return fmtVal_; }
  void SetFmtVal(std::uint8_t value) { fmtVal_ = value; }

 private:
  std::uint32_t options_ = 0;
  std::string defValue_;
  std::string editMask_;
  TTextEditKind editKind_ = tekSimple;
  std::uint8_t fmtVal_ = 0;
};

/// A choice from a fixed list: Items are shown, the value at the same
/// position goes into SQL.
class TDSListEditor : public TDSValueEditor {
 public:
  [[nodiscard]] TStrings& Items() { return items_; }
  [[nodiscard]] const TStrings& Items() const { return items_; }
  [[nodiscard]] TStrings& Values() { return values_; }
  [[nodiscard]] const TStrings& Values() const { return values_; }

 private:
  TStrings items_;
  TStrings values_;
};

/// An editor the application supplies; CustomData is its own.
class TDSCustomEditor final : public TDSValueEditor {
 public:
  [[nodiscard]] TStrings& CustomData() { return customData_; }
  [[nodiscard]] const TStrings& CustomData() const { return customData_; }

 private:
  TStrings customData_;
};

/// A value that is a sub-query the user writes; it carries no settings.
class TDSSubQueryEditor final : public TDSValueEditor {};

/// A choice from the rows an SQL query returns (column 0 the values,
/// column 1 the shown items), run through the structure's metadata
/// provider when the lists are first needed.
class TDSSQLEditor final : public TDSListEditor {
 public:
  explicit TDSSQLEditor(TWCustomDBStructure& structure) : structure_(&structure) {}

  [[nodiscard]] bool Opened() const { return opened_; }
  /// Opening runs the query and fills Values and Items; closing empties
  /// them. Opening without a metadata provider raises EWDBStructError code
  /// 11, with Opened already set.
  void SetOpened(bool on);
  /// Runs the query again.
  void Refresh() override;

  /// Lines name=value substituted for ":name" in the SQL text.
  [[nodiscard]] const TStrings& SQLParams() const { return sqlParams_; }
  /// Takes the parameters when they differ, and closes the editor so that
  /// the next opening uses them.
  void SetSQLParams(const TStrings& params);
  [[nodiscard]] TStrings& SQL() { return sql_; }
  [[nodiscard]] const TStrings& SQL() const { return sql_; }

  /// The SQL text with the parameters applied.
  [[nodiscard]] std::string GetSQLText() const;
  /// Replaces each reference ":name" to a parameter (names compared ignoring
  /// case; the whole name must match, so ":CustNo" is not ":Cust") by its
  /// value, in one pass: text inside single quotes, "::" casts and
  /// references to unknown names stay as they are.
  [[nodiscard]] std::string ApplyParams(std::string_view text) const;
  /// True when the SQL text holds a colon directly followed by the name
  /// (case ignored), also as the start of a longer name.
  [[nodiscard]] bool HasParameter(std::string_view name) const;

 private:
  friend class TWCustomDBStructure;  // moves loaded fields between structures
  bool opened_ = false;
  TStrings sqlParams_;
  TWCustomDBStructure* structure_;
  TStrings sql_;
};

}  // namespace ts4
