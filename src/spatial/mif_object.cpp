#include "spatial/mif_object.hpp"

#include <algorithm>
#include <limits>
#include <string>

#include "platform/letters.hpp"
#include "platform/list_input.hpp"
#include "text/blank_padded.hpp"

namespace nivaro {
namespace {

struct Keyword {
  std::string_view word;
  MifKind kind;
  std::int32_t MifObject::*count = nullptr;  // read from the rest of the line
};

// In the order of testing: a keyword stands before those that it begins with.
constexpr Keyword kKeywords[] = {
    {"COLLECTION", MifKind::Collection},
    {"NONE", MifKind::None},
    {"ARC", MifKind::Arc},
    {"ELLIPSE", MifKind::Ellipse},
    {"LINE", MifKind::Line},
    {"PLINE MULTIPLE", MifKind::PlineMultiple, &MifObject::sections},
    {"PLINE", MifKind::Pline},
    {"POINT", MifKind::Point},
    {"RECT", MifKind::Rect},
    {"REGION", MifKind::Region, &MifObject::polygons},
    {"ROUNDRECT", MifKind::RoundRect},
    {"TEXT", MifKind::Text},
    {"MULTIPOINT", MifKind::MultiPoint, &MifObject::sections},
    {"CENTER", MifKind::Center},
};

bool startsWith(std::string_view text, std::string_view word) {
  return text.size() >= word.size() && std::equal(word.begin(), word.end(), text.begin(),
                                                  [](char a, char b) { return a == upper(b); });
}

// An empty item is no count: it would leave the variable as it was.
bool readCount(std::string_view text, std::int32_t& count) {
  constexpr std::int32_t kUnread = std::numeric_limits<std::int32_t>::min();
  count = kUnread;
  return readListItem(text, count) == ReadStatus::Ok && count != kUnread;
}

}  // namespace

Outcome<std::optional<MifObject>> recogniseObject(std::string_view line) {
  const std::string_view text = line.substr(std::min(line.find_first_not_of(" \t"), line.size()));
  const auto found =
      std::ranges::find_if(kKeywords, [&](const Keyword& k) { return startsWith(text, k.word); });
  if (found == std::end(kKeywords)) return std::optional<MifObject>();

  if (found->kind == MifKind::Collection)
    return Report{.line1 =
                      "ERROR 0303 - MIF \"Collection\" objects not supported.  Delete or "
                      "disaggregate object."};
  MifObject object{
      .kind = found->kind, .keyword = found->word, .rest = text.substr(found->word.size())};
  if (found->count != nullptr && !readCount(object.rest, object.*found->count))
    return erroneousLine(line);
  if (object.sections < 0) return erroneousLine(line);
  if (object.polygons > kMaxPolygons)
    return Report{.line1 = "ERROR 0304 - Exceeded maximum number of polygons in region below of " +
                           std::to_string(kMaxPolygons),
                  .line2 = std::string(trimmed(line))};
  return std::optional<MifObject>(object);
}

Report erroneousLine(std::string_view line) {
  return {.line1 = "ERROR 0308 - Reading .mif file.  Erroneous line is:",
          .line2 = std::string(trimmed(line))};
}

}  // namespace nivaro
