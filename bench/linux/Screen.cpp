#include "Screen.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "Children.h"
#include "Compare.h"
#include "platform/linux/processes/EndProcess.h"
#include "platform/linux/starts/Start.h"

namespace {

constexpr std::size_t Width = 800;
constexpr std::size_t Height = 600;

}  // namespace

Screen::Screen() : folder_((std::filesystem::temp_directory_path() / "velmaro-bench-XXXXXX").string()) {
  int ends[2];
  if (!::mkdtemp(folder_.data()) || ::pipe(ends) != 0) throw Failure("no folder for a screen can be had");
  const onlinux::Descriptor reading(ends[0]);
  server_ = StartSilent({onlinux::FindFile("Xvfb"), "-displayfd", std::to_string(ends[1]), "-screen", "0",
                         std::to_string(Width) + 'x' + std::to_string(Height) + "x24", "-fbdir", folder_, "-nolisten",
                         "tcp", "-noreset"});
  ::close(ends[1]);
  std::string number;
  for (char c = 0; ::read(reading.get(), &c, 1) == 1 && c != '\n';) number += c;
  const onlinux::Descriptor file(::open((folder_ + "/Xvfb_screen0").c_str(), O_RDONLY | O_CLOEXEC));
  struct stat facts {};
  if (::fstat(file.get(), &facts) == 0) size_ = static_cast<std::size_t>(facts.st_size);
  if (number.empty() || size_ < Width * Height * 4) throw Failure("the X server does not come up");
  file_ = ::mmap(nullptr, size_, PROT_READ, MAP_SHARED, file.get(), 0);
  if (file_ == MAP_FAILED) throw Failure("the picture of the X server can't be read");
  const auto* picture = static_cast<const char*>(file_) + size_ - Width * Height * 4;
  pixels_ = {reinterpret_cast<const std::uint32_t*>(picture), Width * Height};
  ::setenv("DISPLAY", (':' + number).c_str(), 1);
  ::setenv("HOME", folder_.c_str(), 1);
  ::setenv("XDG_RUNTIME_DIR", folder_.c_str(), 1);
  const auto daemon = onlinux::FindFile("dbus-daemon");
  if (daemon.empty()) return;
  const auto address = "unix:path=" + folder_ + "/bus";
  bus_ = StartSilent({daemon, "--session", "--nofork", "--nopidfile", "--address=" + address});
  ::setenv("DBUS_SESSION_BUS_ADDRESS", address.c_str(), 1);
}

Screen::~Screen() {
  for (const auto child : {bus_, server_})
    if (onlinux::EndProcess(child, SIGTERM)) Reap(child);
  if (file_) ::munmap(file_, size_);
  std::error_code error;
  std::filesystem::remove_all(folder_, error);
}

std::size_t Screen::Detail() const {
  std::size_t detail = 0;
  for (std::size_t i = 1; i < pixels_.size(); ++i) detail += pixels_[i] != pixels_[i - 1];
  return detail;
}
