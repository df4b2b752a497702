// One open file, seen the way the module reads and writes it: as records (lines) or as a stream of
// bytes. Buffered by the module itself, so that the caller decides when data reach the disk.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/list_input.hpp"
#include "platform/native_file.hpp"
#include "platform/open_options.hpp"

namespace nivaro {

class Unit {
 public:
  Unit() = default;
  ~Unit();  // writes what is buffered and closes, ignoring errors
  Unit(const Unit&) = delete;
  Unit& operator=(const Unit&) = delete;

  // `path` is a path of this system (see host_path). Empty on success, else the system's reason.
  // A folder is no file.
  std::string open(const std::string& path, const OpenOptions& options);
  bool isOpen() const { return file_.isOpen(); }
  const std::string& path() const { return path_; }
  const OpenOptions& options() const { return options_; }

  // Whether `path` names the very file that is open here, by whatever spelling or link.
  bool isOpenOn(const std::string& path) const { return isOpenOn(fileIdentity(path)); }
  bool isOpenOn(const std::optional<FileIdentity>& file) const {
    return file && file == file_.identity();
  }

  // Writes what is buffered and closes. False when any of it, or an earlier write, failed.
  bool close();

  // The next record without its line end; a carriage return before the line end is not part of it,
  // and a last line without a line end is a record too. A UTF-8 byte order mark at the start of the
  // file is skipped. The view holds until the next call.
  ReadStatus readRecord(std::string_view& record);

  // No further record is there (also on a unit that is not open for reading). A file that cannot be
  // read is not at its end: the next read tells.
  bool atEnd();

  // Back to the start of the record last read, or of the file. After a read that met the end it
  // undoes that first, so that the last record is read again by two backspaces. On a unit that is
  // not open for reading there is nothing to go back to.
  void backspace();
  void rewind();

  // One record: the text and a line end.
  bool writeRecord(std::string_view text);
  bool writeBytes(std::span<const std::byte> bytes);

  // A record of a log, on the disk at once. A log may miss lines, but not the rest of a run: behind one
  // that could not be written the next is tried, on a line of its own.
  bool writeLogLine(std::string_view text);

  // Bytes over earlier ones, at an offset from the start of the file; then goes on at the end.
  bool overwriteBytes(std::uint64_t offset, std::span<const std::byte> bytes);

  // Hands everything buffered to the system: a host killed after this loses nothing of it.
  bool flush();

  // The system's reason for the first write that failed, kept until the next open or log line; empty
  // while all went well. After a failed write the rest is dropped, so that closing does not fail a
  // second time for it.
  const std::string& failure() const { return failure_; }

 private:
  bool canRead() const;
  bool canWrite() const;
  std::uint64_t position() const;  // of the next byte to be read or written

  bool prepareToRead();
  void skipByteOrderMark();
  ReadStatus readAtLeast(std::size_t count);
  ReadStatus readMore();
  std::string_view unread() const;
  std::uint64_t recordStartBefore(std::uint64_t end);
  bool moveTo(std::uint64_t offset);

  bool prepareToWrite();
  bool append(std::string_view bytes);
  bool fail(std::string reason);

  NativeFile file_;
  OpenOptions options_;
  std::string path_;
  std::string failure_;

  // The bytes of the file from `start_` on: those read ahead, of which `next_` is the first not yet
  // taken, or those still to be written. The system stands behind the former, before the latter.
  std::vector<char> buffer_;
  std::uint64_t start_ = 0;
  std::size_t next_ = 0;
  bool isWriting_ = false;
  bool endMet_ = false;
};

}  // namespace nivaro
