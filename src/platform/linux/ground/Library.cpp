#include "platform/linux/ground/Library.h"

#include <dlfcn.h>

#include "platform/linux/ground/Places.h"

namespace onlinux {

void* LoadEntry(const std::string& library, const char* name, std::string& error) {
  const auto path = LibraryPath(library);
  // The library stays for good: its objects live to the program's end.
  void* loaded = path.empty() ? nullptr : ::dlopen(path.c_str(), RTLD_NOW | RTLD_NODELETE);
  void* entry = loaded ? ::dlsym(loaded, name) : nullptr;
  if (!entry) error = path.empty() ? library + " is missing, or others may write it" : ::dlerror();
  return entry;
}

}  // namespace onlinux
