#pragma once

#include "platform/windows/ground/System.h"

namespace windows {

// The common controls, in the version that the manifest names. Their library is loaded when the first window or picture
// needs it: an unattended run, which has none, starts without it.

// Makes window classes of the common controls known, by their ICC_ flags.
void UseControlClasses(DWORD classes);
// A list of one picture in its size in pixels; null when it can't be made.
HIMAGELIST ImagesOfIcon(HICON icon, int pixels);
// Ends a list of pictures.
void DropImages(HIMAGELIST images);

}  // namespace windows
