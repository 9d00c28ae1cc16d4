#include "platform/linux/files/Save.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/linux/ground/Place.h"
#include "platform/linux/ground/UserFolder.h"
#include "platform/linux/processes/Handles.h"

namespace onlinux {
namespace {

constexpr auto Acl = "system.posix_acl_access";

int DescriptorOf(platform::Handle handle) {
  const auto* file = FindAs<OpenFile>(handle);
  return file ? file->descriptor.get() : -1;
}

// An old file, held so that nobody can put another one under what is read of it.
struct Old {
  Descriptor held;
  struct stat facts {};
  // The way to what the descriptor stands for; attributes are read by no other.
  std::string Path() const { return "/proc/self/fd/" + std::to_string(held.get()); }
};

Old Hold(int folder, const std::string& name) {
  Old old{Descriptor(::openat(folder, name.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC))};
  if (old.held && ::fstat(old.held.get(), &old.facts) != 0) old.held.Reset();
  return old;
}

// Reads what has a length of its own that is asked for first; nothing where that fails.
template <class Ask>
std::optional<std::string> Sized(Ask ask) {
  std::string bytes(std::max<ssize_t>(ask(nullptr, 0), 0), '\0');
  const auto size = ask(bytes.data(), bytes.size());
  if (size < 0 || static_cast<std::size_t>(size) > bytes.size()) return std::nullopt;
  bytes.resize(static_cast<std::size_t>(size));
  return bytes;
}

// The names of the attributes that a file must keep: what users gave it, and its lists of rights.
std::optional<std::vector<std::string>> AttributesOf(const Old& old) {
  const auto path = old.Path();
  const auto all = Sized([&](char* room, std::size_t size) { return ::listxattr(path.c_str(), room, size); });
  if (!all && errno != ENOTSUP) return std::nullopt;
  const auto listed = all.value_or("");
  std::vector<std::string> names;
  for (std::string_view left = listed; !left.empty();) {
    const auto name = left.substr(0, left.find('\0'));
    if (name.starts_with("user.") || (name.starts_with("system.") && name != Acl)) names.emplace_back(name);
    left.remove_prefix(std::min(name.size() + 1, left.size()));
  }
  // Not every file system names it.
  if (::getxattr(path.c_str(), Acl, nullptr, 0) > 0) names.emplace_back(Acl);
  return names;
}

bool CopyAttributes(const Old& old, int to, const std::vector<std::string>& names, std::string_view kind) {
  const auto path = old.Path();
  for (const auto& name : names) {
    if (!name.starts_with(kind)) continue;
    const auto value =
        Sized([&](char* room, std::size_t size) { return ::getxattr(path.c_str(), name.c_str(), room, size); });
    if (!value || ::fsetxattr(to, name.c_str(), value->data(), value->size(), 0) != 0) return false;
  }
  return true;
}

// Gives a new file all that the old one is to others. A change of the owner takes rights away, so it comes before them,
// and attributes are given while the file is still the user's own.
bool GiveRights(int to, const Old& old) {
  const auto names = AttributesOf(old);
  struct stat own {};
  if (!names || ::fstat(to, &own) != 0 || !CopyAttributes(old, to, *names, "user.")) return false;
  // What the folder would give a new file of its own accord, the old one may not have had.
  ::fremovexattr(to, Acl);
  const bool owned = own.st_uid == old.facts.st_uid && own.st_gid == old.facts.st_gid;
  if (!owned && ::fchown(to, old.facts.st_uid, old.facts.st_gid) != 0) return false;
  return ::fchmod(to, old.facts.st_mode & 01777) == 0 && CopyAttributes(old, to, *names, "system.");
}

// True where a new file in the place of the old one can be the same to everybody, or where there is no old one.
bool Fits(int to, const Old& old, Keeping keeping) {
  if (!old.held) return errno == ENOENT;
  if (!S_ISREG(old.facts.st_mode)) return false;
  const bool given = old.facts.st_nlink == 1 && GiveRights(to, old);
  return given || keeping == Keeping::Nothing;
}

// Where a save goes. The program's folder of the user's own is made for the first one.
Place PlaceToWrite(const std::string& path) {
  auto place = PlaceOf(path);
  const auto own = UserFolder("velmaro");
  const bool isMissing = !place.folder && !place.isRefused && std::filesystem::path(path).parent_path() == own;
  return isMissing && MakeUserFolder(own) ? PlaceOf(path) : std::move(place);
}

}  // namespace

Descriptor OpenToWrite(const std::string& path, int flags) {
  const auto place = PlaceToWrite(path);
  const auto open = [&](int more) {
    return Descriptor(::openat(place.folder.get(), place.name.c_str(), flags | O_NOFOLLOW | more, 0666));
  };
  auto file = place.folder ? open(0) : Descriptor();
  // In a folder that all may write to, the kernel can refuse another user's file to whoever would also make it.
  if (!file && place.folder && errno == ENOENT) file = open(O_CREAT);
  // Links of the kernel's own lead to what bears no name.
  if (!file && !place.isCommon) file.Reset(::open(path.c_str(), flags));
  struct stat facts {};
  // A second name can be one that another user gave to a file which he may not write.
  const bool mayBeLent = file && place.isCommon && ::geteuid() == 0;
  if (mayBeLent && (::fstat(file.get(), &facts) != 0 || facts.st_nlink > 1)) return {};
  return file;
}

bool TakePlace(platform::Replacement& replacement, Keeping keeping) {
  const int folder = DescriptorOf(replacement.folder.get());
  const auto& to = replacement.target;
  const bool taken = Fits(DescriptorOf(replacement.file.get()), Hold(folder, to), keeping) &&
                     ::renameat(folder, replacement.name.c_str(), folder, to.c_str()) == 0;
  if (!taken) {
    platform::Discard(replacement);
    return false;
  }
  replacement.file.Reset();
  // The folder is held by no more than its place, which can't be forced onto the disk.
  const Descriptor whole(::openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (whole) ::fsync(whole.get());
  return true;
}

}  // namespace onlinux

namespace platform {

Replacement CreateReplacement(const std::string& path) {
  auto place = onlinux::PlaceToWrite(path);
  Replacement made{.target = place.name};
  if (!place.folder) return made;
  const int folder = place.folder.get();
  // What the old file keeps from others, they may not read in the new one either.
  const mode_t mode = onlinux::Hold(folder, place.name).held ? 0600 : 0666;
  for (int number = 0; number < 1000; ++number) {
    made.name = place.name + '.' + std::to_string(number) + ".tmp";
    onlinux::Descriptor file(::openat(folder, made.name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
    if (file) {
      made.file.Reset(onlinux::Keep(onlinux::OpenFile{std::move(file)}));
      made.folder.Reset(onlinux::Keep(onlinux::OpenFile{std::move(place.folder)}));
      break;
    }
    if (errno != EEXIST) break;
  }
  return made;
}

bool TakePlace(Replacement& replacement) { return onlinux::TakePlace(replacement, onlinux::Keeping::Rights); }

void Discard(Replacement& replacement) {
  replacement.file.Reset();
  ::unlinkat(onlinux::DescriptorOf(replacement.folder.get()), replacement.name.c_str(), 0);
}

}  // namespace platform
