#include <gtest/gtest.h>

#include "Drive.h"

namespace drive {
namespace {

constexpr auto Title = L"Okno \u017b\u00f3\u0142w \u7a93";

class WindowTest : public testing::Test {
 protected:
  WindowTest()
      : probe(StartProbe(folder.Probe(L"Window.exe"), std::wstring(L"--title \"") + Title + L'"')), velmaro(folder) {
    target = probe.Window(Title);
    Front(velmaro.Main());
  }
  void ShowWindows() const {
    velmaro.Press(L"&Hidden");
    ASSERT_TRUE(Until([&] { return velmaro.Select(Title); }));
  }
  bool TopMost() const { return ::GetWindowLongW(target, GWL_EXSTYLE) & WS_EX_TOPMOST; }

  Folder folder;
  Program probe;
  Velmaro velmaro;
  HWND target = nullptr;
};

TEST_F(WindowTest, CommandsChangeTheRealWindow) {
  ShowWindows();
  const auto row = velmaro.Selected();
  EXPECT_EQ(::SendMessageW(velmaro.List(), LB_GETITEMDATA, static_cast<WPARAM>(row), 0),
            reinterpret_cast<LRESULT>(target));
  const auto shows = [&] { return ::IsWindowVisible(target) != FALSE; };
  velmaro.Choose(L"Top Most");
  EXPECT_TRUE(Until([&] { return TopMost() && shows(); }));
  velmaro.Choose(L"Normal Position");
  EXPECT_TRUE(Until([&] { return !TopMost() && shows(); }));
  velmaro.Choose(L"Top Most");
  EXPECT_TRUE(Until([&] { return TopMost(); }));
  velmaro.Choose(L"Hide Window");
  EXPECT_TRUE(Until([&] { return !TopMost() && !shows(); }));
  EXPECT_EQ(velmaro.Selected(), row);
  velmaro.Refresh();
  EXPECT_TRUE(velmaro.Select(Title)) << "a hidden window with a title is listed";
  velmaro.Choose(L"Show Window");
  EXPECT_TRUE(Until(shows));
  // By key, and by double click as well. A window that was just shown can still come to the front meanwhile.
  EXPECT_TRUE(Until([&] {
    Front(velmaro.Main());
    velmaro.Select(Title);
    Keys({VK_F4});
    return Until([&] { return !shows(); }, 500);
  }));
  ClickRow(velmaro.List(), velmaro.Selected(), MOUSEEVENTF_LEFTDOWN, 2);
  EXPECT_TRUE(Until(shows));
  // A window that went after the list was filled does no harm.
  End(probe.Id());
  velmaro.Choose(L"Hide Window");
  velmaro.Refresh();
  EXPECT_EQ(velmaro.Row(Title), L"");
}

TEST_F(WindowTest, WindowsWithoutTitleAreListedOnRequest) {
  ::SetWindowTextW(target, L"");
  const auto row = L" - Hidden Window - " + std::to_wstring(reinterpret_cast<std::uintptr_t>(target));
  velmaro.Press(L"&Hidden");
  ASSERT_TRUE(Until([&] { return !velmaro.Row(L"Velmaro Process").empty(); }));
  EXPECT_EQ(velmaro.Row(row), L"");
  velmaro.Choose(L"List Hidden Windows");
  EXPECT_TRUE(Until([&] { return velmaro.Row(row) == row; }));
}

TEST_F(WindowTest, OptionsMenusTakeTurnsWithTheirShortcuts) {
  const auto bar = [&] {
    std::wstring texts;
    for (const auto& entry : velmaro.Menu())
      if (entry.depth == 0 || entry.text.find(L'\t') != std::wstring::npos) texts += entry.text + L'|';
    return texts;
  };
  const std::wstring before =
      L"&File|Run...\tCtrl+R|&Kill Processes\tCtrl+K|&Refresh\tF5|&Edit|&Find...\tCtrl+F|&Find Next\tF3|&Options|";
  const std::wstring behind = L"&Help|&About\tF1|";
  EXPECT_EQ(bar(),
            before + L"Normal\tCtrl+N|High\tCtrl+H|Real Time\tCtrl+T|Idle\tCtrl+I|Terminate Process\tDel|" + behind);
  ShowWindows();
  EXPECT_EQ(bar(), before + L"&Top Most\tF6|&Normal Position\tF8|&Show Window\tF2|&Hide Window\tF4|" + behind);
  Front(velmaro.Main());
  Keys({'H'}, VK_CONTROL);
  EXPECT_TRUE(Until([&] {
    Keys({VK_F6});
    return TopMost();
  }));
  velmaro.Press(L"&All");
  ASSERT_TRUE(Until([&] { return velmaro.Select(L"\twindow.exe"); }));
  EXPECT_EQ(velmaro.Checks(), L"Auto Refresh|Real Time") << "the shortcut was out of reach";
  velmaro.Choose(L"High");
  velmaro.Await().Answer(IDOK);
  EXPECT_EQ(ClassOf(probe.Id()), static_cast<DWORD>(HIGH_PRIORITY_CLASS));
}

TEST_F(WindowTest, FindSelectsByWildcardsAndTellsOfAMiss) {
  const auto find = [&](const std::wstring& text) {
    velmaro.Choose(L"Find...");
    const auto prompt = velmaro.Form();
    EXPECT_TRUE(Child(prompt, L"STATIC", L"Enter text to find:"));
    ::SendMessageW(Child(prompt, L"EDIT"), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
    Press(Child(prompt, L"BUTTON", L"OK"));
    EXPECT_TRUE(Until([&] { return !::IsWindow(prompt); }));
  };
  const auto selected = [&](const std::wstring& ending) {
    return Until([&] {
      return velmaro.Selected() >= 0 && velmaro.Rows()[static_cast<std::size_t>(velmaro.Selected())].ends_with(ending);
    });
  };
  find(L"NORMAL?*w?ndow.[a-e]xe");
  EXPECT_TRUE(selected(L"\twindow.exe"));
  velmaro.Choose(L"Find Next");
  const auto box = velmaro.Await();
  EXPECT_EQ(box.title, L"Zeld's Velmaro Process");
  EXPECT_EQ(box.text, L"'NORMAL?*w?ndow.[a-e]xe'was not found.");
  EXPECT_EQ(box.icon, L"information");
  box.Answer(IDOK);
  EXPECT_TRUE(Until([&] { return velmaro.Selected() == -1; }));
  Front(velmaro.Main());
  EXPECT_TRUE(Until([&] {
    Keys({VK_F3});
    return velmaro.Selected() >= 0;
  }));
  find(L"[");
  EXPECT_TRUE(Until([&] { return velmaro.Selected() == 0; })) << "an invalid pattern takes the first row";
}

TEST_F(WindowTest, KeyboardAloneReachesEverything) {
  ::SetForegroundWindow(velmaro.Main());
  const auto focus = [&] { return Focus(velmaro.Main()); };
  ::PostMessageW(velmaro.List(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
  ::PostMessageW(velmaro.List(), WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
  ASSERT_TRUE(Until([&] { return focus() == velmaro.List(); }));
  Front(velmaro.Main());
  for (const auto caption : {L"Velmaro!", L"&Launch...", L"Free &Mem", L"Free Resources", L"&All", L"&Refresh"}) {
    Keys({VK_TAB});
    EXPECT_TRUE(Until([&] { return Text(focus()) == caption; }, 2000)) << caption << ", not " << Text(focus());
  }
  Keys({VK_TAB});
  EXPECT_TRUE(Until([&] { return focus() == velmaro.List(); }));
  Keys({'I'}, VK_MENU);
  EXPECT_TRUE(Until(
      [&] { return ::SendMessageW(Child(velmaro.Main(), L"BUTTON", L"&Idle"), BM_GETCHECK, 0, 0) == BST_CHECKED; }));
  Keys({'M'}, VK_MENU);
  const auto meter = velmaro.Form();
  ASSERT_TRUE(meter);
  ::PostMessageW(meter, WM_CLOSE, 0, 0);
  EXPECT_TRUE(Gone(meter));
  Front(velmaro.Main());
  Keys({VK_F1});
  EXPECT_TRUE(velmaro.Form());
}

}  // namespace
}  // namespace drive
