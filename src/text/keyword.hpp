// Tests of commands against keywords. Trailing blanks never count; letter case counts in `asameCs`
// only.
#pragma once

#include <string>
#include <string_view>

namespace nivaro {

// Whether the flag occurs anywhere in the text. Leading blanks of the flag belong to it; a blank
// flag occurs in every text. Allocates nothing.
bool flagExists(std::string_view text, std::string_view flag);

// The same, and what follows the first such flag; `rest` is empty when there is none. The view is a
// part of `text`.
bool flagExistsRet(std::string_view text, std::string_view flag, std::string_view& rest);

// Whether two texts are the same but for quotes, tabs, blanks around and, in `asame`, letter case.
bool asame(std::string_view a, std::string_view b);
bool asameCs(std::string_view a, std::string_view b);

// What `asame` compares: texts are the same when these are.
std::string asameKey(std::string_view text);

// Commands that read or write the layer or cell table of a keyword: "Read MI <keyword>" and
// "Read GIS <keyword>", the same with "Write", "Read MID <keyword>" and "Read RowCol <keyword>".
bool readGis(std::string_view command, std::string_view keyword);
bool writeGis(std::string_view command, std::string_view keyword);
bool readRowCol(std::string_view command, std::string_view keyword);

// The same for any keyword. "Read MI" is part of "Read MID", so `readGisAny` takes both.
bool readGisAny(std::string_view command);
bool readRowColAny(std::string_view command);

// Whether the line starts with a digit, "-" or ".", or is blank; takes its leading blanks off.
bool numberLine(std::string& line);

// Whether the text is a row of digits; takes its leading blanks off.
bool positiveIntegerNumber(std::string& text);

}  // namespace nivaro
