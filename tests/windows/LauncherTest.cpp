#include "Velmaro.h"

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

TEST_F(LauncherTest, OddSettingsDoNoHarmAndArePutRight) {
  settings.Write(L"LastPriority", L"seven");
  settings.Write(L"LastRun", std::wstring(500000, L'x'));
  settings.Write(L"LastRun1", L"one");
  const auto dialog = Open();
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

TEST_F(LauncherTest, CommandIsWhatTheFieldShows) {
  const auto probe = folder.Probe(L"Shown App.exe");
  const auto command = probe + L" -long";
  for (const bool completed : {true, false}) {
    settings.Write(L"LastRun1", completed ? command : L"");
    const auto dialog = Open();
    const auto field = Child(dialog, L"COMBOBOX");
    if (completed) {
      // The list completes the text when it drops, and stays silent about it.
      ::SendMessageW(field, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(probe.substr(0, probe.size() - 12).c_str()));
      Front(dialog);
      Keys({VK_F4, VK_F4});
    } else {
      ::SendMessageW(field, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(command.c_str()));
      ::SendMessageW(field, CB_SETCURSEL, 0, 0);
    }
    ASSERT_TRUE(Until([&] { return Text(field) == command; })) << Text(field);
    settings.Write(L"LastRun", L"");
    Press(Child(dialog, L"BUTTON", L"&High"));
    Press(Child(dialog, L"BUTTON", L"OK"));
    EXPECT_TRUE(Until([&] { return settings.Read(L"LastRun") == command; })) << settings.Read(L"LastRun");
    const auto report = ReportOf(probe);
    EXPECT_TRUE(report.line.ends_with(L" -long") && report.folder == L"C:\\" && report.show == SW_SHOWNORMAL);
    EXPECT_TRUE(Until([&] { return ClassOf(report.id) == static_cast<DWORD>(HIGH_PRIORITY_CLASS); }));
    End(report.id);
    EXPECT_EQ(settings.Read(L"LastRun1"), completed ? command : L"") << "it stands in the list already";
  }
}

}  // namespace
