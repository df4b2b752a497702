#include "result_files.hpp"

#include <algorithm>

namespace host {

namespace fs = std::filesystem;

ResultFolder::ResultFolder(const fs::path& folder, const std::string& name)
    : folder_(folder), name_(name) {
  std::error_code error;
  fs::create_directories(folder_, error);
  if (!fs::is_directory(folder_))
    throw ResultError("The result folder " + folder_.string() +
                      " cannot be created: " + error.message() + ".");
  // What not every run writes, or only its end, must not be left over from another.
  for (const std::string_view ending :
       {"_measured.csv", "_summary.csv", "_messages.mif", "_messages.mid", "_messages_P.shp",
        "_messages_P.shx", "_messages_P.dbf", "_messages.qgs"})
    fs::remove(file(ending), error);
}

fs::path ResultFolder::file(std::string_view ending) const {
  return folder_ / (name_ + std::string(ending));
}

void ResultFolder::put(std::string_view ending, std::string_view content,
                       std::ios::openmode mode) const {
  std::ofstream out(file(ending), std::ios::binary | mode);
  out.write(content.data(), static_cast<std::streamsize>(content.size()));
  out.close();
  if (!out) throw ResultError("The file " + file(ending).string() + " cannot be written.");
}

void ResultFolder::write(std::string_view ending, std::string_view content) const {
  put(ending, content, std::ios::trunc);
}

void ResultFolder::append(std::string_view ending, std::string_view content) const {
  put(ending, content, std::ios::app);
}

std::vector<fs::path> ResultFolder::list() const {
  constexpr std::string_view kEndings[] = {".2dm",
                                           "_morDH.dat",
                                           "_mor.wor",
                                           ".mlf",
                                           "_mor_check.mif",
                                           "_messages.mif",
                                           "_messages_P.shp",
                                           "_messages.qgs",
                                           "_bed_change.csv",
                                           "_profile.csv",
                                           "_measured.csv",
                                           "_summary.csv"};
  std::vector<fs::path> files;
  for (const std::string_view ending : kEndings) {
    if (fs::exists(file(ending))) files.push_back(file(ending));
  }
  std::sort(files.begin(), files.end());
  return files;
}

}  // namespace host
