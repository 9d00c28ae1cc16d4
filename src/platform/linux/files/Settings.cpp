#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "platform/kernel32.h"
#include "platform/linux/files/Save.h"
#include "platform/linux/files/SettingsText.h"
#include "platform/linux/ground/Descriptor.h"
#include "platform/linux/ground/UserFolder.h"
#include "platform/machine.h"

namespace platform {
namespace {

std::filesystem::path FileOf(const std::string& application, const std::string& section) {
  return onlinux::UserFolder(application) / (LowerCase(section) + ".conf");
}

bool WriteValues(const std::string& path, const onlinux::Settings& values) {
  const auto text = onlinux::SettingsText(values);
  auto file = CreateReplacement(path);
  if (!file.file) return false;
  // The file can be another user's by an accident; the values matter more then than its owner.
  if (WriteFile(file.file.get(), text.data(), text.size()) && FlushFileBuffers(file.file.get()))
    return onlinux::TakePlace(file, onlinux::Keeping::Nothing);
  Discard(file);
  return false;
}

// What the file holds, empty where there is none. Nothing where something is there that can't be read.
std::optional<std::string> ReadValues(const std::string& path) {
  if (!IsThere(path)) return "";
  const OwnedFile file(CreateFileA(path, FileAccess::Read));
  std::string text;
  for (char piece[4096]; file;) {
    const auto count = ReadFile(file.get(), piece, sizeof piece);
    if (!count) break;
    if (*count == 0) return text;
    text.append(piece, *count);
  }
  return std::nullopt;
}

// Waits a second for another window of the program that writes; who holds the lock longer may never let it go.
bool Lock(int folder) {
  constexpr std::uint32_t pause = 10;
  for (std::uint32_t waited = 0; ::flock(folder, LOCK_EX | LOCK_NB) != 0; waited += pause) {
    if ((errno != EWOULDBLOCK && errno != EINTR) || waited >= 1000) return false;
    Sleep(pause);
  }
  return true;
}

}  // namespace

std::optional<std::string> ReadSetting(const std::string& application, const std::string& section,
                                       const std::string& key) {
  const auto values = onlinux::ParseSettings(ReadValues(FileOf(application, section)).value_or(""));
  const auto at = values.find(key);
  return at == values.end() ? std::nullopt : std::optional(at->second);
}

bool WriteSetting(const std::string& application, const std::string& section, const std::string& key,
                  const std::string& value) {
  const auto path = FileOf(application, section);
  if (!onlinux::MakeUserFolder(path.parent_path())) return false;
  // Two windows of the program that write at once must not undo each other's values.
  const onlinux::Descriptor folder(::open(path.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!folder || !Lock(folder.get())) return false;
  // A file that is there and can't be read holds values that must not be lost.
  const auto text = ReadValues(path);
  if (!text) return false;
  auto values = onlinux::ParseSettings(*text);
  if (const auto at = values.find(key); at != values.end() && at->second == value) return true;
  values[key] = value;
  return WriteValues(path, values);
}

}  // namespace platform
