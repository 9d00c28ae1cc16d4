#include "process/WalkProcesses.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "platform/identity.h"
#include "platform/kernel32.h"
#include "process/ClassChange.h"
#include "process/KillLists.h"
#include "process/KnownEmulators.h"
#include "process/ProcessNames.h"
#include "runtime/Boxes.h"
#include "runtime/ListBox.h"
#include "runtime/Text.h"

namespace velmaro {
namespace {

// What a named walk does to the process that it finds.
enum Action { SetNormal = 0, SetHigh = 1, SetRealTime = 2, SetIdle = 3, Terminate = 4 };

constexpr std::uint32_t GoneWithin = 500;

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

std::string EntryName(const platform::PROCESSENTRY32& entry) {
  return LCase({entry.szExeFile, strnlen(entry.szExeFile, sizeof entry.szExeFile)});
}

// A snapshot, and the entry at hand.
struct Walk {
  explicit Walk(bool onlyToList = false) {
    entry.dwSize = sizeof entry;
    snapshot.Reset(onlyToList ? platform::CreateListSnapshot()
                              : platform::CreateToolhelp32Snapshot(platform::TH32CS_SNAPPROCESS));
    more = platform::Process32First(snapshot.get(), entry);
  }
  void Next() { more = platform::Process32Next(snapshot.get(), entry); }
  // True where a test holds for one of the names of the process at hand, in lower case.
  template <class Test>
  bool HasName(Test test) const {
    const auto names = platform::MoreNames(snapshot.get());
    return test(EntryName(entry)) || std::ranges::any_of(names, [&](const auto& name) { return test(LCase(name)); });
  }

  platform::PROCESSENTRY32 entry;
  platform::OwnedHandle snapshot;
  bool more = false;
};

bool PassesFilter(const Walk& walk, std::int32_t mode) {
  const auto& entry = walk.entry;
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
      return walk.HasName(IsKnownEmulator);
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

void AddProcessRow(ListBox& list, const Walk& walk) {
  auto tag = TagOf(walk.entry.pcPriClassBase);
  list.AddItem(std::move(tag.text) + '\t' + EntryName(walk.entry));
  list.SetItemData(list.ListCount() - 1, tag.priorityIndex);
  list.SetItemKey(list.ListCount() - 1, platform::ProcessIdentity(walk.snapshot.get()));
}

// The no-kill list is asked for every name that the process goes by, so that none it gave itself slips the list.
bool IsSpared(platform::Handle process, const std::string& name) {
  return !CanKillProcess(name) || !CanKillByAll(platform::NamesOf(process));
}

void TerminateUnlessSpared(platform::Handle process, const std::string& name, bool quiet) {
  if (IsSpared(process, name)) return;
  constexpr auto question = platform::MB_YESNO | platform::MB_ICONQUESTION | platform::MB_DEFBUTTON2;
  if (!quiet) {
    if (MsgBox("Do you want to terminate the process '" + name + "'?", question) != platform::IDYES) return;
    // Time has passed since the first look at the list and at the process.
    if (IsSpared(process, name)) return;
  }
  // Until it is gone, the list and the next line of a kill list would find it again.
  if (platform::TerminateProcess(process, 0)) platform::WaitForEnd(process, GoneWithin);
}

void Act(const platform::PROCESSENTRY32& entry, std::int32_t mode, bool quiet) {
  const auto name = EntryName(entry);
  const platform::OwnedHandle process(platform::OpenProcess(platform::PROCESS_ALL_ACCESS, false, entry.th32ProcessID));
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
    const auto sought = SoughtName(name);
    Walk walk(sought.empty());
    if (name.empty() && list) list->Clear();
    mode = FoldAliases(mode);
    for (; walk.more; walk.Next()) {
      if (sought.empty()) {
        if (list && PassesFilter(walk, mode)) AddProcessRow(*list, walk);
      } else if (walk.HasName([&](const std::string& running) { return FitsName(running, sought); })) {
        found = true;
        return Act(walk.entry, mode, quiet);
      }
    }
  });
  return found;
}

void ActOnProcess(std::uint64_t key, std::int32_t mode, const bool& quiet) {
  Resume([&] {
    for (Walk walk; walk.more; walk.Next())
      if (key != 0 && platform::ProcessIdentity(walk.snapshot.get()) == key) return Act(walk.entry, mode, quiet);
  });
}

}  // namespace velmaro
