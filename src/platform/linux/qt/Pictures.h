#pragma once

#include <QIcon>

#include "runtime/Types.h"

namespace onlinux {

// A picture of the project, sharp at every size; a null icon for none.
QIcon IconOf(velmaro::Picture picture);

}  // namespace onlinux
