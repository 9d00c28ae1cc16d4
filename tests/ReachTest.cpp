#include "Fixture.h"

namespace velmaro {

TEST_F(OnDesktop, WhatADesktopKeepsToItselfIsTold) {
  desktop.whyWindowsAreMissing = "Some are missing.";
  auto& game = desktop.WindowOf(desktop.AddWindow("Game"));
  game.remark = " (minimized)";
  auto& form = Start();
  for (const int view : {6, 0, 6}) Press(form.Option1[static_cast<std::size_t>(view)]);
  Select(form.List1, RowWith(form.List1, "Game (minimized)"));
  Choose(form.mnuWOption[4]);
  EXPECT_TRUE(!game.visible && desktop.boxes.size() == 1 && desktop.boxes[0].text == "Some are missing.");
  game.outOfReach = true;
  for (const std::size_t command : {0, 3}) Choose(form.mnuWOption[command]);
  ASSERT_EQ(desktop.boxes.size(), 3U) << "each time";
  EXPECT_EQ(desktop.boxes[2].text, "This desktop keeps its windows to itself.");
}

}  // namespace velmaro
