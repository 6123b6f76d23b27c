#pragma once

#include <cstdint>

namespace ts4 {
class TWQuery;
}

namespace ts4test {

/// Replaces the content of the query by a random one over its structure,
/// the same for the same seed: name, description, user data, result fields
/// (plain, aggregate and two-field formulas, with sorting), and about `rows`
/// rows in brackets of every link type nested up to six deep, with some rows
/// disabled. Conditions take every operator their fields offer, with
/// values that suit the type (dates as ISO text, lists, sub-query SQL),
/// captions, parameters with value formats, and sub-query lines. Texts hold
/// quotes, commas, "=", non-ASCII letters, line breaks (LF, CR, CR LF) and
/// backslashes; description and user data lines may read as section headers.
/// The query's settings (SQL options, syntax) are left alone.
void BuildRandomQuery(ts4::TWQuery& query, std::uint32_t seed, int rows);

}  // namespace ts4test
