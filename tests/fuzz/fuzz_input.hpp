// What the fuzz targets share: inputs that are readable texts, and a module that a target can end.
//
// An input is a small archive: "@@@ name" on a line of its own begins a section, whose text runs to
// the next such line. Sections become numbers, answers or files, as the target says.
#pragma once

#include <bit>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "interface/module.hpp"
#include "support/temp_folder.hpp"
#include "support/test_process.hpp"

namespace nivaro::fuzz {

// A broken promise ends the target, which keeps the input.
inline void require(bool kept, const char* promise) {
  if (kept) return;
  std::fprintf(stderr, "Broken promise: %s\n", promise);
  std::abort();
}

// Bit for bit: a value may be no number.
inline bool sameBits(double a, double b) {
  return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

struct Section {
  std::string name;
  std::string text;
};

class Archive {
 public:
  explicit Archive(std::string_view rest) {
    while (!rest.empty()) {
      const std::size_t end = std::min(rest.find('\n'), rest.size() - 1) + 1;
      const std::string_view line = rest.substr(0, end);
      rest.remove_prefix(end);
      if (line.starts_with("@@@ "))
        sections_.push_back({std::string(line.substr(4, line.find_last_not_of(" \r\n") - 3)), {}});
      else if (!sections_.empty())
        sections_.back().text += line;
    }
  }

  const std::vector<Section>& sections() const { return sections_; }

  // The text of the first section of this name; empty when there is none.
  std::string_view text(std::string_view name) const {
    for (const Section& section : sections_)
      if (section.name == name) return section.text;
    return {};
  }

  // The same without its last line end: a text that is no file.
  std::string_view value(std::string_view name) const {
    const std::string_view whole = text(name);
    return whole.substr(0, whole.size() - (whole.ends_with('\n') ? 1 : 0));
  }

 private:
  std::vector<Section> sections_;
};

inline std::vector<std::string_view> linesOf(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    lines.push_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

// Numbers and words separated by blanks; what is no number, or missing, is 0.
class Numbers {
 public:
  explicit Numbers(std::string_view text) : rest_(text) {}

  std::string_view word() {
    rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t\r\n"), rest_.size()));
    const std::string_view word = rest_.substr(0, rest_.find_first_of(" \t\r\n"));
    rest_.remove_prefix(word.size());
    return word;
  }
  std::string_view rest() const { return rest_.substr(rest_.starts_with(' ') ? 1 : 0); }

  std::int32_t integer() { return next<std::int32_t>(); }
  double real() { return next<double>(); }

  // Between 0 and `most`.
  std::int32_t upTo(std::int32_t most) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(integer()) %
                                     (static_cast<std::uint32_t>(most) + 1));
  }
  bool flag() { return upTo(1) == 1; }

 private:
  template <typename Number>
  Number next() {
    const std::string_view text = word();
    Number number{};
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
  }

  std::string_view rest_;
};

// A name, or a text with names in it, that leads to no file outside the folder at hand.
inline std::string confined(std::string_view text) {
  std::string safe(text);
  const auto separates = [](char c) { return c == '/' || c == '\\'; };
  for (std::size_t i = 0; i < safe.size(); ++i) {
    const bool isFirst = i == 0 || safe[i - 1] == ' ' || safe[i - 1] == '\t' || safe[i - 1] == '\n';
    if (safe[i] == '.' && !isFirst && safe[i - 1] == '.') safe[i] = '_';
    if (separates(safe[i]) && (isFirst || separates(safe[i - 1]))) safe[i] = '_';
  }
  return safe;
}

// Whether `name` can be the name of a file in the folder itself.
inline bool isFileName(std::string_view name) {
  return !name.empty() && name.size() < 100 && name != "." && name != ".." &&
         name.find_first_of(std::string_view("/\\\0", 3)) == std::string_view::npos;
}

// The one folder of the process, which works in it: relative names lie there too. Empty again for
// each input.
class Folder : public test::TempFolder {
 public:
  Folder() { std::filesystem::current_path(path("")); }

  void clear() const {
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator(path("")))
      std::filesystem::remove_all(entry.path(), ignored);
  }
};

// A whole module whose console answers from a list and whose end can be caught.
struct FuzzModule {
  test::ScriptedConsole console;
  test::RecordingProcess process;
  std::unique_ptr<MessageRecord> record = std::make_unique<MessageRecord>();
  Module module{console, process, *record};

  void answerWith(std::string_view lines) {
    for (const std::string_view line : linesOf(lines)) console.answers.emplace_back(line);
  }
};

// Whether the action came to its end; false when it ended the run in the described way.
template <typename Action>
bool completes(Action action) {
  return test::exitCodeOf(action) == -1;
}

// A name and a value on each line.
inline void addVariables(Module& module, std::string_view text) {
  for (const std::string_view line : linesOf(text)) {
    const std::size_t blank = std::min(line.find(' '), line.size());
    module.variables.add(line.substr(0, blank), line.substr(std::min(blank + 1, line.size())));
  }
}

// What a target does with an input; what it writes is removed afterwards.
void tryInput(const Archive& input, const Folder& folder);

}  // namespace nivaro::fuzz
