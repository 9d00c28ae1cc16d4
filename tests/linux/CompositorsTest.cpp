#include <algorithm>

#include "Children.h"
#include "Rows.h"
#include "platform/linux/desktop/WindowCalls.h"
#include "platform/linux/processes/ProcFolder.h"
#include "platform/machine.h"

namespace {

using namespace velmaro;
using namespace platform;

// A compositor that players have, without a screen: its program, the words behind it, and what it does to windows.
struct RealCompositor {
  std::string program;
  Texts words;
  bool minimizes;
  bool pinsOnX;
};

std::ostream& operator<<(std::ostream& out, const RealCompositor& compositor) { return out << compositor.program; }

class LinuxCompositor : public InFolder, public testing::WithParamInterface<RealCompositor> {};

TEST_P(LinuxCompositor, ListsWindowsOfBothKindsOnceAndMinimizesThem) {
  const auto& [program, words, minimizes, pinsOnX] = GetParam();
  for (const auto& needed : {"/usr/bin/" + program, std::string("/usr/bin/Xwayland"), std::string("/usr/bin/xev")})
    if (!fs::exists(needed)) GTEST_SKIP() << "there is no " << needed;
  if (UnderSanitizer && program != "sway") GTEST_SKIP() << "one is enough to look for faults of memory";
  WriteBytes(folder / "clients",
             "#!/bin/sh\necho \"$WAYLAND_DISPLAY $DISPLAY\" >displays\n(xev >/dev/null &)\n"
             "exec " VELMARO_PROGRAM " /q /h /min " VELMARO_PROGRAM " 2>told\n");
  WriteBytes(folder / "sway.conf", "exec ./clients\n");
  for (const auto& path : {folder.Path(), folder / "clients"}) fs::permissions(path, fs::perms::all);
  Texts line = {folder.Copy("/usr/bin/" + program, program)};  // without what its file may be capable of
  line.insert(line.end(), words.begin(), words.end());
  const Variables headless = {
      {"XDG_RUNTIME_DIR", folder.Path()},        {"HOME", folder.Path()},    {"WLR_BACKENDS", "headless"},
      {"WLR_LIBINPUT_NO_DEVICES", "1"},          {"WLR_RENDERER", "pixman"}, {"KWIN_COMPOSE", "Q"},
      {"KWIN_WAYLAND_NO_PERMISSION_CHECKS", "1"}};
  const Child compositor(Start(line, headless, [&] { return BecomeNobody() && TellErrorsTo(folder / "errors"); }));
  const auto displays = [&] { return ReadBytes(folder / "displays"); };
  ASSERT_TRUE(Eventually([&] { return displays().ends_with('\n'); })) << ReadBytes(folder / "errors");
  const auto inSession = [&] {
    // Plasma's tells of windows only who lets himself be looked at.
    ASSERT_TRUE(BecomeNobody() && ::prctl(PR_SET_DUMPABLE, 1) == 0);
    const auto names = displays();
    const auto space = names.find(' ');
    ::setenv("WAYLAND_DISPLAY", (folder / names.substr(0, space)).c_str(), 1);
    ::setenv("DISPLAY", names.substr(space + 1, names.size() - space - 2).c_str(), 1);
  };
  const std::string title = "Zeld's Velmaro Process", hidden = title + (minimizes ? " (minimized)" : "");
  Alone([&] {
    inSession();
    // The first question brings the X server up, which may take its time: this process asks when it is there.
    const auto onX = [] { return onlinux::IsOnX(FindWindowA("Event Tester")) ? 0 : 1; };
    EXPECT_TRUE(Eventually([&] { return InChild(onX) == 0; })) << "on X more can be done with it";
    EXPECT_TRUE(Eventually([&] { return onlinux::IsOfCompositor(FindWindowA(title)); }))
        << testing::PrintToString(Rows());
  });
  // For as long as it looks after the window, it minimizes that again and again.
  const auto isWatched = [] {
    return std::ranges::any_of(fs::directory_iterator("/proc"), [](const auto& process) {
      return ReadBytes(process.path() / "comm") == onlinux::AsideName + std::string("\n");
    });
  };
  for (int i = 0; i < 3 && !Eventually([&] { return !isWatched(); }); ++i) continue;
  Alone([&] {
    inSession();
    const auto areRows = [](const Texts& wanted) {
      auto rows = Rows();
      std::ranges::sort(rows);
      return rows == wanted;
    };
    EXPECT_TRUE(Eventually([&] { return areRows({"Event Tester", hidden}); })) << testing::PrintToString(Rows());
    const auto tester = FindWindowA("Event Tester");
    EXPECT_EQ(Refusal(tester, 0, HWND_TOPMOST).empty(), pinsOnX);
    EXPECT_EQ(Refusal(tester, 0), "");
    for (const auto& one : {title, std::string("Event Tester")})
      EXPECT_TRUE(Eventually([&] { return AppActivate(one.substr(0, 5)) && Rows().front() == one; })) << one;
    const auto isHidden = [&] { return Refusal(FindWindowA(title), SWP_HIDEWINDOW).empty(); };
    EXPECT_TRUE(Eventually([&] { return isHidden() == minimizes; }));
    EXPECT_TRUE(areRows({"Event Tester", hidden}));
  });
  const auto told = ReadBytes(folder / "told");
  EXPECT_EQ(Holds(told, "has not minimized"), !minimizes) << told;
}

INSTANTIATE_TEST_SUITE_P(
    Real, LinuxCompositor,
    testing::Values(RealCompositor{"sway", {"-c", "sway.conf"}, false, false},
                    RealCompositor{"labwc", {"-C", ".", "-s", "./clients"}, true, false},
                    RealCompositor{
                        "kwin_wayland", {"--virtual", "--xwayland", "--no-lockscreen", "./clients"}, true, true}),
    [](const auto& info) { return info.param.program; });

}  // namespace
