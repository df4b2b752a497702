// The message table: one row of comma-separated fields for each numbered or levelled message.
#pragma once

#include <string>

#include "messages/record.hpp"
#include "platform/list_input.hpp"
#include "platform/unit.hpp"

namespace nivaro {

// The row of the message held in the record: number, level, place, text, details, link.
std::string messageTableRow(const MessageRecord& record);

// Reads the next row back into line 1 and detail 1 of the record; the other fields are read and not
// used.
ReadStatus readMessageTableRow(Unit& table, MessageRecord& record);

}  // namespace nivaro
