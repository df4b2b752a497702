#include "platform/unit.hpp"

#include <algorithm>
#include <utility>

namespace nivaro {
namespace {

// Large enough that the system's part of reading a file is small, small enough for the processor's
// nearer memory.
constexpr std::size_t kBlock = 65536;

constexpr std::string_view kNoPlace = "The file has no place to go back to";

// Far more than a line of a text: what goes on beyond it without an end is a device, and would fill the
// memory.
constexpr std::size_t kLongestRecord = std::size_t{64} << 20;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string_view asText(std::span<const std::byte> bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

std::string_view withoutCarriageReturn(std::string_view line) {
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

}  // namespace

Unit::~Unit() {
  close();
}

std::string Unit::open(const std::string& path, const OpenOptions& options) {
  close();
  path_ = path;
  options_ = options;
  failure_.clear();
  buffer_.clear();
  start_ = 0;
  next_ = 0;
  isWriting_ = false;
  endMet_ = false;

  std::string reason = file_.open(path, options);
  if (reason.empty() && options.position == OpenOptions::Position::End)
    start_ = file_.seekEnd().value_or(0);
  return reason;
}

bool Unit::close() {
  if (!isOpen()) return true;
  flush();
  if (std::string reason = file_.close(); !reason.empty()) fail(std::move(reason));
  return failure_.empty();
}

bool Unit::canRead() const {
  return isOpen() && options_.action != OpenOptions::Action::Write;
}

bool Unit::canWrite() const {
  return isOpen() && options_.action != OpenOptions::Action::Read && failure_.empty();
}

std::uint64_t Unit::position() const {
  return start_ + (isWriting_ ? buffer_.size() : next_);
}

std::string_view Unit::unread() const {
  return std::string_view(buffer_.data(), buffer_.size()).substr(next_);
}

// ---- Reading ----

ReadStatus Unit::readRecord(std::string_view& record) {
  if (!prepareToRead()) return ReadStatus::Error;
  if (endMet_) return ReadStatus::End;

  // What was searched before more is read is not searched again: long lines cost no more than
  // others.
  std::size_t searched = 0;
  for (;;) {
    const std::string_view bytes = unread();
    const std::size_t end = bytes.find('\n', searched);
    if (end != std::string_view::npos) {
      record = withoutCarriageReturn(bytes.substr(0, end));
      next_ += end + 1;
      return ReadStatus::Ok;
    }
    searched = bytes.size();
    if (searched > kLongestRecord) return ReadStatus::Error;
    const ReadStatus status = readMore();
    if (status == ReadStatus::Error) return status;
    if (status == ReadStatus::End) break;
  }
  endMet_ = unread().empty();
  if (endMet_) return ReadStatus::End;
  record = withoutCarriageReturn(unread());
  next_ = buffer_.size();
  return ReadStatus::Ok;
}

bool Unit::atEnd() {
  return !prepareToRead() || endMet_ || readAtLeast(1) == ReadStatus::End;
}

void Unit::backspace() {
  if (!prepareToRead()) return;
  if (std::exchange(endMet_, false)) return;
  if (position() > 0) moveTo(recordStartBefore(position() - 1));
}

void Unit::rewind() {
  if (!prepareToRead()) return;
  endMet_ = false;
  moveTo(0);
}

// Turns from writing to reading where need be; false on a unit that cannot be read.
bool Unit::prepareToRead() {
  if (!canRead()) return false;
  if (isWriting_) {
    flush();
    isWriting_ = false;
    next_ = 0;
  }
  if (position() == 0) skipByteOrderMark();
  return true;
}

void Unit::skipByteOrderMark() {
  if (options_.form != OpenOptions::Form::Formatted) return;
  readAtLeast(kByteOrderMark.size());
  if (unread().starts_with(kByteOrderMark)) next_ += kByteOrderMark.size();
}

ReadStatus Unit::readAtLeast(std::size_t count) {
  while (unread().size() < count) {
    const ReadStatus status = readMore();
    if (status != ReadStatus::Ok) return status;
  }
  return ReadStatus::Ok;
}

// Adds a block behind what is unread and drops what was read.
ReadStatus Unit::readMore() {
  buffer_.erase(buffer_.begin(), buffer_.begin() + static_cast<std::ptrdiff_t>(next_));
  start_ += std::exchange(next_, 0);

  const std::size_t kept = buffer_.size();
  buffer_.resize(kept + kBlock);
  const std::optional<std::size_t> count = file_.read(std::span(buffer_).subspan(kept));
  buffer_.resize(kept + count.value_or(0));
  if (!count) return ReadStatus::Error;
  return *count > 0 ? ReadStatus::Ok : ReadStatus::End;
}

// Just behind the last line end among the first `end` bytes of the file; 0 where there is none.
std::uint64_t Unit::recordStartBefore(std::uint64_t end) {
  while (end > 0) {
    if (end <= start_ || end > start_ + buffer_.size()) {
      const std::uint64_t here = position();
      if (!moveTo(end - std::min<std::uint64_t>(end, kBlock))) return here;
      if (readAtLeast(static_cast<std::size_t>(end - start_)) != ReadStatus::Ok) return here;
    }
    const std::string_view before(buffer_.data(), static_cast<std::size_t>(end - start_));
    const std::size_t lineEndBefore = before.rfind('\n');
    if (lineEndBefore != std::string_view::npos) return start_ + lineEndBefore + 1;
    end = start_;
  }
  return 0;
}

// Reading goes on at `offset`: within the buffer where it reaches there.
bool Unit::moveTo(std::uint64_t offset) {
  if (offset < start_ || offset > start_ + buffer_.size()) {
    if (!file_.seek(offset)) return false;
    buffer_.clear();
    start_ = offset;
  }
  next_ = static_cast<std::size_t>(offset - start_);
  return true;
}

// ---- Writing ----

bool Unit::writeRecord(std::string_view text) {
  return append(text) && append(lineEnd());
}

bool Unit::writeBytes(std::span<const std::byte> bytes) {
  return append(asText(bytes));
}

bool Unit::writeLogLine(std::string_view text) {
  if (!failure_.empty()) {
    failure_.clear();
    writeRecord("");  // ends what the failed write left of its line
  }
  return writeRecord(text) && flush();
}

bool Unit::overwriteBytes(std::uint64_t offset, std::span<const std::byte> bytes) {
  if (!prepareToWrite() || !flush()) return false;
  if (!file_.seek(offset)) return fail(std::string(kNoPlace));
  if (std::string reason = file_.write(asText(bytes)); !reason.empty())
    return fail(std::move(reason));
  const std::optional<std::uint64_t> end = file_.seekEnd();
  if (!end) return fail(std::string(kNoPlace));
  start_ = *end;
  return true;
}

bool Unit::flush() {
  if (!isWriting_ || buffer_.empty()) return failure_.empty();
  std::string reason = file_.write({buffer_.data(), buffer_.size()});
  start_ += buffer_.size();
  buffer_.clear();
  return reason.empty() || fail(std::move(reason));
}

// Turns from reading to writing where need be; false on a unit that takes no more.
bool Unit::prepareToWrite() {
  if (!canWrite()) return false;
  if (isWriting_) return true;

  const std::uint64_t here = position();
  if (next_ < buffer_.size() && !file_.seek(here)) return fail(std::string(kNoPlace));
  buffer_.clear();
  start_ = here;
  next_ = 0;
  isWriting_ = true;
  endMet_ = false;
  return true;
}

bool Unit::append(std::string_view bytes) {
  if (!prepareToWrite()) return false;
  buffer_.insert(buffer_.end(), bytes.begin(), bytes.end());
  return buffer_.size() < kBlock || flush();
}

bool Unit::fail(std::string reason) {
  if (failure_.empty()) failure_ = std::move(reason);
  buffer_.clear();
  return false;
}

}  // namespace nivaro
