// One job of the module in a process of its own, to be timed from outside like other programs.
//
// Usage: one_job make_layer | read_layer | write_check_layer FOLDER
#include <cstdio>
#include <string>
#include <string_view>

#include "inputs.hpp"
#include "model.hpp"

using namespace nivaro;
using namespace nivaro::bench;

namespace {

constexpr int kCells = 2000;  // along either index
constexpr int kRegions = 20000;

void run(const std::string& folder, const std::string& control, bool checkLayer) {
  StandardConsole console;
  save(folder + "/job.mcf", control);
  Model model(kCells, folder + "/job", console);
  if (checkLayer) model.fillCells(Model::PointOrder::AlongFirstIndex);
  model.start();
  model.readControlFile(folder + "/job.mcf");
  if (checkLayer) model.writeCheckLayer();
}

}  // namespace

int main(int count, char** arguments) {
  const std::string_view job = count == 3 ? arguments[1] : "";
  const std::string folder = count == 3 ? arguments[2] : "";
  if (job == "make_layer") {
    writeRegionLayer(folder + "/regions", kRegions, kCells);
  } else if (job == "read_layer") {
    run(folder, "Read MI Morphology D50 == regions.mif\n", false);
  } else if (job == "write_check_layer") {
    run(folder, "", true);
  } else {
    std::fputs("Usage: one_job make_layer | read_layer | write_check_layer FOLDER\n", stderr);
    return 2;
  }
}
