#include "files/path.hpp"

#include <algorithm>

#include "text/blank_padded.hpp"
#include "text/transform.hpp"

namespace nivaro {
namespace {

constexpr std::string_view kSeparators = "/\\";
constexpr std::string_view kPair = "\\\\";
constexpr std::string_view kParent = "\\..\\";
constexpr std::string_view kHere = "\\.\\";
constexpr std::size_t kNone = std::string_view::npos;

// Longer paths are cut by the routines that tidy.
constexpr std::size_t kTidyWidth = 1000;

// Start of the name: behind the last separator.
std::size_t nameStart(std::string_view path) {
  return path.find_last_of(kSeparators) + 1;
}

// The dot of the extension; none when the last dot belongs to a folder.
std::size_t extensionDot(std::string_view path) {
  const std::size_t dot = path.rfind('.');
  return dot != kNone && dot >= nameStart(path) ? dot : kNone;
}

std::string_view extension(std::string_view path) {
  const std::size_t dot = extensionDot(path);
  return dot == kNone ? std::string_view() : path.substr(dot);
}

std::string_view baseName(std::string_view path) {
  const std::size_t start = nameStart(path);
  const std::string_view name = path.substr(start);
  const std::size_t dot = name.rfind('.');
  const bool isHiddenFile = start > 0 && dot == 0;
  return isHiddenFile ? name : name.substr(0, dot);
}

std::string_view withoutExtension(std::string_view path) {
  const std::size_t dot = extensionDot(path);
  return dot == 0 ? path : path.substr(0, dot);
}

std::string result(std::string_view path) {
  return std::string(trimmed(path));
}

// A pair of separators further left than this starts a network path.
void removeDoubledBackslashes(std::string& path) {
  constexpr std::size_t kFirstDoubled = 2;
  for (std::size_t pair = path.find(kPair); pair != kNone && pair >= kFirstDoubled;
       pair = path.find(kPair)) {
    path.erase(pair + 1, 1);
  }
}

// The first "\..\" that has a folder before it to go up from. A chain of parent references at the
// start has none; it is passed over as a whole, and the search goes on behind its last backslash.
std::size_t resolvableParent(std::string_view path) {
  std::size_t parent = path.find(kParent);
  if (parent == 0) return kNone;
  while (parent != kNone && parent >= 2 && path.substr(parent - 2, 2) == "..") {
    parent = path.find(kParent, parent + kParent.size());
  }
  return parent;
}

void resolveParents(std::string& path) {
  for (std::size_t parent = resolvableParent(path); parent != kNone;
       parent = resolvableParent(path)) {
    const std::size_t folderStart = path.rfind('\\', parent - 1) + 1;
    path.erase(folderStart, parent + kParent.size() - folderStart);
  }
}

void removeHere(std::string& path) {
  for (std::size_t here = path.find(kHere); here != kNone; here = path.find(kHere)) {
    path.erase(here + 1, 2);
  }
}

std::string normalised(std::string_view path) {
  std::string tidy(leftTrimmed(path).substr(0, kTidyWidth));
  std::replace(tidy.begin(), tidy.end(), '/', '\\');
  removeDoubledBackslashes(tidy);
  resolveParents(tidy);
  removeHere(tidy);
  return std::string(stripped(tidy));
}

// Whether the file says itself where it lies: on a drive or on a network share.
bool isPlaced(std::string_view file) {
  return file.find(':') != kNone || file.find(kPair) != kNone;
}

}  // namespace

std::string fileExt(std::string_view path) {
  return lowerCase(fileExtKc(path));
}

std::string fileExtKc(std::string_view path) {
  return result(extension(trimmed(path)));
}

std::string fileNameExt(std::string_view path) {
  return result(path.substr(nameStart(path)));
}

std::string fileName(std::string_view path) {
  return result(baseName(trimmed(path)));
}

std::string fileTail(std::string_view path) {
  const std::string name = fileName(path);
  const std::size_t tail = name.rfind('_');
  return tail == kNone ? std::string() : lowerCase(name.substr(tail));
}

std::string fileNameNoTail(std::string_view path) {
  const std::string name = fileName(path);
  return result(name.substr(0, name.rfind('_')));
}

std::string fileNamePath(std::string_view path) {
  return result(withoutExtension(trimmed(path)));
}

std::string fileNamePathNoTail(std::string_view path) {
  std::string whole = fileNamePath(path);
  const std::size_t tail = whole.rfind('_');
  // A path that is nothing but a tail stays whole, like one that is nothing but an extension.
  if (tail == kNone || tail == 0 || tail < nameStart(whole)) return whole;
  return result(whole.substr(0, tail));
}

std::string fileFolderPath(std::string_view path) {
  return result(path.substr(0, nameStart(path)));
}

std::string dosPath(std::string_view path) {
  std::string dos = result(path);
  std::replace(dos.begin(), dos.end(), '/', '\\');
  return dos;
}

std::string correctSlash(std::string_view path) {
  return std::string(stripped(path));
}

std::string cleanPath(std::string& path) {
  path = stripped(path).substr(0, kTidyWidth);

  // The later of the first pair of each kind; one at the very start, a network path, is left.
  const auto doubled = [&path] {
    const std::size_t backslashes = path.find(kPair);
    const std::size_t slashes = path.find("//");
    return std::max(backslashes == kNone ? 0 : backslashes, slashes == kNone ? 0 : slashes);
  };
  for (std::size_t pair = doubled(); pair > 0; pair = doubled()) path.erase(pair + 1, 1);
  path.resize(trimmedLength(path));
  return path;
}

std::string removeDotDot(std::string_view path) {
  return normalised(path);
}

std::string addFolder(std::string_view folder, std::string_view file) {
  const std::string_view wanted = stripped(file);
  const std::string_view base = trimmed(folder);
  if (wanted.empty()) return base.empty() ? "." : normalised(base);
  if (base.empty() || isPlaced(wanted)) return normalised(wanted);

  std::string path(base);
  if (kSeparators.find(path.back()) == kNone) path += '\\';
  return normalised(path.append(wanted));
}

void changeDrive(std::string& path, std::string_view drive) {
  if (trimmed(drive).empty() || path.size() < 2 || path[1] != ':') return;
  path[0] = drive.front();
}

}  // namespace nivaro
