// The table of calls: its rows, and how a row calls the exported routine that it names. A row is
//
//   NAME(argument, argument) = result        # why
//
// with several names where they do the same. A text stands between backticks; {E9} in it is the byte
// of that code and {61*300} a row of them. Numbers, yes and no stand as they are, arrays as [1 2 3];
// `lower` is the text in front once more, in lower case. An argument that the routine changes is
// before -> after, one that it only gives -> after. ~0.3 is near 0.3, everything else is exact. What
// the screen shows stands behind the result, or in its place where the routine ends the run:
//
//   NAME(argument) = result prints `text`           an empty text: nothing at all
//   NAME(argument) ends `text`
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "support/guarded_array.hpp"

namespace nivaro::test {

// A text, or the words of a number or an array.
struct Value {
  bool isText = false;
  std::string text;
  std::vector<std::string> words;
};

struct Argument {
  std::optional<Value> before, after;
};

struct Row {
  std::vector<std::string> names;
  std::vector<Argument> arguments;
  std::optional<Value> result;
  std::optional<std::string> printed;
  bool endsRun = false;
};

// Nothing where the line is no row.
std::optional<Row> rowOf(std::string_view line);

// How the buffers of a call lie.
struct Layout {
  Edge edge = Edge::Back;
  int room = 0;            // of texts that are only given: more, or less, than what is expected
  std::size_t blanks = 0;  // behind the texts that are handed over
  int resultIn = -1;       // the argument whose buffer takes the text result; none below 0
};

struct Outcome {
  std::vector<std::string> given;  // what the routine wrote and returned
  std::string faults;              // what is not as the row says, or lies beside the buffers
};

// What the parameters of a routine are, a letter each but for the lengths: a text result R, a text
// that is read t or changed T, numbers that are read n or changed N.
struct Routine {
  std::string name, parameters;
  std::function<Outcome(const Row&, const Layout&)> call;

  bool hasTexts() const { return parameters.find_first_of("RtT") != std::string::npos; }
};

// Every exported routine.
const std::vector<Routine>& routines();
const Routine* routineOf(std::string_view name);

// Calls the routine in all ways that lead to the result of the row; what is not as it says.
std::string faultsOf(const Routine& routine, const Row& row);

// Whatever the texts are: what a routine gives does not depend on where and how long the buffers of
// its results are. What does, and what is touched beside buffers.
std::string lawsBroken(const Routine& routine, const Row& row);

}  // namespace nivaro::test
