// Paths taken apart, put together and tidied, by the rules of the host's system: "\" separates and
// "/" is accepted for it, a drive is a letter and a colon, two leading backslashes name a network
// share. Purely textual; where a path lies on this machine is platform/host_path.
//
// Paths come with or without trailing blanks; results have none. An empty result stands for "there
// is no such part".
#pragma once

#include <string>
#include <string_view>

namespace nivaro {

// The extension starts at the last "." of the name and includes it; `fileExt` gives it in lower
// case, `fileExtKc` keeps its case.
std::string fileExt(std::string_view path);
std::string fileExtKc(std::string_view path);

// The name behind the last separator: with its extension, and without it (the base name). A name
// in a folder that begins with its only dot is all base name (".hidden").
std::string fileNameExt(std::string_view path);
std::string fileName(std::string_view path);

// The tail of a base name is its last "_" and what follows: "_h" of "M01_5m_h.dat". `fileTail`
// gives it in lower case, `fileNameNoTail` gives the base name before it.
std::string fileTail(std::string_view path);
std::string fileNameNoTail(std::string_view path);

// The whole path without its extension, and without extension and tail. A path that is nothing but
// an extension (".mif") stays whole, unlike in `fileName`.
std::string fileNamePath(std::string_view path);
std::string fileNamePathNoTail(std::string_view path);

// The path up to and including its last separator.
std::string fileFolderPath(std::string_view path);

// Every "/" turned into "\"; leading blanks stay.
std::string dosPath(std::string_view path);

// Without leading blanks, as paths are shown on the console.
std::string correctSlash(std::string_view path);

// Takes leading blanks and doubled separators out of `path` itself and returns it too. A pair at
// the very start names a network share and stays; so then does every later pair of the same
// character.
std::string cleanPath(std::string& path);

// Backslashes only, single ones behind the start, "folder\..\" and ".\" resolved where the text
// alone allows it.
std::string removeDotDot(std::string_view path);

// `file` placed in `folder` and normalised as by `removeDotDot`. A file with a drive or on a
// network share is taken as it is; without a file the folder is the result, "." when that is blank
// too.
std::string addFolder(std::string_view folder, std::string_view file);

// Puts the first character of `drive` in place of the drive letter of `path`; nothing happens to a
// path without a drive, or for a blank drive.
void changeDrive(std::string& path, std::string_view drive);

}  // namespace nivaro
