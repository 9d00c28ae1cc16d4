#include "platform/linux/ground/UserFolder.h"

#include <sys/stat.h>

#include <cstdlib>
#include <system_error>

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

}  // namespace

fs::path UserFolder(const std::string& application) { return ConfigurationFolder() / platform::LowerCase(application); }

bool MakeUserFolder(const fs::path& folder) {
  std::error_code error;
  fs::create_directories(folder.parent_path(), error);
  // What the user started is nobody else's business.
  ::mkdir(folder.c_str(), 0700);
  return fs::is_directory(folder, error);
}

}  // namespace onlinux
