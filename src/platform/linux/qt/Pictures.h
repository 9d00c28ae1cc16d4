#pragma once

#include <QIcon>

#include "runtime/Types.h"

namespace onlinux {

// A picture of the project in all sizes that it was drawn in; a null icon for none.
QIcon IconOf(velmaro::Picture picture);

}  // namespace onlinux
