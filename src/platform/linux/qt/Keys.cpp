#include "platform/linux/qt/Keys.h"

#include <QKeyEvent>
#include <algorithm>
#include <array>
#include <utility>

#include "runtime/Types.h"

namespace onlinux {
namespace {

constexpr std::array<std::pair<int, int>, 19> Named = {{{Qt::Key_Return, velmaro::Key::Return},
                                                        {Qt::Key_Enter, velmaro::Key::Return},
                                                        {Qt::Key_Escape, velmaro::Key::Escape},
                                                        {Qt::Key_Delete, velmaro::Key::Delete},
                                                        {Qt::Key_Backspace, 8},
                                                        {Qt::Key_Tab, 9},
                                                        {Qt::Key_Backtab, 9},
                                                        {Qt::Key_Shift, 16},
                                                        {Qt::Key_Control, 17},
                                                        {Qt::Key_Alt, 18},
                                                        {Qt::Key_PageUp, 33},
                                                        {Qt::Key_PageDown, 34},
                                                        {Qt::Key_End, 35},
                                                        {Qt::Key_Home, 36},
                                                        {Qt::Key_Left, 37},
                                                        {Qt::Key_Up, 38},
                                                        {Qt::Key_Right, 39},
                                                        {Qt::Key_Down, 40},
                                                        {Qt::Key_Insert, 45}}};

}  // namespace

int KeyCodeOf(const QKeyEvent& event) {
  const int key = event.key();
  if (key == Qt::Key_Space || (key >= Qt::Key_0 && key <= Qt::Key_9) || (key >= Qt::Key_A && key <= Qt::Key_Z))
    return key;
  if (key >= Qt::Key_F1 && key <= Qt::Key_F12) return velmaro::Key::F1 + key - Qt::Key_F1;
  const auto* named = std::ranges::find(Named, key, &std::pair<int, int>::first);
  return named == Named.end() ? 0 : named->second;
}

int ShiftOf(Qt::KeyboardModifiers modifiers) {
  return (modifiers.testFlag(Qt::ShiftModifier) ? velmaro::ShiftKey::Shift : 0) +
         (modifiers.testFlag(Qt::ControlModifier) ? velmaro::ShiftKey::Ctrl : 0) +
         (modifiers.testFlag(Qt::AltModifier) ? velmaro::ShiftKey::Alt : 0);
}

int ButtonOf(Qt::MouseButton button) {
  if (button == Qt::LeftButton) return velmaro::MouseButton::Left;
  if (button == Qt::RightButton) return velmaro::MouseButton::Right;
  return button == Qt::MiddleButton ? velmaro::MouseButton::Middle : 0;
}

}  // namespace onlinux
