#pragma once

/// How money and quantities are kept, everywhere in the suite.
namespace suite {

inline constexpr int kDecimaliImporto = 2;
/// Digits in all that the arithmetic service works with.
inline constexpr int kPrecisione = 18;
/// The arithmetic service's code for rounding halves away from zero.
inline constexpr int kMezziLontanoDaZero = 5;

}  // namespace suite
