#include "platform/linux/ground/UserFolder.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cstdlib>

#include "platform/linux/ground/Place.h"
#include "platform/machine.h"

namespace onlinux {
namespace {

namespace fs = std::filesystem;

fs::path ConfigurationFolder() {
  const char* told = std::getenv("XDG_CONFIG_HOME");
  // A path that is not absolute counts as none.
  if (told && *told == '/') return told;
  const char* home = std::getenv("HOME");
  return fs::path(home && *home == '/' ? home : "/") / ".config";
}

// Makes a folder and those above it. False where it is not there then.
bool MakeFolder(const fs::path& path, mode_t mode) {
  auto place = PlaceOf(path);
  if (!place.folder && !place.isRefused && path.has_relative_path() && MakeFolder(path.parent_path(), 0777))
    place = PlaceOf(path);
  struct stat facts {};
  return place.folder && (::mkdirat(place.folder.get(), place.name.c_str(), mode) == 0 ||
                          (::fstatat(place.folder.get(), place.name.c_str(), &facts, AT_SYMLINK_NOFOLLOW) == 0 &&
                           S_ISDIR(facts.st_mode)));
}

}  // namespace

fs::path UserFolder(const std::string& application) { return ConfigurationFolder() / platform::LowerCase(application); }

bool MakeUserFolder(const fs::path& folder) {
  // What the user started is nobody else's business.
  return MakeFolder(folder, 0700);
}

}  // namespace onlinux
