#include "runtime/Files.h"

#include "platform/machine.h"
#include "runtime/Failures.h"

namespace velmaro {
namespace {

platform::OwnedFile Open(const std::string& path, platform::FileAccess access) {
  platform::OwnedFile file(platform::CreateFileA(path, access));
  if (!file) throw RuntimeError("the file can't be opened");
  return file;
}

void Write(const platform::OwnedFile& file, std::string_view text) {
  if (!platform::WriteFile(file.get(), text.data(), text.size())) throw RuntimeError("the file can't be written");
}

}  // namespace

LineReader::LineReader(const std::string& path) : file_(platform::CreateFileA(path, platform::FileAccess::Read)) {}

bool LineReader::Refill() {
  if (!file_) return false;
  constexpr std::size_t chunk = 65536;
  buffer_.resize(chunk);
  buffer_.resize(platform::ReadFile(file_.get(), buffer_.data(), chunk));
  at_ = 0;
  return !buffer_.empty();
}

bool LineReader::ReadLine(std::string& line) {
  line.clear();
  if (at_ == buffer_.size() && !Refill()) return false;
  const auto* const ends = platform::LineFeedEndsLine() ? "\r\n" : "\r";
  for (;;) {
    const auto end = buffer_.find_first_of(ends, at_);
    if (end != std::string::npos) {
      line.append(buffer_, at_, end - at_);
      at_ = end + 1;
      if (buffer_[end] == '\n') return true;
      // The LF of CR LF may be the first byte of what is still to be read.
      if ((at_ < buffer_.size() || Refill()) && buffer_[at_] == '\n') ++at_;
      return true;
    }
    line.append(buffer_, at_);
    at_ = buffer_.size();
    if (!Refill()) return true;
  }
}

std::string ReadBinaryFile(const std::string& path) {
  const auto file = Open(path, platform::FileAccess::Binary);
  const auto length = platform::GetFileLength(path);
  if (length < 0) throw RuntimeError("the file can't be measured");
  std::string text(static_cast<std::size_t>(length), '\0');
  std::size_t at = 0;
  // One read may deliver less than all of it; a file that was cut in the meantime gives what is left.
  while (const auto count = platform::ReadFile(file.get(), text.data() + at, text.size() - at)) at += count;
  text.resize(at);
  return text;
}

void AppendToFile(const std::string& path, std::string_view text) {
  Write(Open(path, platform::FileAccess::Append), text);
}

void WriteFileWhole(const std::string& path, std::string_view text) {
  if (path.empty()) throw RuntimeError("there is no file to write");
  const auto temporary = path + ".tmp";
  try {
    const platform::OwnedFile file(platform::CreateFileA(temporary, platform::FileAccess::Write));
    // A folder that takes no new file may hold one that can still be written over.
    if (!file) return Write(Open(path, platform::FileAccess::Write), text);
    Write(file, text);
    if (!platform::FlushFileBuffers(file.get())) throw RuntimeError("the file can't be written");
  } catch (const RuntimeError&) {
    platform::DeleteFileA(temporary);
    throw;
  }
  if (platform::MoveFileReplace(temporary, path)) return;
  platform::DeleteFileA(temporary);
  throw RuntimeError("the file can't be put in its place");
}

}  // namespace velmaro
