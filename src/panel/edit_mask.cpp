#include "panel/edit_mask.h"

#include <vector>

namespace ts4 {
namespace {

// Characters Qt's input masks read as instructions.
constexpr std::string_view QtMaskCharacters = "AaNnXx90DdHhBb#><!{}[];\\";

void AppendLiteral(std::string& mask, char c) {
  if (QtMaskCharacters.find(c) != std::string_view::npos) mask += '\\';
  mask += c;
}

/// The mask split at the semicolons that are not escaped: mask, save
/// literals, blank character.
std::vector<std::string_view> Fields(std::string_view editMask) {
  std::vector<std::string_view> fields;
  std::size_t start = 0;
  for (std::size_t i = 0; i < editMask.size(); ++i) {
    if (editMask[i] == '\\') {
      ++i;
    } else if (editMask[i] == ';' && fields.size() < 2) {
      fields.push_back(editMask.substr(start, i - start));
      start = i + 1;
    }
  }
  fields.push_back(editMask.substr(start));
  return fields;
}

}  // namespace

TQtInputMask InputMaskFromEditMask(std::string_view editMask) {
  const std::vector<std::string_view> fields = Fields(editMask);
  TQtInputMask result;
  if (fields.size() > 1) result.SaveLiterals = fields[1] != "0";
  if (fields.size() > 2 && !fields[2].empty()) result.BlankChar = fields[2].front();
  const std::string_view mask = fields[0];
  std::string& out = result.Mask;
  for (std::size_t i = 0; i < mask.size(); ++i) {
    const char c = mask[i];
    switch (c) {
      case '\\':
        if (i + 1 < mask.size()) AppendLiteral(out, mask[++i]);
        break;
      case '>': out += '>'; break;
      case '<':
        if (i + 1 < mask.size() && mask[i + 1] == '>') {
          out += '!';
          ++i;
        } else {
          out += '<';
        }
        break;
      case '!': break;
      case 'L': out += 'A'; break;
      case 'l': out += 'a'; break;
      case 'A': out += 'N'; break;
      case 'a': out += 'n'; break;
      case 'C': out += 'X'; break;
      case 'c': out += 'x'; break;
      case '0': out += '9'; break;
      case '9': out += '0'; break;
      case '#': out += '#'; break;
      case '_': out += ' '; break;
      default: AppendLiteral(out, c); break;
    }
  }
  if (!out.empty()) {
    out += ';';
    out += result.BlankChar;
  }
  return result;
}

std::string WithoutMaskLiterals(std::string_view qtMask, std::string_view text) {
  // The blank character follows the last unescaped semicolon.
  const std::vector<std::string_view> fields = Fields(qtMask);
  const std::string_view mask = fields[0];
  const char blank = fields.size() > 1 && !fields.back().empty() ? fields.back().front() : ' ';
  constexpr std::string_view InputPositions = "AaNnXx90DdHhBb#";
  std::string typed;
  std::size_t at = 0;
  for (std::size_t i = 0; i < mask.size() && at < text.size(); ++i) {
    const char c = mask[i];
    if (c == '<' || c == '>' || c == '!') continue;  // case switches take no position
    bool input = InputPositions.find(c) != std::string_view::npos;
    if (c == '\\') {
      ++i;
      input = false;
    }
    if (input && text[at] != blank) typed += text[at];
    ++at;
  }
  return typed;
}

}  // namespace ts4
