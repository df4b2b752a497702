#include "module_library.hpp"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstring>

#include "platform.hpp"

namespace host {

namespace {

// A code per cell that has no flag in the dataset: margin and cells without data.
constexpr std::int32_t kNoCell = 0;

nivaro_length lengthOf(const std::string& text) {
  return static_cast<nivaro_length>(text.size());
}

// The form in which the module compares the CoordSys lines of layers with the host's.
std::string normalised(const std::string& coordSys) {
  std::string result;
  for (const char c : coordSys) {
    if (c != ' ' && c != '\t' && c != '"')
      result += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  }
  return result.empty() ? " " : result;
}

// Texts of the message record are padded with blanks.
template <std::size_t size>
void put(char (&field)[size], const std::string& text) {
  std::memset(field, ' ', size);
  std::memcpy(field, text.data(), std::min(size, text.size()));
}

}  // namespace

ModuleLibrary::ModuleLibrary(const std::filesystem::path& file) {
  std::string reason;
  void* library = openSharedLibrary(file, reason);
  if (!library)
    throw LibraryError("The morphology module " + file.string() + " cannot be loaded: " + reason);

  std::string missing;
  const auto find = [&](auto& entry, const char* name) {
    entry = reinterpret_cast<std::remove_reference_t<decltype(entry)>>(findSymbol(library, name));
    if (!entry) missing += std::string(missing.empty() ? "" : ", ") + name;
  };
  find(initialiseS1_, "QVMOR_INITIALISE_S1");
  find(initialiseS2_, "QVMOR_INITIALISE_S2");
  find(setupS2_, "QVMOR_SETUP_S2");
  find(readInput_, "QVMOR_RDINPF");
  find(initDomain_, "QVMOR_INIT_2D_DOMAIN");
  find(morphology_, "QVMORPHOLOGY");
  find(writeHeader_, "QVMOR_WRSMSF_WRITE_HEADER");
  find(writeFlags_, "QVMOR_WRSMSF_DAT_FLAGS");
  find(writeResults_, "QVMOR_WRSMSF_DAT_RESULTS");
  find(closeDataset_, "QVMOR_WRSMSF_CLOSE");
  find(writeCheckLayer_, "QVMOR_WRMIFF");
  find(deliver_, "DMESSAGEXY");
  find(messages_, "DMESSAGES");
  if (!missing.empty())
    throw LibraryError(file.string() + " is no morphology module: it lacks " + missing + ".");
}

void ModuleLibrary::initialise(const std::string& name, const std::string& prefix,
                               const std::string& coordSys) const {
  const nivaro_logical no = logical(false);
  const std::string tableExtension = ".tab";
  // Plain metres are no projection that layers could be held against.
  const std::string projection =
      normalised(coordSys.starts_with("CoordSys NonEarth") ? "" : coordSys);
  initialiseS1_(name.data(), prefix.data(), prefix.data(), &no, tableExtension.data(), &no,
                prefix.data(), coordSys.data(), projection.data(), &no, lengthOf(name),
                lengthOf(prefix), lengthOf(prefix), lengthOf(tableExtension), lengthOf(prefix),
                lengthOf(coordSys), lengthOf(projection));
}

void ModuleLibrary::setDataset(std::int32_t points, std::int32_t cells, double flagDepth) const {
  const std::int32_t timesAsGiven = 0;
  const std::int32_t unused = 0;
  initialiseS2_(&timesAsGiven, &flagDepth, &unused, &unused, &points, &cells);
}

void ModuleLibrary::reserve(std::int32_t domain, const GridFrame& grid, std::int32_t& nextReal,
                            std::int32_t& nextInteger) const {
  const nivaro_logical active = logical(true);
  const std::int32_t n = grid.n();
  const std::int32_t m = grid.m();
  const std::int32_t unused = 0;
  setupS2_(&active, &domain, &n, &m, &unused, &unused, &nextReal, &nextInteger);
}

void ModuleLibrary::readControlFile(const std::string& file, std::int32_t domain,
                                    std::int32_t lastDomain, const GridFrame& grid,
                                    WorkArrays& work) const {
  const std::int32_t n = grid.n();
  const std::int32_t m = grid.m();
  // Rows of cell tables count the model's cells from 1. The module puts a row that names its offset
  // into cell 2, so an offset of 0 puts row 1 into cell 3, the model's first.
  const std::int32_t lastRow = grid.lastI();
  const std::int32_t lastColumn = grid.lastJ();
  const std::int32_t rows = grid.rows;
  const std::int32_t columns = grid.columns;
  const std::int32_t offset = 0;
  const MapPlace corner = grid.place();
  readInput_(file.data(), &domain, &lastDomain, &n, &m, &lastRow, &lastColumn, &rows, &columns,
             &offset, &offset, &grid.cellSize, &grid.cellSize, &corner.angle, &corner.x, &corner.y,
             work.real.data(), work.integer.data(), nullptr, nullptr, nullptr, lengthOf(file));
}

void ModuleLibrary::writeCheckLayer(std::int32_t domain, std::int32_t lastDomain,
                                    const GridFrame& grid, const IndexArea& area, BedArrays& bed,
                                    WorkArrays& work) const {
  const nivaro_logical values = logical(true);
  const std::int32_t n = grid.n();
  const std::int32_t offset = 0;  // as in cell tables: the model's first cell is 1
  const MapPlace corner = grid.place();
  const double stepA = grid.cellSize * std::cos(corner.angle);
  const double stepB = grid.cellSize * std::sin(corner.angle);
  writeCheckLayer_(&domain, &lastDomain, &values, bed.code.data(), bed.zc.data(), &n, nullptr,
                   &area.firstI, &area.firstJ, &area.lastI, &area.lastJ, &offset, &offset,
                   &corner.x, &corner.y, &stepA, &stepB, work.real.data(), work.integer.data());
}

void ModuleLibrary::loadDomain(std::int32_t domain) const {
  initDomain_(&domain);
}

void ModuleLibrary::compute(MorphologyCall call, std::int32_t domain, const GridFrame& grid,
                            const IndexArea& area, double timeStep, const FlowArrays& flow,
                            BedArrays& bed, WorkArrays& work) const {
  const nivaro_logical smoothing = logical(call == MorphologyCall::Smoothing);
  const nivaro_logical initialisation = logical(call == MorphologyCall::Initialisation);
  const nivaro_logical skip = logical(false);
  const std::int32_t n = grid.n();
  const std::int32_t m = grid.m();
  // This host's own depth at a side needs no raising where levels differ much.
  const nivaro_logical raise = logical(false);
  const double raiseFactor = 1;
  morphology_(&smoothing, &initialisation, &skip, flow.wet.data(), flow.flowing.data(),
              flow.level.data(), flow.v2.data(), flow.v1.data(), bed.zpts.data(), bed.zc.data(),
              bed.z2.data(), bed.z1.data(), &n, &m, &area.firstI, &area.firstJ, &area.lastI,
              &area.lastJ, &grid.cellSize, &grid.cellSize, &grid.cellSize, nullptr, &timeStep,
              &raise, &raiseFactor, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
              work.real.data(), work.integer.data(), nullptr, nullptr, nullptr, &domain);
}

void ModuleLibrary::writeDatasetHeader(const std::string& name) const {
  std::string padded = name;
  padded.resize(35, ' ');
  writeHeader_(padded.data());
}

void ModuleLibrary::writeFlags(std::int32_t domain, std::int32_t lastDomain, double hours,
                               const GridFrame& grid, const IndexArea& area, const FlowArrays& flow,
                               const BedArrays& bed) const {
  const std::int32_t n = grid.n();
  const double noOffset = 0;
  writeFlags_(&domain, &lastDomain, &hours, &noOffset, &kNoCell, bed.code.data(), flow.wet.data(),
              flow.level.data(), bed.zc.data(), &n, nullptr, &area.firstI, &area.firstJ,
              &area.lastI, &area.lastJ);
}

void ModuleLibrary::writeValues(std::int32_t domain, std::int32_t lastDomain, const GridFrame& grid,
                                const IndexArea& area, std::span<const std::int32_t> pointI,
                                std::span<const std::int32_t> pointJ, WorkArrays& work) const {
  const std::int32_t n = grid.n();
  const nivaro_logical write = logical(true);
  const std::vector<std::int32_t> counts(static_cast<std::size_t>(lastDomain),
                                         static_cast<std::int32_t>(pointI.size()));
  writeResults_(&domain, &lastDomain, counts.data(), nullptr, &write, &n, nullptr, &area.firstI,
                &area.firstJ, &area.lastI, &area.lastJ, pointI.data(), pointJ.data(), nullptr,
                work.real.data());
}

void ModuleLibrary::closeDataset() const {
  closeDataset_();
}

void ModuleLibrary::openMessagesLayer(double x, double y, double labelHeight, double labelWidth,
                                      double spacing) const {
  messages_->message_layer = 1;  // any of 1 to 100 that this host uses for nothing else
  messages_->secondary_message_layer = 1;
  messages_->label_height = labelHeight;
  messages_->label_box_width = labelWidth;
  messages_->default_x = x;
  messages_->default_y = y;
  messages_->unlocated_spacing = spacing;
}

void ModuleLibrary::deliver(const Message& message, double x, double y) const {
  put(messages_->line1, message.line1);
  put(messages_->line2, message.line2);
  const std::int32_t logOnly = -1;  // the screen belongs to the progress of the run
  deliver_(&logOnly, &x, &y);
}

void ModuleLibrary::deliver(const Message& message) const {
  deliver(message, messages_->default_x, messages_->default_y);
}

}  // namespace host
