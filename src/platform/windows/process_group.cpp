#include "platform/windows/process_group.h"

#include <tlhelp32.h>

namespace skyhop::platform {

ProcessGroup::ProcessGroup(HANDLE process) : job_(::CreateJobObjectW(nullptr, nullptr)) {
  if (!job_.IsOpen() || !::AssignProcessToJobObject(job_.Get(), process)) return;
  // From now on, children join the group automatically. Add a child that the process has already
  // started.
  const DWORD parent = ::GetProcessId(process);
  const Handle snapshot(::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
  PROCESSENTRY32W entry{};
  entry.dwSize = sizeof entry;
  if (!snapshot.IsOpen() || !::Process32FirstW(snapshot.Get(), &entry)) return;
  do {
    if (entry.th32ParentProcessID != parent) continue;
    const Handle child(
        ::OpenProcess(PROCESS_SET_QUOTA | PROCESS_TERMINATE, FALSE, entry.th32ProcessID));
    if (child.IsOpen()) ::AssignProcessToJobObject(job_.Get(), child.Get());
  } while (::Process32NextW(snapshot.Get(), &entry));
}

void ProcessGroup::End() {
  if (job_.IsOpen()) ::TerminateJobObject(job_.Get(), 1);
}

void ProcessGroup::EndWithThisProgram(bool yes) {
  if (!job_.IsOpen()) return;
  // The system closes a program's handles when it ends, and closing the last handle ends the group.
  JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
  limits.BasicLimitInformation.LimitFlags = yes ? JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE : 0;
  ::SetInformationJobObject(job_.Get(), JobObjectExtendedLimitInformation, &limits, sizeof limits);
}

bool ProcessGroup::IsRunning() const {
  JOBOBJECT_BASIC_ACCOUNTING_INFORMATION facts{};
  return job_.IsOpen() &&
         ::QueryInformationJobObject(job_.Get(), JobObjectBasicAccountingInformation, &facts,
                                     sizeof facts, nullptr) != 0 &&
         facts.ActiveProcesses > 0;
}

}  // namespace skyhop::platform
