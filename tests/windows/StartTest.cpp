#include <gtest/gtest.h>

#include "Drive.h"

namespace drive {
namespace {

// Every top-level window, seen or not, that a program ever has while it lives.
std::vector<std::wstring> WindowsInLifeOf(const Program& program) {
  std::vector<std::wstring> seen;
  while (program.Lives())
    for (HWND window = nullptr; (window = ::FindWindowExW(nullptr, window, nullptr, nullptr));) {
      DWORD process = 0;
      ::GetWindowThreadProcessId(window, &process);
      if (process == program.Id()) seen.push_back(ClassOf(window));
    }
  return seen;
}

TEST(StartTest, QuietRunsNeverHaveAnyWindow) {
  const Folder folder;
  const auto probe = folder.Probe(L"Target.exe");
  // The others are no programs.
  for (const auto& target : {L"/h " + probe, std::wstring(L"\"unclosed"), std::wstring(32000, L'x'),
                             L"/x \"open " + std::wstring(300, L'"')}) {
    const Velmaro velmaro(folder, L"/q " + target);
    EXPECT_EQ(WindowsInLifeOf(velmaro), std::vector<std::wstring>());
    EXPECT_EQ(velmaro.ExitCode(), 0);
  }
  const auto report = ReportOf(probe);
  EXPECT_EQ(ClassOf(report.id), static_cast<DWORD>(HIGH_PRIORITY_CLASS));
  EXPECT_EQ(report.folder, L"C:\\");
}

TEST(StartTest, SwitchesReachTheTarget) {
  // The last one shows that the last one tested wins, and that what is no switch stays.
  const std::vector<std::tuple<std::wstring, int, DWORD, std::wstring>> cases{
      {L"/q /max /i", SW_SHOWMAXIMIZED, IDLE_PRIORITY_CLASS, L" -a"},
      {L"/q /hide", SW_HIDE, REALTIME_PRIORITY_CLASS, L" -b \"two words\""},
      {L"/Q /MAX /Normal /h /i", SW_SHOWNORMAL, IDLE_PRIORITY_CLASS, L" /z"}};
  for (const auto& [switches, show, priorityClass, arguments] : cases) {
    const Folder folder;
    const auto probe = folder.Probe(L"Target.exe");
    const Velmaro velmaro(folder, switches + L' ' + probe + arguments);
    EXPECT_EQ(velmaro.ExitCode(), 0);
    const auto report = ReportOf(probe);
    EXPECT_EQ(report.show, show);
    EXPECT_EQ(ClassOf(report.id), priorityClass);
    EXPECT_TRUE(report.line.ends_with(arguments)) << report.line;
  }
}

TEST(StartTest, WindowIsHiddenByItsTitle) {
  const Folder folder;
  const auto other = StartProbe(folder.Probe(L"Other.exe"), L"--title Hide me not");
  const auto window = StartProbe(folder.Probe(L"Window.exe"), L"--title Hide me");
  const auto hidden = window.Window(L"Hide me");
  const Velmaro velmaro(folder, L"/q /x \"Hide me\" " + folder.Probe(L"Target.exe"));
  EXPECT_EQ(velmaro.ExitCode(), 0);
  EXPECT_TRUE(Gone(hidden));
  EXPECT_TRUE(other.Window(L"Hide me not"));
}

TEST(StartTest, ListsAndMemoryComeBeforeTheTarget) {
  const Folder folder;
  // With byte order marks, as editors write them.
  folder.Write(L"my list.txt", "\xEF\xBB\xBFSpared.exe\r\nDoomed.exe");
  folder.Write(L"spare.txt", std::string("\xFF\xFEs\0p\0a\0r\0e\0d\0*\0", 16));
  const auto doomed = StartProbe(folder.Probe(L"Doomed.exe"));
  const auto spared = StartProbe(folder.Probe(L"Spared.exe"));
  const auto probe = folder.Probe(L"Target.exe");
  const Velmaro velmaro(folder, L"/q /y spare.txt /k \"my list.txt\" /m /h " + probe);
  const auto meter = velmaro.Window({}, L"Velmaro.Form");
  ASSERT_TRUE(meter) << "the memory run shows its window";
  EXPECT_FALSE(doomed.Lives());
  EXPECT_TRUE(spared.Lives());
  Press(Child(meter, L"BUTTON", L"&Stop"));
  EXPECT_EQ(velmaro.ExitCode(), 0);
  EXPECT_EQ(ClassOf(ReportOf(probe).id), static_cast<DWORD>(HIGH_PRIORITY_CLASS));
}

TEST(StartTest, AttendedStartShowsAFilledList) {
  const Folder folder;
  const Velmaro velmaro(folder, L"  ");
  const auto main = velmaro.Main();
  // What is asked from outside is answered before anything that the program put off until after its first picture.
  EXPECT_NE(velmaro.Row(L"\tvelmaro.exe"), L"");
  EXPECT_EQ(velmaro.Checks(), L"Auto Refresh|Real Time");
  ::PostMessageW(main, WM_CLOSE, 0, 0);
  EXPECT_EQ(velmaro.ExitCode(), 0);
}

}  // namespace
}  // namespace drive
