// The morphology entry points and the end of a run.
#include <string>

#include "exports/adapters.hpp"
#include "exports/call.hpp"
#include "exports/the_module.hpp"
#include "interface/entry_points.hpp"
#include "interface/start_up.hpp"
#include "platform/environment.hpp"

using namespace nivaro;

namespace {

// Arrays of the outputs come without their second dimension.
template <typename T>
Grid<T> openGrid(T* first, const std::int32_t* nx) {
  return {first, *nx, kAnyDimension};
}

}  // namespace

void QVMOR_INITIALISE_S1(const char* simulationName, const char* outputPrefix,
                         const char* logPrefix, const Logical* saveDateCheck,
                         const char* tableExtension, const Logical* saveDateError,
                         const char* checkLayerPrefix, const char* checkLayerHeaderSource,
                         const char* hostProjection, const Logical* projectionError,
                         Length simulationNameLength, Length outputPrefixLength,
                         Length logPrefixLength, Length tableExtensionLength,
                         Length checkLayerPrefixLength, Length checkLayerHeaderSourceLength,
                         Length hostProjectionLength) noexcept {
  call("the start-up", [&] {
    constexpr std::size_t kKept = 1000;
    constexpr std::size_t kExtension = 4;
    const auto kept = [](const char* buffer, Length length, std::size_t most) {
      return std::string(name(buffer, length).substr(0, most));
    };
    startUp(theModule(),
            {.simulationName = name(simulationName, simulationNameLength),
             .outputPrefix = name(outputPrefix, outputPrefixLength),
             .logPrefix = name(logPrefix, logPrefixLength),
             .gis = {.checkSaveDate = isTrue(*saveDateCheck),
                     .tableExtension = kept(tableExtension, tableExtensionLength, kExtension),
                     .saveDateIsError = isTrue(*saveDateError),
                     .checkLayerPrefix = kept(checkLayerPrefix, checkLayerPrefixLength, kKept),
                     .checkLayerHeaderSource =
                         kept(checkLayerHeaderSource, checkLayerHeaderSourceLength, kKept),
                     .hostProjection = kept(hostProjection, hostProjectionLength, kKept),
                     .projectionIsError = isTrue(*projectionError)},
             .messageLayers = environmentVariable("NIVARO_MESSAGE_LAYERS"),
             .processor = environmentVariable("NIVARO_PROCESSOR")});
  });
}

void QVMOR_INITIALISE_S2(const std::int32_t* timeCodeSwitch, const double* flagDepthThreshold,
                         const std::int32_t*, const std::int32_t*, const std::int32_t* numData,
                         const std::int32_t* numCells) noexcept {
  call(__func__, [&] {
    theModule().dataset.setSettings({.timeCodeSwitch = *timeCodeSwitch,
                                     .flagDepthThreshold = *flagDepthThreshold,
                                     .numData = *numData,
                                     .numCells = *numCells});
  });
}

void QVMOR_SETUP_S2(const Logical* active, const std::int32_t* domain, const std::int32_t* n,
                    const std::int32_t* m, const std::int32_t*, const std::int32_t*,
                    std::int32_t* nextRealPosition, std::int32_t* nextIntegerPosition) noexcept {
  call(__func__, [&] {
    reserveFields(theModule(), {.domain = *domain, .active = isTrue(*active), .n = *n, .m = *m},
                  *nextRealPosition, *nextIntegerPosition);
  });
}

void QVMOR_RDINPF(const char* controlFile, const std::int32_t* domain,
                  const std::int32_t* lastDomain, const std::int32_t* n, const std::int32_t* m,
                  const std::int32_t* firstRowBound, const std::int32_t* secondRowBound,
                  const std::int32_t* firstObjectBound, const std::int32_t* secondObjectBound,
                  const std::int32_t* firstRowOffset, const std::int32_t* secondRowOffset,
                  const double* dx, const double* dy, const double* angle, const double* x0,
                  const double* y0, double* realWork, std::int32_t* integerWork, const void*,
                  const void*, const void*, Length controlFileLength) noexcept {
  call("the control file", [&] {
    readControlFile(theModule(), {.controlFile = name(controlFile, controlFileLength),
                                  .domain = *domain,
                                  .lastDomain = *lastDomain,
                                  .n = *n,
                                  .m = *m,
                                  .grid = {.frame = {.x0 = *x0,
                                                     .y0 = *y0,
                                                     .angle = *angle,
                                                     .dx = *dx,
                                                     .dy = *dy,
                                                     .firstBound = *firstObjectBound,
                                                     .secondBound = *secondObjectBound},
                                           .firstRowBound = *firstRowBound,
                                           .secondRowBound = *secondRowBound,
                                           .firstRowOffset = *firstRowOffset,
                                           .secondRowOffset = *secondRowOffset},
                                  .work = {.real = realWork, .integer = integerWork}});
  });
}

void QVMOR_INIT_2D_DOMAIN(const std::int32_t* domain) noexcept {
  call(__func__, [&] {
    requireDomain(theModule(), "QVMOR_INIT_2D_DOMAIN", *domain);
    theModule().parameters.load(*domain);
  });
}

void QVMORPHOLOGY(const Logical* smoothing, const Logical* initialisation, const Logical* skip,
                  const Logical* wet, const Logical* flow, const double* waterLevel,
                  const double* v2, const double* v1, double* zpts, double* zc, double* z2,
                  double* z1, const std::int32_t* n, const std::int32_t* m,
                  const std::int32_t* firstI, const std::int32_t* firstJ, const std::int32_t* lastI,
                  const std::int32_t* lastJ, const double* cellSize, const double* slumpDistance2,
                  const double* slumpDistance1, const void*, const double* timeStep,
                  const Logical* raiseSwitch, const double* raiseFactor, const void*, const void*,
                  const void*, const void*, const void*, const void*, const void*, double* realWork,
                  std::int32_t* integerWork, const void*, const void*, const void*,
                  const std::int32_t* domain) noexcept {
  call("the morphology step", [&] {
    runMorphology(theModule(), {.smoothing = isTrue(*smoothing),
                                .initialisation = isTrue(*initialisation),
                                .skip = isTrue(*skip),
                                .flow = {.wet = grid(wet, n, m),
                                         .flow = grid(flow, n, m),
                                         .waterLevel = grid(waterLevel, n, m),
                                         .v2 = grid(v2, n, m),
                                         .v1 = grid(v1, n, m)},
                                .bed = {.zpts = grid(zpts, n, m),
                                        .zc = grid(zc, n, m),
                                        .z2 = grid(z2, n, m),
                                        .z1 = grid(z1, n, m)},
                                .settings = {.cellSize = *cellSize,
                                             .slumpDistanceSecond = *slumpDistance2,
                                             .slumpDistanceFirst = *slumpDistance1,
                                             .timeStep = *timeStep,
                                             .raiseSideDepth = isTrue(*raiseSwitch),
                                             .raiseFactor = *raiseFactor},
                                .area = area(firstI, firstJ, lastI, lastJ),
                                .work = {.real = realWork, .integer = integerWork},
                                .domain = *domain});
  });
}

void QVMOR_WRSMSF_WRITE_HEADER(const char* title) noexcept {
  call("the dataset",
       [&] { theModule().dataset.writeHeader(name(title, SmsDataset::kNameLength)); });
}

void QVMOR_WRSMSF_DAT_FLAGS(const std::int32_t* domain, const std::int32_t* lastDomain,
                            const double* time, const double* timeOffset,
                            const std::int32_t* skippedCode, const std::int32_t* cellCode,
                            const Logical* cellActive, const double* depthTerm1,
                            const double* depthTerm2, const std::int32_t* nx, const void*,
                            const std::int32_t* firstI, const std::int32_t* firstJ,
                            const std::int32_t* lastI, const std::int32_t* lastJ) noexcept {
  call("the dataset", [&] {
    theModule().dataset.writeFlags({.domain = *domain, .lastDomain = *lastDomain},
                                   {.time = *time,
                                    .timeOffset = *timeOffset,
                                    .skippedCode = *skippedCode,
                                    .code = openGrid(cellCode, nx),
                                    .active = openGrid(cellActive, nx),
                                    .depthTerm1 = openGrid(depthTerm1, nx),
                                    .depthTerm2 = openGrid(depthTerm2, nx)},
                                   area(firstI, firstJ, lastI, lastJ));
  });
}

void QVMOR_WRSMSF_DAT_RESULTS(const std::int32_t* domain, const std::int32_t* lastDomain,
                              const std::int32_t* pointCounts, const void*,
                              const Logical* writeValues, const std::int32_t* nx, const void*,
                              const std::int32_t* firstI, const std::int32_t* firstJ,
                              const std::int32_t* lastI, const std::int32_t* lastJ,
                              const std::int32_t* pointI, const std::int32_t* pointJ, const void*,
                              double* realWork) noexcept {
  call("the dataset", [&] {
    requireDomain(theModule(), "QVMOR_WRSMSF_DAT_RESULTS", *domain);
    const std::size_t points = size(pointCounts[*domain - 1]);
    writeDatasetValues(theModule(), {.turn = {.domain = *domain, .lastDomain = *lastDomain},
                                     .writeValues = isTrue(*writeValues),
                                     .nx = *nx,
                                     .range = area(firstI, firstJ, lastI, lastJ),
                                     .pointI = {pointI, points},
                                     .pointJ = {pointJ, points},
                                     .realWork = realWork});
  });
}

void QVMOR_WRSMSF_CLOSE() noexcept {
  call("the dataset", [&] { theModule().dataset.writeEnd(); });
}

void QVMOR_WRMIFF(const std::int32_t* domain, const std::int32_t* lastDomain,
                  const Logical* writeValues, const std::int32_t* cellCode, const double* depth,
                  const std::int32_t* nx, const void*, const std::int32_t* firstI,
                  const std::int32_t* firstJ, const std::int32_t* lastI, const std::int32_t* lastJ,
                  const std::int32_t* firstOffset, const std::int32_t* secondOffset,
                  const double* x0, const double* y0, const double* stepA, const double* stepB,
                  double* realWork, std::int32_t* integerWork) noexcept {
  call("the check layer", [&] {
    writeCheckLayer(theModule(),
                    {.cells = {.domain = *domain,
                               .lastDomain = *lastDomain,
                               .code = openGrid(cellCode, nx),
                               .depth = openGrid(depth, nx),
                               .fields = {},
                               .range = area(firstI, firstJ, lastI, lastJ),
                               .firstOffset = *firstOffset,
                               .secondOffset = *secondOffset,
                               .frame = {.x0 = *x0, .y0 = *y0, .stepA = *stepA, .stepB = *stepB}},
                     .writeValues = isTrue(*writeValues),
                     .work = {.real = realWork, .integer = integerWork}});
  });
}

void EXITS() noexcept {
  call(__func__, [&] { theModule().termination.exits(); });
}
