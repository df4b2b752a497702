#include "platform/host_path.hpp"

#include <dirent.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <memory>
#include <system_error>
#include <utility>

#include "platform/letters.hpp"

namespace nivaro {
namespace {

namespace fs = std::filesystem;

bool equalIgnoringCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return lower(x) == lower(y); });
}

// Both separators are a slash to this system.
fs::path withSlashes(std::string_view path) {
  std::string text(path);
  std::replace(text.begin(), text.end(), '\\', '/');
  return text;
}

bool isThere(const fs::path& path) {
  std::error_code ignored;
  return fs::exists(path, ignored);
}

bool isFolder(const fs::path& path) {
  std::error_code ignored;
  return fs::is_directory(path, ignored);
}

bool isFile(const fs::path& path) {
  return isThere(path) && !isFolder(path);
}

struct CloseListing {
  void operator()(DIR* listing) const { closedir(listing); }
};

// What a folder holds under a name in any letter case. The exact name is looked up on its own: it
// counts also in a folder that may be entered but not listed. The standard's own iterator would end
// the process where memory is short.
void addEntries(const fs::path& folder, const fs::path& name, std::vector<fs::path>& found) {
  const fs::path exact = folder / name;
  if (isThere(exact)) found.push_back(exact);

  const std::unique_ptr<DIR, CloseListing> listing(opendir(folder.empty() ? "." : folder.c_str()));
  if (!listing) return;
  while (const dirent* entry = readdir(listing.get())) {
    const std::string_view other = entry->d_name;
    if (other != name.native() && equalIgnoringCase(other, name.native()))
      found.push_back(folder / other);
  }
}

enum class Kind { File, Folder };

// Of entries that differ in letter case only, those of the kind looked for.
void keepOnly(Kind kind, std::vector<fs::path>& entries) {
  std::erase_if(entries, [&](const fs::path& entry) {
    return kind == Kind::File ? !isFile(entry) : !isFolder(entry);
  });
}

// Once the place of something new is as given, letter case is no question any more.
void preferExact(const fs::path& asGiven, std::vector<fs::path>& places) {
  if (std::find(places.begin(), places.end(), asGiven) != places.end()) places = {asGiven};
}

struct Search {
  std::vector<fs::path> places;  // what the path may mean: one, or several that differ in case only
  bool exists = false;           // else the last names of the places are kept as given
};

// All spellings of the folders are followed down, since the exact one need not be the one that
// holds the file.
Search search(const fs::path& path, Kind kind) {
  std::vector<fs::path> places = {path.root_path()};
  fs::path asGiven = path.root_path();
  const fs::path names = path.relative_path();
  for (auto name = names.begin(); name != names.end(); ++name) {
    std::vector<fs::path> next;
    for (const fs::path& place : places) addEntries(place, *name, next);
    keepOnly(std::next(name) == names.end() ? kind : Kind::Folder, next);
    if (next.empty()) {
      preferExact(asGiven, places);
      for (; name != names.end(); ++name)
        for (fs::path& place : places) place /= *name;
      return {std::move(places), false};
    }
    places = std::move(next);
    asGiven /= *name;
  }
  return {std::move(places), true};
}

Search searchFolder(std::string_view folder) {
  const std::size_t last = folder.find_last_not_of("/\\ ");
  if (last == std::string_view::npos) return {{}, true};
  return search(withSlashes(folder.substr(0, last + 1)), Kind::Folder);
}

}  // namespace

HostPath hostPath(std::string_view path) {
  const fs::path asGiven = withSlashes(path);
  if (isFile(asGiven)) return {asGiven.string(), true, {}};

  const Search found = search(asGiven, Kind::File);
  if (found.places.size() == 1) return {found.places[0].string(), found.exists, {}};
  HostPath result{asGiven.string(), false, {}};
  for (const fs::path& place : found.places) result.ambiguous.push_back(place.string());
  std::sort(result.ambiguous.begin(), result.ambiguous.end());
  return result;
}

std::string absolutePath(std::string_view path) {
  std::error_code ignored;
  return fs::absolute(hostPath(path).path, ignored).lexically_normal().string();
}

bool folderExists(std::string_view folder) {
  return searchFolder(folder).exists;
}

bool createFolder(std::string_view folder) {
  const Search found = searchFolder(folder);
  if (found.exists) return true;
  if (found.places.size() != 1) return false;
  std::error_code ignored;
  fs::create_directories(found.places[0], ignored);
  return isFolder(found.places[0]);
}

}  // namespace nivaro
