#pragma once

namespace ts4::detail {

/// Shows the wait cursor for as long as it lives, when a GUI application
/// runs; restores the cursor however the scope is left.
class TWaitCursor {
 public:
  TWaitCursor();
  ~TWaitCursor();
  TWaitCursor(const TWaitCursor&) = delete;
  TWaitCursor& operator=(const TWaitCursor&) = delete;

 private:
  bool shown_ = false;
};

}  // namespace ts4::detail
