// Reads one message of the log into its staging area. Nothing is verified: no checksum, no length, no line
// end. A wrong length shifts the stream and every later read runs on from there; nothing searches for the
// next valid id.
#pragma once

#include "log/log_stream.h"
#include "log/message_staging.h"

namespace orbconv {

// Reads the next message and returns its id, known or not. At the end of the log the id is that of no
// message. A message cut off in its middle returns its id all the same, with the area holding what came.
//
// Bodies that are longer than their area fill it and the rest is read past; a count of elements stops at
// the area's room; a negative number of bytes reads none.
MessageId readMessage(LogStream& stream, MessageStaging& staging);

}  // namespace orbconv
