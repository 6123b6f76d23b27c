#pragma once

#include <cstdint>

#include "foundation/enum_set.h"

namespace ts4 {

/// What a row of the condition tree is.
enum class TFilterRowType : std::uint8_t { frtCriteria, frtBracket };
using enum TFilterRowType;

/// How a bracket joins its enabled rows: all (AND), any (OR), none (NOT (.. OR ..))
/// or not all (NOT (.. AND ..)).
enum class TFilterLinkType : std::uint8_t { fltAll, fltAny, fltNone, fltNotAll };
using enum TFilterLinkType;

/// Options of SQL generation.
enum class TSQLOption : std::uint8_t {
  soASCIIRFields,       // aliases with characters above code 127 become C<position>
  soSelectDistinct,     // SELECT DISTINCT
  soQuoteAliases,       // aliases quoted in the select list
  soBracketJoins,       // JOINs nested with parentheses
  soBracketConditions,  // every condition and old-style join condition in parentheses
  soSortByNames,        // ORDER BY expressions instead of positions
};
using enum TSQLOption;
using TSQLOptions = TEnumSet<TSQLOption>;

/// The options of a new query.
inline constexpr TSQLOptions DefaultSQLOptions = {soASCIIRFields, soSelectDistinct};

/// Sort direction of a result field.
enum class TSortingType : std::uint8_t { stNoSort, stAscending, stDescending };
using enum TSortingType;

/// What a query is busy with.
enum class TWBuilderState : std::uint8_t { stIdle, stBuilding, stLoading, stSaving };
using enum TWBuilderState;

/// Codes carried by the query's errors.
enum TQueryErrorCode : std::int32_t {
  qecNotEnoughInfo = 1,
  qecWrongLink = 2,
  qecNoDbStruct = 3,
  qecInvalidFilterTitle = 4,
  qecInvalidStringFormat = 5,
  qecNotBuilt = 8,
  qecSectionNotFound = 9,
  qecNestingTooDeep = 10,
  qecUnknownExprField = 11,
  qecInvalidDateValue = 12,
  qecInvalidPropertyValue = 13,
  qecUnreadableCondition = 14,
  qecForeignRow = 15,
  qecMoveIntoItself = 16,
};

/// Deepest bracket nesting a query accepts: a bracket directly under the
/// root is at level 1. Bounding it keeps every walk of the tree shallow.
inline constexpr int MaxBracketDepth = 1000;

}  // namespace ts4
