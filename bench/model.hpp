// A module with one domain, and the host's arrays around it: what is timed of reading and writing.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "interface/module.hpp"
#include "platform/console.hpp"
#include "platform/process.hpp"

namespace nivaro::bench {

class QuietConsole final : public Console {
 public:
  void line(std::string_view) override {}
  void open(std::string_view) override {}
  bool readLine(std::string&) override { return false; }
};

class Model {
 public:
  // A grid of `cells` x `cells`; files begin with `prefix`.
  Model(int cells, std::string prefix, Console& console);

  // A new module, started with its dataset announced, and the domain's fields reserved.
  void start();
  void readControlFile(const std::string& path);

  // For what writes: bed, water and bed change of every cell, before the start.
  enum class PointOrder { AlongFirstIndex, AlongSecondIndex };
  void fillCells(PointOrder order);

  void writeTimeRecord();
  std::string datasetPath() const { return prefix_ + "_morDH.dat"; }

  void writeCheckLayer();

 private:
  std::size_t size() const;
  void listPoints(PointOrder order);
  Area cellRange() const;
  WorkArrays work() { return {realWork_.get(), integerWork_.get()}; }

  int cells_;
  std::int32_t n_;  // of the arrays, the rim included
  std::string prefix_;
  Console& console_;
  RealProcess process_;
  std::unique_ptr<MessageRecord> record_;
  std::optional<Module> module_;
  // Only what is used of them costs memory.
  std::unique_ptr<double[]> realWork_;
  std::unique_ptr<std::int32_t[]> integerWork_;
  std::vector<std::int32_t> code_;
  std::vector<Logical> active_;
  std::vector<double> level_, depth_;
  std::vector<std::int32_t> pointI_, pointJ_;
};

}  // namespace nivaro::bench
