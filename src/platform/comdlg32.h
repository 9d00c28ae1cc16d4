#pragma once

#include <cstdint>
#include <string>

#include "platform/types.h"

namespace platform {

inline constexpr std::uint32_t OFN_HIDEREADONLY = 4;
inline constexpr std::uint32_t OFN_FILEMUSTEXIST = 4096;

// What the open dialog is told: the platform's record in its 76-byte form. Fields that the program never sets are left
// out and reach the platform as 0 or null; so does an empty `lpstrInitialDir`.
struct OPENFILENAME {
  std::uint32_t lStructSize = 0;
  WindowHandle hwndOwner = 0;
  std::uint32_t hInstance = 0;
  std::string lpstrFilter;
  std::uint32_t nFilterIndex = 0;
  std::string lpstrFile;
  std::uint32_t nMaxFile = 0;
  std::string lpstrFileTitle;
  std::uint32_t nMaxFileTitle = 0;
  std::string lpstrInitialDir;
  std::string lpstrTitle;
  std::uint32_t Flags = 0;
};

// Lets the user pick a file and writes its path and a NUL over the start of `lpstrFile`. False when the user cancelled
// or the path did not fit `nMaxFile`.
bool GetOpenFileNameA(OPENFILENAME& dialog);

}  // namespace platform
