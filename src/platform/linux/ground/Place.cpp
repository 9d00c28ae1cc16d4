#include "platform/linux/ground/Place.h"

#include <fcntl.h>
#include <limits.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <utility>

namespace onlinux {
namespace {

constexpr int Folder = O_PATH | O_DIRECTORY | O_CLOEXEC;
constexpr int MostLinks = 40;

bool IsTrusted(uid_t owner) { return owner == 0 || owner == ::geteuid(); }

// A group of the user's own name is his alone, and many systems let it write what he makes.
bool OthersMayWrite(const struct stat& folder) {
  const bool groupIsOwn = folder.st_gid == 0 || folder.st_gid == ::getegid();
  return !IsTrusted(folder.st_uid) || (folder.st_mode & S_IWOTH) != 0 ||
         ((folder.st_mode & S_IWGRP) != 0 && !groupIsOwn);
}

// True where those others may put something else in the place of what belongs to the user.
bool OthersMayReplace(const struct stat& folder) {
  const bool onlyOwn = IsTrusted(folder.st_uid) && (folder.st_mode & S_ISVTX) != 0;
  return OthersMayWrite(folder) && !onlyOwn;
}

class Walk {
 public:
  explicit Walk(const std::string& path) : left_(path) {}

  Place Take() {
    Begin();
    while (place_.folder && !left_.empty()) Step();
    if (place_.name.empty()) place_.folder.Reset();
    return std::move(place_);
  }

 private:
  void Begin() { Enter(Descriptor(::open(left_.starts_with('/') ? "/" : ".", Folder))); }

  void Enter(Descriptor folder) {
    struct stat facts {};
    if (!folder || ::fstat(folder.get(), &facts) != 0) return place_.folder.Reset();
    othersMayWrite_ = OthersMayWrite(facts);
    const bool isOwn = ::geteuid() != 0 && facts.st_uid == ::geteuid() && !othersMayWrite_;
    place_.isShared = !isOwn && (place_.isShared || OthersMayReplace(facts));
    place_.isCommon = place_.isShared || othersMayWrite_;
    place_.folder = std::move(folder);
  }

  bool MayFollow(const struct stat& link) const {
    return !place_.isShared && (!othersMayWrite_ || IsTrusted(link.st_uid));
  }

  void Step() {
    const auto end = std::min(left_.find('/'), left_.size());
    const auto part = left_.substr(0, end);
    left_.erase(0, std::min(left_.find_first_not_of('/', end), left_.size()));
    if (part.empty() || (part == "." && !left_.empty())) return;
    struct stat facts {};
    const bool isThere = ::fstatat(place_.folder.get(), part.c_str(), &facts, AT_SYMLINK_NOFOLLOW) == 0;
    if (isThere && S_ISLNK(facts.st_mode)) return Follow(part, facts);
    if (left_.empty())
      place_.name = part;
    else
      Enter(Descriptor(::openat(place_.folder.get(), part.c_str(), Folder | O_NOFOLLOW)));
  }

  void Follow(const std::string& part, const struct stat& link) {
    std::array<char, PATH_MAX> to{};
    const auto length = ::readlinkat(place_.folder.get(), part.c_str(), to.data(), to.size());
    place_.isRefused = !MayFollow(link);
    if (place_.isRefused || length <= 0 || ++links_ > MostLinks) return place_.folder.Reset();
    const std::string target(to.data(), static_cast<std::size_t>(length));
    left_ = left_.empty() ? target : target + '/' + left_;
    if (target.starts_with('/')) Begin();
  }

  std::string left_;
  Place place_;
  int links_ = 0;
  bool othersMayWrite_ = false;
};

}  // namespace

Place PlaceOf(const std::string& path) { return Walk(path).Take(); }

}  // namespace onlinux
