#include "runtime/Files.h"

#include <algorithm>

#include "platform/machine.h"
#include "runtime/Failures.h"
#include "runtime/TextForm.h"

namespace velmaro {
namespace {

platform::OwnedFile Open(const std::string& path, platform::FileAccess access) {
  platform::OwnedFile file(platform::CreateFileA(path, access));
  if (!file) throw RuntimeError("the file can't be opened");
  return file;
}

std::string ReadToEnd(const platform::OwnedFile& file) {
  constexpr std::size_t chunk = 16384;
  std::string text;
  for (;;) {
    const auto at = text.size();
    if (at > LargestFile) throw RuntimeError("the file is too large");
    text.resize(at + chunk);
    const auto count = platform::ReadFile(file.get(), text.data() + at, chunk);
    if (!count) throw RuntimeError("the file can't be read");
    text.resize(at + *count);
    if (*count == 0) return text;
  }
}

void Write(const platform::OwnedFile& file, std::string_view text) {
  if (!platform::WriteFile(file.get(), text.data(), text.size())) throw RuntimeError("the file can't be written");
}

// A new file beside the one that it is to replace; it is gone with the object, unless it went into that one's place.
class Temporary {
 public:
  explicit Temporary(const std::string& path) : path_(path), file_(platform::CreateFileBeside(path, name_)) {
    isMade_ = static_cast<bool>(file_);
  }
  Temporary(const Temporary&) = delete;
  Temporary& operator=(const Temporary&) = delete;
  ~Temporary() {
    file_.Reset();
    if (isMade_) platform::DeleteFileA(name_);
  }
  explicit operator bool() const { return isMade_; }
  void Fill(std::string_view text) {
    Write(file_, text);
    if (!platform::FlushFileBuffers(file_.get())) throw RuntimeError("the file can't be written");
    file_.Reset();
  }
  bool TakePlace() {
    if (platform::MoveFileReplace(name_, path_)) isMade_ = false;
    return !isMade_;
  }

 private:
  std::string path_;
  std::string name_;
  platform::OwnedFile file_;
  bool isMade_ = false;
};

// Writes over a file where it lies. It is made as long as `room` first, so that a full disk costs none of it.
bool WriteOver(const std::string& path, std::string_view text, std::size_t room) {
  const platform::OwnedFile file(platform::CreateFileA(path, platform::FileAccess::Over));
  return file && platform::SetFileLength(file.get(), room) &&
         platform::WriteFile(file.get(), text.data(), text.size()) &&
         platform::SetFileLength(file.get(), text.size()) && platform::FlushFileBuffers(file.get());
}

}  // namespace

LineReader::LineReader(const std::string& path) {
  Resume([&] {
    const auto file = Open(path, platform::FileAccess::Read);
    isOpen_ = true;
    text_ = FromBytes(ReadToEnd(file)).text;
    isWhole_ = true;
  });
}

bool LineReader::ReadLine(std::string& line) {
  if (at_ == text_.size()) return false;
  const auto end = std::min(text_.find_first_of(platform::LineFeedEndsLine() ? "\r\n" : "\r", at_), text_.size());
  line.assign(text_, at_, end - at_);
  at_ = end + (text_.compare(end, 2, "\r\n") == 0 ? 2 : end < text_.size() ? 1 : 0);
  return true;
}

std::string ReadWholeFile(const std::string& path) { return ReadToEnd(Open(path, platform::FileAccess::Read)); }

std::string ReadBinaryFile(const std::string& path) { return ReadToEnd(Open(path, platform::FileAccess::Binary)); }

void AppendToFile(const std::string& path, std::string_view text) {
  Write(Open(path, platform::FileAccess::Append), text);
}

void WriteFileWhole(const std::string& path, std::string_view text) {
  if (path.empty() || platform::IsWriteProtected(path)) throw RuntimeError("there is no file to write");
  Temporary temporary(path);
  if (temporary) {
    temporary.Fill(text);
    if (temporary.TakePlace()) return;
  }
  const auto old = platform::GetFileLength(path) < 0 ? std::string() : ReadWholeFile(path);
  if (WriteOver(path, text, std::max(old.size(), text.size()))) return;
  WriteOver(path, old, old.size());
  throw RuntimeError("the file can't be written");
}

}  // namespace velmaro
