// The screen and the keyboard of whoever runs the host.
#pragma once

#include <string>
#include <string_view>

namespace nivaro {

class Console {
 public:
  virtual ~Console() = default;

  // Text and a line end; ends a line that was left open.
  virtual void line(std::string_view text) = 0;

  // Text without a line end, shown at once, so that a question or an outcome can follow on the
  // line.
  virtual void open(std::string_view text) = 0;

  // One line of standard input without its end; false when standard input has ended.
  virtual bool readLine(std::string& answer) = 0;
};

// Standard output and standard input. Shares the C library's streams, so that the module's lines
// and the host's keep their order. Write errors are ignored.
class StandardConsole final : public Console {
 public:
  void line(std::string_view text) override;
  void open(std::string_view text) override;
  bool readLine(std::string& answer) override;
};

}  // namespace nivaro
