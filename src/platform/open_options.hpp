// How a file is opened. The combinations in use stand in files/open_mode.
#pragma once

namespace nivaro {

struct OpenOptions {
  enum class Form { Formatted, Unformatted, Binary };
  enum class Status { Old, Replace, Unknown };  // must exist; emptied or created; kept or created
  enum class Action { Read, Write, ReadWrite };
  // What others may do with the file meanwhile: everything, renaming and deleting included, or only
  // read it.
  enum class Sharing { Free, Guarded };
  enum class Position { Start, End };

  Form form = Form::Formatted;
  Status status = Status::Old;
  Action action = Action::Read;
  Sharing sharing = Sharing::Free;
  Position position = Position::Start;
  bool bigEndian = false;  // numbers in the file: for whoever encodes or decodes them
  int recordLength = 0;    // above 0: direct access, in units of bytes
};

}  // namespace nivaro
