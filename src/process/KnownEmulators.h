#pragma once

#include <string_view>

namespace velmaro {

// True where the base name of a lower-cased process name stands anywhere in the table of known emulators, also as a
// part of an entry. Where names are whole parts of paths it must be a whole entry, of that table or of the platform's own.
bool IsKnownEmulator(std::string_view processName);

}  // namespace velmaro
