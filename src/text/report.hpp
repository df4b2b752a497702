// What went wrong, as a value. The floors below the message writer return it, the floors above
// deliver it (messages/diagnostics) and decide whether the run goes on.
#pragma once

#include <string>
#include <utility>
#include <variant>

namespace nivaro {

struct Report {
  // Level word, number and text, whole, so that a search for the text finds it.
  std::string line1{};
  std::string line2{};
  std::string line3{};
  std::string detail1{};
  std::string detail2{};
  std::string detail3{};
  int blankLines = 1;  // empty lines before it, as the message writer takes them
};

// A value, or the report that says why there is none.
template <typename T>
class Outcome {
 public:
  Outcome(T value) : content_(std::move(value)) {}
  Outcome(Report report) : content_(std::move(report)) {}

  explicit operator bool() const { return std::holds_alternative<T>(content_); }

  const T& value() const { return std::get<T>(content_); }
  T& value() { return std::get<T>(content_); }
  const Report& report() const { return std::get<Report>(content_); }

 private:
  std::variant<T, Report> content_;
};

}  // namespace nivaro
