#include "runtime/LineReader.h"

#include <algorithm>
#include <utility>

#include "platform/machine.h"
#include "runtime/Failures.h"

namespace velmaro {
namespace {

constexpr std::size_t PieceSize = 16384;

// The next piece of a file, a shorter one at its end: many a system delivers less than it is asked for.
std::string ReadPiece(const platform::OwnedFile& file) {
  std::string piece(PieceSize, '\0');
  for (std::size_t at = 0; at < piece.size();) {
    const auto count = platform::ReadFile(file.get(), piece.data() + at, piece.size() - at);
    if (!count) throw RuntimeError("the file can't be read");
    at += *count;
    if (*count == 0) piece.resize(at);
  }
  return piece;
}

}  // namespace

template <class Step>
bool LineReader::Try(Step step) {
  try {
    return WithinMemory(step);
  } catch (const RuntimeError&) {
    // Part of a line is none.
    text_.clear();
    at_ = 0;
    file_.Reset();
    state_ = Standing::Unreadable;
    return false;
  }
}

LineReader::LineReader(const std::string& path) : file_(platform::CreateFileA(path, platform::FileAccess::Read)) {
  if (file_)
    state_ = Standing::Read;
  else if (platform::IsThere(path) && platform::GetFileLength(path) != 0)
    state_ = Standing::Unreadable;
  Try([this] { return ReadMore(); });
}

bool LineReader::ReadMore() {
  if (!file_) return false;
  text_.erase(0, std::exchange(at_, 0));
  const auto piece = ReadPiece(file_);
  decoder_.Append(text_, piece);
  if (piece.size() < PieceSize) {
    decoder_.Finish(text_);
    file_.Reset();
  }
  return true;
}

bool LineReader::TakeLine(std::string& line) {
  const auto* ends = platform::LineFeedEndsLine() ? "\r\n" : "\r";
  auto end = std::min(text_.find_first_of(ends, at_), text_.size());
  // What stands behind a CR says whether an LF belongs to it.
  while (end + 1 >= text_.size()) {
    const auto searched = end - at_;
    if (!ReadMore()) break;
    end = std::min(text_.find_first_of(ends, searched), text_.size());
  }
  if (at_ == text_.size()) return false;
  while (text_.compare(at_, Utf8Mark.size(), Utf8Mark) == 0) at_ += Utf8Mark.size();
  line.assign(text_, at_, end - at_);
  if (decoder_.Form() == TextForm::Utf8) line = platform::FromUtf8(line);
  if (decoder_.Form() == TextForm::Plain)
    if (auto local = platform::FromLocalPage(line)) line = std::move(*local);
  at_ = end + (text_.compare(end, 2, "\r\n") == 0 ? 2 : end < text_.size() ? 1 : 0);
  return true;
}

bool LineReader::ReadLine(std::string& line) {
  return Try([&] { return TakeLine(line); });
}

bool CanBeRead(const std::string& path) {
  LineReader file(path);
  for (std::string line; !file.IsAtEnd() && file.ReadLine(line);) continue;
  return file.State() == LineReader::Standing::Read;
}

}  // namespace velmaro
