#include "platform/linux/processes/Script.h"

#include <algorithm>
#include <array>

namespace onlinux {
namespace {

constexpr std::size_t ShortNameLimit = 15;

// A program that runs scripts: its name without a version, the letters of its options that put something else in the
// place of a script, and of those that take the rest of their word or else the next one.
struct Interpreter {
  std::string_view name;
  std::string_view instead;
  std::string_view takesWord;
};

constexpr std::array Interpreters = {
    Interpreter{"python", "cm", "WX"}, Interpreter{"pypy", "cm", "WX"},  Interpreter{"perl", "eE", "IMm"},
    Interpreter{"ruby", "e", "rIC"},   Interpreter{"node", "ep", "r"},   Interpreter{"nodejs", "ep", "r"},
    Interpreter{"sh", "cs", "oO"},     Interpreter{"bash", "cs", "oO"},  Interpreter{"dash", "cs", "oO"},
    Interpreter{"ksh", "cs", "oO"},    Interpreter{"mksh", "cs", "oO"},  Interpreter{"zsh", "cs", "oO"},
    Interpreter{"fish", "c", "C"},     Interpreter{"lua", "", "el"},     Interpreter{"luajit", "", "el"},
    Interpreter{"php", "r", "dc"},     Interpreter{"tclsh", "", ""},     Interpreter{"wish", "", ""},
    Interpreter{"expect", "c", ""},    Interpreter{"guile", "ce", "lL"}, Interpreter{"gjs-console", "c", "I"}};

const Interpreter* FindInterpreter(std::string_view program) {
  const auto base = BaseName(program);
  const auto isOne = [&](const Interpreter& one) {
    return base.starts_with(one.name) && base.find_first_not_of("0123456789.-", one.name.size()) == std::string::npos;
  };
  const auto* at = std::ranges::find_if(Interpreters, isOne);
  return at == Interpreters.end() ? nullptr : at;
}

enum class Option { Alone, WithNextWord, InPlaceOfScript };

Option Read(const Interpreter& interpreter, std::string_view word) {
  for (std::size_t i = 1; i < word.size(); ++i) {
    if (interpreter.instead.find(word[i]) != std::string_view::npos) return Option::InPlaceOfScript;
    if (interpreter.takesWord.find(word[i]) == std::string_view::npos) continue;
    return i + 1 == word.size() ? Option::WithNextWord : Option::Alone;
  }
  return Option::Alone;
}

std::string FirstThatIsNoOption(const Interpreter& interpreter, const std::vector<std::string>& words) {
  for (std::size_t i = 1; i < words.size(); ++i) {
    const auto& word = words[i];
    if (!word.starts_with('-')) return word;
    if (word == "-") return {};
    if (word == "--") return i + 1 < words.size() ? words[i + 1] : std::string();
    if (word.starts_with("--")) continue;
    const auto option = Read(interpreter, word);
    if (option == Option::InPlaceOfScript) return {};
    if (option == Option::WithNextWord) ++i;
  }
  return {};
}

}  // namespace

std::string BaseName(std::string_view path) { return std::string(path.substr(path.find_last_of("/\\") + 1)); }

bool IsShortFor(std::string_view shortName, std::string_view fileName) {
  return shortName.size() < ShortNameLimit ? fileName == shortName : fileName.starts_with(shortName);
}

bool MayRunScript(std::string_view program, std::string_view shortName) {
  return !BaseName(program).starts_with(shortName) || FindInterpreter(program);
}

std::string ScriptOf(std::string_view program, std::string_view shortName, const std::vector<std::string>& words) {
  // Of a file that begins with "#!" the kernel takes the name, and puts its path behind its interpreter, which may have
  // one argument of its own.
  if (!BaseName(program).starts_with(shortName))
    for (std::size_t i = 1; i < words.size() && i <= 2; ++i)
      if (IsShortFor(shortName, BaseName(words[i]))) return words[i];
  const auto* interpreter = FindInterpreter(program);
  return interpreter ? FirstThatIsNoOption(*interpreter, words) : std::string();
}

}  // namespace onlinux
