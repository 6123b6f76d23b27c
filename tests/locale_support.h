#pragma once

#include <clocale>
#include <locale>
#include <memory>
#include <stdexcept>
#include <string>

namespace ts4test {

/// Switches the C and C++ global locales for the life of the object.
class ScopedGlobalLocale {
 public:
  static std::unique_ptr<ScopedGlobalLocale> TryCreate(const char* name) {
    std::string previous = std::setlocale(LC_ALL, nullptr);
    if (std::setlocale(LC_ALL, name) == nullptr) return nullptr;
    std::setlocale(LC_ALL, previous.c_str());
    return std::unique_ptr<ScopedGlobalLocale>(new ScopedGlobalLocale(name, previous));
  }
  ~ScopedGlobalLocale() {
    std::locale::global(previousCpp_);
    std::setlocale(LC_ALL, previousC_.c_str());
  }
  ScopedGlobalLocale(const ScopedGlobalLocale&) = delete;
  ScopedGlobalLocale& operator=(const ScopedGlobalLocale&) = delete;

 private:
  ScopedGlobalLocale(const char* name, std::string previous)
      : previousC_(std::move(previous)), previousCpp_(std::locale()) {
    std::locale::global(std::locale(name));
    std::setlocale(LC_ALL, name);
  }
  std::string previousC_;
  std::locale previousCpp_;
};

/// A German locale (decimal comma) for the life of the result, or null when none is installed.
inline std::unique_ptr<ScopedGlobalLocale> CommaDecimalLocale() {
  for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "de_DE"}) {
    try {
      if (auto scoped = ScopedGlobalLocale::TryCreate(name)) return scoped;
    } catch (const std::runtime_error&) {
      // The C library knows the locale but the C++ library does not: try the next name.
    }
  }
  return nullptr;
}

}  // namespace ts4test
