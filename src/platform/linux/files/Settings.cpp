#include <fcntl.h>
#include <sys/file.h>

#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>

#include "platform/kernel32.h"
#include "platform/linux/files/SettingsText.h"
#include "platform/linux/ground/Descriptor.h"
#include "platform/linux/ground/ReadWhole.h"
#include "platform/linux/ground/UserFolder.h"
#include "platform/machine.h"

namespace platform {
namespace {

namespace fs = std::filesystem;

fs::path FileOf(const std::string& application, const std::string& section) {
  return onlinux::UserFolder(application) / (LowerCase(section) + ".conf");
}

bool WriteValues(const std::string& path, const onlinux::Settings& values) {
  const auto text = onlinux::SettingsText(values);
  std::string temporary;
  const OwnedFile file(CreateFileBeside(path, temporary));
  if (!file) return false;
  // The file can be another user's by an accident; the values matter more then than its owner.
  if (WriteFile(file.get(), text.data(), text.size()) && FlushFileBuffers(file.get()) &&
      (MoveFileReplace(temporary, path) || ::rename(temporary.c_str(), path.c_str()) == 0))
    return true;
  DeleteFileA(temporary);
  return false;
}

}  // namespace

std::optional<std::string> ReadSetting(const std::string& application, const std::string& section,
                                       const std::string& key) {
  const auto values = onlinux::ParseSettings(onlinux::ReadWhole(FileOf(application, section)));
  const auto at = values.find(key);
  return at == values.end() ? std::nullopt : std::optional(at->second);
}

bool WriteSetting(const std::string& application, const std::string& section, const std::string& key,
                  const std::string& value) {
  const auto path = FileOf(application, section);
  if (!onlinux::MakeUserFolder(path.parent_path())) return false;
  // Two windows of the program that write at once must not undo each other's values.
  const onlinux::Descriptor folder(::open(path.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!folder || ::flock(folder.get(), LOCK_EX) != 0) return false;
  std::error_code error;
  const auto text = onlinux::ReadWhole(path);
  // A file that is there and can't be read holds values that must not be lost.
  if (text.empty() && fs::exists(path, error) && fs::file_size(path, error) != 0) return false;
  auto values = onlinux::ParseSettings(text);
  if (const auto at = values.find(key); at != values.end() && at->second == value) return true;
  values[key] = value;
  return WriteValues(path, values);
}

}  // namespace platform
