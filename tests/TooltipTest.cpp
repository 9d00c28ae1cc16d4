#include "Fixture.h"
#include "desktop/Tooltip.h"

namespace {

class Tip : public OnDesktop {};

TEST_F(Tip, TakesSomeOfItsSidesAtOnceAndTheOthersWhenItIsMadeAnew) {
  auto& form = Start();
  velmaro::Tooltip tip;
  // What the one tip window has been told: style and flags, text, title and icon, colours.
  const auto shown = [&] {
    std::string all;
    for (const auto& [window, told] : desktop.tooltips) {
      const auto color = [](const auto& value) { return value ? ", " + std::to_string(*value) : ""; };
      EXPECT_TRUE(told.topmost && told.owner == form.btnLaunch.hWnd() && told.tool.value().hwnd == told.owner);
      all += std::to_string(told.style) + ' ' + std::to_string(told.tool->uFlags) + ' ' + told.tool->lpszText + " | " +
             told.title + ' ' + std::to_string(told.icon) + color(told.backColor) + color(told.textColor);
    }
    return all;
  };
  const auto made = [&] {
    EXPECT_FALSE(tip.Create());
    return shown();
  };
  tip.SetTipText("a");
  EXPECT_EQ(made(), "") << "it belongs to no control";
  tip.SetParentControl(&form.btnLaunch);
  EXPECT_EQ(made(), "3 16 a |  0");
  tip.SetTipText("b");
  tip.SetTitle("t");
  tip.SetStyle(2);
  tip.SetCentered(true);
  EXPECT_EQ(shown(), "3 16 b |  0") << "a title waits for an icon";
  EXPECT_EQ(made(), "3 18 b | t 0");
  tip.SetIcon(2);
  tip.SetBackColor(5);
  tip.SetForeColor(6);
  EXPECT_EQ(shown(), "3 18 b | t 2, 5, 6");
  tip.SetTitle("u");
  tip.SetStyle(1);
  tip.SetCentered(false);
  EXPECT_EQ(shown(), "3 18 b | u 2, 5, 6");
  EXPECT_EQ(made(), "67 16 b | u 2, 5, 6");
  tip.SetTitle("");
  tip.SetIcon(3);
  EXPECT_EQ(shown(), "67 16 b | u 2, 5, 6") << "an icon waits for a title";
  tip.SetBackColor(0);
  tip.SetForeColor(0);
  EXPECT_EQ(shown(), "67 16 b | u 2, 0, 0");
  EXPECT_EQ(made(), "67 16 b |  3") << "black is the platform's own colour when a tip is made";
  tip.SetParentControl(nullptr);
  EXPECT_EQ(made(), "");
}

}  // namespace
