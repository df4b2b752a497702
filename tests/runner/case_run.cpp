#include "runner/case_run.hpp"

#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <sstream>

#include "control/cell_table.hpp"
#include "platform/list_input.hpp"
#include "runner/case_host.hpp"
#include "spatial/real_fields.hpp"
#include "this_system.hpp"

namespace nivaro::test {

using fuzz::require;

namespace {

constexpr std::string_view kAnything = "[...]";
constexpr std::string_view kLayerHeader =
    "Version 300\nDelimiter \",\"\nColumns 1\n  v Float\nData\n\n";

// "{3 text}" three times, as long as that is no flood.
std::string expanded(std::string_view text) {
  constexpr std::size_t kMost = 200000;
  std::string result;
  for (std::size_t at = 0; at < text.size() && result.size() < kMost; ++at) {
    std::size_t count = 0;
    const char* const first = text.data() + at + 1;
    const char* const behind = std::from_chars(first, text.data() + text.size(), count).ptr;
    const std::size_t end = text.find('}', at);
    const bool repeats = text[at] == '{' && count > 0 && end != text.npos && *behind == ' ';
    if (!repeats) {
      result += text[at];
      continue;
    }
    const auto start = static_cast<std::size_t>(behind - text.data()) + 1;
    for (; count > 0 && result.size() < kMost; --count) result += text.substr(start, end - start);
    at = end;
  }
  return result;
}

std::string withCarriageReturns(std::string_view text) {
  std::string result;
  for (const char c : text) {
    if (c == '\n') result += '\r';
    result += c;
  }
  return result;
}

// "[...]" stands for any text, on a line of its own for any lines.
bool matches(std::string_view actual, std::string_view expected) {
  const std::size_t gap = expected.find(kAnything);
  if (gap == expected.npos) return actual == expected;
  if (!actual.starts_with(expected.substr(0, gap))) return false;
  std::string_view rest = expected.substr(gap + kAnything.size());
  const bool isLine = (gap == 0 || expected[gap - 1] == '\n') && rest.starts_with('\n');
  if (isLine) rest.remove_prefix(1);
  for (std::size_t at = gap; at <= actual.size(); ++at)
    if ((!isLine || at == 0 || actual[at - 1] == '\n') && matches(actual.substr(at), rest))
      return true;
  return false;
}

// The fast ways of reading numbers give what the general one gives.
void requireSameByListInput(std::string_view line) {
  constexpr std::int32_t kNone = std::numeric_limits<std::int32_t>::min();
  const double noReal = std::numeric_limits<double>::quiet_NaN();
  CellRow general{.first = kNone, .second = kNone, .value = noReal};
  const bool isRow =
      ListInput(line).readAll(general.first, general.second, general.value) == ReadStatus::Ok &&
      general.first != kNone && general.second != kNone && std::isfinite(general.value);
  CellRow fast;
  if (std::min(general.first, general.second) == kNone) return;  // "no index", also when it is read
  require(readCellRow(line, fast) == isRow, "a row is a row by list-directed input");
  if (isRow)
    require(fast.first == general.first && fast.second == general.second &&
                fuzz::sameBits(fast.value, general.value),
            "a row has the numbers of list-directed input");
}

void requireSameRealsByListInput(std::string_view line) {
  double x = std::numeric_limits<double>::quiet_NaN();
  double y = x;
  const bool arePoint =
      ListInput(line).readAll(x, y) == ReadStatus::Ok && std::isfinite(x) && std::isfinite(y);
  double point[2] = {0.0, 0.0};
  require(readReals(line, point) == arePoint, "reals are read by list-directed input");
  if (arePoint)
    require(fuzz::sameBits(point[0], x) && fuzz::sameBits(point[1], y),
            "reals are those of list-directed input");
}

// Forward, the records of a file are its lines; backward, the same in the other order.
void requireSameBothWays(std::string_view bytes, const std::string& name) {
  if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
  const std::vector<std::string_view> lines = fuzz::linesOf(bytes);
  const auto isLine = [](std::string_view record, std::string_view line) {
    return record == line || (line.ends_with('\r') && record == line.substr(0, line.size() - 1));
  };
  Unit file;
  if (!file.open(name, {}).empty()) return;
  std::string_view record;
  for (const std::string_view line : lines)
    require(file.readRecord(record) == ReadStatus::Ok && isLine(record, line), "records are lines");
  require(file.readRecord(record) == ReadStatus::End, "no record behind the last line");
  file.backspace();
  constexpr std::size_t kMostStepsBack = 200;
  const std::size_t first = lines.size() - std::min(lines.size(), kMostStepsBack);
  for (std::size_t i = lines.size(); i-- > first;) {
    file.backspace();
    require(file.readRecord(record) == ReadStatus::Ok && isLine(record, lines[i]),
            "a record stepped back over is read again");
    file.backspace();
  }
}

// The cards of a dataset, a line each; behind that of a time the flags and the values.
std::string cardsOf(std::string_view bytes, const DatasetSettings& sizes) {
  std::string text;
  const auto take = [&](auto number) {
    const std::size_t size = std::min(sizeof number, bytes.size());
    std::memcpy(&number, bytes.data(), size);
    bytes.remove_prefix(size);
    return textOf(static_cast<double>(number));
  };
  while (!bytes.empty()) {
    const std::string card = take(std::int32_t{});
    text += card;
    if (card == "190") {
      text += ' ' + std::string(bytes.substr(0, 40)) + '|';
      bytes.remove_prefix(std::min<std::size_t>(40, bytes.size()));
    } else if (card == "200") {
      text += ' ' + take(std::int8_t{});
      text += ' ' + take(float{}) + "\nflags";
      for (int k = 0; k < sizes.numCells; ++k) text += ' ' + take(std::int8_t{});
      text += "\nvalues";
      for (int k = 0; k < sizes.numData; ++k) text += ' ' + take(float{});
    } else if (card != "3000" && card != "130" && card != "210") {
      text += ' ' + take(std::int32_t{});
    }
    text += '\n';
  }
  return text;
}

// Once through a case.
class Playing {
 public:
  Playing(const fuzz::Folder& folder, CaseKind kind, bool compares, bool withCarriageReturn)
      : folder_(folder),
        isMutated_(kind == CaseKind::Mutated),
        compares_(compares),
        withCarriageReturn_(withCarriageReturn) {}

  void play(const fuzz::Archive& sections) {
    for (const fuzz::Section& section : sections.sections()) {
      if (section.name == (kLetterCaseCounts ? "only windows" : "only posix")) return;
      play(section.name,
           isMutated_ ? fuzz::confined(expanded(section.text)) : expanded(section.text));
    }
    finishHost();
  }

  std::vector<std::string> faults;
  std::string shown;  // on the screen, of all hosts
  std::vector<double> real;
  std::vector<std::int32_t> integer;
  bool readsOnly = true;

 private:
  void play(const std::string& name, const std::string& text) {
    fuzz::Numbers words(name);
    const std::string_view kind = words.word();
    if (kind == "expect") return compares_ ? expect(words.rest(), text) : void();
    if (kind == "answers") return host().answerWith(text);
    if (kind == "host") return call(text);
    if (kind == "given") return give(words.rest(), text);
    if (kind == "control") {
      write("run.mcf", text);
      return call("read");
    }
    if (kind == "objects")
      return write(std::string(words.rest()) + ".mif", std::string(kLayerHeader) + text);
    if (kind == "bytes") {
      std::string bytes = text;
      std::erase(bytes, '\n');
      return put(std::string(words.rest()),
                 isMutated_ ? fuzz::confined(unescaped(bytes)) : unescaped(bytes));
    }
    write(name, text);
  }

  void write(const std::string& name, const std::string& text) {
    put(name, withCarriageReturn_ ? withCarriageReturns(text) : text);
  }

  void put(const std::string& name, const std::string& content) {
    if (isMutated_ && (!fuzz::isFileName(name) || isLayerOfMessages(name))) return;
    std::error_code ignored;
    std::filesystem::remove(name, ignored);  // a locked one too
    folder_.write(name, content);
    std::filesystem::last_write_time(name, caseTime(), ignored);
    requireSameBothWays(content, name);
    for (const std::string_view line : fuzz::linesOf(content)) {
      requireSameByListInput(line);
      requireSameRealsByListInput(line);
    }
  }

  // A host that has ended is started again, in the same folder.
  CaseHost& host() {
    if (!host_ || hasEnded_) {
      finishHost();
      host_ = std::make_unique<CaseHost>(isMutated_);
      logSeen_ = 0;
      hasEnded_ = false;
    }
    return *host_;
  }

  void finishHost() {
    if (!host_) return;
    if (hasEnded_ && !endWasMeant_) fault("screen", host_->console.output, "(the run goes on)");
    if (!host_->console.answers.empty())
      fault("answers", host_->console.answers.front(), "(none left)");
    shown += host_->console.output;
    real = host_->real;
    integer = host_->integer;
    readsOnly = readsOnly && host_->readsOnly;
    host_->requireSoundMessages(folder_);
    host_.reset();
  }

  void call(std::string_view lines) {
    CaseHost& called = host();
    endWasMeant_ = false;
    try {
      for (const std::string_view line : fuzz::linesOf(lines)) called.call(line);
    } catch (const ProcessEnded& ended) {
      hasEnded_ = true;
      exitCode_ = ended.exitCode;
    }
    called.requireWhole();
  }

  // A map: a line for each first index, the highest on top; "." for what a cell holds otherwise.
  void give(std::string_view name, const std::string& text) {
    const std::optional<Field> field = host().field(name);
    if (!field) return fault(name, "(no such field)", text);
    const std::vector<std::string_view> lines = fuzz::linesOf(text);
    std::visit(
        [&](const auto& cells) {
          for (int i = cells.n(), k = 0; i >= 1 && k < std::ssize(lines); --i, ++k) {
            std::istringstream line{std::string(lines[static_cast<std::size_t>(k)])};
            std::string word;
            for (int j = 1; j <= cells.m() && line >> word; ++j) set(cells(i, j), word);
          }
        },
        field->cells);
  }

  template <typename T>
  static void set(T& cell, const std::string& word) {
    if (word != ".") std::from_chars(word.data(), word.data() + word.size(), cell);
  }

  template <typename T>
  static std::string map(const Grid<T>& cells, double otherwise) {
    std::string text;
    for (int i = cells.n(); i >= 1; --i)
      for (int j = 1; j <= cells.m(); ++j) {
        const auto cell = static_cast<double>(cells(i, j));
        text += (cell == otherwise ? "." : textOf(cell)) + (j == cells.m() ? '\n' : ' ');
      }
    return text;
  }

  void expect(std::string_view what, const std::string& meant) {
    if (what == "screen") return expectScreen(meant);
    if (what == "log") {
      const std::string log = folder_.read("run.mlf");
      return compare(what, log.substr(std::min(std::exchange(logSeen_, log.size()), log.size())),
                     meant);
    }
    if (what == "values") return expectValues(meant);
    if (what == "answers" && host_) {
      std::string left;
      for (const std::string& answer : std::exchange(host_->console.answers, {}))
        left += answer + '\n';
      return compare(what, left, meant);
    }
    if (what.starts_with("no "))
      return compare(what, std::filesystem::exists(what.substr(3)) ? "(it is there)\n" : "", meant);
    if (what.starts_with("bytes ")) {
      std::string bytes = meant;
      std::erase(bytes, '\n');
      return compare(what, folder_.bytes(what.substr(6)), unescaped(bytes));
    }
    if (!host_) return fault(what, "(no host)", meant);
    if (what.starts_with("dataset "))
      return compare(what, cardsOf(folder_.bytes(what.substr(8)), host_->dataset), meant);
    if (const std::optional<Field> field = host_->field(what))
      return std::visit([&](const auto& cells) { expectMap(what, cells, field->otherwise, meant); },
                        field->cells);
    compare(what, folder_.read(what), meant);
  }

  template <typename T>
  void expectMap(std::string_view name, const Grid<T>& cells, double otherwise, std::string meant) {
    if (meant.starts_with("all ")) {
      const std::string value = meant.substr(4, meant.find('\n') - 4);
      meant.clear();
      for (int i = 0; i < cells.n(); ++i) {
        for (int j = 0; j < cells.m(); ++j) meant += (j == 0 ? "" : " ") + value;
        meant += '\n';
      }
    }
    compare(name, map(cells, otherwise), meant);
  }

  // What was shown since the last look, and how the run ended where it did.
  void expectScreen(const std::string& meant) {
    if (!host_) return fault("screen", "(no host)", meant);
    std::string text = std::exchange(host_->console.output, {});
    shown += text;
    if (!text.empty() && !text.ends_with('\n')) text += '\n';  // an open line
    endWasMeant_ = true;
    const std::string end = "(ends with " + std::to_string(exitCode_) + ")\n";
    if (!hasEnded_) return compare("screen", text, meant);
    if (!meant.ends_with(end)) return fault("screen", text + end, meant);
    compare("screen", text, std::string_view(meant).substr(0, meant.size() - end.size()));
  }

  void expectValues(const std::string& meant) {
    std::string values;
    for (const std::string_view line : fuzz::linesOf(meant)) {
      const std::string name(line.substr(0, line.find(" =")));
      const std::optional<Value> value = host_ ? host_->value(name) : std::nullopt;
      values += name + " = " + (value ? textOf(*value) : "(no such value)") + '\n';
    }
    compare("values", values, meant);
  }

  void compare(std::string_view what, std::string_view actual, std::string_view meant) {
    if (!matches(actual, meant)) fault(what, actual, meant);
  }

  void fault(std::string_view what, std::string_view actual, std::string_view meant) {
    if (!compares_) return;
    faults.push_back("--- " + std::string(what) + ", as it is\n" + std::string(actual) +
                     "--- as it was meant\n" + std::string(meant) + "---");
  }

  const fuzz::Folder& folder_;
  const bool isMutated_;
  const bool compares_;
  const bool withCarriageReturn_;
  std::unique_ptr<CaseHost> host_;
  std::size_t logSeen_ = 0;
  bool hasEnded_ = false;
  bool endWasMeant_ = false;
  int exitCode_ = 0;
};

}  // namespace

std::vector<std::string> play(const fuzz::Archive& sections, const fuzz::Folder& folder,
                              CaseKind kind) {
  Playing playing(folder, kind, kind == CaseKind::Meant, false);
  playing.play(sections);
  const auto hasReturn = [](const fuzz::Section& section) {
    return section.text.find('\r') != section.text.npos;
  };
  if (!playing.readsOnly || std::ranges::any_of(sections.sections(), hasReturn))
    return playing.faults;

  folder.clear();
  Playing other(folder, kind, false, true);
  other.play(sections);
  require(playing.shown == other.shown && playing.integer == other.integer &&
              std::ranges::equal(playing.real, other.real, fuzz::sameBits),
          "files with the line ends of the other system are the same files");
  return playing.faults;
}

}  // namespace nivaro::test
