#include <arpa/inet.h>
#include <poll.h>
#include <sys/inotify.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/xattr.h>

#include <map>

#include "Children.h"
#include "platform/linux/desktop/Display.h"
#include "platform/linux/ground/Descriptor.h"
#include "platform/linux/x11/XServer.h"
#include "platform/user32.h"

namespace {

using LinuxDisplays = InFolder;

using namespace std::string_literals;

// A socket on which connections wait for ever.
onlinux::Descriptor Mute(const std::string& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  path.copy(address.sun_path, sizeof address.sun_path - 1);
  onlinux::Descriptor line(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  EXPECT_EQ(::bind(line.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  EXPECT_EQ(::listen(line.get(), 5), 0);
  return line;
}

// The same in the place of an X server, which is named by a number alone, and puts its name into `display`.
onlinux::Descriptor MuteX(std::string& display) {
  sockaddr_in address{.sin_family = AF_INET, .sin_port = 0, .sin_addr = {htonl(INADDR_LOOPBACK)}, .sin_zero = {}};
  socklen_t size = sizeof address;
  onlinux::Descriptor line(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  EXPECT_EQ(::bind(line.get(), reinterpret_cast<const sockaddr*>(&address), size) + ::listen(line.get(), 5), 0);
  EXPECT_EQ(::getsockname(line.get(), reinterpret_cast<sockaddr*>(&address), &size), 0);
  display = "127.0.0.1:" + std::to_string(ntohs(address.sin_port) - 6000);
  return line;
}

TEST_F(LinuxDisplays, WhereNoWindowCanBeShownTheProgramSaysSoAndEnds) {
  std::string mute;
  const auto x = MuteX(mute);
  const auto wayland = Mute(folder / "wayland");
  const auto named = Mute(folder / "named");
  const std::vector<Variables> cases = {
      {},
      {{"DISPLAY", ":9999"}},
      {{"DISPLAY", mute}},
      {{"WAYLAND_DISPLAY", folder / "wayland"}},
      {{"WAYLAND_DISPLAY", "named"}, {"XDG_RUNTIME_DIR", folder.Path()}},
      {{"DISPLAY", mute}, {"WAYLAND_DISPLAY", folder / "wayland"}},
      {{"QT_QPA_PLATFORM", "nonsense"}},
      {{"QT_QPA_PLATFORM", "xcb"}},
      {{"QT_QPA_PLATFORM", "wayland;nonsense;"}, {"WAYLAND_DISPLAY", folder / "wayland"}},
      {{"QT_QPA_PLATFORM", "linuxfb:fb=/no/such/device"}}};
  std::map<std::string, pid_t> started;  // all at once, since some wait
  for (const auto& variables : cases) {
    const auto errors = folder / "errors" + std::to_string(started.size());
    started[errors] = Start({VELMARO_PROGRAM}, variables, [&] { return TellErrorsTo(errors); });
  }
  for (const auto& [errors, process] : started) {
    EXPECT_EQ(Ended(process), 1);
    EXPECT_TRUE(Holds(ReadBytes(errors), "no window can be shown")) << errors << ReadBytes(errors);
  }
  std::array<std::uint32_t, 3> asked{};
  const onlinux::Descriptor line(::accept(named.get(), nullptr, nullptr));
  EXPECT_EQ(::recv(line.get(), asked.data(), sizeof asked, 0), 12) << "the name is one in the session's folder";
  EXPECT_EQ(asked, (std::array<std::uint32_t, 3>{1, 12U << 16, 2})) << "Wayland's request for a word";
  EXPECT_EQ(Ended(Start({VELMARO_PROGRAM, "/?"})), 1);
  if (UnderSanitizer) return;  // it has a word of its own to say at the end
  const auto silence = [] {
    std::array<int, 2> ends{};
    return ::pipe(ends.data()) == 0 && ::dup2(ends[1], STDERR_FILENO) > 0 && ::close_range(3, ~0U, 0) == 0;
  };
  EXPECT_EQ(Ended(Start({VELMARO_PROGRAM}, {}, silence)), 1) << "nobody reads the error output";
}

TEST_F(LinuxDisplays, ACompositorThatIsTheLastHopeMayTakeItsTime) {
  std::string mute;
  const auto x = MuteX(mute), wayland = Mute(folder / "wayland");
  const Child busy(Fork());
  if (busy.Id() == 0) {
    // Whoever asks the other server has waited in vain before.
    pollfd other{.fd = x.get(), .events = POLLIN, .revents = 0};
    const onlinux::Descriptor line(::poll(&other, 1, -1) == 1 ? ::accept(wayland.get(), nullptr, nullptr) : -1);
    ::_exit(::write(line.get(), "a word", 6) == 6 ? 0 : 1);
  }
  Alone([&] {
    ::setenv("DISPLAY", mute.c_str(), 1);
    ::setenv("WAYLAND_DISPLAY", (folder / "wayland").c_str(), 1);
    ::unsetenv("QT_QPA_PLATFORM");
    EXPECT_EQ(onlinux::WaysToShow(), "wayland");
  });
}

TEST_F(LinuxDisplays, AnInstalledProgramIsWholeAndTakesItsToolkitFromNowhereElse) {
  const Variables offscreen = {{"QT_QPA_PLATFORM", "offscreen"}};
  const std::string install = "cmake --install '" VELMARO_BUILD "' --prefix '";
  ASSERT_EQ(std::system((install + (folder / "usr") + "' >/dev/null").c_str()), 0);
  folder.Copy(VELMARO_PROGRAM, "any/bin/velmaro");
  fs::copy(folder / "usr/lib", folder / "any/lib", fs::copy_options::recursive);
  const auto bin = folder / "any/bin", unsafe = bin + "/velmaro-toolkit.so";
  const auto show = [&] {
    return Ended(Start({bin + "/velmaro"}, offscreen, [&] { return TellErrorsTo(bin + "/told"); }));
  };
  EXPECT_EQ(show(), 1) << "anyone may have put it into ../lib";
  for (const auto* file : {"/velmaro-toolkit.so", "/velmaro-x11.so"})
    fs::rename((folder / "any/lib/velmaro") + file, bin + file);
  ::chmod(unsafe.c_str(), 0777);
  EXPECT_EQ(show(), 1) << "anyone may have written to it";
  ::chmod(unsafe.c_str(), 0755);
  EXPECT_TRUE(::chown(unsafe.c_str(), 65534, 65534) != 0 || show() == 1);
  EXPECT_EQ(::chown(unsafe.c_str(), ::geteuid(), ::getegid()), 0);
  for (const ::mode_t open : {0777, 01777, 0775}) {
    if (open == 0775 && ::chown(bin.c_str(), ::geteuid(), 65533) != 0) continue;
    ::chmod(bin.c_str(), open);
    EXPECT_TRUE(show() == 1 && Holds(ReadBytes(bin + "/told"), "others may write it")) << open;
  }
  fs::copy_file(folder / "usr/bin/velmaro", bin + "/moved");
  WriteBytes(bin + "/qt.conf", "[Paths]\nPrefix=/no/such/folder\n");
  fs::create_directory(bin + "/platforms");
  const onlinux::Descriptor looks(::inotify_init1(IN_NONBLOCK));
  ::inotify_add_watch(looks.get(), (bin + "/platforms").c_str(), IN_OPEN);
  const Child child(Start({bin + "/moved"}, offscreen));
  for (const auto& loaded : {folder / "usr/lib/velmaro/velmaro-toolkit.so", std::string("libqoffscreen.so")})
    EXPECT_TRUE(Eventually([&] { return Holds(ReadBytes(ProcOf(child.Id(), "maps")), loaded); })) << loaded;
  std::array<char, 512> look{};
  EXPECT_EQ(::read(looks.get(), look.data(), look.size()), -1) << "plugins are no more looked for there";
  // The same without windows: its lists are its user's.
  const Child listed(folder.Sleeper("zzinstalled"));
  const auto run = [&] {
    return Ended(Start({folder / "usr/bin/velmaro", "/q", "/k", "/bin/true"}, {{"XDG_CONFIG_HOME", folder / "home"}}));
  };
  EXPECT_TRUE(run() == 0 && !fs::exists(folder / "home")) << "nothing was saved yet";
  fs::create_directories(folder / "home/velmaro");
  WriteBytes(folder / "home/velmaro/killlist.txt", "zzinstalled\n");
  EXPECT_TRUE(run() == 0 && !listed.Runs());
  EXPECT_TRUE(Holds(ReadBytes(folder / "usr/etc/security/limits.d/velmaro.conf"), "\n@velmaro - nice -10\n"));
  for (const auto* file : {"icons/hicolor/128x128/apps/velmaro.png", "man/man1/velmaro.1.gz"})
    EXPECT_TRUE(fs::exists(folder / "usr/share/" + file)) << file;
  // Plasma tells of windows only to a program of that path.
  const auto entry = ReadBytes(folder / "usr/share/applications/velmaro.desktop");
  EXPECT_TRUE(Holds(entry, "\nExec=" + (folder / "usr/bin/velmaro")));
}

class LinuxProgram : public InFolder {
 protected:
  void SetUp() override {
    if (!UseDisplay()) GTEST_SKIP() << "there is no Xvfb";
    variables = {{"DISPLAY", std::getenv("DISPLAY")}, {"XDG_RUNTIME_DIR", folder.Path()}};
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

  Variables variables;
};

TEST_F(LinuxProgram, SaysSoWhereItGetsTooLittleForAWindowAndGoesOnWithoutAnErrorOutput) {
  constexpr rlimit fewFiles{6, 6}, littleRoom{100U << 20, 100U << 20};
  for (const bool lacksFiles : {true, false}) {
    if (UnderSanitizer) break;  // which needs both itself
    const auto limit = [&] {
      return TellErrorsTo(folder / "told") &&
             (lacksFiles ? ::setrlimit(RLIMIT_NOFILE, &fewFiles) : ::setrlimit(RLIMIT_AS, &littleRoom)) == 0;
    };
    EXPECT_EQ(Ended(Start({VELMARO_PROGRAM}, variables, limit)), 1);
    EXPECT_TRUE(Holds(ReadBytes(folder / "told"), "no window can be shown"));
  }
  const auto silence = [] { return ::close(STDERR_FILENO) == 0; };
  const auto child = Start({VELMARO_PROGRAM}, variables, silence);
  ASSERT_TRUE(Eventually(Shows));
  EXPECT_EQ(fs::read_symlink(ProcOf(child, "fd/2")), "/dev/null");
  const std::string look = "test -e /proc/$$/fd/1 && ! test -e /proc/$$/fd/2";
  EXPECT_EQ(Ended(Start({VELMARO_PROGRAM, "/q", "/h", "/bin/sh", "-c", look}, variables, silence)), 0);
  std::optional<VirtualDisplay> bare(std::in_place, std::vector<std::string>{"-extension", "RENDER"});
  ASSERT_TRUE(bare->Use());
  const Variables there = {{"DISPLAY", std::getenv("DISPLAY")}};
  const auto orphan = Start({VELMARO_PROGRAM}, there, [&] { return TellErrorsTo(folder / "told"); });
  EXPECT_EQ(InChild([] { return Eventually(Shows) ? 0 : 1; }), 0) << "a server may lack an extension";
  bare.reset();
  EXPECT_EQ(Ended(orphan), 1);
  EXPECT_TRUE(Holds(ReadBytes(folder / "told"), "X11")) << ReadBytes(folder / "told");
  UseDisplay();
  onlinux::XServer x;
  ::xcb_destroy_window(x.Line(), platform::FindWindowA("Zeld's Velmaro Process"));
  ::xcb_flush(x.Line());
  EXPECT_EQ(Ended(child), 0) << "its last window was destroyed";
}

TEST_F(LinuxProgram, ARightOfItsOwnReachesNeitherForeignCodeNorStartedPrograms) {
  const auto program = WithARight();
  if (program.empty()) GTEST_SKIP() << "this user may not give a file a capability";
  fs::permissions(folder.Path(), fs::perms::owner_all | fs::perms::others_exec | fs::perms::others_read);
  WriteBytes(folder / "told", "");
  fs::permissions(folder / "told", fs::perms::all);
  fs::create_directory(folder / "foreign");
  fs::copy(VELMARO_QT_PLUGINS "/platforms", folder / "foreign/platforms");
  for (const auto* name : {"QT_PLUGIN_PATH", "QT_QPA_PLATFORM_PLUGIN_PATH"})
    variables.emplace_back(name, folder / (name[3] == 'P' ? "foreign" : "foreign/platforms"));
  // The display takes whoever knows its word.
  WriteBytes(folder / "word", "\xFF\xFF\0\0\0\0\0\x12MIT-MAGIC-COOKIE-1\0\x10"s + "a word of 16 by.");
  const VirtualDisplay guarded({"-auth", folder / "word"});
  ASSERT_TRUE(guarded.Use());
  variables[0].second = std::getenv("DISPLAY");
  variables.emplace_back("XAUTHORITY", folder / "word");
  std::optional<Child> child;
  const auto loaded = [&] { return ReadBytes(ProcOf(child->Id(), "maps")); };
  const auto shows = [&] { return Holds(loaded(), "libqxcb.so"); };
  // On a busy machine a display can look like one that hangs.
  for (int tries = 0; tries < 3 && !(child && shows()); ++tries) {
    child.emplace(Start({program}, variables, BecomeNobody));
    Eventually(shows);
  }
  EXPECT_TRUE(shows() && !Holds(loaded(), folder / "foreign"));
  child.reset();
  const auto line = "env >" + (folder / "told") + "; grep Cap /proc/$$/status >>" + (folder / "told");
  child.emplace(Start({program, "/q", "/m", "/h", "/bin/sh", "-c", line}, variables, [] {
    // What a memory run may claim is over soon.
    return LimitRoom(RLIMIT_DATA, 400U << 20) && BecomeNobody();
  }));
  const auto told = [&] { return ReadBytes(folder / "told"); };
  const auto none = [&](const char* kind) { return Holds(told(), kind + ":\t0000000000000000\n"s); };
  const auto ran = [&] { return none("CapAmb"); };
  EXPECT_TRUE(Eventually(ran) || Eventually(ran) || Eventually(ran)) << told();
  EXPECT_TRUE(none("CapInh") && none("CapPrm") && none("CapEff")) << told();
  EXPECT_TRUE(Holds(told(), "QT_PLUGIN_PATH=" + (folder / "foreign") + '\n')) << told();
}

}  // namespace
