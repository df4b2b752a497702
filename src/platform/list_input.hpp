// List-directed (free-format) input: items separated by blanks, tabs or a comma, from a text or
// from the records of a unit.
//
// "/" ends the list; an empty item between commas, and everything after "/", leaves the variable as
// it was and counts as read. "r*c" repeats an item, "r*" is r empty items. A text may be quoted
// with either quote character, a doubled one inside standing for itself. Reals take a leading "+",
// an exponent letter e, d or q in either case, or a bare signed exponent ("1+2" is 100). An integer
// item with a point is an error, a quoted text is no number. Text without any item is "end".
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace nivaro {

class Unit;

enum class ReadStatus { Ok, End, Error };

class ListInput {
 public:
  // Items of one text; the text must outlive this object.
  explicit ListInput(std::string_view text);

  // Items from the next record of a unit on; items that a record lacks are taken from the next one.
  // The rest of the last record touched is skipped: the next read of the unit starts behind it. The
  // unit must not be read by others while items are taken.
  explicit ListInput(Unit& unit);

  // Not copied: the item at hand may be a view of this very object.
  ListInput(const ListInput&) = delete;
  ListInput& operator=(const ListInput&) = delete;

  // Each call takes one item. After End or Error further calls give the same again.
  ReadStatus read(std::int32_t& value);
  ReadStatus read(double& value);
  ReadStatus read(std::string& value);

  // All items in turn; stops at the first that is not Ok.
  template <typename... Values>
  ReadStatus readAll(Values&... values) {
    ReadStatus status = ReadStatus::Ok;
    static_cast<void>(((status = read(values), status == ReadStatus::Ok) && ...));
    return status;
  }

 private:
  enum class Kind { Null, Plain, Quoted };
  struct Item {
    Kind kind = Kind::Null;
    std::string_view text;
  };

  template <typename Value>
  ReadStatus readValue(Value& value);

  ReadStatus nextItem();
  ReadStatus findItem();
  ReadStatus takeRepeat();
  ReadStatus takeValue();
  ReadStatus takeQuoted(char quote);
  ReadStatus toNextCharacter();
  ReadStatus nextRecord();
  char current() const { return record_[position_]; }
  bool atRecordEnd() const { return position_ == record_.size(); }

  Unit* unit_ = nullptr;  // null: the items are those of one text
  std::string_view record_;
  std::size_t position_ = 0;
  ReadStatus status_ = ReadStatus::Ok;
  bool listEnded_ = false;    // by "/"
  bool afterItem_ = false;    // a comma met next ends that item, it does not make an empty one
  std::int32_t repeats_ = 0;  // how often `item_` is still to be given
  Item item_;
  std::string quoted_;  // a quoted text that is not a plain stretch of one record
};

// One item of a text.
template <typename Value>
ReadStatus readListItem(std::string_view text, Value& value) {
  return ListInput(text).read(value);
}

}  // namespace nivaro
