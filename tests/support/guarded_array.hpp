// Memory with pages behind and in front of it that nobody may touch.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <span>
#include <utility>
#include <vector>

#include "pages.hpp"

namespace nivaro::test {

// Which end of an array touches an inaccessible page; the other one is within less than a page of one,
// and what lies between is checked.
enum class Edge { Front, Back };
inline constexpr Edge kEdges[] = {Edge::Front, Edge::Back};

// An array without elements lies right at the inaccessible pages. Elements have no destructor.
template <typename T>
class GuardedArray {
 public:
  GuardedArray(std::size_t count, Edge edge, const T& value = T{}) : count_(count) {
    const std::size_t page = pageSize();
    inner_ = (count * sizeof(T) + page - 1) / page * page;
    size_ = inner_ + 2 * page;
    map_ = reservePages(size_);
    first_ = map_ + page;
    allowUse(first_, inner_);
    std::fill_n(first_, inner_, kMark);
    offset_ = edge == Edge::Back ? inner_ - count * sizeof(T) : 0;
    std::uninitialized_fill_n(data(), count, value);
  }
  GuardedArray(std::span<const T> values, Edge edge) : GuardedArray(values.size(), edge) {
    std::copy(values.begin(), values.end(), data());
  }
  GuardedArray(GuardedArray&& other) noexcept { *this = std::move(other); }
  GuardedArray& operator=(GuardedArray&& other) noexcept {
    std::swap(map_, other.map_);
    std::swap(size_, other.size_);
    std::swap(first_, other.first_);
    std::swap(inner_, other.inner_);
    std::swap(offset_, other.offset_);
    std::swap(count_, other.count_);
    return *this;
  }
  ~GuardedArray() {
    if (map_ != nullptr) releasePages(map_, size_);
  }

  T* data() const { return reinterpret_cast<T*>(first_ + offset_); }
  std::size_t size() const { return count_; }
  std::span<T> all() const { return {data(), count_}; }
  std::vector<T> copy() const { return {data(), data() + count_}; }

  void makeReadOnly() { allowReading(first_, inner_); }

  // What lies between the array and the page that it does not touch is as it was.
  bool isAloneWritten() const {
    const auto untouched = [](unsigned char found) { return found == kMark; };
    return std::all_of(first_, first_ + offset_, untouched) &&
           std::all_of(first_ + offset_ + count_ * sizeof(T), first_ + inner_, untouched);
  }

 private:
  static constexpr unsigned char kMark = 0xA5;

  unsigned char* map_ = nullptr;
  std::size_t size_ = 0;
  unsigned char* first_ = nullptr;
  std::size_t inner_ = 0;  // accessible bytes
  std::size_t offset_ = 0;
  std::size_t count_ = 0;
};

}  // namespace nivaro::test
