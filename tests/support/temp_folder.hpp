// A folder of its own for each test, gone with it, and files in it by name.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

#include "platform/native_file.hpp"

namespace nivaro::test {

class TempFolder {
 public:
  TempFolder() {
    std::random_device number;
    do {
      folder_ = std::filesystem::temp_directory_path() / "nivaro_";
      folder_ += std::to_string(number());
    } while (!std::filesystem::create_directory(folder_));
  }
  ~TempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  std::string path(std::string_view name) const { return (folder_ / name).string(); }

  std::string write(std::string_view name, std::string_view content) const {
    std::ofstream(path(name), std::ios::binary) << content;
    return path(name);
  }

  std::string bytes(std::string_view name) const {
    std::ifstream file(path(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  // A text file, with "\n" for the line ends of this system.
  std::string read(std::string_view name) const {
    const std::string content = bytes(name);
    std::string text;
    for (std::size_t at = 0; at < content.size();) {
      const bool atLineEnd = content.compare(at, lineEnd().size(), lineEnd()) == 0;
      text += atLineEnd ? '\n' : content[at];
      at += atLineEnd ? lineEnd().size() : 1;
    }
    return text;
  }

 private:
  std::filesystem::path folder_;
};

}  // namespace nivaro::test
