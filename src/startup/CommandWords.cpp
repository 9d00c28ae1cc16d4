#include <algorithm>
#include <array>
#include <iterator>

#include "platform/machine.h"
#include "runtime/Text.h"
#include "startup/CommandLine.h"

namespace velmaro {
namespace {

// The words that are left of a command line.
class Words {
 public:
  explicit Words(std::string_view words) : left_(words) {}
  bool Empty() const { return left_.empty(); }
  std::string_view Front() const { return left_.substr(0, left_.find('\0')); }
  bool IsLast() const { return Front().size() + 1 >= left_.size(); }
  void Drop() { left_.remove_prefix(std::min(Front().size() + 1, left_.size())); }
  std::string_view Left() const { return left_; }

 private:
  std::string_view left_;
};

struct Style {
  std::string_view name;
  std::int16_t showCommand;
};
// Where the line asks for several, the one that comes first here counts.
constexpr std::array<Style, 4> Styles = {{{"/hide", 0}, {"/normal", 1}, {"/min", 2}, {"/max", 3}}};

const Style* FindStyle(std::string_view name) { return std::ranges::find(Styles, name, &Style::name); }

bool IsSwitch(std::string_view word) {
  constexpr std::array<std::string_view, 8> others = {"/?", "/q", "/x", "/y", "/k", "/m", "/h", "/i"};
  const auto name = LCase(word);
  return std::ranges::count(others, name) != 0 || FindStyle(name) != Styles.end();
}

// Takes the file behind "/y" or "/k", where the next word is one.
void TakeListFile(Words& words, const std::string& appPath, std::string& path) {
  const auto word = words.Front();
  if (!LCase(word).ends_with(".txt")) return;
  const bool bare = word.find(platform::PathSeparator()) == std::string_view::npos;
  path = (bare ? appPath : std::string()) + std::string(word);
  words.Drop();
}

// Takes the title behind "/x": the next word, unless that is a switch, or the last and so the program.
void TakeTitle(Words& words, std::string& title) {
  title = DefaultTitle;
  if (words.Empty() || words.IsLast() || IsSwitch(words.Front())) return;
  if (!words.Front().empty()) title = words.Front();
  words.Drop();
}

}  // namespace

StartOptions ReadCommandWords(std::string_view line, const std::string& appPath) {
  StartOptions options;
  Words words(line);
  const auto* style = Styles.end();
  while (!words.Empty() && IsSwitch(words.Front())) {
    const auto name = LCase(words.Front());
    words.Drop();
    if (name == "/?") return {.help = true};
    if (name == "/q") options.quiet = true;
    if (name == "/m") options.freeMemory = true;
    if (name == "/h") options.high = true;
    if (name == "/i") options.idle = true;
    if (name == "/y") TakeListFile(words, appPath, options.noKillListPath);
    if (name == "/k") TakeListFile(words, appPath, options.killListPath), options.killRun = true;
    if (name == "/x") TakeTitle(words, options.hideTitle), options.hideWindow = true;
    style = std::min(style, FindStyle(name));
  }
  if (style != Styles.end()) options.windowStyle = style->showCommand;
  options.target = words.Left();
  return options;
}

}  // namespace velmaro
