#include <sys/file.h>
#include <sys/stat.h>
#include <sys/sysinfo.h>

#include "Children.h"
#include "platform/machine.h"

namespace {

using namespace std::string_literals;

std::string Read(const std::string& key) { return platform::ReadSetting("Velmaro", "Settings", key).value_or("none"); }

bool Write(const std::string& key, const std::string& value) {
  return platform::WriteSetting("Velmaro", "Settings", key, value);
}

class LinuxSettings : public InFolder {
 protected:
  LinuxSettings() { ::chmod(folder.Path().c_str(), 0777); }
};

TEST_F(LinuxSettings, AnyValueComesBackAndOthersStay) {
  EXPECT_EQ(Read("LastRun"), "none");
  ::setenv("XDG_CONFIG_HOME", "no/whole/path", 1);
  EXPECT_TRUE(Write("LastRun", "at home"));
  EXPECT_EQ(fs::status(folder / ".config/velmaro").permissions(), fs::perms::owner_all);
  ::setenv("XDG_CONFIG_HOME", folder.Path().c_str(), 1);
  const std::vector<std::string> values = {"a=b", "two\nlines\r\n", "back\\slash\\n",
                                           "",    "\xff bytes",     std::string(20000, ' ')};
  for (const auto& value : values) {
    EXPECT_TRUE(Write("LastRun", value) && Write("k=" + value, "other"));
    EXPECT_EQ(Read("LastRun"), value);
  }
  for (const auto& value : values) EXPECT_EQ(Read("k=" + value), "other");
  Alone([] {
    const bool first = ::fork() != 0;
    for (int i = 0; i < 30; ++i) Write((first ? "one" : "two") + std::to_string(i), "written");
    EXPECT_TRUE(!first || ::wait(nullptr) > 0);
  });
  for (int i = 0; i < 60; ++i) EXPECT_EQ(Read((i < 30 ? "one" : "two") + std::to_string(i % 30)), "written");
}

TEST_F(LinuxSettings, WhatCantBeWrittenLeavesTheOldFileWhole) {
  ASSERT_TRUE(Write("LastRun", "old"));
  const auto before = ReadBytes(folder / "velmaro/settings.conf");
  Alone([] {
    const rlimit room{64, 64};
    ::signal(SIGXFSZ, SIG_IGN);
    ::setrlimit(RLIMIT_FSIZE, &room);
    EXPECT_FALSE(Write("LastRun", std::string(100, 'x')));
  });
  EXPECT_TRUE(ReadBytes(folder / "velmaro/settings.conf") == before && FilesIn(folder / "velmaro") == 1);
  for (const auto& path : {folder / "velmaro", folder / "velmaro/settings.conf"}) {
    ::chmod(path.c_str(), 0);
    Alone([] { EXPECT_TRUE(BecomeNobody() && !Write("LastRun", "new") && Read("LastRun") == "none"); });
    ::chmod(path.c_str(), 0777);
  }
  EXPECT_EQ(Read("LastRun"), "old");
}

TEST_F(LinuxSettings, NothingInTheirPlaceHoldsTheProgramUp) {
  ASSERT_TRUE(Write("LastRun", "old"));
  const auto settings = folder / "velmaro/settings.conf";
  const auto start = std::chrono::steady_clock::now();
  {
    const onlinux::Descriptor held(::open((folder / "velmaro").c_str(), O_RDONLY));
    ASSERT_EQ(::flock(held.get(), LOCK_EX), 0);
    EXPECT_EQ(std::pair(Write("LastRun", "new"), Read("LastRun")), std::pair(false, "old"s));
  }
  const std::vector<std::function<int()>> others = {[&] { return ::mkfifo(settings.c_str(), 0666); },
                                                    [&] { return ::symlink("/dev/zero", settings.c_str()); },
                                                    [&] { return ::mkdir(settings.c_str(), 0777); }};
  for (const auto& put : others) {
    ASSERT_TRUE(fs::remove(settings) && put() == 0);
    EXPECT_EQ(std::pair(Write("LastRun", "new"), Read("LastRun")), std::pair(false, "none"s));
  }
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}

TEST(LinuxMachine, MemoryFiguresAreTheSystemsOwn) {
  platform::MEMORYSTATUS status;
  platform::GlobalMemoryStatus(status);
  struct sysinfo system {};
  ASSERT_EQ(::sysinfo(&system), 0);
  EXPECT_EQ(status.dwTotalPhys, std::uint64_t{system.totalram} * system.mem_unit);
  const auto figures = ReadBytes("/proc/meminfo");
  const auto available = std::stod(figures.substr(figures.find("MemAvailable:") + 13)) * 1024;
  EXPECT_NEAR(static_cast<double>(status.dwAvailPhys), available, 256e6);
}

TEST(LinuxMachine, APatternFindsTheFirstFileOfItsFolder) {
  const TestFolder folder;
  for (const auto* file : {"c.txt", "b.txt", "d.txt", "[x]y.iso", "x.iso"}) WriteBytes(folder / file, "");
  fs::create_directory(folder / "a.txt");
  for (const auto& [pattern, found] :
       {std::pair("*.txt", "b.txt"), {"?.TXT", ""}, {"[x]*", "[x]y.iso"}, {"none/*", ""}})
    EXPECT_EQ(platform::Dir(folder / pattern), found);
}

TEST(LinuxMachine, OnlyWholeCharactersCountAsSuch) {
  std::string lengths;
  for (std::string_view text =
           "a\xc2\x80\xdf\xbf\xe0\xa0\x80\xed\x9f\xbf\xee\x80\x80\xf0\x90\x80\x80\xf4\x8f\xbf\xbf"
           "\x80\xc1\xbf\xc2x\xe0\x9f\xbf\xed\xa0\x80\xe3\x81x\xf0\x8f\xbf\xbf\xf4\x90\x80\x80\xf5\x80\x80\x80\xe3\x81";
       !text.empty(); text.remove_prefix(lengths.back() - '0'))
    lengths += std::to_string(platform::CharacterLength(text));
  EXPECT_EQ(lengths, "12233344" + std::string(28, '1'));
  EXPECT_EQ(platform::LowerCase("AZ[@ÄŁЖ\xff\xc3"), "az[@äłж\xff\xc3");
  EXPECT_EQ(platform::ToUtf16("é日😀\xff"), u"é日😀\xfffd");
  EXPECT_EQ(platform::FromUtf16(u"\x7f\x80\x7ff\x800\xd83d\xde00\xd83dx\xde00"),
            "\x7f\u0080\u07ff\u0800😀\ufffdx\ufffd");
}

}  // namespace
