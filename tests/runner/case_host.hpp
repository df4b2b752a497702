// The host of a case: what it calls, the values that it sets and sees, and the arrays that it owns.
//
// A line is "name = value", or a call: a word and what the call needs. A host that says nothing else has
// a domain 1 of 4 x 3 cells of 10 m from (100, 200) on, in fields of 8 x 7; its log is "run.mlf".
#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "fuzz/fuzz_input.hpp"
#include "interface/entry_points.hpp"
#include "locked_file.hpp"

namespace nivaro::test {

// A text with \n, \r, \t, \0 and \xNN for what no line of a case can hold.
std::string unescaped(std::string_view text);

// Its files tell what the module wrote: no other hand goes there.
bool isLayerOfMessages(std::string_view name);

// When the files of a case were saved: all at once.
std::filesystem::file_time_type caseTime();

// Numbers and words as hosts and control files set them.
using Value = std::variant<double*, std::int32_t*, bool*, std::string*, std::span<char>>;
std::string textOf(const Value& value);
std::string textOf(double number);

// A field of the domain, and what its cells hold where nothing has set them.
struct Field {
  std::variant<Grid<double>, Grid<std::int32_t>> cells;
  double otherwise;
};

class CaseHost : public fuzz::FuzzModule {
 public:
  // The calls of a mutated case stay within what a host may do.
  explicit CaseHost(bool isMutated);

  // Throws ProcessEnded where the call ends the run.
  void call(std::string_view line);
  std::optional<Value> value(const std::string& name) const;
  std::optional<Field> field(std::string_view name);

  // Promises that hold at any time, whatever was called.
  void requireWhole() const;
  // What the layers and the table of messages hold once the host is done.
  void requireSoundMessages(const TempFolder& folder);

  std::vector<double> real;  // work arrays
  std::vector<std::int32_t> integer;
  DatasetSettings dataset;
  bool readsOnly = true;  // files are read by the module alone, line by line

 private:
  struct Domain {
    std::int32_t n = 0;
    std::int32_t m = 0;
    bool active = false;
  };

  void setUp();
  void start();
  void set(const Value& value, std::string_view text);
  void act(std::string_view line);  // of the person at the console
  void reserve(std::int32_t number, bool active);
  void read(std::string_view name);
  void requireOnlyTheGridWasSet(const Domain& size) const;
  void morphology(std::string_view what);
  void writeCheckLayer(std::int32_t last, bool values);
  void writeDataset(std::string_view what, fuzz::Numbers& words);
  void message(std::string_view kind, fuzz::Numbers& words);
  void open(std::string_view mode, std::int32_t recordLength, std::string_view text);
  void close(std::int32_t unit);
  void use(std::string_view word, fuzz::Numbers& words);
  SedimentFields fields() const;
  WorkArrays work() const;
  std::string fileName(std::string_view text) const;
  template <typename T>
  Grid<T> grid(std::vector<T>& cells) const;

  const bool isMutated_;
  bool isSetUp_ = false;
  bool hasStepped_ = false;
  bool unitsAreOwn_ = true;  // none was written or closed by its number
  bool tableIsOwn_ = true;   // the message table was opened first, and anew
  bool hasOpened_ = false;
  std::int32_t base_ = 2000;  // of the unit numbers
  std::int32_t domain_ = 1;
  std::int32_t lastDomain_ = 3;
  std::int32_t n_ = 8;
  std::int32_t m_ = 7;
  std::map<std::int32_t, Domain> domains_;
  GridDescription grid_{
      .frame =
          {.x0 = 100.0, .y0 = 200.0, .dx = 10.0, .dy = 10.0, .firstBound = 4, .secondBound = 3},
      .firstRowBound = 6,
      .secondRowBound = 5,
      .firstRowOffset = 2,
      .secondRowOffset = 2};
  CellFrame cellFrame_{.x0 = 1000.0, .y0 = 2000.0, .stepA = 8.0, .stepB = 6.0};
  std::int32_t firstOffset_ = 1;
  std::int32_t secondOffset_ = 8;
  std::string simulation_ = "Run_01";
  std::string prefix_ = "run";
  std::string messageLayers_, processor_;
  std::int32_t unit_ = 0;
  std::string record_;  // last read
  std::map<std::string, std::vector<double>, std::less<>> bed_;
  std::vector<std::int32_t> code_;
  std::vector<Logical> wet_;
  std::vector<Logical> active_;
  CellFlags flags_;
  std::string points_;  // of the dataset's values: two indices each
  std::optional<LockedFile> locked_;
  std::map<std::string, Value, std::less<>> values_;
};

}  // namespace nivaro::test
