// Small transformations of texts. Texts come with or without trailing blanks; results have none.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace nivaro {

// Without the leading blanks.
std::string trimF(std::string_view text);

std::string upperCase(std::string_view text);
std::string lowerCase(std::string_view text);

// Without any blank; without any single or double quote character.
std::string removeSpaces(std::string_view text);
std::string removeQuotes(std::string_view text);

// Closes the gaps that tabs leave: words that only a tab separates join.
void removeTabs(std::string& text);

// With "?" for every control code but the tab: a file that is no text must not play tricks with the
// screen.
std::string printable(std::string_view text);

// Every double quote doubled, for quoted comma-separated fields.
std::string doubleQuote(std::string_view text);

// Control characters but the tab turned into blanks: a line break of the host's would end the record
// that the text is part of, within its quotes.
std::string oneLine(std::string_view text);

// "_" for every blank, leading ones too; "Blank" for a blank text.
std::string spaceToUnderscore(std::string_view text);

// Letters and digits are kept, each other character becomes `replacement`, or goes when that is the
// character of code 0. A result that would be blank is "X".
std::string alphanumericOnly(std::string_view text, char replacement);

// Letters, digits and "_" only, as column names of dBase and MIF files want them; "X" when nothing
// is left.
std::string cleanAttributeName(std::string_view text);

// Takes the tabs out of `text` itself; whether it is blank then.
bool blank(std::string& text);

// At most 256 characters of the text.
std::string ss256(std::string_view text);

// Length of a text that may be filled with blanks or with characters of code 0. Ends the text for
// hosts that look for code 0: that character is written right behind it where there is room.
std::int32_t lensl(std::span<char> text);

// The first `oldText` (letter case ignored), or every one, becomes `newText`; trailing blanks of
// both do not count. The search goes on behind an inserted text, so that it ends even when the new
// text holds the old one. A blank old text changes nothing.
std::string replace(std::string_view text, std::string_view oldText, std::string_view newText);
std::string replaceAll(std::string_view text, std::string_view oldText, std::string_view newText);

}  // namespace nivaro
