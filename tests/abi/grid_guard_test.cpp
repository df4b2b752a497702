// A host with as many domains as there may be, all its arrays exactly as long as they have to be,
// between pages that nobody may touch.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <numbers>
#include <string>
#include <vector>

#include "nivaro_morphology.h"
#include "support/guarded_array.hpp"

namespace nivaro {
namespace {

using test::Edge;
using test::GuardedArray;

constexpr int32_t kDomains = 100;
constexpr int32_t kZero = 0, kTwo = 2;
constexpr nivaro_logical kYes = -1, kNo = 0;

nivaro_length length(const std::string& text) {
  return static_cast<nivaro_length>(text.size());
}

template <typename T>
GuardedArray<T> readOnly(std::size_t count, Edge edge, T value) {
  GuardedArray<T> array(count, edge, value);
  array.makeReadOnly();
  return array;
}

// One domain of the host: small ones, one that is wider than a strip, some without morphology.
struct Domain {
  Domain(int32_t number_, Edge edge)
      : number(number_),
        n(number == 50 ? 515 : 3 + number % 7),
        m(3 + number % 5),
        active(number % 9 == 0 ? kNo : kYes),
        size(static_cast<std::size_t>(n) * static_cast<std::size_t>(m)),
        flags(readOnly<nivaro_logical>(size, edge, kYes)),
        level(readOnly(size, edge, 0.0)),
        velocity(readOnly(size, edge, 1.0)),
        zpts(size, edge, 2.0),
        zc(size, edge, 2.0),
        z2(size, edge, 2.0),
        z1(size, edge, 2.0),
        pointI(0, edge),
        pointJ(0, edge) {
    // Every corner that has four cells.
    std::vector<int32_t> i, j;
    for (int32_t b = 1; b < m; ++b)
      for (int32_t a = 1; a < n; ++a) i.push_back(a), j.push_back(b);
    pointI = GuardedArray<int32_t>(i, edge);
    pointJ = GuardedArray<int32_t>(j, edge);
    for (std::size_t k = 0; k < size; ++k) zc.all()[k] += 0.4 * static_cast<double>(k % 3);
  }

  bool isAloneWritten() const {
    return zpts.isAloneWritten() && zc.isAloneWritten() && z2.isAloneWritten() &&
           z1.isAloneWritten();
  }

  int32_t number, n, m;
  nivaro_logical active;
  std::size_t size;
  GuardedArray<nivaro_logical> flags;
  GuardedArray<double> level, velocity, zpts, zc, z2, z1;
  GuardedArray<int32_t> pointI, pointJ;
};

class Host {
 public:
  Host(Edge edge, const std::filesystem::path& folder)
      : edge_(edge), folder_(folder), realWork_(0, edge), integerWork_(0, edge) {}

  void run() {
    startUp();
    reserve();
    for (Domain& domain : domains_) readControlFile(domain);
    for (Domain& domain : domains_) writeCheckLayer(domain);
    for (const nivaro_logical& smoothing : {kYes, kNo, kNo})
      for (Domain& domain : domains_) compute(domain, smoothing);
    writeRecord();
    QVMOR_WRSMSF_CLOSE();
  }

  bool isAloneWritten() const {
    for (const Domain& domain : domains_)
      if (!domain.isAloneWritten()) return false;
    return realWork_.isAloneWritten() && integerWork_.isAloneWritten();
  }

 private:
  std::string write(const std::string& name, const std::string& content) const {
    std::ofstream(folder_ / name, std::ios::binary) << content;
    return (folder_ / name).string();
  }

  // Layers and tables reach beyond every grid.
  void startUp() {
    write("wide.mif",
          "Version 300\nColumns 1\n  v Float\nData\n\n"
          "Region 1\n 4\n-99 -99\n9999 -99\n9999 9999\n-99 -99\n"
          "Region 1\n 5\n-9e99 -9e99\n9e99 -9e99\n9e99 9e99\n-9e99 9e99\n-9e99 -9e99\n"
          "Line -900 -900 900 900\nLine -3000 1 3000 2\nPoint 1e300 -1e300\n"
          "Pline 3\n-5 3.5\n999 3.5\n999 -999\nPoint 0 0\nPoint -0.1 -0.1\n");
    write("wide.mid", "0.0002\n0.0002\n0.0003\n0.0003\n0.0003\n0.0003\n0.0003\n0.0003\n");
    std::string rows;
    for (int32_t i : {INT32_MIN, -1, 0, 1, 2, 3, 9, 515, 600, INT32_MAX})
      for (int32_t j : {INT32_MIN, -1, 0, 1, 2, 3, 7, 8, 600, INT32_MAX})
        rows += std::to_string(i) + "," + std::to_string(j) + ",0.0004\n";
    write("rows.csv", rows);
    control_ = write("run.mcf",
                     "Morphology Fall Velocity == 0.02\n"
                     "Morphology Current Related Roughness == 0.05\n"
                     "Morphology Reference Level == 0.05\n"
                     "Morphology Mixing Layer Thickness == 0.1\n"
                     "Set Morphology D90 == 0.0003\n"
                     "Read MI Morphology D50 == wide\nRead MID Morphology D50 == rows.csv\n");
    const std::string prefix = (folder_ / "run").string(),
                      projection = "CoordSys NonEarth Units \"m\"";
    QVMOR_INITIALISE_S1("guards", prefix.data(), prefix.data(), &kNo, ".tab", &kNo, prefix.data(),
                        projection.data(), "", &kNo, 6, length(prefix), length(prefix), 4,
                        length(prefix), length(projection), 0);
  }

  void reserve() {
    int32_t nextReal = 1, nextInteger = 1;
    for (int32_t number = 1; number <= kDomains; ++number) {
      const Domain& d = domains_.emplace_back(number, edge_);
      QVMOR_SETUP_S2(&d.active, &d.number, &d.n, &d.m, &kZero, &kZero, &nextReal, &nextInteger);
    }
    realWork_ = GuardedArray<double>(static_cast<std::size_t>(nextReal - 1), edge_);
    integerWork_ = GuardedArray<int32_t>(static_cast<std::size_t>(nextInteger - 1), edge_);
  }

  void readControlFile(const Domain& d) {
    const GuardedArray<char> control(control_, edge_);
    const int32_t firstBound = d.n - 2, secondBound = d.m - 2;
    const double cell = 1.0, angle = d.number % 2 == 0 ? 0.0 : std::numbers::pi / 7;
    const double origin = 0.0;
    QVMOR_RDINPF(control.data(), &d.number, &kDomains, &d.n, &d.m, &d.n, &d.m, &firstBound,
                 &secondBound, &kTwo, &kTwo, &cell, &cell, &angle, &origin, &origin,
                 realWork_.data(), integerWork_.data(), nullptr, nullptr, nullptr,
                 length(control_));
  }

  void writeCheckLayer(const Domain& d) {
    const int32_t one = 1;
    const double origin = 0.0, step = 1.0;
    QVMOR_WRMIFF(&d.number, &kDomains, &kYes, d.flags.data(), d.zc.data(), &d.n, nullptr, &one,
                 &one, &d.n, &d.m, &kTwo, &kTwo, &origin, &origin, &step, &origin, realWork_.data(),
                 integerWork_.data());
  }

  // The area touches the free cells.
  void compute(const Domain& d, const nivaro_logical& smoothing) {
    const int32_t lastI = d.n - 1, lastJ = d.m - 1;
    const double cell = 1.0, timeStep = 60.0, factor = 0.5;
    QVMOR_INIT_2D_DOMAIN(&d.number);
    QVMORPHOLOGY(&smoothing, &kNo, &kNo, d.flags.data(), d.flags.data(), d.level.data(),
                 d.velocity.data(), d.velocity.data(), d.zpts.data(), d.zc.data(), d.z2.data(),
                 d.z1.data(), &d.n, &d.m, &kTwo, &kTwo, &lastI, &lastJ, &cell, &cell, &cell,
                 nullptr, &timeStep, &kYes, &factor, nullptr, nullptr, nullptr, nullptr, nullptr,
                 nullptr, nullptr, realWork_.data(), integerWork_.data(), nullptr, nullptr, nullptr,
                 &d.number);
  }

  void writeRecord() {
    std::vector<int32_t> points;
    int32_t values = 0, cells = 0;
    for (const Domain& d : domains_) {
      values += points.emplace_back(static_cast<int32_t>(d.pointI.size()));
      cells += d.n * d.m;
    }
    const double threshold = 0.1, time = 1.0;
    QVMOR_INITIALISE_S2(&kZero, &threshold, &kZero, &kZero, &values, &cells);
    // Exactly the characters of the name, or fewer and a code of 0.
    QVMOR_WRSMSF_WRITE_HEADER(GuardedArray<char>(std::string(35, 'x'), edge_).data());
    for (const Domain& d : domains_) {
      const int32_t one = 1, skipped = 0;
      QVMOR_WRSMSF_DAT_FLAGS(&d.number, &kDomains, &time, &time, &skipped, d.flags.data(),
                             d.flags.data(), d.zc.data(), d.level.data(), &d.n, nullptr, &one, &one,
                             &d.n, &d.m);
    }
    const GuardedArray<int32_t> counts(points, edge_);
    for (const Domain& d : domains_) {
      const int32_t lastI = d.n - 1, lastJ = d.m - 1;
      QVMOR_WRSMSF_DAT_RESULTS(&d.number, &kDomains, counts.data(), nullptr, &kYes, &d.n, nullptr,
                               &kTwo, &kTwo, &lastI, &lastJ, d.pointI.data(), d.pointJ.data(),
                               nullptr, realWork_.data());
    }
  }

  Edge edge_;
  std::filesystem::path folder_;
  std::string control_;
  std::vector<Domain> domains_;
  GuardedArray<double> realWork_;
  GuardedArray<int32_t> integerWork_;
};

constexpr int kWholeRun = 0, kWroteBeside = 3;

int runHost(Edge edge, const std::filesystem::path& folder) {
  const int nothing = open("/dev/null", O_RDWR);
  dup2(nothing, STDIN_FILENO);
  dup2(nothing, STDOUT_FILENO);
  Host host(edge, folder);
  host.run();
  return host.isAloneWritten() ? kWholeRun : kWroteBeside;
}

TEST(GridGuard, HundredDomainsStayWithinTheirArrays) {
  std::string name = testing::TempDir() + "nivaro_XXXXXX";
  const std::filesystem::path folder = mkdtemp(name.data());
  for (const Edge edge : test::kEdges)
    EXPECT_EXIT(std::exit(runHost(edge, folder)), testing::ExitedWithCode(kWholeRun), "");
  std::filesystem::remove_all(folder);
}

}  // namespace
}  // namespace nivaro
