#include "structure/sql_formats.h"

namespace ts4 {

std::string TSQLFormats::QuoteName(std::string_view name, bool quote) const {
  if (!quote) return std::string(name);
  std::string result;
  result.reserve(name.size() + 2);
  result += quoteSymbol1_;
  result.append(name);
  result += quoteSymbol2_;
  return result;
}

}  // namespace ts4
