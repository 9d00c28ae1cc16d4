#pragma once

#include "platform/windows/ground/System.h"
#include "runtime/Form.h"

namespace windows {

// The native styles of a form's window.
DWORD StyleOf(const velmaro::FormArgs& form);
DWORD ExtendedStyleOf(const velmaro::FormArgs& form);

}  // namespace windows
