#pragma once

#include "Desktop.h"

namespace velmaro {

// Looks at all that a form shows, as it is, with its controls hidden and disabled, and as it was before.
void ExpectShown(const Form& form);

// Rests the pointer on a control, whose balloon must then stand under it, or above it.
void ExpectBalloon(QWidget& control, bool isAbove, const QString& meant);

}  // namespace velmaro
