#include "platform/linux/processes/ProcessNames.h"

#include <elf.h>
#include <fcntl.h>
#include <limits.h>
#include <unistd.h>

#include <array>
#include <cstring>
#include <filesystem>

#include "platform/linux/ground/Descriptor.h"
#include "platform/linux/ground/ReadWhole.h"
#include "platform/linux/processes/ProcessStatus.h"
#include "platform/linux/processes/Script.h"

namespace onlinux {
namespace {

std::string ReadLink(int folder, const std::string& path) {
  char target[PATH_MAX];
  const auto length = ::readlinkat(folder, path.c_str(), target, sizeof target);
  return {target, length > 0 ? static_cast<std::size_t>(length) : 0};
}

// The texts of a file in which each has a NUL behind it.
std::vector<std::string> SplitAtNuls(const std::string& bytes) {
  std::vector<std::string> texts;
  for (std::size_t at = 0; at < bytes.size(); at += texts.back().size() + 1)
    texts.push_back(bytes.substr(at, bytes.find('\0', at) - at));
  return texts;
}

std::vector<std::string> ReadWords(int folder, const std::string& id) {
  return SplitAtNuls(ReadSmall(folder, id + "/cmdline", PATH_MAX));
}

// A program for Windows runs inside a loader, whose path would say nothing of it.
bool IsLoader(const std::string& path) { return BaseName(path).starts_with("wine"); }

// A program that was replaced while it runs is told with a remark behind its path.
std::string WithoutRemark(std::string path) {
  constexpr std::string_view remark = " (deleted)";
  if (path.ends_with(remark) && ::access(path.c_str(), F_OK) != 0) path.resize(path.size() - remark.size());
  return path;
}

// A name that the kernel keeps is no path, and what it holds of "/" must not be taken for a folder: a look-alike stands
// for it.
std::string AsName(const std::string& shortName) {
  std::string name;
  for (const char c : shortName) name += c == '/' ? std::string("\u2215") : std::string(1, c);
  return name;
}

// The name of a process whose executable can't be read or tells nothing. A short name that may have been cut is made
// whole from the command line, where that begins with the same name.
std::string PlainName(const std::string& shortName, const std::vector<std::string>& words) {
  const auto base = words.empty() ? std::string() : BaseName(words.front());
  return IsShortFor(shortName, base) ? base : AsName(shortName);
}

// From the path of a script as its command line has it, which counts from the folder where the process began.
std::string WholePath(int folder, const std::string& id, const std::string& script) {
  if (script.empty() || script.front() == '/') return script;
  const auto path = (std::filesystem::path(ReadLink(folder, id + "/cwd")) / script).lexically_normal().string();
  return ::access(path.c_str(), F_OK) == 0 ? path : BaseName(script);
}

// The path by which the kernel was told to start a process. The process does not overwrite it when it writes a title of
// its own over its command line. Empty where it can't be read.
std::string StartedAs(const std::string& process) {
  const auto facts = ReadWhole(process + "/auxv");
  std::array<unsigned long, 2> fact{};
  for (std::size_t at = 0; at + sizeof fact <= facts.size(); at += sizeof fact) {
    std::memcpy(fact.data(), facts.data() + at, sizeof fact);
    if (fact[0] != AT_EXECFN) continue;
    const Descriptor memory(::open((process + "/mem").c_str(), O_RDONLY | O_CLOEXEC));
    char path[PATH_MAX] = {};
    const auto got = ::pread(memory.get(), path, sizeof path - 1, static_cast<off_t>(fact[1]));
    return got > 0 ? std::string(path) : std::string();
  }
  return {};
}

// The folder that a process was told it begins in; empty where it was told none.
std::string FolderAtStart(const std::string& process) {
  constexpr std::string_view variable = "PWD=";
  for (const auto& line : SplitAtNuls(ReadWhole(process + "/environ")))
    if (line.starts_with(variable)) return line.substr(variable.size());
  return {};
}

// Adds all that a word of a command line may name. Which of them are scripts, interpreters alone know, each in its way.
void AddNames(std::vector<std::string>& names, const std::string& word, const std::vector<std::string>& folders) {
  if (word.find('\\') != std::string::npos) names.push_back(BaseName(word));
  if (const auto equals = word.find('='); equals != std::string::npos) names.push_back(word.substr(equals + 1));
  if (!word.starts_with('/') && !word.starts_with('-'))
    for (const auto& folder : folders) names.push_back((std::filesystem::path(folder) / word).lexically_normal());
  names.push_back(word);
}

}  // namespace

std::string ReadProgram(int folder, const std::string& id) { return ReadLink(folder, id + "/exe"); }

ProcessNames ReadNames(int folder, const std::string& id, const std::string& shortName) {
  ProcessNames names{.program = ReadProgram(folder, id), .script = {}};
  const bool tells = !names.program.empty() && !IsLoader(names.program);
  if (tells) names.program = WithoutRemark(std::move(names.program));
  if (tells && !MayRunScript(names.program, shortName)) return names;
  const auto words = ReadWords(folder, id);
  if (!tells) names.program = PlainName(shortName, words);
  names.script = WholePath(folder, id, ScriptOf(names.program, shortName, words));
  return names;
}

std::vector<std::string> ReadAllNames(std::uint32_t processId) {
  const auto process = "/proc/" + std::to_string(processId);
  const auto status = ReadStatus(processId);
  if (!status) return {};
  const auto words = SplitAtNuls(ReadWhole(process + "/cmdline"));
  const auto [program, script] = ReadNames(AT_FDCWD, process, status->shortName);
  std::vector<std::string> names = {program, script, WithoutRemark(ReadProgram(AT_FDCWD, process)),
                                    PlainName(status->shortName, words), StartedAs(process)};
  const std::vector folders = {ReadLink(AT_FDCWD, process + "/cwd"), FolderAtStart(process)};
  for (const auto& word : words) AddNames(names, word, folders);
  std::erase(names, "");
  return names;
}

}  // namespace onlinux
