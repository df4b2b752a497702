#include "messages/gis/dbase_file.hpp"

#include <algorithm>
#include <chrono>
#include <utility>

#include "messages/gis/byte_buffer.hpp"
#include "platform/list_input.hpp"
#include "text/blank_padded.hpp"

namespace nivaro::gis {

namespace {

constexpr int kVersion = 3;
constexpr int kLatinCodePage = 3;  // language driver of Windows Latin 1, as in the MIF header
constexpr int kEndOfHeader = 0x0D;
constexpr int kEndOfFile = 0x1A;
constexpr std::uint64_t kRecordCountOffset = 4;
constexpr std::size_t kLongestValue = 256;

std::string fieldContent(const DbaseField& field, std::string_view value) {
  const auto length = static_cast<std::size_t>(field.length);
  if (field.type == 'C') return padTo(value, length);
  const std::string_view number = stripped(value);
  // Half a number would be a wrong number.
  if (number.size() > length) return std::string(length, '*');
  return std::string(length - number.size(), ' ') + std::string(number);
}

// How much of a text a field of this length takes where others go on with it. Readers drop the blanks
// at both ends of a field, so the text is parted where it has none.
std::size_t partLength(std::string_view text, std::size_t length) {
  if (text.size() <= length) return text.size();
  for (std::size_t part = length; part > 0; --part)
    if (text[part - 1] != ' ' && text[part] != ' ') return part;
  return length;
}

}  // namespace

DbaseTable::DbaseTable(const std::vector<Column>& columns) {
  for (const Column& column : columns)
    for (DbaseField& field : dbaseFields(column)) fields_.push_back(std::move(field));
}

std::uint64_t DbaseTable::recordLength() const {
  std::uint64_t length = 1;
  for (const DbaseField& field : fields_) length += static_cast<std::uint64_t>(field.length);
  return length;
}

// All records are of one length, so the place of the next one follows from their count.
std::uint64_t DbaseTable::endOfRecords() const {
  return headerLength() + static_cast<std::uint64_t>(recordCount_) * recordLength();
}

bool DbaseTable::writeHeader(Unit* file) const {
  const std::chrono::year_month_day today(
      std::chrono::floor<std::chrono::days>(std::chrono::system_clock::now()));

  // The zeros are places that the format reserves.
  ByteBuffer header;
  header.byte(kVersion)
      .byte(static_cast<int>(today.year()) - 1900)
      .byte(static_cast<int>(static_cast<unsigned>(today.month())))
      .byte(static_cast<int>(static_cast<unsigned>(today.day())))
      .little(recordCount_)
      .little(static_cast<std::uint16_t>(headerLength()))
      .little(static_cast<std::uint16_t>(recordLength()))
      .zeros(17)
      .byte(kLatinCodePage)
      .zeros(2);
  for (const DbaseField& field : fields_) {
    header.text(field.name)
        .zeros(11 - field.name.size())
        .text(std::string_view(&field.type, 1))
        .zeros(4)
        .byte(field.length)
        .byte(field.decimals)
        .zeros(14);
  }
  header.byte(kEndOfHeader).byte(kEndOfFile);
  return file != nullptr && file->writeBytes(header.bytes()) && file->flush();
}

bool DbaseTable::addRecord(Unit* file, std::string_view attributes) {
  ByteBuffer record;
  record.text(" ");  // not deleted
  ListInput values(attributes);
  std::string value;
  std::string_view rest;  // of a text that several fields hold
  for (std::size_t i = 0; i < fields_.size(); ++i) {
    const DbaseField& field = fields_[i];
    if (!field.goesOn) {
      value.clear();  // stays blank where the record has fewer values than the table has columns
      values.read(value);
      rest = value;
    }
    const bool isLast = i + 1 == fields_.size() || !fields_[i + 1].goesOn;
    const std::size_t part =
        isLast ? kLongestValue : partLength(rest, static_cast<std::size_t>(field.length));
    record.text(fieldContent(field, rest.substr(0, part)));
    rest.remove_prefix(std::min(part, rest.size()));
  }
  record.byte(kEndOfFile);

  // The record takes the place of the end mark and brings a new one. It is there once it is counted.
  ByteBuffer count;
  count.little(recordCount_ + 1);
  if (file == nullptr || !file->overwriteBytes(endOfRecords(), record.bytes()) ||
      !file->overwriteBytes(kRecordCountOffset, count.bytes()))
    return false;
  ++recordCount_;
  return true;
}

}  // namespace nivaro::gis
