#include "platform/linux/ground/FontsAhead.h"

#include <dlfcn.h>

#include "platform/linux/ground/Ahead.h"

namespace onlinux {

std::jthread ReadFontsAhead() {
  return Ahead([] {
    void* const library = ::dlopen("libfontconfig.so.1", RTLD_NOW | RTLD_NODELETE);
    // It keeps what it has read for whoever asks next, from any thread.
    if (const auto read = library ? reinterpret_cast<int (*)()>(::dlsym(library, "FcInit")) : nullptr) read();
  });
}

}  // namespace onlinux
