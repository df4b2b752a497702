// Runs the table of calls through the built library. Rows that print or end the run are called in a
// process of their own: this program with their number.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>

#include "exports/calls.hpp"
#include "nivaro_morphology.h"
#include "programs.hpp"

namespace nivaro::test {
namespace {

std::string program;
bool isOver = false;

// A routine that ends the run before its time does so with code 0, as if all were well.
void failWhereACallEndedTheRun() {
  if (isOver) return;
  std::cerr << "A call ended the run" << std::endl;
  std::_Exit(1);
}

struct NumberedRow {
  int number;
  Row row;
};

std::vector<NumberedRow> table() {
  std::vector<NumberedRow> rows;
  std::ifstream file(NIVARO_CALLS, std::ios::binary);
  EXPECT_TRUE(file.good()) << NIVARO_CALLS;
  std::string line;
  for (int number = 1; std::getline(file, line); ++number) {
    if (line.empty() || line.starts_with('#') || line.find(": ") < line.find('(')) continue;
    const std::optional<Row> row = rowOf(line);
    if (row)
      rows.push_back({number, *row});
    else
      ADD_FAILURE() << "Line " << number << " is no row: " << line;
  }
  return rows;
}

template <typename Action>
void onEachCall(Action action) {
  for (const auto& [number, row] : table())
    for (const std::string& name : row.names) {
      SCOPED_TRACE("Row " + std::to_string(number) + ", " + name);
      const Routine* const routine = routineOf(name);
      ASSERT_NE(routine, nullptr) << "is not exported";
      action(number, row, *routine);
    }
}

TEST(Calls, GiveTheResultsOfTheTable) {
  onEachCall([](int, const Row& row, const Routine& routine) {
    EXPECT_EQ(row.endsRun ? "" : faultsOf(routine, row), "");
  });
}

TEST(Calls, PrintAndEndTheRunAsTheTableSays) {
  onEachCall([](int number, const Row& row, const Routine& routine) {
    if (!row.printed) return;
    const auto said = gis::test::run("\"" + program + "\" --row " + std::to_string(number) + " " +
                                     routine.name + " <" + gis::test::kNoInput);
    EXPECT_NE(said.text.find(*row.printed), std::string::npos) << said.text;
    EXPECT_EQ(said.text.find("returned") == std::string::npos, row.endsRun) << said.text;
    EXPECT_TRUE(!row.printed->empty() || said.text.starts_with(row.endsRun ? "" : "returned"))
        << said.text;
  });
}

// The texts of every row go to every routine.
TEST(Calls, TouchNothingButTheirTexts) {
  DMESSAGES.suppression_flag = -1;
  std::vector<Value> texts, numbers;
  for (const auto& [number, row] : table())
    for (const Argument& argument : row.arguments)
      if (argument.before && argument.before->isText) {
        const auto isSame = [&](const Value& text) { return text.text == argument.before->text; };
        if (std::none_of(texts.begin(), texts.end(), isSame)) texts.push_back(*argument.before);
      } else if (argument.before) {
        numbers.push_back(*argument.before);
      }
  for (const Routine& routine : routines()) {
    if (!routine.hasTexts() || routine.name.starts_with("QVMOR") ||
        routine.name.starts_with("EXTRACT") || routine.name == "READLINE")
      continue;  // may end the run
    for (std::size_t first = 0; first < texts.size(); ++first) {
      Row row;
      for (const char kind : routine.parameters) {
        if (kind == 'R') continue;
        const std::vector<Value>& pool = kind == 't' || kind == 'T' ? texts : numbers;
        row.arguments.push_back(
            {pool[(first + row.arguments.size() * row.arguments.size()) % pool.size()], {}});
      }
      ASSERT_EQ(lawsBroken(routine, row), "") << routine.name << ' ' << texts[first].text;
    }
  }
}

int callRow(int number, const char* name) {
  onEachCall([&](int at, const Row& row, const Routine& routine) {
    if (at == number && routine.name == name) routine.call(row, {});
  });
  std::cout << "returned" << std::endl;
  return 0;
}

}  // namespace
}  // namespace nivaro::test

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (argc == 4) return nivaro::test::callRow(std::atoi(argv[2]), argv[3]);
  nivaro::test::program = argv[0];
  std::atexit(nivaro::test::failWhereACallEndedTheRun);
  const int result = RUN_ALL_TESTS();
  nivaro::test::isOver = true;
  return result;
}
