// A MIF/MID pair through to the cells. Sections: "grid", "command" (integer field, add), "mif",
// "mid".
#include "fuzz/grid_input.hpp"

namespace nivaro::fuzz {
namespace {

struct Reading {
  bool wasRead;
  std::vector<double> real;
  std::vector<std::int32_t> integer;
  std::string shown;
};

// Of all objects but regions: the offset, and an element before it for points.
bool isWithin(std::int32_t element, std::int32_t bound, std::int32_t offset, std::int32_t size) {
  const bool byObject = element >= offset && element - offset <= bound;
  const bool byRegion = element >= offset && element <= size - offset;
  return byObject || byRegion;
}

Reading read(const Folder& folder, const Archive& input, std::string_view mif,
             std::string_view mid) {
  FuzzModule run;
  Module& module = run.module;
  GridInput domain(module, input.text("grid"));
  folder.write("layer.mif", mif);
  folder.write("layer.mid", mid);
  Unit mifUnit;
  Unit midUnit;
  mifUnit.open("layer.mif", {});
  midUnit.open("layer.mid", {});

  Numbers command(input.text("command"));
  const bool integers = command.flag();
  AssignmentTarget target{.regionsAdd = command.flag()};
  const SedimentFields fields = domain.fields(module);
  if (integers)
    target.field = fields.bedCode;
  else
    target.field = fields.d50;

  GridAssignment assignment(module.diagnostics, module.layers);
  const bool wasRead = completes([&] {
    module.layers.findObjectSection(mifUnit);
    while (module.layers.objectsLeft(mifUnit, midUnit))
      assignment.processNextObject(mifUnit, midUnit, domain.grid.frame, target);
  });

  const GridFrame& frame = domain.grid.frame;
  const auto mayBeSet = [&](std::int32_t i, std::int32_t j) {
    return isWithin(i, frame.firstBound, frame.firstOffset, domain.n) &&
           isWithin(j, frame.secondBound, frame.secondOffset, domain.m);
  };
  requireUntouchedElsewhere(fields.d50, GridInput::kUntouched, mayBeSet);
  requireUntouchedElsewhere(fields.bedCode, -7, mayBeSet);
  for (const Grid<double>& other : {fields.d90, fields.inSituVoids, fields.bedLimit})
    requireUntouchedElsewhere(other, GridInput::kUntouched, [](auto...) { return false; });
  return {wasRead, domain.real, domain.integer, run.console.output};
}

std::string withCarriageReturns(std::string_view text) {
  std::string result;
  for (const char c : text) {
    if (c == '\n') result += '\r';
    result += c;
  }
  return result;
}

}  // namespace

void tryInput(const Archive& input, const Folder& folder) {
  const std::string_view mif = input.text("mif");
  const std::string_view mid = input.text("mid");

  const Reading reading = read(folder, input, mif, mid);
  if (!reading.wasRead || mif.find('\r') != mif.npos || mid.find('\r') != mid.npos) return;
  const Reading other = read(folder, input, withCarriageReturns(mif), withCarriageReturns(mid));
  require(reading.wasRead == other.wasRead &&
              std::equal(reading.real.begin(), reading.real.end(), other.real.begin(),
                         other.real.end(), sameBits) &&
              reading.integer == other.integer && reading.shown == other.shown,
          "a layer with the line ends of the other system is the same layer");
}

}  // namespace nivaro::fuzz
