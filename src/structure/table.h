#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ts4 {

class TDSLink;
class TWCustomDBStructure;

/// A table of the structure: its database name, caption and alias (the name
/// every other object refers to it by), and the links it takes part in.
class TDSTable {
 public:
  TDSTable(TWCustomDBStructure& owner, std::string name, std::string alias);
  TDSTable(const TDSTable&) = delete;
  TDSTable& operator=(const TDSTable&) = delete;

  [[nodiscard]] TWCustomDBStructure& Structure() const { return *owner_; }
  [[nodiscard]] const std::string& Name() const { return name_; }
  void SetName(std::string name);
  [[nodiscard]] const std::string& DisplayName() const { return displayName_; }
  void SetDisplayName(std::string caption);
  [[nodiscard]] const std::string& Alias() const { return alias_; }
  void SetTableAlias(std::string alias);
  [[nodiscard]] const std::string& Hints() const { return hints_; }
  void SetHints(std::string hints);
  [[nodiscard]] bool Quoted() const { return quoted_; }
  void SetQuoted(bool quoted);
  /// Position in the structure's table list.
  [[nodiscard]] int Index() const { return index_; }

  [[nodiscard]] int LinkCount() const { return static_cast<int>(links_.size()); }
  /// The link at the index; a bad index raises EWDBStructError code 2.
  [[nodiscard]] TDSLink* Links(int index) const;
  /// The first link of this table whose other end is `table`, or null.
  [[nodiscard]] TDSLink* LinkByTable(const TDSTable* table) const;
  /// The first link of this table whose other end has that alias (case ignored), or null.
  [[nodiscard]] TDSLink* LinkByTableAlias(std::string_view alias) const;
  /// Records that this table takes part in the link (the structure does this).
  void AddLinkRef(TDSLink* link);
  /// Forgets the link at the index of this table's list (the link itself stays).
  void DelLink(int index);
  /// Forgets the link wherever it stands in this table's list.
  void RemoveLinkRef(const TDSLink* link);

  /// The table as it stands in a FROM clause: quoted name, alias, hints.
  [[nodiscard]] std::string GetSQLExpr() const;
  /// Name + " - " + alias.
  [[nodiscard]] std::string GetCompoundName() const;

 private:
  friend class TWCustomDBStructure;
  TWCustomDBStructure* owner_;
  std::string name_;
  std::string displayName_;
  std::string alias_;
  int index_ = -1;
  std::string hints_;
  bool quoted_ = false;
  std::vector<TDSLink*> links_;
};

}  // namespace ts4
