#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/xattr.h>

#include "Children.h"
#include "platform/linux/Descriptor.h"
#include "platform/linux/x11/XServer.h"
#include "platform/user32.h"

namespace velmaro {
namespace {

using Variables = std::vector<std::pair<std::string, std::string>>;

// Starts the real program with no other display than the variables lead to.
pid_t Start(
    const Variables& variables, const std::vector<std::string>& words = {VELMARO_PROGRAM},
    bool (*prepare)() = [] { return true; }) {
  const auto child = ::fork();
  if (child != 0) return child;
  if (!prepare()) ::_exit(99);
  for (const auto* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) ::unsetenv(variable);
  for (const auto& [name, value] : variables) ::setenv(name.c_str(), value.c_str(), 1);
  Execute(words);
}

// The exit code of a process, -1 where a signal ended it or where it did not end in time.
int Ended(pid_t child) {
  int status = 0;
  if (!Eventually([&] { return ::waitpid(child, &status, WNOHANG) == child; })) {
    ::kill(child, SIGKILL);
    ::waitpid(child, &status, 0);
  }
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// A socket on which connections wait for ever.
onlinux::Descriptor Mute(const std::string& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  path.copy(address.sun_path, sizeof address.sun_path - 1);
  onlinux::Descriptor line(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  EXPECT_EQ(::bind(line.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  EXPECT_EQ(::listen(line.get(), 5), 0);
  return line;
}

TEST(LinuxDisplays, WhereNoWindowCanBeShownTheProgramSaysSoAndEnds) {
  const TestFolder folder;
  const auto x = Mute(folder / "x");
  const auto wayland = Mute(folder / "wayland");
  const auto named = Mute(folder / "named");
  const Variables none;
  const std::vector<Variables> cases = {
      none,
      {{"DISPLAY", ":9999"}},
      {{"DISPLAY", "unix:" + (folder / "x")}},
      {{"WAYLAND_DISPLAY", folder / "wayland"}},
      {{"WAYLAND_DISPLAY", "named"}, {"XDG_RUNTIME_DIR", folder.Path()}},
      {{"DISPLAY", "unix:" + (folder / "x")}, {"WAYLAND_DISPLAY", folder / "wayland"}},
      {{"QT_QPA_PLATFORM", "nonsense"}},
      {{"QT_QPA_PLATFORM", "xcb"}},
      {{"QT_QPA_PLATFORM", "wayland;nonsense;"}, {"WAYLAND_DISPLAY", folder / "wayland"}},
      {{"QT_QPA_PLATFORM", "linuxfb:fb=/no/such/device"}}};
  for (auto variables : cases) {
    const auto errors = folder / "errors";
    const auto code = InChild([&] {
      ::dup2(::creat(errors.c_str(), 0600), STDERR_FILENO);
      return Ended(Start(variables));
    });
    EXPECT_NE(ReadBytes(errors).find("no window can be shown"), std::string::npos) << ReadBytes(errors);
    EXPECT_EQ(code, 1) << ReadBytes(errors);
  }
  pollfd asked{.fd = named.get(), .events = POLLIN, .revents = 0};
  EXPECT_EQ(::poll(&asked, 1, 0), 1) << "a name stands for a socket in the folder of the session";
  EXPECT_EQ(Ended(Start(none, {VELMARO_PROGRAM, "/?"})), 1);
  EXPECT_EQ(InChild([&] {
              std::array<int, 2> ends{};
              if (::pipe(ends.data()) != 0) return 9;
              ::dup2(ends[1], STDERR_FILENO);
              for (const auto end : ends) ::close(end);
              return Ended(Start(none));
            }),
            1)
      << "nobody reads the error output";
}

TEST(LinuxDisplays, TheToolkitComesFromBesideTheProgramOrFromItsInstallationOnly) {
  const TestFolder folder;
  const Variables offscreen = {{"QT_QPA_PLATFORM", "offscreen"}, {"XDG_CONFIG_HOME", folder.Path()}};
  const std::string install = "cmake --install '" VELMARO_BUILD "' --prefix '";
  ASSERT_EQ(std::system((install + (folder / "usr") + "' >/dev/null").c_str()), 0);
  fs::create_directories(folder / "any/bin");
  fs::copy_file(VELMARO_PROGRAM, folder / "any/bin/velmaro");
  fs::copy(folder / "usr/lib", folder / "any/lib", fs::copy_options::recursive);
  EXPECT_EQ(Ended(Start(offscreen, {folder / "any/bin/velmaro"})), 1) << "anyone may have put it into ../lib";
  for (const auto* file : {"velmaro-toolkit.so", "velmaro-x11.so"})
    fs::rename((folder / "any/lib/velmaro/") + file, (folder / "any/bin/") + file);
  if (::chown((folder / "any/bin/velmaro-toolkit.so").c_str(), 65534, 65534) == 0) {
    EXPECT_EQ(Ended(Start(offscreen, {folder / "any/bin/velmaro"})), 1) << "another user put it there";
  }
  fs::copy_file(folder / "usr/bin/velmaro", folder / "moved");
  const auto child = Start(offscreen, {folder / "moved"});
  const auto maps = "/proc/" + std::to_string(child) + "/maps";
  const auto toolkit = folder / "usr/lib/velmaro/velmaro-toolkit.so";
  EXPECT_TRUE(Eventually([&] { return ReadBytes(maps).find(toolkit) != std::string::npos; }));
  ::kill(child, SIGKILL);
  ::waitpid(child, nullptr, 0);
}

class LinuxProgram : public testing::Test {
 protected:
  void SetUp() override {
    if (!TheDisplay().Runs()) GTEST_SKIP() << "there is no Xvfb";
    variables = {{"DISPLAY", std::getenv("DISPLAY")}, {"XDG_CONFIG_HOME", folder.Path()}};
  }
  static bool Shows() { return platform::FindWindowA("Zeld's Velmaro Process") != 0; }
  // Makes the program one that lends its user a right: that to raise classes.
  std::string WithARight() const {
    for (const auto* file : {"velmaro", "velmaro-toolkit.so", "velmaro-x11.so"})
      fs::copy_file(fs::path(VELMARO_BUILD) / file, folder / file);
    // Revision 2 of a file's capabilities, effective at once; CAP_SYS_NICE is number 23.
    constexpr std::array<std::uint32_t, 5> rights = {0x02000001, 1U << 23, 0, 0, 0};
    const auto program = folder / "velmaro";
    return ::setxattr(program.c_str(), "security.capability", rights.data(), sizeof rights, 0) == 0 ? program : "";
  }

  TestFolder folder;
  Variables variables;
};

TEST_F(LinuxProgram, EndsWhenItsLastWindowIsDestroyed) {
  const auto child = Start(variables);
  ASSERT_TRUE(Eventually(Shows));
  onlinux::XServer x;
  ::xcb_destroy_window(x.Line(), platform::FindWindowA("Zeld's Velmaro Process"));
  ::xcb_flush(x.Line());
  EXPECT_EQ(Ended(child), 0);
}

TEST_F(LinuxProgram, ARightOfItsOwnReachesNeitherForeignCodeNorStartedPrograms) {
  const auto program = WithARight();
  if (program.empty()) GTEST_SKIP() << "this user may not give a file a capability";
  fs::permissions(folder.Path(), fs::perms::all);
  fs::create_directory(folder / "foreign");
  fs::copy(VELMARO_QT_PLUGINS "/platforms", folder / "foreign/platforms");
  for (const auto* name : {"QT_PLUGIN_PATH", "QT_QPA_PLATFORM_PLUGIN_PATH"})
    variables.emplace_back(name, folder / (name[3] == 'P' ? "foreign" : "foreign/platforms"));
  pid_t child = 0;
  const auto loaded = [&] { return ReadBytes("/proc/" + std::to_string(child) + "/maps"); };
  const auto shows = [&] { return loaded().find("libqxcb.so") != std::string::npos; };
  // On a busy machine a display can look like one that hangs.
  for (int tries = 0; tries < 3 && !shows(); ++tries) {
    child = Start(variables, {program}, BecomeNobody);
    Eventually(shows);
  }
  EXPECT_TRUE(shows());
  EXPECT_EQ(loaded().find(folder / "foreign"), std::string::npos);
  ::kill(child, SIGKILL);
  ::waitpid(child, nullptr, 0);
  const auto line = "env >" + (folder / "told") + "; grep Cap /proc/$$/status >>" + (folder / "told");
  Start(variables, {program, "/q", "/m", "/h", "/bin/sh", "-c", line}, [] {
    // What a memory run may claim is over soon.
    const rlimit most{400U << 20, 400U << 20};
    return ::setrlimit(RLIMIT_DATA, &most) == 0 && BecomeNobody();
  });
  const auto told = [&] { return ReadBytes(folder / "told"); };
  const auto ran = [&] { return told().find("CapAmb:\t0000000000000000\n") != std::string::npos; };
  EXPECT_TRUE(Eventually(ran) || Eventually(ran) || Eventually(ran)) << told();
  for (const auto* kind : {"CapInh", "CapPrm", "CapEff"})
    EXPECT_NE(told().find(std::string(kind) + ":\t0000000000000000\n"), std::string::npos) << told();
  EXPECT_NE(told().find("QT_PLUGIN_PATH=" + (folder / "foreign") + '\n'), std::string::npos) << told();
}

}  // namespace
}  // namespace velmaro
