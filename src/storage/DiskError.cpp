#include "DiskError.h"

#include "Status.h"

namespace scorvane {

Message diskErrorMessage(int errorNumber, const std::string& systemText) {
    if (errorNumber == diskerr::PermissionDenied)
        return {"Disk write-protected", "Disk Error", Buttons::Ok, Icon::Critical, Answer::Ok};
    if (errorNumber == diskerr::DeviceTimeout || errorNumber == diskerr::DiskNotReady)
        return {systemText, "Error", Buttons::RetryCancel, Icon::Warning, Answer::Retry};
    return {"Unrecoverable Error - " + systemText, "Error", Buttons::Ok, Icon::Critical,
            Answer::Ok};
}

DiskErrorAction DiskError(Prompter& prompter, int errorNumber, const std::string& systemText) {
    const Message m = diskErrorMessage(errorNumber, systemText);
    const Answer a = prompter.ask(m);
    if (m.buttons == Buttons::RetryCancel && a == Answer::Retry)
        return DiskErrorAction::Retry;
    prompter.endProgram(1);
    return DiskErrorAction::EndProgram;
}

Status withDiskErrors(Prompter& prompter, const std::function<Status()>& op) {
    for (;;) {
        Status s = op();
        if (s.kind() != ErrorKind::Disk)
            return s;
        if (DiskError(prompter, s.code(), s.message()) == DiskErrorAction::Retry)
            continue;
        return Status::error(ErrorKind::ProgramEnded, s.message(), s.code());
    }
}

} // namespace scorvane
