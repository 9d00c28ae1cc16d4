#include <algorithm>

#include "platform/windows/ground/Codepage.h"
#include "platform/windows/ground/System.h"
#include "platform/windows/ground/SystemLibrary.h"

namespace platform {
namespace {

const wchar_t* OrNull(const std::wstring& text) { return text.empty() ? nullptr : text.c_str(); }

// A buffer of blanks asks for no file in particular.
std::wstring FileBuffer(const std::string& text, std::uint32_t room) {
  auto buffer = Widen(text.substr(0, text.find_last_not_of(' ') + 1));
  buffer.resize(room);
  return buffer;
}

}  // namespace

bool GetOpenFileNameA(OPENFILENAME& dialog) {
  const auto filter = Widen(dialog.lpstrFilter) + L'\0';
  const auto folder = Widen(dialog.lpstrInitialDir);
  const auto title = Widen(dialog.lpstrTitle);
  auto file = FileBuffer(dialog.lpstrFile, dialog.nMaxFile);
  auto fileTitle = FileBuffer(dialog.lpstrFileTitle, dialog.nMaxFileTitle);
  OPENFILENAMEW native{};
  native.lStructSize = OPENFILENAME_SIZE_VERSION_400W;
  native.hwndOwner = ToNative<HWND>(dialog.hwndOwner);
  native.hInstance = ::GetModuleHandleW(nullptr);
  native.lpstrFilter = filter.c_str();
  native.nFilterIndex = dialog.nFilterIndex;
  native.lpstrFile = file.data();
  native.nMaxFile = dialog.nMaxFile;
  native.lpstrFileTitle = fileTitle.data();
  native.nMaxFileTitle = dialog.nMaxFileTitle;
  native.lpstrInitialDir = OrNull(folder);
  native.lpstrTitle = OrNull(title);
  native.Flags = dialog.Flags;
  // The dialogs' library is loaded by the first dialog: most runs show none.
  const auto open = SystemFunction<decltype(&::GetOpenFileNameW)>(L"comdlg32.dll", "GetOpenFileNameW");
  if (!open || !open(&native)) return false;
  const auto path = Narrow(file.c_str());
  // The room is counted in bytes, and UTF-16 takes fewer units than that.
  if (path.size() >= dialog.nMaxFile) return false;
  dialog.lpstrFile.replace(0, std::min(path.size() + 1, dialog.lpstrFile.size()), path.c_str(), path.size() + 1);
  return true;
}

}  // namespace platform
