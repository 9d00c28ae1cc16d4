#include "platform/windows/ground/CommonControls.h"

#include "platform/windows/ground/Handles.h"

namespace windows {
namespace {

// By its bare name, since only that is led to the manifest's version, and only from the system's own folders. A Windows
// 7 without updates knows no such choice of folders; there too, the manifest leads to the full path before any is
// looked into.
HMODULE LoadControls() {
  const auto library = ::LoadLibraryExW(L"comctl32.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
  return library ? library : ::LoadLibraryW(L"comctl32.dll");
}

FARPROC FindControlsFunction(const char* name) {
  static const HMODULE library = LoadControls();
  return library ? ::GetProcAddress(library, name) : nullptr;
}

template <class Function>
Function ControlsFunction(const char* name) {
  return reinterpret_cast<Function>(reinterpret_cast<void*>(FindControlsFunction(name)));
}

}  // namespace

void UseControlClasses(DWORD classes) {
  const INITCOMMONCONTROLSEX wanted{sizeof wanted, classes};
  if (const auto init = ControlsFunction<decltype(&::InitCommonControlsEx)>("InitCommonControlsEx")) init(&wanted);
}

HIMAGELIST ImagesOfIcon(HICON icon, int pixels) {
  const auto create = ControlsFunction<decltype(&::ImageList_Create)>("ImageList_Create");
  const auto add = ControlsFunction<decltype(&::ImageList_Add)>("ImageList_Add");
  const auto images = create ? create(pixels, pixels, ILC_COLOR32 | ILC_MASK, 1, 1) : nullptr;
  // Its two bitmaps, since an icon would be read from the file once more.
  ICONINFO parts{};
  if (!images || !add || !::GetIconInfo(icon, &parts)) return images;
  const OwnedBitmap mask(parts.hbmMask);
  const OwnedBitmap color(parts.hbmColor);
  add(images, color.get(), mask.get());
  return images;
}

void DropImages(HIMAGELIST images) {
  if (const auto drop = ControlsFunction<decltype(&::ImageList_Destroy)>("ImageList_Destroy")) drop(images);
}

}  // namespace windows
