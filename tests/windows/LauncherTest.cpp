#include "Drive.h"

namespace {

class LauncherTest : public testing::Test {
 protected:
  HWND Open() const {
    velmaro.Choose(L"Run...");
    return velmaro.Window(L"Velmaro Launcher");
  }

  Settings settings;
  Folder folder;
  Velmaro velmaro{folder, L"/q"};
};

TEST_F(LauncherTest, PriorityIsKeptOnEveryWayOutAndOddSettingsDoNoHarm) {
  const auto set = [](HWND dialog, const wchar_t* caption) {
    return ::SendMessageW(Child(dialog, L"BUTTON", caption), BM_GETCHECK, 0, 0) == BST_CHECKED;
  };
  auto dialog = Open();
  EXPECT_TRUE(set(dialog, L"&Real Time"));
  EXPECT_FALSE(::IsWindowEnabled(velmaro.Main()));
  Press(Child(dialog, L"BUTTON", L"&High"));
  Press(Child(dialog, L"BUTTON", L"Cancel"));
  EXPECT_TRUE(Until([&] { return settings.Read(L"LastPriority") == L"1"; }));
  settings.Write(L"LastPriority", L"seven");
  settings.Write(L"LastRun", std::wstring(500000, L'x'));
  settings.Write(L"LastRun1", L"one");
  settings.Write(L"LastRun3", L"behind a gap");
  dialog = Open();
  EXPECT_TRUE(set(dialog, L"&Normal"));
  EXPECT_EQ(Text(Child(dialog, L"COMBOBOX")).size(), 500000U);
  EXPECT_EQ(::SendMessageW(Child(dialog, L"COMBOBOX"), CB_GETCOUNT, 0, 0), 1);
  Press(Child(dialog, L"BUTTON", L"&Browse..."));
  const auto browse = velmaro.Await();
  EXPECT_EQ(velmaro.Menu(browse.window).at(0).id, 4100U | OFN_PATHMUSTEXIST) << "the system adds the last";
  browse.Answer(IDCANCEL);
  Front(dialog);
  Keys({VK_ESCAPE});
  EXPECT_TRUE(Until([&] { return settings.Read(L"LastPriority") == L"2"; }));
}

TEST_F(LauncherTest, PriorityReachesTheProgramThatTheCommandNames) {
  std::filesystem::create_directory(folder.Path(L"My Tools"));
  const auto probe = folder.Probe(L"My Tools\\Spaced App.exe");
  const auto command = probe.substr(0, probe.size() - 4) + L".EXE -x";
  const auto dialog = Open();
  Press(Child(dialog, L"BUTTON", L"&High"));
  ::SendMessageW(Child(dialog, L"COMBOBOX"), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(command.c_str()));
  Press(Child(dialog, L"BUTTON", L"OK"));
  const auto report = ReportOf(probe);
  EXPECT_TRUE(Until([&] { return ClassOf(report.id) == static_cast<DWORD>(HIGH_PRIORITY_CLASS); }));
  EXPECT_EQ(report.folder, L"C:\\");
  EXPECT_EQ(report.show, SW_SHOWNORMAL);
  EXPECT_EQ(velmaro.Checks(), L"Auto Refresh|High");
  EXPECT_EQ(settings.Read(L"LastRun") + settings.Read(L"LastRun1"), command + command);
}

TEST_F(LauncherTest, CommandIsWhatTheFieldShows) {
  const auto probe = folder.Probe(L"Shown.exe");
  const auto command = probe + L" -long";
  for (const bool completed : {true, false}) {
    settings.Write(L"LastRun1", completed ? command : L"");
    const auto dialog = Open();
    const auto field = Child(dialog, L"COMBOBOX");
    if (completed) {
      // The list completes the text when it drops, and stays silent about it.
      ::SendMessageW(field, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(probe.substr(0, probe.size() - 8).c_str()));
      Front(dialog);
      Keys({VK_F4, VK_F4});
    } else {
      ::SendMessageW(field, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(command.c_str()));
      ::SendMessageW(field, CB_SETCURSEL, 0, 0);
    }
    ASSERT_TRUE(Until([&] { return Text(field) == command; })) << Text(field);
    settings.Write(L"LastRun", L"");
    Press(Child(dialog, L"BUTTON", L"OK"));
    EXPECT_TRUE(Until([&] { return settings.Read(L"LastRun") == command; })) << settings.Read(L"LastRun");
    EXPECT_TRUE(ReportOf(probe).line.ends_with(L" -long"));
    EXPECT_EQ(settings.Read(L"LastRun1"), completed ? command : L"") << "it stands in the list already";
  }
}

}  // namespace
