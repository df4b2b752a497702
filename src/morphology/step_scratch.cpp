#include "morphology/step_scratch.hpp"

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

// One position more than cells, for the last side, and what lanes and pieces reach beyond it.
StripArrays StepScratch::strip(std::ptrdiff_t positions, bool centred) {
  constexpr std::ptrdiff_t beyond = 96;
  const auto length = static_cast<std::size_t>((positions + beyond) * kSecondStripLines);
  Shelf<double> reals(reals_, length, centred ? 13 : 9);
  Shelf<std::int64_t> words(words_, length, 2);
  if (rows_.size() < length) rows_.assign(length, 0);

  StripArrays strip;
  for (double** array : {&strip.sides.suspendedAbove, &strip.sides.suspendedBelow,
                         &strip.sides.discharge, &strip.bedLoad.above, &strip.bedLoad.below,
                         &strip.forward, &strip.reverse, &strip.concentration, &strip.adaptation})
    *array = reals.take();
  strip.sides.centredSuspendedAbove = centred ? reals.take() : strip.sides.suspendedAbove;
  strip.sides.centredSuspendedBelow = centred ? reals.take() : strip.sides.suspendedBelow;
  strip.sides.centredDischargeAbove = centred ? reals.take() : strip.sides.discharge;
  strip.sides.centredDischargeBelow = centred ? reals.take() : strip.sides.discharge;
  strip.flags = words.take();
  strip.outcome = words.take();
  strip.rowActive = rows_.data();
  return strip;
}

}  // namespace nivaro
