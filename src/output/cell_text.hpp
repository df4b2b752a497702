// The text of the check layer's cells. Grids of millions of cells are ordinary, so a corner is
// turned into text once for the cells that share it, and a number that many cells share is, too.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "output/check_layer.hpp"

namespace nivaro {

// The coordinate lines of the corners along one grid line.
class CornerLines {
 public:
  // Of the grid line `b` cells from the origin along local y, over the range's cells.
  void fill(const CellFrame& frame, int b, const Area& range);

  // The corners on the lower and the upper side, along the second index, of cell j.
  std::string_view lower(int j) const { return line(j - firstJ_); }
  std::string_view upper(int j) const { return line(j - firstJ_ + 1); }

 private:
  std::string_view line(int number) const {
    return std::string_view(text_).substr(static_cast<std::size_t>(number) * length_, length_);
  }

  std::string text_;
  std::size_t length_ = 0;  // of one line, its end included
  int firstJ_ = 0;
};

// The object of cell j between two grid lines.
void appendSquare(std::string& text, const CornerLines& low, const CornerLines& high, int j);

// The attribute records of a domain.
class CellRecords {
 public:
  explicit CellRecords(const CheckedDomain& domain) : domain_(domain) {}

  void append(std::string& text, int i, int j);

 private:
  // A real column: most cells have the value of the cell before.
  struct RealColumn {
    int width;
    int decimals;
    double value = 0.0;
    std::string text{};

    void append(std::string& record, double newValue);
  };

  void appendParameters(std::string& text, int i, int j);

  const CheckedDomain& domain_;
  RealColumn d50_{10, 6};
  RealColumn d90_{10, 6};
  RealColumn inSituVoids_{5, 3};
  RealColumn depositionVoids_{5, 3};
  RealColumn bedLimit_{10, 3};
};

}  // namespace nivaro
