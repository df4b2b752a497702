#include "output/cell_text.hpp"

#include <bit>

#include "platform/field_writer.hpp"
#include "platform/native_file.hpp"

namespace nivaro {

namespace {

constexpr int kIndexWidth = 6;

void appendLine(std::string& text, std::string_view line) {
  text.append(line).append(lineEnd());
}

// Indices beyond their columns are asterisks here too.
void appendWithoutBlanks(std::string& text, std::int64_t index) {
  const std::size_t start = text.size();
  appendIntegerField(text, index, kIndexWidth);
  text.erase(start, text.find_first_not_of(' ', start) - start);
}

void appendGridRef(std::string& text, std::int64_t n, std::int64_t m) {
  text += '"';
  appendWithoutBlanks(text, n);
  text += ',';
  appendWithoutBlanks(text, m);
  text += '"';
}

}  // namespace

void CornerLines::fill(const CellFrame& frame, int b, const Area& range) {
  text_.clear();
  firstJ_ = range.firstJ;
  for (int a = range.firstJ - 3; a <= range.lastJ - 2; ++a) {
    appendFixedField(text_, frame.x(a, b), 15, 3);
    appendFixedField(text_, frame.y(a, b), 15, 3);
    text_ += lineEnd();
  }
  length_ = 30 + lineEnd().size();
}

void appendSquare(std::string& text, const CornerLines& low, const CornerLines& high, int j) {
  appendLine(text, "Region  1");
  appendLine(text, "  5");
  text.append(high.upper(j)).append(high.lower(j)).append(low.lower(j)).append(low.upper(j));
  text.append(high.upper(j));
  appendLine(text, "    Pen (1,2,0)");
  appendLine(text, "    Brush (1,0,16777215)");
}

void CellRecords::append(std::string& text, int i, int j) {
  const std::int64_t n = std::int64_t{domain_.firstOffset} + i - 2;
  const std::int64_t m = std::int64_t{domain_.secondOffset} + j - 2;
  appendIntegerField(text, n, kIndexWidth);
  text += ',';
  appendIntegerField(text, m, kIndexWidth);
  text += ',';
  appendGridRef(text, n, m);
  text += ',';
  appendInteger(text, domain_.code(i, j));
  text += ',';
  appendFixedField(text, 0.0 - domain_.depth(i, j), 12, 3);  // no "-0.000" at datum
  text += ',';
  appendInteger(text, domain_.domain);
  appendParameters(text, i, j);
  text += lineEnd();
}

void CellRecords::appendParameters(std::string& text, int i, int j) {
  if (!domain_.fields) {
    text += ",  0.000000,  0.000000,0.000,0.000,     0.000,   0";
    return;
  }
  const CheckedFields& fields = *domain_.fields;
  d50_.append(text, fields.d50(i, j));
  d90_.append(text, fields.d90(i, j));
  inSituVoids_.append(text, fields.inSituVoids(i, j));
  depositionVoids_.append(text, fields.depositionVoids(i, j));
  bedLimit_.append(text, fields.bedLimit(i, j));
  text += ',';
  appendIntegerField(text, fields.bedCode(i, j), 4);
}

// Compared bit by bit: a zero may have a sign, and not-a-number equals itself here.
void CellRecords::RealColumn::append(std::string& record, double newValue) {
  const auto bits = [](double v) { return std::bit_cast<std::uint64_t>(v); };
  if (text.empty() || bits(newValue) != bits(value)) {
    value = newValue;
    text = ',';
    appendFixedField(text, value, width, decimals);
  }
  record += text;
}

}  // namespace nivaro
