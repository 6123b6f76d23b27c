#pragma once

namespace ts4 {

/// Nested BeginUpdate/EndUpdate for an object that announces its changes:
/// while an update is open a change is only remembered, and the outermost
/// EndUpdate announces it once.
class TUpdateCounter {
 public:
  void Begin() { ++count_; }
  /// True when the change is to be announced now; else it is held back.
  [[nodiscard]] bool Change() {
    if (count_ == 0) return true;
    pending_ = true;
    return false;
  }
  /// True when this closes the outermost update and a change was held back.
  [[nodiscard]] bool End() {
    if (count_ == 0 || --count_ > 0 || !pending_) return false;
    pending_ = false;
    return true;
  }
  [[nodiscard]] int Count() const { return count_; }

 private:
  int count_ = 0;
  bool pending_ = false;
};

}  // namespace ts4
