#include "morphology/engine/workspace.hpp"

#include <cstdint>

namespace nivaro {
namespace {

constexpr std::size_t kCacheLine = 64;  // bytes

// Hands out arrays of one length, each from the start of a cache line.
template <class Element>
class Shelf {
 public:
  static constexpr std::size_t kAlign = kCacheLine / sizeof(Element);

  Shelf(std::vector<Element>& memory, std::size_t length, std::size_t arrays) : length_(length) {
    const std::size_t needed = length * arrays + kAlign;
    if (memory.size() < needed) memory.assign(needed, Element{});
    const auto address = reinterpret_cast<std::uintptr_t>(memory.data());
    next_ = memory.data() + (kCacheLine - address % kCacheLine) / sizeof(Element);
  }

  Element* take() {
    Element* const array = next_;
    next_ += length_;
    return array;
  }

 private:
  std::size_t length_;
  Element* next_ = nullptr;
};

}  // namespace

BlockMap StepWorkspace::blockMap(std::ptrdiff_t rows, std::ptrdiff_t cells) {
  const std::ptrdiff_t perRow = (cells + kBlock - 1) / kBlock;
  const auto size = static_cast<std::size_t>(rows * perRow);
  if (blocks_.size() < size) blocks_.resize(size);
  return {blocks_.data(), perRow};
}

// One position more than cells, for the last side, one before the first, and what lanes and pieces
// reach beyond.
StripArrays StepWorkspace::strip(const StepData& step, std::ptrdiff_t positions,
                                 std::ptrdiff_t lines) {
  const bool centred = step.parameters.velocityCentred;
  constexpr std::ptrdiff_t beyond = 96;
  const auto rows = static_cast<std::size_t>(positions + beyond);
  const std::ptrdiff_t stride = (lines + 15) / 16 * 16;
  const std::size_t length = rows * static_cast<std::size_t>(stride);
  Shelf<double> reals(reals_, length, centred ? 7 : 3);
  Shelf<std::int64_t> words(words_, length, 1);
  if (descends_.size() < length) descends_.resize(length);
  if (pieces_.size() < rows) pieces_.resize(rows);
  if (piece_ == nullptr) piece_ = std::make_unique<PieceMemory>();

  StripArrays strip;
  const auto take = [&reals, stride] { return reals.take() + stride; };
  SideArrays& s = strip.sides;
  for (double** array : {&s.suspendedAbove, &s.discharge}) *array = take();
  s.suspendedBelow = step.uniformGrain ? s.suspendedAbove : take();
  s.centredSuspendedAbove = centred ? take() : s.suspendedAbove;
  s.centredSuspendedBelow = centred ? take() : s.suspendedBelow;
  s.centredDischargeAbove = centred ? take() : s.discharge;
  s.centredDischargeBelow = centred ? take() : s.discharge;
  strip.flags = words.take() + stride;
  strip.descends = descends_.data() + stride;
  strip.pieceDescends = pieces_.data();
  strip.piece = piece_.get();
  strip.stride = stride;
  return strip;
}

}  // namespace nivaro
