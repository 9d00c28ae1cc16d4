#pragma once

#include <QtCore/qnamespace.h>

class QKeyEvent;

namespace onlinux {

// The code of a key as the form runtime numbers it, 0 for a key that it has no number for.
int KeyCodeOf(const QKeyEvent& event);
// The modifier keys as the form runtime adds them up.
int ShiftOf(Qt::KeyboardModifiers modifiers);
// A mouse button as the form runtime numbers it, 0 for another one.
int ButtonOf(Qt::MouseButton button);

}  // namespace onlinux
