// What the messages of the log are, in a few words, for people.
#pragma once

#include <string_view>

#include "log/message_table.h"

namespace orbconv::inspect {

// Of at most 40 characters; "unknown" for an id that the format does not have.
std::string_view messageMeaning(MessageId id);

}  // namespace orbconv::inspect
