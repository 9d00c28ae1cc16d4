#include "desktop/modFiles.h"

#include <algorithm>

#include "desktop/formSplash.h"
#include "platform/comdlg32.h"
#include "platform/machine.h"
#include "platform/user32.h"
#include "runtime/Application.h"
#include "runtime/Files.h"
#include "runtime/Text.h"

namespace velmaro {
namespace {

constexpr std::string_view Separators = "\\/";

std::string_view BeforeQuestionMark(std::string_view fileName) { return fileName.substr(0, fileName.find('?')); }

}  // namespace

std::string ExtractFilePath(std::string_view fileName) {
  const auto name = BeforeQuestionMark(fileName);
  const auto at = name.find_last_of(Separators);
  return at == std::string_view::npos ? std::string() : std::string(name.substr(0, at + 1));
}

std::string ExtractFileName(std::string_view fileName) {
  const auto name = BeforeQuestionMark(fileName);
  const auto at = name.find_last_of(Separators);
  return at == std::string_view::npos ? std::string() : std::string(name.substr(at + 1));
}

std::string ShowOpenDialog(const Form& owner, std::string& filter, const std::string& title,
                           const std::string& initialFolder) {
  constexpr std::uint32_t room = 255;
  if (!filter.ends_with('|')) filter += '|';
  std::ranges::replace(filter, '|', '\0');
  const std::string blanks(room - 1, ' ');
  platform::OPENFILENAME dialog;
  dialog.lStructSize = 76;
  dialog.hwndOwner = owner.hWnd();
  dialog.hInstance = platform::AppInstance();
  dialog.lpstrFilter = filter;
  dialog.lpstrFile = blanks;
  dialog.nMaxFile = room;
  dialog.lpstrFileTitle = blanks;
  dialog.nMaxFileTitle = room;
  dialog.lpstrInitialDir = initialFolder;
  dialog.lpstrTitle = title;
  dialog.Flags = platform::OFN_FILEMUSTEXIST | platform::OFN_HIDEREADONLY;
  if (!platform::GetOpenFileNameA(dialog)) return {};
  const auto path = Trim(dialog.lpstrFile);
  return std::string(path.substr(0, path.find('\0')));
}

void SaveTextFile(const std::string& fileName, const std::string& text, int mode) {
  Resume([&] {
    if (mode == 0) WriteFileWhole(fileName, text);
    if (mode == 1 || mode == -1) AppendToFile(fileName, text);
    if (mode == 2) WriteFileWhole(fileName, text + "\r\n" + ReadBinaryFile(fileName));
  });
}

std::string ReadTextFile(const std::string& fileName) {
  std::string text;
  Resume([&] { text = ReadBinaryFile(fileName); });
  return text;
}

void ShowCreditsBox() {
  auto& form = App().Default<formSplash>();
  LoadForm(form);
  form.Initialize();
  form.Realize();
  platform::SetWindowPos(form.hWnd(), platform::HWND_TOPMOST, 0, 0, 0, 0, platform::SWP_NOSIZE | platform::SWP_NOMOVE);
  form.ShowModal(App().ActiveForm());
}

}  // namespace velmaro
