#include "runtime/Files.h"

#include <algorithm>
#include <cstdint>

#include "platform/kernel32.h"
#include "runtime/Failures.h"

namespace velmaro {
namespace {

platform::OwnedFile Open(const std::string& path, platform::FileAccess access) {
  platform::OwnedFile file(platform::CreateFileA(path, access));
  if (!file) throw RuntimeError("the file can't be opened");
  return file;
}

std::string ReadToEnd(const platform::OwnedFile& file) {
  constexpr std::size_t chunk = 16384;
  return WithinMemory([&] {
    std::string text;
    for (;;) {
      const auto at = text.size();
      text.resize(at + chunk);
      const auto count = platform::ReadFile(file.get(), text.data() + at, chunk);
      if (!count) throw RuntimeError("the file can't be read");
      text.resize(at + *count);
      if (*count == 0) return text;
    }
  });
}

void Write(const platform::OwnedFile& file, std::string_view text) {
  if (!platform::WriteFile(file.get(), text.data(), text.size())) throw RuntimeError("the file can't be written");
}

// Writes over a file where it lies. It is made as long as it ever is first, so that a full disk costs none of it, and
// gets its old contents back where that fails.
bool WriteOver(const std::string& path, std::string_view text) {
  const platform::OwnedFile file(platform::CreateFileA(path, platform::FileAccess::Over));
  if (!file) return false;
  const auto old = platform::GetFileLength(path) > 0 ? ReadToEnd(file) : std::string();
  const auto put = [&](std::string_view bytes, std::size_t room) {
    return platform::Rewind(file.get()) && platform::SetFileLength(file.get(), room) &&
           platform::WriteFile(file.get(), bytes.data(), bytes.size()) &&
           platform::SetFileLength(file.get(), bytes.size()) && platform::FlushFileBuffers(file.get());
  };
  if (put(text, std::max(old.size(), text.size()))) return true;
  put(old, old.size());
  return false;
}

}  // namespace

std::string ReadWholeFile(const std::string& path) {
  platform::MEMORYSTATUS memory;
  platform::GlobalMemoryStatus(memory);
  // A system that promises more memory than it has ends a program that takes it at its word.
  const auto length = platform::GetFileLength(path);
  if (length > 0 && static_cast<std::uint64_t>(length) > memory.dwTotalPhys)
    throw RuntimeError("memory can't hold the file");
  return ReadToEnd(Open(path, platform::FileAccess::Read));
}

std::string ReadBinaryFile(const std::string& path) { return ReadToEnd(Open(path, platform::FileAccess::Binary)); }

void AppendToFile(const std::string& path, std::string_view text) {
  Write(Open(path, platform::FileAccess::Append), text);
}

void WriteFileWhole(const std::string& path, std::string_view text) {
  if (path.empty() || platform::IsWriteProtected(path)) throw RuntimeError("there is no file to write");
  auto replacement = platform::CreateReplacement(path);
  if (replacement.file) {
    if (!platform::WriteFile(replacement.file.get(), text.data(), text.size())) {
      // The room for a second file may be all that is missing.
      platform::Discard(replacement);
    } else if (!platform::FlushFileBuffers(replacement.file.get())) {
      platform::Discard(replacement);
      throw RuntimeError("the file can't be written");
    } else if (platform::TakePlace(replacement)) {
      return;
    }
  }
  if (!WriteOver(path, text)) throw RuntimeError("the file can't be written");
}

}  // namespace velmaro
