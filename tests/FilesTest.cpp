#include "Fixture.h"
#include "desktop/modFiles.h"

namespace velmaro {
namespace {

class Files : public OnDesktop {};

TEST_F(Files, AModeSaysWhereTheTextGoesAndReadingMakesAMissingFile) {
  const auto bytes = [&]() -> std::string& { return desktop.files["C:\\a"].bytes; };
  for (const auto& [mode, saved] : std::vector<std::pair<int, std::string>>{
           {0, "new"}, {1, "old\nnew"}, {-1, "old\nnew"}, {2, "new\r\nold\n"}, {3, "old\n"}, {-2, "old\n"}}) {
    bytes() = "old\n";
    SaveTextFile("C:\\a", "new", mode);
    EXPECT_EQ(bytes(), saved) << mode;
  }
  EXPECT_EQ(ReadTextFile("C:\\a") + ReadTextFile("C:\\none"), bytes());
  EXPECT_TRUE(desktop.files.contains("C:\\none"));
  desktop.files["C:\\a"].unreadable = true;
  SaveTextFile("C:\\a", "new", 2);
  EXPECT_EQ(bytes(), "old\n") << "what can't be read is not written over";
}

}  // namespace
}  // namespace velmaro
