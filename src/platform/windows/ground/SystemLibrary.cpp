#include "platform/windows/ground/SystemLibrary.h"

#include <string>

namespace platform {

FARPROC FindSystemFunction(const wchar_t* library, const char* name) {
  wchar_t folder[MAX_PATH];
  const auto length = ::GetSystemDirectoryW(folder, MAX_PATH);
  if (length == 0 || length >= MAX_PATH) return nullptr;
  // By its full path, so that no library of that name beside the executable is taken.
  const auto module = ::LoadLibraryW((std::wstring(folder, length) + L'\\' + library).c_str());
  return module ? ::GetProcAddress(module, name) : nullptr;
}

}  // namespace platform
