#pragma once

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace bukorval::dati {

/// Whole numbers from 0, a bit each, in pieces that are made when a number falls into them: millions that lie close
/// together take little, and no more is taken than a bit for each number up to the highest.
class NumberSet {
 public:
  /// @return whether the number is new.
  bool insert(std::int64_t number) {
    const auto place = static_cast<std::size_t>(number);
    if (pieces_.size() <= place / kPiece) pieces_.resize(place / kPiece + 1);
    auto& piece = pieces_[place / kPiece];
    if (!piece) piece = std::make_unique<Piece>();
    if (piece->test(place % kPiece)) return false;
    piece->set(place % kPiece);
    return true;
  }
  bool contains(std::int64_t number) const {
    const auto place = static_cast<std::size_t>(number);
    return place / kPiece < pieces_.size() && pieces_[place / kPiece] && pieces_[place / kPiece]->test(place % kPiece);
  }

 private:
  static constexpr std::size_t kPiece = std::size_t{1} << 16;
  using Piece = std::bitset<kPiece>;
  std::vector<std::unique_ptr<Piece>> pieces_;
};

}  // namespace bukorval::dati
