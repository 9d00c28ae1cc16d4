#include <fuzzer/FuzzedDataProvider.h>

#include "Checks.h"
#include "platform/linux/ground/GroupPlace.h"
#include "platform/linux/memory/ControlGroup.h"

// Whatever a system tells of its control groups: no group leaves more than its limit, and none below the mounted folder
// is made up.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const fuzz::Folder system;
  FuzzedDataProvider input(data, size);
  for (const auto* name : {"memory.max", "memory.high", "memory.current", "memory.stat"})
    system.Write(name, input.ConsumeRandomLengthString(60));
  const auto groups = input.ConsumeRandomLengthString();
  const auto mounts = input.ConsumeRemainingBytesAsString();
  system.Write("groups", groups);
  system.Write("mounts", "1 2 0:3 / " + system.Path() + " rw - cgroup2 none rw\n" + mounts);
  if (const auto path = onlinux::GroupPath(groups, onlinux::SecondVersion))
    fuzz::Expect(('\n' + groups + '\n').find(':' + *path + '\n') != std::string::npos);
  if (const auto mount = onlinux::FindMount(mounts, onlinux::SecondVersion))
    fuzz::Expect(mounts.find(' ' + mount->root + ' ' + mount->folder) != std::string::npos);
  const auto memory = onlinux::ReadGroupMemory(system.Path("groups"), system.Path("mounts"));
  fuzz::Expect(!memory || memory->left <= memory->limit);
  return 0;
}
