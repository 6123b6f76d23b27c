#pragma once

#include <cstdint>

namespace ts4 {
class TWCustomDBStructure;
}

namespace ts4test {

/// Replaces the tables, links, fields, field groups and operators of the
/// structure by random ones drawn from `seed`; the same seed and scale give
/// the same structure with every compiler and standard library. About
/// `scale` tables and 4 x `scale` fields (scale >= 1), links of every type
/// including self-links and repeated links between two tables, every field
/// kind, type and edit type, custom operators, groups, and captions and
/// values holding blanks, commas, quotes, "=", brackets, backslashes and line
/// breaks (LF, CR, CR LF), SQL lines that read as headers, and aliases with
/// line breaks on tables without links. Every structure it builds reads back
/// from its text to the same text.
void BuildRandomStructure(ts4::TWCustomDBStructure& structure, std::uint32_t seed, int scale);

}  // namespace ts4test
