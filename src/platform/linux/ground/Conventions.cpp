#include <unistd.h>

#include <string_view>

#include "platform/machine.h"

namespace platform {
namespace {

constexpr std::string_view Help =
    "Usage: velmaro [SWITCH]... [PROGRAM [ARGUMENT]...]\n"
    "Opens the window, or starts PROGRAM at a priority and opens none.\n"
    "\n"
    "  /q             ask nothing and show no result; become the program, as nice does\n"
    "  /h             High priority\n"
    "  /i             Idle priority; without /h and /i it is Real Time\n"
    "  /max /min /hide /normal\n"
    "                 how the first window of the program shows\n"
    "  /k [FILE.txt]  end the programs of a kill list first\n"
    "  /y [FILE.txt]  spare the programs of a no-kill list\n"
    "  /m             free memory first\n"
    "  /x [TITLE]     hide the window with that title soon after the start\n"
    "  /?             show the switches in a box\n"
    "  --help         print this, and end\n"
    "  --version      print the version, and end\n"
    "\n"
    "More: man velmaro, https://velmaro.example/\n";

constexpr std::string_view Version = "velmaro " VELMARO_VERSION "\n";

}  // namespace

void BeginProgram() {}

bool AnswersTheShell(std::string_view question) {
  const auto answer = question == "--help" ? Help : question == "--version" ? Version : std::string_view();
  if (answer.empty()) return false;
  // Nobody may be left to read it.
  return ::write(STDOUT_FILENO, answer.data(), answer.size()) != 0;
}

// A name is the same bytes everywhere, whatever the locale.
std::string FromUtf8(std::string_view bytes) { return std::string(bytes); }
std::string ToUtf8(std::string_view text) { return std::string(text); }
std::optional<std::string> FromLocalPage(std::string_view) { return std::nullopt; }
std::optional<std::string> ToLocalPage(std::string_view) { return std::nullopt; }

}  // namespace platform
