#include <algorithm>
#include <cstring>
#include <string_view>

#include "platform/kernel32.h"
#include "platform/machine.h"
#include "platform/simulated/Desktop.h"

using simulated::TheDesktop;

namespace platform {
namespace {

simulated::File* FindFile(const std::string& path) {
  auto& files = TheDesktop().files;
  const auto at = files.find(path);
  return at == files.end() || at->second.folder ? nullptr : &at->second;
}

bool IsLocked(const simulated::File& file) { return file.locked || TheDesktop().now < file.lockedUntil; }

bool IsOpen(const std::string& path) {
  return std::ranges::any_of(TheDesktop().objects, [&](const auto& entry) {
    const auto* file = std::get_if<simulated::OpenFile>(&entry.second);
    return file && LowerCase(file->path) == LowerCase(path);
  });
}

// True where neither the file nor a folder above it refuses to be written.
bool MayWrite(std::string path) {
  const auto& desktop = TheDesktop();
  const auto at = desktop.files.find(path);
  if (path.empty() || path.find_first_of("*?\"<>|") != std::string::npos) return false;
  if (at == desktop.files.end() ? desktop.makeFails : at->second.folder || IsLocked(at->second) || at->second.readOnly)
    return false;
  for (;;) {
    if (desktop.unwritable.contains(path)) return false;
    const auto separator = path.rfind('\\');
    if (separator == std::string::npos) return true;
    path.resize(separator);
  }
}

// Like the disk's own search: "*" any run, "?" one character, and the case plays no part.
bool Fits(std::string_view name, std::string_view pattern) {
  if (pattern.empty()) return name.empty();
  if (pattern[0] == '*') return Fits(name, pattern.substr(1)) || (!name.empty() && Fits(name.substr(1), pattern));
  return !name.empty() && (pattern[0] == '?' || pattern[0] == name[0]) && Fits(name.substr(1), pattern.substr(1));
}

std::size_t NameStart(const std::string& path) { return path.rfind('\\') + 1; }

}  // namespace

Handle CreateFileA(const std::string& path, FileAccess access) {
  auto& desktop = TheDesktop();
  const auto* file = FindFile(path);
  if (file && IsLocked(*file)) return InvalidHandle;
  const bool writes = access == FileAccess::Over || access == FileAccess::Append;
  if (!file && access == FileAccess::Read) return InvalidHandle;
  if ((writes || !file) && !MayWrite(path)) return InvalidHandle;
  auto& bytes = desktop.files[path].bytes;
  const auto handle = desktop.NewHandle();
  desktop.objects[handle] = simulated::OpenFile{path, access, access == FileAccess::Append ? bytes.size() : 0};
  return handle;
}

std::optional<std::size_t> ReadFile(Handle handle, void* buffer, std::size_t bytes) {
  auto& desktop = TheDesktop();
  auto* open = desktop.Find<simulated::OpenFile>(handle);
  const auto* file = open ? FindFile(open->path) : nullptr;
  if (!file || open->at >= file->readable) return std::nullopt;
  if (open->at >= file->bytes.size()) return 0;
  const auto end = std::min(file->readable, file->bytes.size());
  const auto count = std::min({bytes, desktop.largestRead, end - open->at});
  std::memcpy(buffer, file->bytes.data() + open->at, count);
  open->at += count;
  return count;
}

bool WriteFile(Handle handle, const void* buffer, std::size_t bytes) {
  auto& desktop = TheDesktop();
  auto* open = desktop.Find<simulated::OpenFile>(handle);
  auto* file = open && open->access != FileAccess::Read ? FindFile(open->path) : nullptr;
  if (!file) return false;
  const auto claimed = file->bytes.size() - open->at;
  const auto grown = bytes > claimed ? std::min(bytes - claimed, desktop.diskRoom) : 0;
  const auto count = std::min(bytes, claimed + grown);
  desktop.diskRoom -= grown;
  file->bytes.replace(open->at, count, static_cast<const char*>(buffer), count);
  open->at += count;
  return count == bytes;
}

bool Rewind(Handle handle) {
  auto* open = TheDesktop().Find<simulated::OpenFile>(handle);
  if (open) open->at = 0;
  return open;
}

bool SetFileLength(Handle handle, std::size_t bytes) {
  auto& desktop = TheDesktop();
  auto* open = desktop.Find<simulated::OpenFile>(handle);
  auto* file = open ? FindFile(open->path) : nullptr;
  if (!file) return false;
  const auto grown = bytes - std::min(bytes, file->bytes.size());
  if (grown > desktop.diskRoom) return false;
  desktop.diskRoom -= grown;
  file->bytes.resize(bytes);
  return true;
}

bool FlushFileBuffers(Handle handle) {
  return TheDesktop().Find<simulated::OpenFile>(handle) && !TheDesktop().flushFails;
}

bool IsThere(const std::string& path) { return TheDesktop().files.contains(path); }

std::int64_t GetFileLength(const std::string& path) {
  const auto* file = FindFile(path);
  return file ? static_cast<std::int64_t>(file->bytes.size()) : -1;
}

bool IsWriteProtected(const std::string& path) {
  const auto* file = FindFile(path);
  return file && !IsLocked(*file) && !MayWrite(path);
}

Replacement CreateReplacement(const std::string& path) {
  Replacement replacement{.target = path};
  int number = 0;
  do replacement.name = path + '.' + std::to_string(number++) + ".tmp";
  while (TheDesktop().files.contains(replacement.name));
  replacement.file.Reset(CreateFileA(replacement.name, FileAccess::Over));
  return replacement;
}

bool TakePlace(Replacement& replacement) {
  auto& desktop = TheDesktop();
  const auto& to = replacement.target;
  replacement.file.Reset();
  const bool taken = !desktop.replaceFails && !IsOpen(to) && MayWrite(to);
  if (taken) desktop.files[to].bytes = FindFile(replacement.name)->bytes;
  Discard(replacement);
  return taken;
}

void Discard(Replacement& replacement) {
  replacement.file.Reset();
  if (MayWrite(replacement.name)) TheDesktop().files.erase(replacement.name);
}

std::string Dir(const std::string& pattern) {
  const auto folder = LowerCase(pattern.substr(0, NameStart(pattern)));
  const auto wanted = LowerCase(pattern.substr(NameStart(pattern)));
  for (const auto& [path, file] : TheDesktop().files) {
    const auto name = path.substr(NameStart(path));
    if (!file.folder && LowerCase(path.substr(0, NameStart(path))) == folder && Fits(LowerCase(name), wanted))
      return name;
  }
  return {};
}

}  // namespace platform
