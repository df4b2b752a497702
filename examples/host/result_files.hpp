// The result folder: text files of the host's own, and the list of all that was written.
#pragma once

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace host {

struct ResultError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Creates the folder. Every file in it begins with the case's name.
class ResultFolder {
 public:
  ResultFolder(const std::filesystem::path& folder, const std::string& name);

  const std::filesystem::path& folder() const { return folder_; }
  // Folder and name, to which the module adds its endings.
  std::string prefix() const { return (folder_ / name_).string(); }
  std::filesystem::path file(std::string_view ending) const;

  void write(std::string_view ending, std::string_view content) const;
  // Adds to the end of a file, so that a host that is killed leaves what it had reached.
  void append(std::string_view ending, std::string_view content) const;
  // Files of this name that are there, sorted; of a pair of a layer, the .mif.
  std::vector<std::filesystem::path> list() const;

 private:
  void put(std::string_view ending, std::string_view content, std::ios::openmode mode) const;

  std::filesystem::path folder_;
  std::string name_;
};

}  // namespace host
