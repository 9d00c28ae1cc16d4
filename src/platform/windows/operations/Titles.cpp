#include "platform/windows/operations/Titles.h"

namespace platform {
namespace {

constexpr int MostUnits = 32768;

BOOL CALLBACK Collect(HWND window, LPARAM windows) {
  reinterpret_cast<std::vector<HWND>*>(windows)->push_back(window);
  return TRUE;
}

}  // namespace

std::wstring TitleOf(HWND window) {
  wchar_t title[MostUnits];
  const int length = ::InternalGetWindowText(window, title, MostUnits);
  return {title, static_cast<std::size_t>(length > 0 ? length : 0)};
}

std::vector<HWND> TopLevelWindows() {
  std::vector<HWND> windows;
  ::EnumWindows(&Collect, reinterpret_cast<LPARAM>(&windows));
  return windows;
}

}  // namespace platform
