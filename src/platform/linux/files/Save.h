#pragma once

#include <string>

#include "platform/kernel32.h"
#include "platform/linux/ground/Descriptor.h"

namespace onlinux {

// Opens a file for writing, and makes it where it is missing, without being led astray by another user.
Descriptor OpenToWrite(const std::string& path, int flags);

// What a new file must keep of the old one to take its place: its owner and rights, or nothing.
enum class Keeping { Rights, Nothing };

// Does what platform::TakePlace does.
bool TakePlace(platform::Replacement& replacement, Keeping keeping);

}  // namespace onlinux
