// Path routines, and their exports in buffers of exact length. Sections: "length" (of results),
// "path", "file".
#include "files/path.hpp"
#include "fuzz/exact_buffer.hpp"
#include "text/transform.hpp"

namespace nivaro::fuzz {
namespace {

constexpr std::string_view kSeparators = "/\\";

void requireParts(std::string_view path) {
  const std::string whole(trimmed(path));
  require(fileFolderPath(path) + fileNameExt(path) == whole ||
              trimmed(fileFolderPath(path)) != fileFolderPath(path),
          "folder and name make the path");
  require(fileNameExt(path).find_first_of(kSeparators) == std::string::npos,
          "a name has no separator");
  require(fileExt(path) == lowerCase(fileExtKc(path)), "the extension in lower case");
  require(fileExtKc(path).find_first_of(kSeparators) == std::string::npos &&
              whole.ends_with(fileExtKc(path)),
          "an extension is the end of its name");
  require(whole.starts_with(fileNamePath(path)) && whole.starts_with(fileNamePathNoTail(path)),
          "a path without its end is the start of the path");
  if (fileNamePath(path) != whole)
    require(trimmed(whole.substr(0, whole.size() - fileExtKc(path).size())) == fileNamePath(path),
            "path without extension");
  require(fileName(path).starts_with(fileNameNoTail(path)), "a tail is the end of its name");
  require(fileTail(path).empty() || fileTail(path).front() == '_', "a tail begins with its mark");
}

void requireTidy(std::string_view path) {
  const std::string tidy = removeDotDot(path);
  require(tidy.find('/') == std::string::npos, "tidy paths have backslashes only");
  require(tidy.find("\\.\\") == std::string::npos, "no step to the folder itself is left");
  require(tidy.size() <= trimmed(path).size(), "tidying makes no path longer");

  std::string cleaned(path);
  const std::string result = cleanPath(cleaned);
  require(result == cleaned && !cleaned.starts_with(' ') && !cleaned.ends_with(' '),
          "a clean path has no blanks around");
  std::string again = cleaned;
  require(cleanPath(again) == cleaned, "a clean path is clean");
}

void callExports(std::string_view path, std::string_view file, std::size_t length) {
  requireResults({{FILEEXT, fileExt},
                  {FILEEXTKC, fileExtKc},
                  {FILE___EXT, fileTail},
                  {FILENAME, fileName},
                  {FILENAMEEXT, fileNameExt},
                  {FILENAMENO_, fileNameNoTail},
                  {FILENAMEPATH, fileNamePath},
                  {FILENAMEPATHNO_, fileNamePathNoTail},
                  {FILEFOLDERPATH, fileFolderPath},
                  {DOSPATH, dosPath},
                  {CORRECTSLASH, correctSlash},
                  {REMOVEDOTDOT, removeDotDot}},
                 path, length);
  const Buffer whole(path);
  const Buffer second(file);
  requireResult(length, addFolder(path, file), ADDFOLDER, whole, second);

  const Buffer cleaned(path);
  const std::string result = resultOf(length, CLEANPATH, cleaned);
  requireHolds(result, trimmed(cleaned.text()));
  call(CHANGEDRIVE, whole, second);
  require(path.size() < 2 || whole.text().substr(1) == path.substr(1),
          "nothing but the drive changes");
}

}  // namespace

void tryInput(const Archive& input, const Folder&) {
  const std::string_view path = input.value("path");
  requireParts(path);
  requireTidy(path);
  callExports(path, input.value("file"),
              static_cast<std::size_t>(Numbers(input.text("length")).upTo(2000)));
}

}  // namespace nivaro::fuzz
