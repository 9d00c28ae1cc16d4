#include <cstdio>

#include "Velmaro.h"

namespace {

constexpr double Megabyte = 1024.0 * 1024.0;
constexpr std::size_t Block = 2 * 1024 * 1024;

class MemoryTest : public testing::Test {
 protected:
  bool Running() const { return Text(button) == L"&Stop"; }
  int Target() const { return std::stoi(Text(button).substr(5)); }
  void SetTarget(int target) const {
    ::SendMessageW(meter, WM_HSCROLL, MAKEWPARAM(SB_THUMBPOSITION, target), reinterpret_cast<LPARAM>(bar));
  }
  void Start() const {
    Press(button);
    ASSERT_TRUE(Until([&] { return Running(); }));
  }
  // Presses a label with the mouse; the program need not be in front for it.
  static void PressLabel(HWND label) {
    ::PostMessageW(label, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(2, 2));
    ::PostMessageW(label, WM_LBUTTONUP, 0, MAKELPARAM(2, 2));
  }
  void ExpectAllGivenBack() const {
    EXPECT_TRUE(Until([&] { return PrivateBytes(velmaro.Id()) < idle + 4 * Block; }))
        << PrivateBytes(velmaro.Id()) << " of " << idle;
  }

  Folder folder;
  Velmaro velmaro{folder};
  HWND meter = (velmaro.Press(L"Free &Mem"), velmaro.Form());
  HWND bar = Child(meter, L"SCROLLBAR");
  HWND status = Child(meter, L"STATIC", L"Free: ");
  HWND button = Child(meter, L"BUTTON");
  std::size_t idle = PrivateBytes(velmaro.Id());
};

TEST_F(MemoryTest, TextsAreTheFiguresOfTheSystem) {
  MEMORYSTATUSEX before{};
  before.dwLength = sizeof before;
  ::GlobalMemoryStatusEx(&before);
  PressLabel(status);
  ::SendMessageW(status, WM_NULL, 0, 0);
  double free = 0, usage = 0, total = 0;
  ASSERT_TRUE(Until([&] {
    const auto text = Text(status);
    return std::swscanf(text.c_str(), L"Free: %lf KB - Usage: %lf%% of %lf MB", &free, &usage, &total) == 3;
  }));
  // Other programs take and give memory meanwhile.
  const auto physical = static_cast<double>(before.ullTotalPhys);
  EXPECT_NEAR(free / 1024, static_cast<double>(before.ullAvailPhys) / Megabyte, 512);
  EXPECT_NEAR(total, physical / Megabyte, 0.06);
  EXPECT_NEAR(std::stod(Text(meter)), free, 512 * 1024);
  EXPECT_NEAR(Target(), std::min(2047.0, (physical - free * 1024) / Megabyte), 512);
}

TEST_F(MemoryTest, RunHoldsTwoMebibytesAStepAndGivesAllBackWhenItIsStopped) {
  SetTarget(1000);
  const int target = Target();
  Start();
  // The about box holds the run where it is.
  PressLabel(Child(meter, L"STATIC", L"The Velmaro team"));
  ASSERT_TRUE(Until([&] { return velmaro.Form() != meter; }));
  const auto about = velmaro.Form();
  EXPECT_FALSE(::IsWindowEnabled(bar));
  const auto frame = Child(meter, L"Velmaro.Panel");
  RECT gauge{}, done{};
  ::GetClientRect(frame, &gauge);
  ::GetClientRect(::GetWindow(frame, GW_CHILD), &done);
  const double step = static_cast<double>(target) * done.right / gauge.right;
  const double held = static_cast<double>(PrivateBytes(velmaro.Id()) - idle) / Block;
  EXPECT_GT(held, 0);
  EXPECT_NEAR(held, step - 1, 4);
  ::PostMessageW(about, WM_CLOSE, 0, 0);
  EXPECT_TRUE(Gone(about));
  Front(meter);
  Keys({VK_ESCAPE});
  EXPECT_TRUE(Until([&] { return !Running(); }, 2000)) << "a whole run takes longer";
  EXPECT_TRUE(::IsWindowEnabled(bar));
  ExpectAllGivenBack();
  Start();
  ::PostMessageW(meter, WM_CLOSE, 0, 0);
  EXPECT_TRUE(Gone(meter));
  ExpectAllGivenBack();
  EXPECT_TRUE(velmaro.Lives());
}

TEST_F(MemoryTest, EndOfTheProgramEndsTheRun) {
  SetTarget(1000);
  Start();
  ::PostThreadMessageW(::GetWindowThreadProcessId(meter, nullptr), WM_QUIT, 0, 0);
  EXPECT_EQ(velmaro.ExitCode(1500), 0);
}

}  // namespace
