#pragma once

#include "Prompter.h"
#include "Status.h"

#include <functional>

#include <string>

namespace scorvane {

enum class DiskErrorAction { Retry, EndProgram };

// The message the disk error handler shows for an error number and the system's text for it.
Message diskErrorMessage(int errorNumber, const std::string& systemText);

// The common disk error handler. Shows the message; write protection and any unknown error end
// the program, a disk that is not ready offers Retry or Cancel. When the answer is to end, the
// prompter's endProgram is called before returning EndProgram.
DiskErrorAction DiskError(Prompter& prompter, int errorNumber, const std::string& systemText);

// Runs a file operation under the disk error handler: a Disk status goes to DiskError, which may
// have it retried; when the handler ends the program the result is of kind ProgramEnded.
Status withDiskErrors(Prompter& prompter, const std::function<Status()>& op);

} // namespace scorvane
