#include "Desktop.h"

// A figure of this process, such as "VmRSS:", in kB.
int OwnMemory(const std::string& name) {
  const auto status = ReadBytes("/proc/self/status");
  return std::stoi(status.substr(status.find(name) + name.size()));
}

TEST_F(LinuxDesktop, AMemoryRunHoldsItsTargetAndGivesAllOfItBack) {
  Click(*main, "Free Mem");
  auto& meter = *ClientOf(app.Default<formFreeMem>()).window();
  meter.findChild<QScrollBar*>()->setValue(24);
  WriteBytes("/proc/self/clear_refs", "5");  // the peak counts from here
  const int before = OwnMemory("VmRSS:");
  Click(meter, "Free 24 MB");
  EXPECT_GE(OwnMemory("VmHWM:"), before + 24 * 2048);
  EXPECT_LE(OwnMemory("VmRSS:"), before + 4096);
  EXPECT_TRUE(meter.windowTitle().endsWith("KB Free Memory"));
}

TEST_F(LinuxDesktop, TheMemoryWindowsSliderHearsKeysAndItsBarsClicks) {
  Click(*main, "Free Mem");
  auto& meter = app.Default<formFreeMem>();
  const auto& picture = WidgetOf(meter.Image1);
  EXPECT_EQ(ClientOf(meter).childAt(picture.pos() + QPoint(0, 9)), &picture) << "no text covers its edge";
  std::string places;
  for (auto& slider = meter.HScroll1;
       const auto key : {Qt::Key_Home, Qt::Key_PageDown, Qt::Key_Right, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_Left}) {
    Press(WidgetOf(slider), key);
    places += std::to_string(slider.Value()) + ' ';
  }
  EXPECT_EQ(places, "0 10 11 12 2 1 ");
  for (const auto* panel : {&meter.Picture1, &meter.Picture2}) {
    meter.lblStatus.SetCaption("before");
    QTest::mouseClick(&WidgetOf(*panel), Qt::LeftButton, {}, {3, 1});
    EXPECT_NE(meter.lblStatus.Caption(), "before") << "a click on the bar refreshes it";
  }
}
