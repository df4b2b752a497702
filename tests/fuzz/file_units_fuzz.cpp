// Files opened in conversation, in every mode, and used. Sections: "answers" to questions, "repeat"
// (how often the texts of files stand in them), "calls": a word, a number or a name and what it needs
// on each line; any other section is a file that is there before.
#include "files/open_mode.hpp"
#include "fuzz/fuzz_input.hpp"

namespace nivaro::fuzz {
namespace {

constexpr std::int32_t kBase = 2000;
constexpr std::int32_t kUnits = 8;  // that calls can name

std::string_view takeWord(std::string_view& line) {
  const std::string_view word = line.substr(0, line.find(' '));
  line.remove_prefix(std::min(word.size() + 1, line.size()));
  return word;
}

struct Calls {
  FuzzModule& run;

  void open(std::string_view name, std::string_view mode, std::int32_t recordLength) const {
    const std::int32_t unit = run.module.files.openFile(name, mode, recordLength);
    if (unit == 0)
      return require(mode.substr(0, 2) == "A" || mode.substr(0, 2) == "A ",
                     "an open that fails says so in one mode only");
    require(unit > kBase && unit <= kBase + FileUnits::kSlots, "units are those of the pool");
    const Unit* file = run.module.files.find(unit);
    if (const OpenMode* row = findOpenMode(padded(mode)))
      require(file != nullptr && file->options().form == row->options.form, "a file has its form");
    require(!run.module.files.nameOf(unit).empty(), "a unit has a name");
  }

  void close(std::int32_t unit) const {
    std::int32_t closed = unit;
    run.module.files.closeFile(closed);
    require(closed == 0 || closed == unit, "closing clears the variable or leaves it");
    if (closed == 0) require(run.module.files.find(unit) == nullptr, "a closed unit is free");
  }

  void use(std::string_view word, Unit& file, std::string_view rest) const {
    const bool canRead = file.options().action != OpenOptions::Action::Write;
    const bool canWrite = file.options().action != OpenOptions::Action::Read;
    std::string_view record;
    if (word == "read")
      require(canRead || file.readRecord(record) == ReadStatus::Error,
              "what is written is not read");
    if (word == "read" && canRead) file.readRecord(record);
    if (word == "write")
      require(file.writeRecord(rest) == (canWrite && file.failure().empty()), "writing is told");
    if (word == "bytes") file.writeBytes(std::as_bytes(std::span(rest)));
    if (word == "over") {
      const auto offset = static_cast<std::uint64_t>(Numbers(takeWord(rest)).upTo(200000));
      file.overwriteBytes(offset, std::as_bytes(std::span(rest)));
    }
    if (word == "back") file.backspace();
    if (word == "rewind") file.rewind();
    if (word == "end" && file.atEnd() && canRead)
      require(file.readRecord(record) == ReadStatus::End, "nothing is read at the end");
    if (word == "flush") file.flush();
  }

  void call(std::string_view line) const {
    const std::string_view word = takeWord(line);
    if (word == "open") {
      const std::string_view mode = takeWord(line);
      const std::int32_t recordLength = Numbers(takeWord(line)).integer();
      return open(line, mode, recordLength);
    }
    if (word == "pool") return run.module.files.initFileUnits(kBase);
    const std::int32_t unit = kBase + 1 + Numbers(takeWord(line)).upTo(kUnits - 1);
    if (word == "close") return close(unit);
    if (Unit* file = run.module.files.find(unit)) use(word, *file, line);
  }

 private:
  static std::string padded(std::string_view mode) {
    std::string code(mode.substr(0, 2));
    code.resize(2, ' ');
    return code;
  }
};

// Forward, the records of a file are its lines; backward, the same in the other order.
void requireSameBothWays(const Folder& folder, const std::string& name) {
  std::string bytes = folder.bytes(name);
  if (bytes.starts_with("\xEF\xBB\xBF")) bytes.erase(0, 3);
  const std::vector<std::string_view> lines = linesOf(bytes);
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

}  // namespace

void tryInput(const Archive& input, const Folder& folder) {
  // Up to more than what a unit reads at a time.
  constexpr std::size_t kMostBytes = 140000;
  const std::int32_t repeats = 1 + Numbers(input.text("repeat")).upTo(40000);
  std::vector<std::string> names;
  for (const Section& section : input.sections()) {
    const bool isFile = section.name != "answers" && section.name != "calls";
    if (!isFile || !isFileName(section.name)) continue;
    std::string content;
    for (std::int32_t i = 0; i < repeats && content.size() < kMostBytes; ++i)
      content += section.text;
    folder.write(section.name, content);
    names.push_back(section.name);
  }
  for (const std::string& name : names) requireSameBothWays(folder, name);

  FuzzModule run;
  run.answerWith(confined(input.text("answers")));
  run.module.files.initFileUnits(2000);
  const Calls calls{run};
  const std::string safe = confined(input.text("calls"));
  completes([&] {
    for (const std::string_view line : linesOf(safe)) calls.call(line);
    run.module.termination.exits();
  });
}

}  // namespace nivaro::fuzz
