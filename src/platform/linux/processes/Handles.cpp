#include "platform/linux/processes/Handles.h"

#include <algorithm>
#include <map>
#include <utility>

namespace onlinux {
namespace {

// Handles are numbers for the program, and plain functions take them: what they stand for is kept here.
struct Table {
  std::map<platform::Handle, Object> objects;
  platform::Handle last = 0;
};

Table& TheTable() {
  static Table table;
  return table;
}

}  // namespace

platform::Handle Keep(Object object) {
  auto& table = TheTable();
  do {
    table.last += 4;
  } while (table.last == 0 || table.last == platform::InvalidHandle || table.objects.contains(table.last));
  table.objects.emplace(table.last, std::move(object));
  return table.last;
}

Object* Find(platform::Handle handle) {
  auto& objects = TheTable().objects;
  const auto at = objects.find(handle);
  return at == objects.end() ? nullptr : &at->second;
}

const ProcessRecord* FindListed(std::uint32_t processId) {
  for (const auto& [handle, object] : TheTable().objects) {
    const auto* snapshot = std::get_if<Snapshot>(&object);
    if (!snapshot) continue;
    const auto at = std::ranges::find(snapshot->processes, processId, &ProcessRecord::id);
    if (at != snapshot->processes.end()) return &*at;
  }
  return nullptr;
}

}  // namespace onlinux

namespace platform {

void CloseHandle(Handle handle) { onlinux::TheTable().objects.erase(handle); }

}  // namespace platform
