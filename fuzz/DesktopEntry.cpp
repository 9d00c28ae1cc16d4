#include "platform/linux/starts/DesktopEntry.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>

#include "Checks.h"
#include "platform/linux/ground/Descriptor.h"

// Whatever a file holds: an entry starts something, and what it is told stands among the words, as it is.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const onlinux::Descriptor file(::memfd_create("entry", 0));
  fuzz::Expect(::write(file.get(), data, size) == static_cast<ssize_t>(size));
  const auto entry = onlinux::ReadEntry("/proc/self/fd/" + std::to_string(file.get()), {"%c \\told"});
  const auto told = [](const std::string& word) { return word.find("%c \\told") != std::string::npos; };
  fuzz::Expect(!entry || std::ranges::any_of(entry->words, told));
  return 0;
}
