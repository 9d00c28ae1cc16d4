#include "platform/linux/ground/Trust.h"

#include <grp.h>
#include <pwd.h>
#include <sys/auxv.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <string>

namespace onlinux {
namespace {

bool IsOurs(uid_t owner) {
  if (owner == 0) return true;
  return owner == ::getuid() && owner == ::geteuid() && ::getauxval(AT_SECURE) == 0;
}

// Many systems give each user a group of his own, and let it write whatever he makes.
bool IsOurOwnGroup(gid_t number) {
  if (number != ::getgid() || number != ::getegid()) return false;
  std::array<char, 16384> room{};
  passwd user{};
  passwd* foundUser = nullptr;
  if (::getpwuid_r(::getuid(), &user, room.data(), room.size(), &foundUser) != 0 || !foundUser) return false;
  const std::string name = user.pw_name;
  group entry{};
  ::group* foundGroup = nullptr;
  if (::getgrgid_r(number, &entry, room.data(), room.size(), &foundGroup) != 0 || !foundGroup) return false;
  auto* member = entry.gr_mem;
  while (*member && *member == name) ++member;
  return user.pw_gid == number && entry.gr_name == name && !*member;
}

}  // namespace

bool IsOnlyOurs(const std::string& path) {
  struct stat facts {};
  if (::lstat(path.c_str(), &facts) != 0 || S_ISLNK(facts.st_mode) || !IsOurs(facts.st_uid)) return false;
  return !(facts.st_mode & S_IWOTH) && (!(facts.st_mode & S_IWGRP) || IsOurOwnGroup(facts.st_gid));
}

}  // namespace onlinux
