#include "platform/linux/starts/DesktopEntry.h"

#include <unistd.h>

#include <filesystem>
#include <map>
#include <sstream>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/linux/ground/Environment.h"
#include "platform/linux/ground/ReadWhole.h"
#include "platform/linux/ground/Words.h"

namespace onlinux {
namespace {

using Values = std::map<std::string, std::string, std::less<>>;

// The folders of the menus' entries, the user's own first.
std::vector<std::string> MenuFolders() {
  std::istringstream folders(Told("XDG_DATA_HOME", Told("HOME", "/") + "/.local/share") + ':' +
                             Told("XDG_DATA_DIRS", "/usr/local/share:/usr/share"));
  std::vector<std::string> found;
  for (std::string folder; std::getline(folders, folder, ':');)
    if (folder.starts_with('/')) found.push_back(folder + "/applications/");
  return found;
}

bool IsReadable(const std::string& path) {
  std::error_code error;
  return std::filesystem::is_regular_file(path, error) && ::access(path.c_str(), R_OK) == 0;
}

// In a folder below that of the menus, an entry has the folder's name and "-" in front of its own.
std::string FindBelow(const std::string& folder, std::string name) {
  for (;;) {
    if (IsReadable(folder + name)) return folder + name;
    const auto at = name.find('-', name.rfind('/') + 1);
    if (at == std::string::npos) return {};
    name[at] = '/';
  }
}

std::string_view Trimmed(std::string_view text) {
  constexpr auto blanks = " \t\r";
  const auto first = text.find_first_not_of(blanks);
  return first == std::string_view::npos ? "" : text.substr(first, text.find_last_not_of(blanks) + 1 - first);
}

// The values of the group that describes the entry, by their names.
Values ValuesIn(const std::string& text) {
  Values values;
  bool isMeant = false;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with('[')) isMeant = Trimmed(line) == "[Desktop Entry]";
    const auto equals = line.find('=');
    if (!isMeant || line.starts_with('#') || equals == std::string::npos) continue;
    values.try_emplace(std::string(Trimmed(std::string_view(line).substr(0, equals))),
                       Trimmed(std::string_view(line).substr(equals + 1)));
  }
  return values;
}

// A value without its escapes.
std::string TextOf(const Values& values, std::string_view name) {
  const auto at = values.find(name);
  if (at == values.end()) return {};
  constexpr std::string_view escapes = "sntr", meant = " \n\t\r";
  std::string text;
  for (std::size_t i = 0; i < at->second.size(); ++i) {
    const char c = at->second[i];
    const char next = i + 1 < at->second.size() ? at->second[i + 1] : '\0';
    const auto escape = escapes.find(next);
    if (c != '\\' || next == '\0') {
      text += c;
      continue;
    }
    text += escape == std::string_view::npos ? next : meant[escape];
    ++i;
  }
  return text;
}

// Puts in what the codes of a command line stand for.
class Filling {
 public:
  Filling(const Values& values, const std::string& path, const std::vector<std::string>& arguments)
      : values_(values), path_(path), left_(arguments) {}

  std::vector<std::string> Words(std::string_view line) {
    for (const auto& word : SplitWords(line, "\"\\$`")) Add(word);
    TakeLeft();
    return std::move(words_);
  }

 private:
  void TakeLeft() {
    words_.insert(words_.end(), left_.begin(), left_.end());
    left_.clear();
  }

  void Add(const std::string& word) {
    if (word == "%f" || word == "%F" || word == "%u" || word == "%U") return TakeLeft();
    if (word == "%i") return AddIcon();
    auto text = Filled(word);
    if (word.empty() || !text.empty()) words_.push_back(std::move(text));
  }

  void AddIcon() {
    const auto icon = TextOf(values_, "Icon");
    if (!icon.empty()) words_.insert(words_.end(), {"--icon", icon});
  }

  std::string Filled(std::string_view word) {
    std::string text;
    for (std::size_t i = 0; i < word.size(); ++i) {
      if (word[i] != '%' || i + 1 == word.size())
        text += word[i];
      else
        text += MeaningOf(word[++i]);
    }
    return text;
  }

  std::string MeaningOf(char code) {
    if (code == '%') return "%";
    if (code == 'c') return TextOf(values_, "Name");
    if (code == 'k') return path_;
    // All others say nothing any more.
    if (std::string_view("fFuU").find(code) == std::string_view::npos || left_.empty()) return {};
    auto first = left_.front();
    left_.erase(left_.begin());
    return first;
  }

  const Values& values_;
  const std::string& path_;
  std::vector<std::string> left_;
  std::vector<std::string> words_;
};

}  // namespace

std::string FindEntry(const std::string& name) {
  if (!name.ends_with(".desktop")) return {};
  if (name.find('/') == std::string::npos)
    for (const auto& folder : MenuFolders())
      if (auto path = FindBelow(folder, name); !path.empty()) return path;
  const auto path = name.starts_with("~/") ? Told("HOME") + name.substr(1) : name;
  return IsReadable(path) ? path : std::string();
}

std::optional<EntryStart> ReadEntry(const std::string& path, const std::vector<std::string>& arguments) {
  const auto values = ValuesIn(ReadWhole(path));
  const auto line = TextOf(values, "Exec");
  if (TextOf(values, "Type") != "Application" || TextOf(values, "Hidden") == "true") return std::nullopt;
  auto words = Trimmed(line).empty() ? std::vector<std::string>() : Filling(values, path, arguments).Words(line);
  if (words.empty()) return std::nullopt;
  return EntryStart{.words = std::move(words),
                    .folder = TextOf(values, "Path"),
                    .needs = TextOf(values, "TryExec"),
                    .inTerminal = TextOf(values, "Terminal") == "true"};
}

}  // namespace onlinux
