// A cell of the grid by its indices.
#pragma once

namespace nivaro {

struct Cell {
  int i = 0;
  int j = 0;
};

}  // namespace nivaro
