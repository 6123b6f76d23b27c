#pragma once

#include <cstdint>
#include <initializer_list>
#include <type_traits>

namespace ts4 {

/// A set of the members of a scoped enumeration with at most 64 members,
/// stored as a bit mask (bit n for the member of ordinal n).
template <typename E>
requires std::is_enum_v<E>
class TEnumSet {
 public:
  constexpr TEnumSet() = default;
  constexpr TEnumSet(std::initializer_list<E> members) {
    for (E member : members) Include(member);
  }

  [[nodiscard]] static constexpr TEnumSet FromBits(std::uint64_t bits) {
    TEnumSet set;
    set.bits_ = bits;
    return set;
  }
  [[nodiscard]] constexpr std::uint64_t Bits() const { return bits_; }

  [[nodiscard]] constexpr bool Contains(E member) const { return (bits_ & Bit(member)) != 0; }
  [[nodiscard]] constexpr bool Empty() const { return bits_ == 0; }
  constexpr TEnumSet& Include(E member) {
    bits_ |= Bit(member);
    return *this;
  }
  constexpr TEnumSet& Exclude(E member) {
    bits_ &= ~Bit(member);
    return *this;
  }

  [[nodiscard]] friend constexpr TEnumSet operator|(TEnumSet a, TEnumSet b) {
    return FromBits(a.bits_ | b.bits_);
  }
  [[nodiscard]] friend constexpr TEnumSet operator&(TEnumSet a, TEnumSet b) {
    return FromBits(a.bits_ & b.bits_);
  }
  [[nodiscard]] friend constexpr TEnumSet operator-(TEnumSet a, TEnumSet b) {
    return FromBits(a.bits_ & ~b.bits_);
  }
  [[nodiscard]] friend constexpr bool operator==(TEnumSet a, TEnumSet b) = default;

 private:
  static constexpr std::uint64_t Bit(E member) {
    auto ordinal = static_cast<std::uint64_t>(static_cast<std::underlying_type_t<E>>(member));
    return ordinal < 64 ? std::uint64_t{1} << ordinal : 0;
  }
  std::uint64_t bits_ = 0;
};

}  // namespace ts4
