#pragma once

#include <string>
#include <string_view>

namespace ts4 {

/// An input mask in Qt's notation, with what the older notation's extra
/// fields said.
struct TQtInputMask {
  std::string Mask;          // for QLineEdit::setInputMask, blank character included
  bool SaveLiterals = true;  // the value keeps the mask's literal characters
  char BlankChar = '_';      // shown for a position not yet typed

  friend bool operator==(const TQtInputMask&, const TQtInputMask&) = default;
};

/// Converts an edit mask in the older notation that saved structures hold
/// ("mask;save literals;blank", such as "!99/99/0000;1;_") into Qt's:
///
/// | older | meaning                               | Qt    |
/// |-------|---------------------------------------|-------|
/// | L / l | letter, required / optional           | A / a |
/// | A / a | letter or digit, required / optional  | N / n |
/// | C / c | any character, required / optional   | X / x |
/// | 0 / 9 | digit, required / optional            | 9 / 0 |
/// | #     | digit or sign, optional               | #     |
/// | > / < | upper / lower case from here          | > / < |
/// | <>    | no case conversion from here          | !     |
/// | \x    | x as it is                            | x, escaped where Qt reads it as a mask character |
/// | _     | a blank                               | a blank |
/// | !     | optional characters shown as leading blanks | (left out: Qt has no such mode) |
/// | other | itself                                | itself, escaped where Qt reads it as a mask character |
///
/// The second field "0" means the value leaves the literals out; the third
/// field's first character is the blank character (default "_").
[[nodiscard]] TQtInputMask InputMaskFromEditMask(std::string_view editMask);

/// The characters of a masked edit's text that were typed: those at the
/// mask's input positions, blanks left out ("24/12/2026" under "00/00/9999"
/// gives "24122026").
[[nodiscard]] std::string WithoutMaskLiterals(std::string_view qtMask, std::string_view text);

}  // namespace ts4
