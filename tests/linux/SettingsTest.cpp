#include <gtest/gtest.h>
#include <sys/stat.h>

#include "Children.h"
#include "platform/machine.h"

namespace velmaro {
namespace {

std::string Read(const std::string& key) { return platform::ReadSetting("Velmaro", "Settings", key).value_or("none"); }

bool Write(const std::string& key, const std::string& value) {
  return platform::WriteSetting("Velmaro", "Settings", key, value);
}

class LinuxSettings : public testing::Test {
 protected:
  LinuxSettings() {
    ::setenv("XDG_CONFIG_HOME", folder.Path().c_str(), 1);
    ::chmod(folder.Path().c_str(), 0777);
  }
  TestFolder folder;
};

TEST_F(LinuxSettings, AnyValueComesBackAndOthersStay) {
  EXPECT_EQ(Read("LastRun"), "none");
  const std::vector<std::string> values = {"a=b", "two\nlines\r\n", "back\\slash\\n", "", "\xff bytes", " blanks "};
  for (const auto& value : values) {
    EXPECT_TRUE(Write("LastRun", value));
    EXPECT_TRUE(Write("k=" + value, "other"));
    EXPECT_EQ(Read("LastRun"), value);
  }
  for (const auto& value : values) EXPECT_EQ(Read("k=" + value), "other");
}

TEST_F(LinuxSettings, AFullDiskLeavesTheOldFileWhole) {
  ASSERT_TRUE(Write("LastRun", "old"));
  const auto before = ReadBytes(folder / "velmaro/settings.conf");
  EXPECT_EQ(InChild([] {
              const rlimit room{64, 64};
              ::signal(SIGXFSZ, SIG_IGN);
              ::setrlimit(RLIMIT_FSIZE, &room);
              return Write("LastRun", std::string(100, 'x')) ? 1 : 0;
            }),
            0);
  EXPECT_EQ(ReadBytes(folder / "velmaro/settings.conf"), before);
  EXPECT_FALSE(fs::exists(folder / "velmaro/settings.conf.tmp"));
}

TEST_F(LinuxSettings, AFolderThatCantBeUsedLosesNothing) {
  ASSERT_TRUE(Write("LastRun", "old"));
  ::chmod((folder / "velmaro").c_str(), 0);
  EXPECT_EQ(InChild([] { return BecomeNobody() && !Write("LastRun", "new") && Read("LastRun") == "none" ? 0 : 1; }), 0);
  ::chmod((folder / "velmaro").c_str(), 0755);
  ::chmod((folder / "velmaro/settings.conf").c_str(), 0);
  EXPECT_EQ(InChild([] { return BecomeNobody() && !Write("LastRun", "new") ? 0 : 1; }), 0);
  ::chmod((folder / "velmaro/settings.conf").c_str(), 0644);
  EXPECT_EQ(Read("LastRun"), "old");
}

}  // namespace
}  // namespace velmaro
