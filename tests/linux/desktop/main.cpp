#include "Desktop.h"

int main(int count, char** arguments) {
  ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
  ::setenv("QT_FONT_DPI", std::to_string(velmaro::dotsPerInch).c_str(), 1);
  ::setenv("QT_ENABLE_HIGHDPI_SCALING", "0", 1);
  ::setpriority(PRIO_PROCESS, 0, 0);
  testing::InitGoogleTest(&count, arguments);
  return RUN_ALL_TESTS();
}
