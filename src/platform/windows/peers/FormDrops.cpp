#include "platform/windows/ground/Codepage.h"
#include "platform/windows/ground/SystemLibrary.h"
#include "platform/windows/peers/FormWindow.h"

// It needs the system's other headers ahead of it.
#include <shellapi.h>

namespace windows {

LRESULT FormWindow::FilesDropped(HDROP dropped) {
  static const auto query = platform::SystemFunction<decltype(&::DragQueryFileW)>(L"shell32.dll", "DragQueryFileW");
  static const auto finish = platform::SystemFunction<decltype(&::DragFinish)>(L"shell32.dll", "DragFinish");
  if (!query || !finish) return 0;
  constexpr UINT count = 0xFFFFFFFF;
  std::vector<std::string> files;
  for (UINT i = 0; i < query(dropped, count, nullptr, 0); ++i) {
    std::wstring path(query(dropped, i, nullptr, 0) + std::size_t{1}, L'\0');
    path.resize(query(dropped, i, path.data(), static_cast<UINT>(path.size())));
    files.push_back(platform::Narrow(path));
  }
  finish(dropped);
  form_.RaiseDropFiles(files);
  return 0;
}

}  // namespace windows
