#include "platform/windows/CommonControls.h"

namespace windows {
namespace {

// By its bare name, since only that is led to the manifest's version, and only from the system's own folders.
template <class Function>
Function ControlsFunction(const char* name) {
  static const HMODULE library = ::LoadLibraryExW(L"comctl32.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
  return reinterpret_cast<Function>(reinterpret_cast<void*>(library ? ::GetProcAddress(library, name) : nullptr));
}

}  // namespace

void UseControlClasses(DWORD classes) {
  const INITCOMMONCONTROLSEX wanted{sizeof wanted, classes};
  if (const auto init = ControlsFunction<decltype(&::InitCommonControlsEx)>("InitCommonControlsEx")) init(&wanted);
}

HIMAGELIST ImagesOfIcon(HICON icon, int pixels) {
  const auto create = ControlsFunction<decltype(&::ImageList_Create)>("ImageList_Create");
  const auto add = ControlsFunction<decltype(&::ImageList_ReplaceIcon)>("ImageList_ReplaceIcon");
  const auto images = create ? create(pixels, pixels, ILC_COLOR32 | ILC_MASK, 1, 1) : nullptr;
  if (images && add) add(images, -1, icon);
  return images;
}

void DropImages(HIMAGELIST images) {
  if (const auto drop = ControlsFunction<decltype(&::ImageList_Destroy)>("ImageList_Destroy")) drop(images);
}

}  // namespace windows
