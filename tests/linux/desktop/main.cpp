#include "Desktop.h"

namespace {

// Ends the program where a test hangs, whatever it waits for, and says which test that is.
class Watch : public testing::EmptyTestEventListener {
  void OnTestStart(const testing::TestInfo& test) override {
    told = std::string("\nIt hangs: ") + test.test_suite_name() + '.' + test.name() + '\n';
    ::signal(SIGALRM, [](int) { ::_exit(::write(STDERR_FILENO, told.data(), told.size()) > 0 ? 1 : 2); });
    ::alarm(18);
  }
  void OnTestEnd(const testing::TestInfo&) override { ::alarm(0); }

  static inline std::string told;
};

}  // namespace

int main(int count, char** arguments) {
  const std::vector<std::string> words(arguments + 1, arguments + count);
  testing::InitGoogleTest(&count, arguments);
  // The program under test takes the words of this one's command line for its own: they go on in the environment.
  for (auto word : words) {
    const auto end = std::min(word.find('='), word.size());
    std::transform(word.begin(), word.begin() + static_cast<std::ptrdiff_t>(end), word.begin(), ::toupper);
    ::setenv(word.substr(2, end - 2).c_str(), end < word.size() ? &word[end + 1] : "1", 1);
  }
  if (!words.empty() && !testing::GTEST_FLAG(list_tests)) Execute({"/proc/self/exe"});
  ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
  ::setenv("QT_FONT_DPI", std::to_string(dotsPerInch).c_str(), 1);
  ::setenv("QT_ENABLE_HIGHDPI_SCALING", "0", 1);
  ::setpriority(PRIO_PROCESS, 0, 0);
  testing::UnitTest::GetInstance()->listeners().Append(std::make_unique<Watch>().release());
  return RUN_ALL_TESTS();
}
