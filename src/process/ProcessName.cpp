#include "process/ProcessName.h"

#include "desktop/modRegistry.h"
#include "platform/machine.h"
#include "runtime/Text.h"

namespace velmaro {
namespace {

// Where programs have no ending to be told by, a command that is one quoted text, or that names a file as it stands, is
// a program as a whole, blanks and all.
std::optional<std::string> WholeProgram(const std::string& command) {
  if (!platform::ProgramEnding().empty()) return std::nullopt;
  const std::string bare(DropQuotes(command));
  const bool quoted = bare.size() + 2 == command.size() && bare.find('"') == std::string::npos;
  return quoted || FileExists(bare) ? std::optional(bare) : std::nullopt;
}

}  // namespace

std::optional<std::string> ProcessOfCommand(const std::string& command) {
  if (auto program = WholeProgram(command)) return program;
  constexpr std::string_view ending = ".exe";
  const auto text = [&](std::size_t start, std::size_t length) { return std::string(Mid(command, start, length)); };
  if (const auto at = InStr(1, command, ending, Compare::IgnoreCase); at != 0)
    return text(1, static_cast<std::size_t>(at) + ending.size() - 1);
  if (WildcardMatch(command, "\"*\" *")) {
    const auto quote = static_cast<std::size_t>(InStr(2, command, "\"", Compare::Exact));
    return text(2, quote < 2 ? 0 : quote - 2) + platform::ProgramEnding();
  }
  if (WildcardMatch(command, "* *")) {
    const auto space = static_cast<std::size_t>(InStr(2, command, " ", Compare::Exact));
    return space == 0 ? command : text(1, space - 1) + platform::ProgramEnding();
  }
  return std::nullopt;
}

}  // namespace velmaro
