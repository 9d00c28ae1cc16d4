#include "Fixture.h"
#include "desktop/modFiles.h"

namespace velmaro {
namespace {

using namespace std::string_literals;

class Files : public OnDesktop {};

TEST_F(Files, ModesOfSavingPutTheTextWhereTheySay) {
  const std::vector<std::tuple<int, std::string, std::string>> cases = {
      {0, "new", "new"}, {1, "old\nnew", "new"}, {-1, "old\nnew", "new"}, {2, "new\r\nold\n", "new\r\n"},
      {3, "old\n", ""},  {-2, "old\n", ""}};
  for (const auto& [mode, replaced, made] : cases) {
    desktop.files["C:\\a"].bytes = "old\n";
    SaveTextFile("C:\\a", "new", mode);
    EXPECT_EQ(desktop.files["C:\\a"].bytes, replaced) << mode;
    SaveTextFile("C:\\b", "new", mode);
    EXPECT_EQ(desktop.files.contains("C:\\b"), !made.empty()) << mode;
    EXPECT_EQ(desktop.files["C:\\b"].bytes, made) << mode;
    desktop.files.clear();
    for (const auto* bad : {"", "C:\\a|b", "C:\\locked"}) {
      desktop.files["C:\\locked"] = {.bytes = "old", .locked = true};
      SaveTextFile(bad, "new", mode);
      EXPECT_EQ(desktop.files.size(), 1U) << bad << mode;
      EXPECT_EQ(desktop.files["C:\\locked"].bytes, "old");
    }
    desktop.files.clear();
  }
  EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(Files, ReadingTakesTheWholeFileAndMakesAMissingOne) {
  const auto bytes = "a\0b\r\n\xFF"s + std::string(100000, 'x');
  desktop.files["C:\\a"].bytes = bytes;
  for (const std::size_t most : {std::size_t{7}, simulated::Memory::Unlimited}) {
    desktop.largestRead = most;
    EXPECT_TRUE(ReadTextFile("C:\\a") == bytes) << most;
  }
  EXPECT_EQ(ReadTextFile("C:\\none"), "");
  EXPECT_TRUE(desktop.files.contains("C:\\none"));
  desktop.files["C:\\a"].unreadable = true;
  EXPECT_EQ(ReadTextFile("C:\\a"), "");
  SaveTextFile("C:\\a", "new", 2);
  EXPECT_TRUE(desktop.files["C:\\a"].bytes == bytes) << "what can't be read is not written over";
  desktop.files["C:\\dir"].folder = true;
  EXPECT_EQ(ReadTextFile("C:\\dir"), "");
  EXPECT_EQ(ReadTextFile(""), "");
}

}  // namespace
}  // namespace velmaro
