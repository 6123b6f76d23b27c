#pragma once

#include <cstdint>

#include "foundation/enum_set.h"

namespace ts4 {

/// How a query panel looks and behaves; the panel keeps the set, and the
/// query mirrors aoNonEmptyBrackets in NonEmptyBrackets.
enum class TQPAppearanceOption : std::uint8_t {
  aoFlatButtons,
  aoRoundButtons,
  aoNonEmptyBrackets,
  aoPopupField,
  aoPopupValue,
  aoShowGroupName,
  aoAllowKeyboard,
  aoSortListData,
  aoShowAddRow,
  aoShowCheckBoxes,
  aoAllowParams,
};
using enum TQPAppearanceOption;
using TQPAppearanceOptions = TEnumSet<TQPAppearanceOption>;

}  // namespace ts4
