#include "Fixture.h"
#include "memory/formFreeMem.h"

namespace {

constexpr std::uint64_t MB = 1U << 20;

class Memory : public OnDesktop {
 protected:
  // So many MB are in use, of 512.
  void Use(std::uint64_t megabytes) { desktop.memory.available = desktop.memory.total - megabytes * MB; }
};

TEST_F(Memory, MeterShowsTheFiguresEverywhere) {
  // All and free bytes, the width of the bar, and the texts: status, caption, figure on the bar, button.
  const std::vector<std::tuple<std::uint64_t, std::uint64_t, Twips, std::string>> cases = {
      {512 * MB, 128 * MB, 1151.25F,
       "Free: 131072.0 KB - Usage: 75.0% of 512.0 MB|131072KB Free Memory|25.0%|Free 384 MB"},
      {512 * MB, 512 * MB, 4605, "Free: 524288.0 KB - Usage: 0.0% of 512.0 MB|524288KB Free Memory|100.0%|Free"},
      {512 * MB, 0, 0, "Free: 0.0 KB - Usage: 100.0% of 512.0 MB|0KB Free Memory|0.0%|Free 512 MB"},
      {512 * MB, 1535, 0.013F, "Free: 1.5 KB - Usage: 100.0% of 512.0 MB|1KB Free Memory|0.0%|Free 511 MB"},
      {2 * MB - 1, MB, 2302.5F, "Free: 1024.0 KB - Usage: 50.0% of 2.0 MB|1024KB Free Memory|50.0%|Free"},
      {65536 * MB, 16384 * MB, 1151.25F,
       "Free: 16777216.0 KB - Usage: 75.0% of 65536.0 MB|16777216KB Free Memory|25.0%|Free 2047 MB"},
      {0, 0, 660, "|0KB Free Memory|0%|Free"}};
  auto& main = Start();
  for (const auto& [total, available, width, texts] : cases) {
    desktop.memory.total = total;
    desktop.memory.available = available;
    Press(main.btnFreeMem);
    auto& form = application.Default<formFreeMem>();
    EXPECT_EQ(form.lblStatus.Caption() + '|' + form.Caption() + '|' + form.lblFreeMem.Caption() + '|' +
                  form.btnFree.Caption(),
              texts);
    EXPECT_NEAR(form.Picture2.Width(), width, 0.01) << texts;
    EXPECT_EQ(form.lblFreeMem.At(), (Bounds{0, 30, form.Picture2.Width(), 225})) << texts;
    EXPECT_TRUE(available != 128 * MB || form.lblFreeMem.ToolTipText() == "131,072.0 KB");
    CloseBox(form);
  }
}

TEST_F(Memory, TicksAndClicksRefreshAndTheSliderOnlyFollowsDown) {
  Use(100);
  Choose(Start().mnuFileFreeMem);
  auto& form = application.Default<formFreeMem>();
  Choose(application.Default<formVelmaro>().mnuFileFreeMem);
  EXPECT_EQ(&FrontForm(), &form) << "it shows already, and comes to the front";
  Use(60);
  desktop.Advance(2999);
  EXPECT_EQ(form.btnFree.Caption(), "Free 100 MB");
  desktop.Advance(1);
  EXPECT_EQ(form.btnFree.Caption(), "Free 60 MB");
  Slide(form.HScroll1, 20);
  const std::vector<std::function<void()>> roads = {[&] { desktop.Advance(3000); }, [&] { Click(form.lblStatus); },
                                                    [&] { Click(form.Picture1); }, [&] { Click(form.Picture2); }};
  for (std::int16_t used = 90; const auto& road : roads) {
    Use(static_cast<std::uint64_t>(++used));
    road();
    EXPECT_TRUE(form.HScroll1.Max() == used && form.btnFree.Caption() == "Free 20 MB") << used;
  }
  Use(5);
  Click(form.lblFreeMem);
  EXPECT_EQ(form.HScroll1.Max(), 94) << "the figure itself is no button";
}

TEST_F(Memory, ARunShowsItsProgressAndGivesEverythingBack) {
  Use(100);
  Choose(Start().mnuFileFreeMem);
  auto& form = application.Default<formFreeMem>();
  Slide(form.HScroll1, 4);
  std::vector<void*> blocks;
  for (int step = 1; step <= 4; ++step)
    desktop.Then([&, step] {
      for (const auto& [block, bytes] : desktop.memory.live)
        if (std::ranges::count(blocks, block) == 0) blocks.push_back(block);
      EXPECT_EQ(form.btnFree.Caption() + form.lblFreeMem.Caption(), "&Stop");
      EXPECT_FALSE(form.HScroll1.Enabled() || form.Timer1.Enabled());
      EXPECT_FLOAT_EQ(form.Picture2.Width(), 4605.0F * static_cast<float>(step) / 4);
      EXPECT_EQ(desktop.memory.live.size(), static_cast<std::size_t>(step - 1));
      EXPECT_EQ(desktop.WindowOf(form.hWnd()).title, std::to_string((412 - 2 * (step - 1)) * 1024) + "KB Free Memory");
      if (step == 2) Press(application.Default<formVelmaro>().btnRefresh);
      desktop.Advance(10000);
    });
  Press(form.btnFree);
  EXPECT_TRUE(std::equal(blocks.begin(), blocks.end(), desktop.memory.released.end() - 4)) << "first come, first gone";
  EXPECT_EQ(desktop.memory.peakBytes, 5U * 2097152U);
  EXPECT_TRUE(form.HScroll1.Enabled() && form.Timer1.Enabled());
  EXPECT_EQ(form.btnFree.Caption() + form.lblFreeMem.Caption(), "Free 4 MB80.5%");
  EXPECT_NEAR(form.Picture2.Width(), 4605 * 412.0 / 512, 0.01);
  TypeKey(form, Key::Escape);
  EXPECT_EQ(desktop.memory.claims, 8U) << "Esc means nothing without a run";
  Press(form.btnFree);
  EXPECT_EQ(desktop.memory.claims, 16U) << "a new run begins afresh";
  desktop.memory.failEvery = 3;
  Press(form.btnFree);
  EXPECT_EQ(desktop.memory.claims, 23U) << "a step whose block can't be had is passed over";
  Slide(form.HScroll1, 0);
  Press(form.btnFree);
  EXPECT_EQ(form.btnFree.Caption() + std::to_string(desktop.memory.claims), "Free 0 MB23");
}

TEST_F(Memory, ARunIsStoppedByEachOfItsRoadsInAnyStep) {
  Use(100);
  auto& main = Start();
  const std::vector<std::function<void(formFreeMem&)>> roads = {
      [](formFreeMem& form) { Press(form.btnFree); },   [](formFreeMem& form) { TypeKey(form, Key::Escape); },
      [](formFreeMem& form) { Click(form.Picture1); },  [](formFreeMem& form) { Click(form.Picture2); },
      [](formFreeMem& form) { Click(form.lblStatus); }, [](formFreeMem& form) { CloseBox(form); },
      [&](formFreeMem&) { desktop.quits = true; }};
  for (std::size_t road = 0; road < roads.size(); ++road) {
    for (const std::size_t step : {1, 2, 7}) {
      Press(main.btnFreeMem);
      auto& form = application.Default<formFreeMem>();
      const auto claims = desktop.memory.claims;
      for (std::size_t i = 1; i < step; ++i) desktop.Then();
      desktop.Then([&] {
        roads[road](form);
        EXPECT_EQ(desktop.memory.live.size(), step - 1) << "the blocks go at the run's own end";
        EXPECT_TRUE(Shows(form));
      });
      Press(form.btnFree);
      desktop.quits = false;
      EXPECT_EQ(desktop.memory.claims - claims, 2 * (step - 1)) << road;
      EXPECT_EQ(form.btnFree.Caption(), "Free 100 MB");
      EXPECT_EQ(form.Unloaded(), road == 5) << road;
    }
  }
}

TEST_F(Memory, UnattendedRunTakesHalfTheMegabytesInBlocksOfTwo) {
  auto& main = Start("/q");
  Press(main.btnFreeMem);
  auto& meter = application.Default<formFreeMem>();
  for (const auto& [used, blocks] : std::vector<std::pair<std::uint64_t, std::size_t>>{{9, 5}, {1, 0}, {2, 2}}) {
    desktop.memory.peakBlocks = 0;
    Use(used);
    if (blocks > 0) desktop.Then([&] { EXPECT_TRUE(application.Forms().size() == 3 && meter.HScroll1.Enabled()); });
    Press(main.btnFree);
    EXPECT_EQ(desktop.memory.peakBlocks, blocks) << used;
    EXPECT_TRUE(application.Forms().size() == 2 && Shows(meter)) << "the user's own meter stays";
  }
  CloseBox(meter);
  // The user may stop it, or close its window, and the kill run goes on all the same.
  desktop.files[KillList].bytes = "game.exe\rgame.exe";
  for (const bool close : {false, true}) {
    Use(50);
    desktop.AddProcess("game.exe");
    desktop.memory.peakBlocks = desktop.memory.claims = 0;
    desktop.Then();
    desktop.Then([&] { close ? CloseBox(FrontForm()) : Press("&Stop"); });
    Press(main.btnFree);
    EXPECT_TRUE(desktop.memory.claims == 2 && application.Forms().size() == 1);
    EXPECT_EQ(Ended().size(), close ? 2U : 1U);
  }
  // Without the quiet mode the question comes when the memory has been given back.
  main.QuietMode = false;
  desktop.memory.peakBlocks = 0;
  desktop.Answer(7, [&] { EXPECT_TRUE(desktop.memory.peakBlocks == 26 && desktop.memory.live.empty()); });
  main.btnFree.RaisePress();
  // A main window that is closed meanwhile has nobody left to ask.
  desktop.AddProcess("game.exe");
  desktop.Then([&] { CloseBox(main); });
  Press(main.btnFree);
  EXPECT_TRUE(Ended().size() == 2 && desktop.boxes.size() == 1);
}

}  // namespace
