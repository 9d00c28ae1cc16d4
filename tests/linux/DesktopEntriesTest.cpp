#include "Children.h"
#include "platform/linux/starts/Command.h"

namespace {

using LinuxEntries = InFolder;

TEST_F(LinuxEntries, ADesktopEntryIsRunByItsCommandLine) {
  // What stands in the entry, and the words behind the program, or the error and what it is about.
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"Exec=tool --rom=%f %F %% z", "--rom=x|y z|%|z"},
      {"Exec=tool \"a \\\\$b\" C:\\\\\\\\dir \"\" %U", "a $b|C:\\dir||x|y z"},
      {"Exec=tool %c %m %i\nIcon=pad", "A game|--icon|pad|x|y z"},
      {"Exec=tool\nTerminal=true\nDBusActivatable=true", "-e|bin/tool|x|y z"},
      {"[Desktop Action x]\nExec=tool", "13 my-game.desktop"},
      {"Exec=tool\nTryExec=absent", "2 absent"},
      {"Exec=absent %U", "2 absent"}};
  for (const auto* name : {"tool", "xterm"}) folder.Sleeper("bin/" + std::string(name));
  const auto entry = folder / "my-game.desktop";
  Alone([&] {
    ::setenv("PATH", (folder / "bin").c_str(), 1);
    for (const auto& [lines, wanted] : cases) {
      WriteBytes(entry, "[Desktop Entry]\nType=Application\nName=A game\nPath=/usr\n# said\n" + lines + '\n');
      onlinux::Refusal refusal;
      const auto command = onlinux::Resolve({entry, "x", "y z"}, refusal);
      auto got = std::to_string(refusal.error) + ' ' + refusal.name + '|';
      if (command) got.clear();
      for (std::size_t i = 1; command && i < command->words.size(); ++i) got += command->words[i] + '|';
      if (const auto at = got.find(folder.Path()); at != got.npos) got.erase(at, folder.Path().size() + 1);
      EXPECT_TRUE(got == wanted + '|' && (!command || command->folder == "/usr")) << lines << ": " << got;
    }
  });
}

TEST_F(LinuxEntries, AMenusEntryHoldsItsClassAndAWindowsProgramGoesToWine) {
  const auto game = folder.Sleeper("zzgame");
  for (const auto* path : {"bin", "share/applications/org.zz", "other/applications"})
    fs::create_directories(folder / path);
  WriteProgram(folder / "bin/wine", "#!/bin/sh\nexec '" + game + "' 300\n");
  WriteProgram(folder / "share/applications/org.zz/run.desktop",
               "[Desktop Entry]\nType=Application\nExec=\"" + game + "\" 300\n");
  WriteProgram(folder / "other/applications/org.zz-run.desktop", "[Desktop Entry]\nType=Application\nExec=false\n");
  WriteBytes(folder / "My Game.EXE", "MZ");
  const Variables variables = {{"XDG_DATA_HOME", folder / "share"},
                               {"XDG_DATA_DIRS", folder / "other"},
                               {"PATH", (folder / "bin") + ":/usr/bin:/bin"}};
  for (const auto& name : {std::string("org.zz-run.desktop"), folder / "My Game.EXE"}) {
    EXPECT_EQ(Ended(Start({VELMARO_PROGRAM, "/i", name}, variables)), 0);
    ASSERT_TRUE(Eventually([&] { return Running(game) > 0; })) << name;
    EXPECT_EQ(Listed(Running(game))->pcPriClassBase, 4);
    EndRunning(game);
  }
  WriteProgram(folder / "bin/xdg-open", "#!/bin/sh\nexec '" VELMARO_PROGRAM "' /q $1\n");
  WriteBytes(folder / "a.txt", "");
  EXPECT_EQ(Ended(Start({VELMARO_PROGRAM, "/q", folder / "a.txt"}, variables)), 126) << "it would go on for ever";
}

}  // namespace
