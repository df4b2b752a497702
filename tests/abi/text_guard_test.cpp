// Every routine that takes texts, with texts of any length that end, or begin, at a page that nobody
// may touch: nothing but the texts is read, nothing but the results is written.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

#include "guarded_array.hpp"
#include "nivaro_morphology.h"

namespace nivaro {
namespace {

using test::Edge;
using test::GuardedArray;

// Repeated, or cut, to the length wanted.
const std::string kContents[] = {" ",
                                 "0",
                                 "x",
                                 "a = 1, 2.5e3, \"b, c\", 4",
                                 "1,2,,-3.5 4",
                                 "Read GIS Morphology D50 == \"..\\a_b\\.\\c_d.MIF\" ! why",
                                 "c:\\one\\..\\two//three__four.ext.mid",
                                 "\\\\share\\a\\..\\..\\..\\b",
                                 "20240229",
                                 "<<name>>=\t=",
                                 "'\"'''\"\"",
                                 std::string(1, '\0'),
                                 "\x80\xff\xfe z",
                                 "-.+eEdDqQ*/"};

constexpr nivaro_length kLengths[] = {INT64_MIN, -1,  0,   1,    2,    7,    20,
                                      21,        256, 257, 1001, 4096, 12000};

constexpr int32_t kNumbers[] = {INT32_MIN, -1, 0, 1, 2, 6, 20, 1000, INT32_MAX};

constexpr double kReals[] = {0.0,
                             -0.5,
                             1234.5678,
                             1e300,
                             -5e-324,
                             std::numeric_limits<double>::infinity(),
                             std::numeric_limits<double>::quiet_NaN()};

template <typename List>
auto pick(const List& list, std::size_t number) {
  return list[number % std::size(list)];
}

std::string textOf(const std::string& content, nivaro_length length) {
  std::string text;
  while (static_cast<nivaro_length>(text.size()) < length) text += content;
  return text.substr(0, static_cast<std::size_t>(std::max<nivaro_length>(length, 0)));
}

struct Case {
  std::size_t content, length;
  std::size_t stride;  // from the length of a text to that of the next
  Edge edge;
};

// The arguments of one call. Texts have contents and lengths of the lists in turn, so that results are
// shorter and longer than their values.
class Arguments {
 public:
  explicit Arguments(const Case& which) : case_(which) {}

  template <typename T>
  T next() {
    if constexpr (std::is_same_v<T, nivaro_length>) {
      return lengths_[measured_++];
    } else {
      return pointer(T{});
    }
  }

  bool nothingElseIsWritten() const {
    return std::all_of(texts_.begin(), texts_.end(),
                       [](const auto& text) { return text.isAloneWritten(); });
  }

 private:
  char* pointer(char*) {
    const std::size_t number = texts_.size();
    lengths_.push_back(pick(kLengths, case_.length + number * case_.stride));
    texts_.emplace_back(textOf(pick(kContents, case_.content + number * number), lengths_.back()),
                        case_.edge);
    return texts_.back().data();
  }
  const char* pointer(const char*) {
    const char* const text = pointer(static_cast<char*>(nullptr));
    texts_.back().makeReadOnly();
    return text;
  }
  const int32_t* pointer(const int32_t*) { return number(integers_, pick(kNumbers, case_.length)); }
  const int64_t* pointer(const int64_t*) { return number(longs_, INT64_MIN >> case_.length * 5); }
  const double* pointer(const double*) { return number(reals_, pick(kReals, case_.length)); }
  const float* pointer(const float*) {
    return number(floats_, static_cast<float>(pick(kReals, case_.length)));
  }
  int32_t* pointer(int32_t*) { return integers_.emplace_back(1, case_.edge).data(); }
  double* pointer(double*) { return reals_.emplace_back(1, case_.edge).data(); }

  template <typename T>
  const T* number(std::vector<GuardedArray<T>>& numbers, T value) {
    numbers.emplace_back(1, case_.edge, value).makeReadOnly();
    return numbers.back().data();
  }

  Case case_;
  std::vector<GuardedArray<char>> texts_;
  std::vector<nivaro_length> lengths_;
  std::size_t measured_ = 0;  // texts whose length has been handed over
  std::vector<GuardedArray<int32_t>> integers_;
  std::vector<GuardedArray<int64_t>> longs_;
  std::vector<GuardedArray<double>> reals_;
  std::vector<GuardedArray<float>> floats_;
};

// Lengths travel in the order of the texts wherever they stand, so the parameters tell it all.
template <auto routine>
struct Caller;
template <typename Result, typename... Parameters, Result (*routine)(Parameters...) noexcept>
struct Caller<routine> {
  static void call(Arguments& arguments) {
    const std::tuple<Parameters...> list{arguments.next<Parameters>()...};
    std::apply(routine, list);
  }
  // Its signature names the routine.
  static const char* name() { return __PRETTY_FUNCTION__; }
};

struct Routine {
  const char* (*name)();
  void (*call)(Arguments&);
};

template <auto... routine>
constexpr std::array<Routine, sizeof...(routine)> routines() {
  return {{{&Caller<routine>::name, &Caller<routine>::call}...}};
}

constexpr auto kRoutines =
    routines<COMMENTLINE, EOFLINEREAD, COMMANDLINE, CHECKLINE, FLAGEXISTS, FLAGEXISTSRET, ASAME,
             ASAMECS, READGIS, WRITEGIS, READROWCOL, READGISANY, READROWCOLANY, NUMBERLINE,
             POSITIVEINTEGERNUMBER, REMOVEQUOTES, REMOVESPACES, CSVCOLUMN, CSVVALUE,
             NUMBEROFSUBSTRINGS, SUBSTRING, NUMBEROFNUMBERS, NUMBEROFDAYS, CHECKREAL, CHECKINT4,
             AINTEGER, AINTEGER8, AINTEGERPREC0, AINTEGER8PREC0, AREAL, AREAL8, AREALD, AREALD4,
             AREALD8, AREALDPREC0, TRIMF, UPPERCASE, LOWERCASE, DOUBLEQUOTE, SPACETOUNDERSCORE,
             ALPHANUMERICONLY, CLEANATTRIBUTENAME, BLANK, SS256, LENSL, REPLACE, REPLACEALL,
             FILEEXT, FILEEXTKC, FILE___EXT, FILENAME, FILENAMEEXT, FILENAMENO_, FILENAMEPATH,
             FILENAMEPATHNO_, FILEFOLDERPATH, DOSPATH, CORRECTSLASH, CLEANPATH, REMOVEDOTDOT,
             ADDFOLDER, CHANGEDRIVE>();

// With exit code 1, where a text makes no sense.
constexpr auto kThatMayEndTheRun =
    routines<READLINE, EXTRACTINTEGER, EXTRACTREAL, EXTRACTSTRING, EXTRACTSTRINGREM>();

std::vector<Case> allCases() {
  std::vector<Case> cases;
  for (std::size_t content = 0; content < std::size(kContents); ++content)
    for (std::size_t length = 0; length < std::size(kLengths); ++length)
      for (const std::size_t stride : {0, 1, 5})
        for (const Edge edge : test::kEdges) cases.push_back({content, length, stride, edge});
  return cases;
}

// The cases of a routine run in a process of their own, which counts them where the test sees it.
// Where a case ended the run the next process goes on behind it.
class Runner {
 public:
  ~Runner() { munmap(started_, sizeof *started_); }

  void run(const Routine& routine, bool mayEndTheRun) {
    for (*started_ = 0; *started_ < cases_.size();) {
      const int status = statusOf(routine);
      const bool goesOn = WIFEXITED(status) &&
                          (WEXITSTATUS(status) == 0 || (mayEndTheRun && WEXITSTATUS(status) == 1));
      ASSERT_TRUE(goesOn) << routine.name() << ": status " << status << " in case " << *started_;
    }
  }

 private:
  int statusOf(const Routine& routine) {
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) runChild(routine);
    int status = -1;
    waitpid(child, &status, 0);
    return status;
  }

  [[noreturn]] void runChild(const Routine& routine) {
    const int nothing = open("/dev/null", O_RDWR);
    dup2(nothing, STDIN_FILENO);
    dup2(nothing, STDOUT_FILENO);
    while (*started_ < cases_.size()) {
      Arguments arguments(cases_[(*started_)++]);
      routine.call(arguments);
      if (!arguments.nothingElseIsWritten()) _exit(kWroteBeside);
    }
    std::exit(0);
  }

  static constexpr int kWroteBeside = 3;

  std::vector<Case> cases_ = allCases();
  std::size_t* started_ = static_cast<std::size_t*>(mmap(
      nullptr, sizeof(std::size_t), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
};

TEST(TextGuard, NothingButTheTextsIsTouched) {
  Runner runner;
  for (const Routine& routine : kRoutines) runner.run(routine, false);
  for (const Routine& routine : kThatMayEndTheRun) runner.run(routine, true);
}

}  // namespace
}  // namespace nivaro
