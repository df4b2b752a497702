#include "mesh.hpp"

#include "number_format.hpp"

namespace host {

Mesh makeMesh(const GridFrame& grid, const Field<std::int32_t>& code) {
  Mesh mesh;
  Field<std::int32_t> node(grid, 0);
  for (int j = grid.firstJ() - 1; j <= grid.lastJ(); ++j) {
    for (int i = grid.firstI() - 1; i <= grid.lastI(); ++i) {
      if (!code(i, j) && !code(i + 1, j) && !code(i, j + 1) && !code(i + 1, j + 1)) continue;
      mesh.pointI.push_back(i);
      mesh.pointJ.push_back(j);
      node(i, j) = static_cast<std::int32_t>(mesh.pointI.size());
    }
  }
  for (int i = grid.firstI(); i <= grid.lastI(); ++i) {
    for (int j = grid.firstJ(); j <= grid.lastJ(); ++j) {
      if (!code(i, j)) continue;
      mesh.elements.push_back({node(i - 1, j - 1), node(i - 1, j), node(i, j), node(i, j - 1)});
    }
  }
  return mesh;
}

std::string meshText(const Mesh& mesh, const GridFrame& grid, const Field<double>& cornerDepth) {
  std::string text = "MESH2D\n";
  int number = 0;
  for (const auto& nodes : mesh.elements) {
    text += "E4Q " + std::to_string(++number);
    for (const std::int32_t node : nodes) text += ' ' + std::to_string(node);
    text += " 1\n";
  }
  const double half = 0.5 * grid.cellSize;
  for (std::size_t k = 0; k < mesh.pointI.size(); ++k) {
    const int i = mesh.pointI[k];
    const int j = mesh.pointJ[k];
    const auto [x, y] = grid.toMap(grid.x(j) + half, grid.y(i) + half);
    text += "ND " + std::to_string(k + 1) + ' ' + fixed(x, 4) + ' ' + fixed(y, 4) + ' ' +
            fixed(-cornerDepth(i, j), 5) + '\n';
  }
  return text;
}

}  // namespace host
