#include "process/WalkProcesses.h"

#include <cstring>
#include <string>

#include "desktop/modFiles.h"
#include "platform/kernel32.h"
#include "platform/machine.h"
#include "process/ClassChange.h"
#include "process/KillLists.h"
#include "process/KnownEmulators.h"
#include "runtime/Boxes.h"
#include "runtime/ListBox.h"
#include "runtime/Text.h"

namespace velmaro {
namespace {

// What a named walk does to the process that it finds.
enum Action { SetNormal = 0, SetHigh = 1, SetRealTime = 2, SetIdle = 3, Terminate = 4 };

std::int32_t FoldAliases(std::int32_t mode) {
  switch (mode) {
    case platform::NORMAL_PRIORITY_CLASS:
      return SetNormal;
    case platform::IDLE_PRIORITY_CLASS:
      return SetIdle;
    case platform::HIGH_PRIORITY_CLASS:
      return SetHigh;
    case platform::REALTIME_PRIORITY_CLASS:
      return SetRealTime;
    default:
      return mode;
  }
}

// The file in a path.
std::string FileOf(const std::string& path) {
  if (!platform::NamesHoldAnyCharacter()) return ExtractFileName(path);
  return path.substr(path.rfind(platform::PathSeparator()) + 1);
}

// The name as processes bear it, in lower case: without folder, blanks and quotes.
std::string SoughtName(std::string_view name) {
  std::string sought(name);
  if (sought.find(platform::PathSeparator()) != std::string::npos) sought = FileOf(sought);
  return LCase(DropQuotes(Trim(sought)));
}

std::string EntryName(const platform::PROCESSENTRY32& entry) {
  return LCase({entry.szExeFile, strnlen(entry.szExeFile, sizeof entry.szExeFile)});
}

bool PassesFilter(const platform::PROCESSENTRY32& entry, std::int32_t mode) {
  switch (mode) {
    case 0:
      return true;
    case 1:
      return entry.pcPriClassBase == 8;
    case 2:
      return entry.pcPriClassBase == 13;
    case 3:
      return entry.pcPriClassBase == 24;
    case 4:
      return entry.pcPriClassBase == 4;
    case 5:
      return IsKnownEmulator(EntryName(entry));
    default:
      return false;
  }
}

struct Tag {
  std::string text;
  std::int32_t priorityIndex;
};

Tag TagOf(std::int32_t basePriority) {
  switch (basePriority) {
    case 4:
      return {"[Idle]", SetIdle};
    case 8:
    case 9:
    case 11:
      return {"[Normal]", SetNormal};
    case 13:
      return {"[HIGH]", SetHigh};
    case 24:
      return {"[REAL]", SetRealTime};
    default:
      return {"[" + std::to_string(basePriority) + "]", SetNormal};
  }
}

void AddProcessRow(ListBox& list, const platform::PROCESSENTRY32& entry) {
  auto tag = TagOf(entry.pcPriClassBase);
  list.AddItem(std::move(tag.text) + '\t' + EntryName(entry));
  list.SetItemData(list.ListCount() - 1, tag.priorityIndex);
}

void TerminateUnlessSpared(platform::Handle process, const std::string& name, bool quiet) {
  if (!CanKillProcess(name)) return;
  constexpr auto question = platform::MB_YESNO | platform::MB_ICONQUESTION | platform::MB_DEFBUTTON2;
  if (quiet || MsgBox("Do you want to terminate the process '" + name + "'?", question) == platform::IDYES)
    platform::TerminateProcess(process, 0);
}

void Act(std::uint32_t processId, const std::string& name, std::int32_t mode, bool quiet) {
  const platform::OwnedHandle process(platform::OpenProcess(platform::PROCESS_ALL_ACCESS, false, processId));
  switch (mode) {
    case SetNormal:
      return ChangeClass(process.get(), name, platform::NORMAL_PRIORITY_CLASS, quiet);
    case SetHigh:
      return ChangeClass(process.get(), name, platform::HIGH_PRIORITY_CLASS, quiet);
    case SetRealTime:
      return ChangeClass(process.get(), name, platform::REALTIME_PRIORITY_CLASS, quiet);
    case SetIdle:
      return ChangeClass(process.get(), name, platform::IDLE_PRIORITY_CLASS, quiet);
    case Terminate:
      return TerminateUnlessSpared(process.get(), name, quiet);
    default:
      return;
  }
}

}  // namespace

bool WalkProcesses(std::string_view name, std::int32_t mode, const bool& quiet, ListBox* list) {
  bool found = false;
  // A failure anywhere in the walk stops it, and the result is what it then was.
  Resume([&] {
    platform::PROCESSENTRY32 entry;
    entry.dwSize = sizeof entry;
    const platform::OwnedHandle snapshot(platform::CreateToolhelp32Snapshot(platform::TH32CS_SNAPPROCESS));
    bool more = platform::Process32First(snapshot.get(), entry);
    if (name.empty() && list) list->Clear();
    mode = FoldAliases(mode);
    const auto sought = SoughtName(name);
    for (; more; more = platform::Process32Next(snapshot.get(), entry)) {
      if (sought.empty()) {
        if (list && PassesFilter(entry, mode)) AddProcessRow(*list, entry);
      } else if (const auto running = EntryName(entry); Right(running, sought.size()) == sought) {
        found = true;
        return Act(entry.th32ProcessID, running, mode, quiet);
      }
    }
  });
  return found;
}

}  // namespace velmaro
