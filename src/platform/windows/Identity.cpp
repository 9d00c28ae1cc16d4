#include "platform/identity.h"

namespace platform {

bool CommandsMeanTheRow() { return false; }

std::uint64_t ProcessIdentity(Handle) { return 0; }

bool NamesAreWholeParts() { return false; }

std::vector<std::string> MoreNames(Handle) { return {}; }

std::vector<std::string> NamesOf(Handle) { return {}; }

std::string ResolvedPath(const std::string& path) { return path; }

std::string_view NativeEmulators() { return {}; }

}  // namespace platform
