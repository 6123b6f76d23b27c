#include "structure/table.h"

#include <algorithm>

#include "foundation/error.h"
#include "foundation/messages.h"
#include "foundation/string_utils.h"
#include "structure/link.h"
#include "structure/structure.h"

namespace ts4 {

TDSTable::TDSTable(TWCustomDBStructure& owner, std::string name, std::string alias)
    : owner_(&owner), name_(std::move(name)), displayName_(name_), alias_(std::move(alias)) {}

void TDSTable::SetName(std::string name) {
  name_ = std::move(name);
  owner_->Changed();
}

void TDSTable::SetDisplayName(std::string caption) {
  displayName_ = std::move(caption);
  owner_->Changed();
}

void TDSTable::SetTableAlias(std::string alias) {
  alias_ = std::move(alias);
  owner_->Changed();
}

void TDSTable::SetHints(std::string hints) {
  hints_ = std::move(hints);
  owner_->Changed();
}

void TDSTable::SetQuoted(bool quoted) {
  quoted_ = quoted;
  owner_->Changed();
}

TDSLink* TDSTable::Links(int index) const {
  if (index < 0 || index >= LinkCount())
    throw EWDBStructError(secInvalidLinkIndex, msg::InvalidLinkIndex, index);
  return links_[static_cast<std::size_t>(index)];
}

TDSLink* TDSTable::LinkByTable(const TDSTable* table) const {
  for (TDSLink* link : links_)
    if (link->OtherTable(this) == table) return link;
  return nullptr;
}

TDSLink* TDSTable::LinkByTableAlias(std::string_view alias) const {
  for (TDSLink* link : links_)
    if (SameText(link->OtherTable(this)->Alias(), alias)) return link;
  return nullptr;
}

void TDSTable::AddLinkRef(TDSLink* link) {
  if (std::find(links_.begin(), links_.end(), link) == links_.end()) links_.push_back(link);
}

void TDSTable::DelLink(int index) {
  if (index < 0 || index >= LinkCount())
    throw EWDBStructError(secInvalidLinkIndex, msg::InvalidLinkIndex, index);
  links_.erase(links_.begin() + index);
}

void TDSTable::RemoveLinkRef(const TDSLink* link) {
  std::erase(links_, link);
}

std::string TDSTable::GetSQLExpr() const {
  // A name that already starts with a double quote is taken as quoted.
  const bool quote = quoted_ && !name_.empty() && name_.front() != '"';
  std::string result = owner_->SQLFormats().QuoteName(name_, quote);
  if (alias_ != name_) result += " " + alias_;
  if (!hints_.empty()) result += " WITH " + hints_;
  return result;
}

std::string TDSTable::GetCompoundName() const {
  return name_ + " - " + alias_;
}

}  // namespace ts4
