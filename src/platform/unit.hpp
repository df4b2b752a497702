// One open file, seen the way the module reads and writes it: as records (lines) or as a stream of
// bytes. Buffered by the module itself, so that the caller decides when data reach the disk.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "platform/list_input.hpp"

namespace nivaro {

// How a file is opened. The combinations in use stand in files/open_mode.
struct OpenOptions {
  enum class Form { Formatted, Unformatted, Binary };
  enum class Status { Old, Replace, Unknown };  // must exist; emptied or created; kept or created
  enum class Action { Read, Write, ReadWrite };
  enum class Position { Start, End };

  Form form = Form::Formatted;
  Status status = Status::Old;
  Action action = Action::Read;
  Position position = Position::Start;
  bool bigEndian = false;
  int recordLength = 0;  // above 0: direct access, in units of bytes
};

class Unit {
 public:
  Unit();
  ~Unit();  // writes what is buffered and closes, ignoring errors
  Unit(Unit&&) noexcept;
  Unit& operator=(Unit&&) noexcept;
  Unit(const Unit&) = delete;
  Unit& operator=(const Unit&) = delete;

  // `path` is a path of this system (see host_path). Empty on success, else the system's reason.
  // A folder is no file.
  std::string open(const std::string& path, const OpenOptions& options);
  bool isOpen() const;
  const std::string& path() const;

  // Writes what is buffered and closes. False when any of it, or an earlier write, failed.
  bool close();

  // The next record without its line end; a carriage return before the line end is not part of it,
  // and a last line without a line end is a record too. The view holds until the next call.
  ReadStatus readRecord(std::string_view& record);

  // No further record can be read (also on a unit that is not open for reading).
  bool atEnd();

  // Back to the start of the record last read, or of the file. After a read that met the end it
  // undoes that first, so that the last record is read again by two backspaces.
  void backspace();
  void rewind();

  // One record: the text and a line end.
  bool writeRecord(std::string_view text);
  bool writeBytes(std::span<const std::byte> bytes);

  // Bytes over earlier ones, at an offset from the start of the file; then goes on at the end.
  bool overwriteBytes(std::uint64_t offset, std::span<const std::byte> bytes);

  // Hands everything buffered to the system: a host killed after this loses nothing of it.
  bool flush();

  // The system's reason for the first write that failed; empty while all went well. After a failed
  // write the rest is dropped, so that closing does not fail a second time for it.
  const std::string& failure() const;
};

}  // namespace nivaro
