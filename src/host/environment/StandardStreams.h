#pragma once

namespace bukorval::host {

/// To be called before anything is opened: a standard stream that came closed is held against other files, and a
/// closed pipe or a file that may not grow is an error of the write instead of the end of the program.
void prepareStandardStreams();

/// Sends on what was written to standard output. Throws dati::Failure when it did not get there: a full disk, a closed
/// pipe. The reason is the system's last one, so nothing else should have failed since the writing began.
void flushOutput();

}  // namespace bukorval::host
