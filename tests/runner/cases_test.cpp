// Every file of tests/cases as a test named for it.
#include <gtest/gtest.h>

#include "runner/case_run.hpp"

namespace nivaro::test {
namespace {

// One folder for the process: the tests run in it, one behind the other.
const fuzz::Folder& folder() {
  static const fuzz::Folder folder;
  return folder;
}

class Case : public testing::Test {
 public:
  explicit Case(const std::string& text) : text_(text) {}

  void TestBody() override {
    for (const std::string& fault : play(fuzz::Archive(text_), folder(), CaseKind::Meant))
      ADD_FAILURE() << fault;
    folder().clear();
  }

 private:
  std::string text_;
};

void registerCases(const std::filesystem::path& cases) {
  for (const auto& entry : std::filesystem::recursive_directory_iterator(cases)) {
    const std::filesystem::path& file = entry.path();
    if (!entry.is_regular_file() || file.extension() == ".md") continue;
    std::ifstream stream(file, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(stream), {}};
    testing::RegisterTest(file.parent_path().filename().string().c_str(),
                          file.filename().string().c_str(), nullptr, nullptr, __FILE__, __LINE__,
                          [text]() -> Case* { return new Case(text); });
  }
}

}  // namespace
}  // namespace nivaro::test

int main(int count, char** arguments) {
  testing::InitGoogleTest(&count, arguments);
  nivaro::test::registerCases(count > 1 ? arguments[1] : NIVARO_CASES);
  return RUN_ALL_TESTS();
}
