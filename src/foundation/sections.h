#pragma once

#include <string>
#include <string_view>

namespace ts4 {

class TStrings;

// Sectioned text: a header line "[Name]" starts a section whose body is every
// following line up to the next header. Header names are matched ignoring
// ASCII case; blanks around a header line are ignored.
//
// A body line that the format cannot hold as it is (one holding a line
// break, or one that would read as a header) is stored escaped: "[\", the
// line with "\" written "\\", CR "\r" and LF "\n", then "]". Every other
// line is stored exactly as it is. Writers pass each body line through
// EscapeSectionLine; XReadSLSectionValues gives the lines back unescaped.

/// Whether the line is a section header: "[" ... "]" once blanks around it
/// are set aside, and not an escaped body line.
[[nodiscard]] bool IsSectionHeader(std::string_view line);

/// The name inside a header line ("Main" for "[Main]"), or empty when the
/// line is not a header.
[[nodiscard]] std::string SectionHeaderName(std::string_view line);

/// The body line as the text stores it: as it is, or escaped when it holds
/// CR or LF or would read as a header.
[[nodiscard]] std::string EscapeSectionLine(std::string_view line);

/// The body line a stored line stands for: an escaped line unescaped, any
/// other line as it is.
[[nodiscard]] std::string UnescapeSectionLine(std::string_view line);

/// Fills `sections` with the names of the list's sections in order.
void ReadSLSections(const TStrings& list, TStrings& sections);

/// Makes `dest` hold exactly the body lines of the named section, unescaped,
/// and returns the index of the line after that body, from which the next
/// search can continue. The search starts at `start` and, when the section
/// lies before it, wraps round to the top, so sections may stand in any
/// order. When the section is missing `dest` is emptied and -1 is returned.
int XReadSLSectionValues(int start, const TStrings& list, std::string_view section, TStrings& dest);

}  // namespace ts4
