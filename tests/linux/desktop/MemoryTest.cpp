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
