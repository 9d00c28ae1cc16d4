#include "startup/CommandLine.h"

#include "platform/machine.h"
#include "runtime/Text.h"

namespace velmaro {
namespace {

// Keeps what stands before position `from` and what stands from position `resume` on.
void Cut(std::string& line, std::size_t from, std::size_t resume) {
  line = std::string(Mid(line, 1, from - 1)) + std::string(Mid(line, resume));
}

// The position of the first occurrence of a switch, 0 for none.
std::size_t FindSwitch(const std::string& line, std::string_view name) {
  return static_cast<std::size_t>(InStr(1, line, name, Compare::IgnoreCase));
}

// Cuts the first occurrence of a switch and tells whether there was one.
bool TakeSwitch(std::string& line, std::string_view name) {
  const auto at = FindSwitch(line, name);
  if (at == 0) return false;
  Cut(line, at, at + name.size());
  return true;
}

bool IsQuoted(std::string_view text) { return text.size() >= 2 && text.front() == '"' && text.back() == '"'; }

std::string_view WithoutQuotes(std::string_view text) {
  return IsQuoted(text) ? text.substr(1, text.size() - 2) : text;
}

// Takes the window title of "/x", which stands in quotes or is one word with a space behind it.
bool TakeTitle(std::string& line, std::string& title) {
  const std::size_t at = FindSwitch(line, "/x");
  if (at == 0) return false;
  const bool quoted = Mid(line, at + 3, 1) == "\"";
  const auto end = static_cast<std::size_t>(quoted ? InStr(at + 4, line, "\"", Compare::Exact)
                                                   : InStr(at + 3, line, " ", Compare::Exact));
  if (end == 0) {
    title = DefaultTitle;
    Cut(line, at, at + 2);
    return true;
  }
  title = WithoutQuotes(Trim(Mid(line, at + 2, end - at - 1)));
  if (title.empty()) title = DefaultTitle;
  Cut(line, at, end + 1);
  return true;
}

// Takes the file of "/y" or "/k": everything up to the first ".txt" behind the switch. Leaves `path` alone where there
// is none.
bool TakeListFile(std::string& line, std::string_view name, const std::string& appPath, std::string& path) {
  constexpr std::string_view ending = ".txt";
  const std::size_t at = FindSwitch(line, name);
  if (at == 0) return false;
  const auto end = static_cast<std::size_t>(InStr(at, line, ending, Compare::IgnoreCase));
  if (end == 0) {
    Cut(line, at, at + name.size());
    return true;
  }
  const auto behind = end + ending.size();
  const auto first = at + name.size();
  // One character more belongs to the name: the quote that closes it, or the space behind it.
  const auto text = Trim(Mid(line, first, behind + 1 - first));
  const bool quoted = IsQuoted(text);
  path = WithoutQuotes(text);
  if (path.find(platform::PathSeparator()) == std::string::npos) path = appPath + path;
  Cut(line, at, quoted ? behind + 1 : behind);
  return true;
}

std::int16_t TakeWindowStyle(std::string& line) {
  std::int16_t style = 1;
  if (TakeSwitch(line, "/max")) style = 3;
  if (TakeSwitch(line, "/min")) style = 2;
  if (TakeSwitch(line, "/normal")) style = 1;
  if (TakeSwitch(line, "/hide")) style = 0;
  return style;
}

}  // namespace

StartOptions ReadCommandLine(std::string line, const std::string& appPath) {
  StartOptions options;
  options.help = FindSwitch(line, "/?") != 0;
  if (options.help) return options;
  options.quiet = TakeSwitch(line, "/q");
  options.hideWindow = TakeTitle(line, options.hideTitle);
  options.windowStyle = TakeWindowStyle(line);
  TakeListFile(line, "/y", appPath, options.noKillListPath);
  options.killRun = TakeListFile(line, "/k", appPath, options.killListPath);
  options.freeMemory = TakeSwitch(line, "/m");
  options.high = TakeSwitch(line, "/h");
  options.idle = TakeSwitch(line, "/i");
  options.target = Trim(line);
  return options;
}

std::string CommandLineHelp() {
  return "Command line switches:\r\n"
         "/? = This window.\r\n"
         "/q = Quiet - Do not confirm or show new status pop up.\r\n"
         "/max = Execute programs maximized.\r\n"
         "/min = Execute programs minimized.\r\n"
         "/hide = Execute programs hidden.\r\n"
         "/normal = Execute programs in normal window (default).\r\n"
         "/m = Free memory before execute.\r\n"
         "/k [file.txt] = Kill a list of windows before execute programs.\r\n"
         "/y [file.txt] = List of windows that should not be killed.\r\n"
         "/i = Set program process idle.\r\n"
         "/h = Set program process high priority.\r\n"
         "/x [window title] = Hide window by title";
}

}  // namespace velmaro
