#pragma once

// The system's own headers define macros with the names of our constants, so ours must have been read before them: each
// file of this folder includes this one ahead of all others.
// clang-format off
#include "platform/advapi32.h"
#include "platform/comdlg32.h"
#include "platform/kernel32.h"
#include "platform/machine.h"
#include "platform/shell32.h"
#include "platform/types.h"
#include "platform/user32.h"

#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>
#include <commctrl.h>
#include <commdlg.h>
#include <shellapi.h>
#include <tlhelp32.h>
// clang-format on

// Names of ours that the system's headers turn into something else.
#undef OPENFILENAME
#undef PROCESSENTRY32
#undef Process32First
#undef Process32Next
#undef TOOLINFO

namespace platform {

// A handle of ours as the system's own type, and back. The system's handles have 32 bits, with their sign, in 64-bit
// programs too; a module's is an address, and none of these.
template <class Native>
Native ToNative(std::uint32_t handle) {
  return reinterpret_cast<Native>(static_cast<std::intptr_t>(static_cast<std::int32_t>(handle)));
}
template <class Native>
std::uint32_t ToNumber(Native* handle) {
  return static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(handle));
}

}  // namespace platform
