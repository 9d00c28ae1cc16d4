#pragma once

#include "platform/windows/ground/System.h"

namespace platform {

// Looks up a function of a library in the system's own folder; null where this Windows has none. The library stays
// loaded.
FARPROC FindSystemFunction(const wchar_t* library, const char* name);

// The same with the function's type.
template <class Function>
Function SystemFunction(const wchar_t* library, const char* name) {
  return reinterpret_cast<Function>(reinterpret_cast<void*>(FindSystemFunction(library, name)));
}

}  // namespace platform
