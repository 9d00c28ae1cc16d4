#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "platform/kernel32.h"
#include "platform/linux/ground/Descriptor.h"
#include "platform/linux/processes/ProcFolder.h"

namespace onlinux {

// A frozen view of the running processes, and how far it has been delivered.
struct Snapshot {
  std::vector<ProcessRecord> processes;
  std::size_t next = 0;
};

// A process that can't be mistaken for a later one of the same number: the descriptor stays bound to it.
struct OpenedProcess {
  std::uint32_t id = 0;
  Descriptor descriptor;
};

struct OpenFile {
  Descriptor descriptor;
};

using Object = std::variant<Snapshot, OpenedProcess, OpenFile>;

// Keeps an object and gives the handle that stands for it.
platform::Handle Keep(Object object);
// What a handle stands for, null for a handle that is closed or was never given.
Object* Find(platform::Handle handle);
// The same, null too for an object of another kind.
template <class T>
T* FindAs(platform::Handle handle) {
  auto* object = Find(handle);
  return object ? std::get_if<T>(object) : nullptr;
}
// The record of a process in a snapshot that is still open, null where none names it.
const ProcessRecord* FindListed(std::uint32_t processId);

}  // namespace onlinux
