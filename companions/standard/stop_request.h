// Ends that come from outside (Ctrl-C, a job's time limit): the run is to take its half file away first.
#pragma once

namespace orbconv::standard {

// From here on the signals that ask a program to end are only noted.
void noteStopRequests();

// The signal that was noted; 0 as long as none has come.
int stopRequested();

// Thrown when the process has been asked to end.
struct Stopped {};
void endIfAsked();

// Ends the process as the noted signal would have. Returns only if that cannot be, with the reason's number.
int endAsRequested();

}  // namespace orbconv::standard
