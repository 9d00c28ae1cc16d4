#include "runtime/HScrollBar.h"

namespace velmaro {

void HScrollBar::SetMax(std::int64_t max) {
  if (max < 0 || max > 32767) throw RuntimeError("a scroll bar's limit is 16 bits wide");
  Set(max_, static_cast<std::int16_t>(max), velmaro::Change::Range);
}

void HScrollBar::SetValue(int value) {
  if (value < 0 || value > max_) throw RuntimeError("a scroll bar's position lies within its limits");
  if (value == value_) return;
  Set(value_, static_cast<std::int16_t>(value), velmaro::Change::Value);
  if (Change) Resume(Change);
}

}  // namespace velmaro
