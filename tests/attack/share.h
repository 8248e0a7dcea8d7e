// How much of the attacks is run, and what differs from day to day.
#ifndef ORVELASN1_TESTS_ATTACK_SHARE_H
#define ORVELASN1_TESTS_ATTACK_SHARE_H

#include <chrono>
#include <cstdlib>
#include <random>

namespace attack {

/// Returns the days since 1970, a seed.
inline unsigned today() {
  const auto now = std::chrono::system_clock::now();
  return static_cast<unsigned>(
      std::chrono::floor<std::chrono::days>(now).time_since_epoch().count());
}

/// Returns n where the environment variable ORVELASN1_ATTACK_SHARE is n: an emulator is to try one
/// change of n. Returns 1 where there is no such number.
inline unsigned long share() {
  static const unsigned long n = [] {
    const char *const text = std::getenv("ORVELASN1_ATTACK_SHARE");
    const unsigned long number = text == nullptr ? 1 : std::strtoul(text, nullptr, 10);
    return number == 0 ? 1 : number;
  }();
  return n;
}

/// Returns whether the next change is tried. Each day tries others.
inline bool is_in_share() {
  static std::mt19937 random(today());
  return share() == 1 || random() % share() == 0;
}

}  // namespace attack

#endif
