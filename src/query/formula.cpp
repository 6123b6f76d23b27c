#include "query/formula.h"

#include <algorithm>
#include <string>
#include <unordered_map>

#include "foundation/error.h"
#include "foundation/messages.h"
#include "foundation/string_utils.h"
#include "query/query_types.h"
#include "structure/field.h"
#include "structure/structure.h"

namespace ts4 {
namespace {

bool IsNameStart(char c) {
  const auto u = static_cast<unsigned char>(c);
  return (u >= 'a' && u <= 'z') || (u >= 'A' && u <= 'Z') || u == '_' || u >= 0x80;
}

/// Position of the quote that closes the quoted text opening at `open`
/// (a doubled quote stands for one inside it); npos when it never closes.
std::size_t ClosingQuote(std::string_view text, std::size_t open) {
  const char quote = text[open];
  for (std::size_t j = open + 1; j < text.size(); ++j) {
    if (text[j] != quote) continue;
    if (j + 1 < text.size() && text[j + 1] == quote) {
      ++j;
      continue;
    }
    return j;
  }
  return std::string_view::npos;
}

/// Length of the dotted name at `start` ("O.TOTAL", O."Order Total"), 0 when none starts there.
std::size_t DottedNameLength(std::string_view text, std::size_t start) {
  std::size_t i = start;
  bool expectPart = true;
  while (i < text.size()) {
    if (expectPart && text[i] == '"') {
      const std::size_t close = ClosingQuote(text, i);
      if (close == std::string_view::npos) break;  // unclosed quote: not a name
      i = close + 1;
    } else if (expectPart && IsNameStart(text[i])) {
      while (i < text.size() && IsSQLNameChar(text[i])) ++i;
    } else {
      break;
    }
    expectPart = false;
    if (i + 1 < text.size() && text[i] == '.' && (text[i + 1] == '"' || IsNameStart(text[i + 1]))) {
      ++i;
      expectPart = true;
    }
  }
  return expectPart ? (i > start ? i - start - 1 : 0) : i - start;
}

/// The structure's fields indexed for reading SQL expressions back.
class TFieldMatcher {
 public:
  explicit TFieldMatcher(const TWCustomDBStructure* structure) {
    if (structure == nullptr) return;
    for (int i = 0; i < structure->FieldCount(); ++i) {
      TDSField* field = structure->Fields(i);
      const std::string sql = field->GetSQLExpr();
      if (sql.empty()) continue;
      if (DottedNameLength(sql, 0) == sql.size()) {
        byName_.try_emplace(LowerCase(sql), field);
      } else {
        expressions_.push_back({LowerCase(sql), field});
      }
      if (field->Kind() == wfkData) {
        auto [it, added] = byColumn_.try_emplace(LowerCase(field->FieldExpr()), field);
        if (!added && it->second != field) it->second = nullptr;  // two tables have it: ambiguous
      }
    }
    std::stable_sort(expressions_.begin(), expressions_.end(),
                     [](const auto& a, const auto& b) { return a.first.size() > b.first.size(); });
  }

  /// A virtual field's expression written at `start`, longest first; its length or 0.
  std::size_t MatchExpression(std::string_view lower, std::size_t start, TDSField*& field) const {
    for (const auto& [text, candidate] : expressions_) {
      if (lower.compare(start, text.size(), text) != 0) continue;
      const std::size_t end = start + text.size();
      const bool openEnd = !IsSQLNameChar(text.back()) || end >= lower.size() || !IsSQLNameChar(lower[end]);
      if (openEnd) {
        field = candidate;
        return text.size();
      }
    }
    return 0;
  }

  /// The field a dotted name stands for, or null.
  TDSField* MatchName(const std::string& lowerName, bool mayBeColumn) const {
    if (auto it = byName_.find(lowerName); it != byName_.end()) return it->second;
    if (mayBeColumn) {
      if (auto it = byColumn_.find(lowerName); it != byColumn_.end()) return it->second;
    }
    return nullptr;
  }

 private:
  std::unordered_map<std::string, TDSField*> byName_;
  std::unordered_map<std::string, TDSField*> byColumn_;
  std::vector<std::pair<std::string, TDSField*>> expressions_;
};

void AppendMarker(TFormula& out, TDSField* field) {
  auto it = std::find(out.Fields.begin(), out.Fields.end(), field);
  if (it == out.Fields.end()) it = out.Fields.insert(it, field);
  out.Formula += '@';
  out.Formula += std::to_string(it - out.Fields.begin() + 1);
}

TDSField* FieldByCaption(const TWCustomDBStructure* structure, std::string_view name) {
  if (structure == nullptr) return nullptr;
  for (TDSFieldSearch mode : {fsDisplayName, fsFullName, fsCompoundName, fsSQLExpr}) {
    if (TDSField* field = structure->FieldByName(mode, name)) return field;
  }
  return nullptr;
}

}  // namespace

TFormula FormulaFromExpression(const TWCustomDBStructure* structure, std::string_view expression) {
  TFormula out;
  std::size_t i = 0;
  while (i < expression.size()) {
    const std::size_t open = expression.find('{', i);
    if (open == std::string_view::npos) {
      out.Formula.append(expression.substr(i));
      break;
    }
    out.Formula.append(expression.substr(i, open - i));
    const std::size_t close = expression.find('}', open + 1);
    if (close == std::string_view::npos) {
      throw EWQueryPanelError(qecUnknownExprField, msg::UnknownExprField,
                              std::string(expression.substr(open)));
    }
    const std::string_view name = expression.substr(open + 1, close - open - 1);
    TDSField* field = FieldByCaption(structure, name);
    if (field == nullptr)
      throw EWQueryPanelError(qecUnknownExprField, msg::UnknownExprField, std::string(name));
    AppendMarker(out, field);
    i = close + 1;
  }
  return out;
}

std::string ExpressionFromFormula(const TWCustomDBStructure* structure, const TFormula& formula) {
  return SubstituteMarkers(formula.Formula, formula.Fields.size(), [&](std::size_t k) {
    const TDSField* field = formula.Fields[k - 1];
    if (field == nullptr) return std::string("{}");
    const bool shared =
        structure != nullptr && structure->FieldByName(fsDisplayName, field->DisplayName()) != field;
    return "{" + (shared ? field->GetFullName() : field->DisplayName()) + "}";
  });
}

TFormula FormulaFromSQL(const TWCustomDBStructure* structure, std::string_view sql) {
  const TFieldMatcher matcher(structure);
  const std::string lower = LowerCase(sql);
  TFormula out;
  std::size_t i = 0;
  while (i < sql.size()) {
    const char c = sql[i];
    if (c == '\'') {  // a string literal is copied whole
      const std::size_t close = ClosingQuote(sql, i);
      const std::size_t end = close == std::string_view::npos ? sql.size() : close + 1;
      out.Formula.append(sql.substr(i, end - i));
      i = end;
      continue;
    }
    const bool boundary = i == 0 || (!IsSQLNameChar(sql[i - 1]) && sql[i - 1] != '.');
    if (boundary) {
      TDSField* field = nullptr;
      if (const std::size_t length = matcher.MatchExpression(lower, i, field); length > 0) {
        AppendMarker(out, field);
        i += length;
        continue;
      }
      if (const std::size_t length = DottedNameLength(sql, i); length > 0) {
        const std::string name = lower.substr(i, length);
        std::size_t next = i + length;
        while (next < sql.size() && sql[next] == ' ') ++next;
        const bool call = next < sql.size() && sql[next] == '(';
        const bool bare = name.find('.') == std::string::npos;
        if (TDSField* named = call ? nullptr : matcher.MatchName(name, bare)) {
          AppendMarker(out, named);
        } else {
          out.Formula.append(sql.substr(i, length));
        }
        i += length;
        continue;
      }
    }
    out.Formula += c;
    ++i;
  }
  return out;
}

}  // namespace ts4
