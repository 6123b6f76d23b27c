#include "structure/value_editor.h"

#include "foundation/assign.h"
#include "foundation/error.h"
#include "foundation/messages.h"
#include "foundation/string_utils.h"
#include "structure/db_info.h"
#include "structure/structure.h"

namespace ts4 {
namespace {

bool IsNameStart(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' ||
         static_cast<unsigned char>(c) >= 0x80;
}

bool IsNameChar(char c) {
  return IsNameStart(c) || (c >= '0' && c <= '9');
}

}  // namespace

void TDSTextEditor::SetOption(int option, bool on) {
  if (option < 0 || option > 31) return;
  const std::uint32_t bit = 1U << option;
  if (!on) {
    options_ &= ~bit;
    return;
  }
  options_ |= bit;
  if (option == teoUpperCase) options_ &= ~(1U << teoLowerCase);
  if (option == teoLowerCase) options_ &= ~(1U << teoUpperCase);
}

bool TDSTextEditor::GetOption(int option) const {
  return option >= 0 && option <= 31 && (options_ & (1U << option)) != 0;
}

void TDSSQLEditor::SetOpened(bool on) {
  if (on == opened_) return;
  opened_ = on;
  Values().Clear();
  Items().Clear();
  if (!on) return;
  TWDBInfo* info = structure_->DatabaseInfo();
  if (info == nullptr) throw EWDBStructError(secNoDatabaseInfo, std::string(msg::NoDatabaseInfo));
  TStrings values;
  TStrings items;
  info->GetSQLValues(GetSQLText(), values, items);
  Values() = std::move(values);
  Items() = std::move(items);
}

void TDSSQLEditor::Refresh() {
  SetOpened(false);
  SetOpened(true);
}

void TDSSQLEditor::SetSQLParams(const TStrings& params) {
  if (AssignIfChanged(sqlParams_, params)) SetOpened(false);
}

std::string TDSSQLEditor::GetSQLText() const {
  return ApplyParams(sql_.Text());
}

std::string TDSSQLEditor::ApplyParams(std::string_view text) const {
  std::string out;
  out.reserve(text.size());
  std::size_t i = 0;
  while (i < text.size()) {
    const char c = text[i];
    if (c == '\'') {  // a literal, quotes doubled inside, is copied whole
      const std::size_t close = text.find('\'', i + 1);
      const std::size_t end = close == std::string_view::npos ? text.size() : close + 1;
      out.append(text.substr(i, end - i));
      i = end;
      continue;
    }
    const bool reference =
        c == ':' && i + 1 < text.size() && IsNameStart(text[i + 1]) && (i == 0 || text[i - 1] != ':');
    if (!reference) {
      out += c;
      ++i;
      continue;
    }
    std::size_t end = i + 1;
    while (end < text.size() && IsNameChar(text[end])) ++end;
    const int line = sqlParams_.IndexOfName(text.substr(i + 1, end - i - 1));
    if (line >= 0)
      out += sqlParams_.ValueFromIndex(line);
    else
      out.append(text.substr(i, end - i));
    i = end;
  }
  return out;
}

bool TDSSQLEditor::HasParameter(std::string_view name) const {
  return LowerCase(sql_.Text()).find(":" + LowerCase(name)) != std::string::npos;
}

}  // namespace ts4
