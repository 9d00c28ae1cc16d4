#include "process/ProcessNames.h"

#include "desktop/modFiles.h"
#include "platform/identity.h"
#include "platform/machine.h"
#include "runtime/Text.h"

namespace velmaro {
namespace {

bool IsWholePath(std::string_view name) { return name.starts_with(platform::PathSeparator()); }

bool EndsInParts(std::string_view path, std::string_view parts) {
  if (!path.ends_with(parts)) return false;
  const auto before = path.size() - parts.size();
  return before == 0 || IsWholePath(parts) || path[before - 1] == platform::PathSeparator();
}

}  // namespace

std::string SoughtName(std::string_view name) {
  std::string sought(name);
  if (platform::NamesAreWholeParts()) {
    sought = DropQuotes(Trim(name));
    return LCase(IsWholePath(sought) ? platform::ResolvedPath(sought) : sought);
  }
  if (sought.find(platform::PathSeparator()) != std::string::npos) sought = ExtractFileName(sought);
  return LCase(DropQuotes(Trim(sought)));
}

bool FitsName(std::string_view running, std::string_view sought) {
  if (!platform::NamesAreWholeParts()) return running.ends_with(sought);
  return IsWholePath(sought) ? running == sought : EndsInParts(running, sought);
}

bool Covers(std::string_view entry, std::string_view running) {
  const bool isPattern = entry.find_first_of("*?#[") != std::string_view::npos;
  if (isPattern || !platform::NamesAreWholeParts()) return WildcardMatch(running, "*" + LCase(entry));
  // A path is meant as it stands, and as the program that a link leads to.
  return EndsInParts(running, LCase(entry)) || (IsWholePath(entry) && FitsName(running, SoughtName(entry)));
}

}  // namespace velmaro
