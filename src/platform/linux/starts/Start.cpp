#include "platform/linux/starts/Start.h"

#include <fcntl.h>
#include <linux/close_range.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "platform/linux/ground/Environment.h"
#include "platform/linux/starts/OwnScope.h"

namespace onlinux {
namespace {

bool Exists(const std::string& path) { return ::access(path.c_str(), F_OK) == 0; }

std::string FindInPath(const std::string& name) {
  const char* told = std::getenv("PATH");
  std::string_view folders = told ? told : "/usr/local/bin:/usr/bin:/bin";
  for (bool more = true; more;) {
    const auto end = folders.find(':');
    more = end != std::string_view::npos;
    auto path = std::string(folders.substr(0, end)) + '/' + name;
    if (path.front() == '/' && path.size() > name.size() + 1 && IsProgram(path)) return path;
    if (more) folders.remove_prefix(end + 1);
  }
  return {};
}

std::string WithoutQuotes(const std::string& file) {
  const bool quoted = file.size() >= 2 && file.front() == '"' && file.find('"', 1) == file.size() - 1;
  return quoted ? file.substr(1, file.size() - 2) : file;
}

// What the started program would otherwise take over from this one. Only calls that are safe behind a fork.
void BecomeOfItsOwn(const char* folder) {
  ::setsid();
  sigset_t none;
  ::sigemptyset(&none);
  ::sigprocmask(SIG_SETMASK, &none, nullptr);
  ::signal(SIGPIPE, SIG_DFL);
  if (*folder && ::chdir(folder) != 0 && ::chdir("/") != 0) ::_exit(1);
  const int nothing = ::open("/dev/null", O_RDONLY);
  if (nothing > 0) ::dup2(nothing, STDIN_FILENO);
  ::syscall(SYS_close_range, 3U, ~0U, CLOSE_RANGE_CLOEXEC);
}

struct Plan {
  const char* path;
  char* const* words;
  const char* folder;
  std::uint32_t priorityClass;
};

// Runs in the first child: the program is a child of that one, and of nobody once it has ended. Both children use this
// process's memory, which waits for them meanwhile, so what comes of it needs no other way back.
[[noreturn]] void Fork(const Plan& plan, Apart& apart) {
  const auto child = ::vfork();
  if (child == 0) {
    BecomeOfItsOwn(plan.folder);
    apart.id = ::getpid();
    const auto scope = plan.priorityClass == 0 ? std::string() : TakeScope();
    apart.taken = TakeClass(plan.priorityClass);
    TakeGroup(apart.taken.got, scope);
    ::execve(plan.path, plan.words, StartEnvironment());
  }
  if (child <= 0) apart.error = errno;
  ::_exit(0);
}

bool IsAddress(const std::string& file) {
  const auto at = file.find("://");
  return at != std::string::npos && at > 1 && file.find_first_of("/ \"") == at + 1;
}

Apart StartOne(const Command& command, const std::string& folder, std::uint32_t priorityClass) {
  const auto pointers = Pointers(command.words);
  const Plan plan{command.path.c_str(), pointers.data(), folder.c_str(), priorityClass};
  Apart apart;
  // Two copies of the tables of this memory would take as long as the rest of a start.
  const auto child = ::vfork();
  if (child < 0) apart.error = errno;
  if (child == 0) Fork(plan, apart);
  while (child > 0 && ::waitpid(child, nullptr, 0) < 0 && errno == EINTR) continue;
  return apart;
}

// What a file stands for that may be executed and is no program after all: a script that names no interpreter, or a
// document on a disk where all files may be executed.
std::optional<Command> InPlaceOf(const Command& command) {
  const auto path = Absolute(command.path);
  if (!path.ends_with(".sh")) return Opener(path);
  Command shell{"/bin/sh", command.words};
  shell.words.front() = path;
  shell.words.insert(shell.words.begin(), shell.path);
  return shell;
}

}  // namespace

std::vector<char*> Pointers(const std::vector<std::string>& words) {
  std::vector<char*> pointers;
  for (const auto& word : words) pointers.push_back(const_cast<char*>(word.c_str()));
  pointers.push_back(nullptr);
  return pointers;
}

std::vector<std::string> SplitWords(std::string_view line) {
  std::vector<std::string> words;
  bool open = false;  // a word has begun, which may be empty
  char quote = 0;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const char c = line[i];
    const char next = i + 1 < line.size() ? line[i + 1] : '\0';
    if (quote == 0 && (c == ' ' || c == '\t' || c == '\n')) {
      open = false;
      continue;
    }
    if (!open) words.emplace_back();
    open = true;
    if (c == quote) {
      quote = 0;
    } else if (quote == 0 && (c == '"' || c == '\'')) {
      quote = c;
    } else if (c == '\\' && next != '\0' && (quote == 0 || (quote == '"' && (next == '"' || next == '\\')))) {
      words.back() += next;
      ++i;
    } else {
      words.back() += c;
    }
  }
  return words;
}

std::vector<std::string> SplitCommand(const std::string& command) {
  const auto bare = WithoutQuotes(command);
  return bare.size() != command.size() || !FindFile(bare).empty() ? std::vector{bare} : SplitWords(command);
}

bool IsProgram(const std::string& path) {
  struct stat facts {};
  return ::stat(path.c_str(), &facts) == 0 && S_ISREG(facts.st_mode) && ::access(path.c_str(), X_OK) == 0;
}

std::string FindFile(const std::string& name) {
  if (name.empty()) return {};
  const char* home = std::getenv("HOME");
  const auto path = name.starts_with("~/") && home ? home + name.substr(1) : name;
  if (path.find('/') == std::string::npos)
    if (auto program = FindInPath(path); !program.empty()) return program;
  if (!Exists(path)) return {};
  return path.find('/') == std::string::npos ? "./" + path : path;
}

std::string Absolute(const std::string& path) {
  std::error_code error;
  auto absolute = std::filesystem::absolute(path, error);
  return error ? path : absolute.string();
}

std::optional<Command> Opener(const std::string& what) {
  const auto opener = FindInPath("xdg-open");
  return opener.empty() ? std::nullopt : std::optional(Command{opener, {opener, what}});
}

std::optional<Command> Resolve(const std::vector<std::string>& words, int& error) {
  error = EACCES;
  if (!words.empty() && IsAddress(words.front())) return Opener(words.front());
  const auto path = words.empty() ? std::string() : FindFile(words.front());
  if (path.empty()) {
    error = ENOENT;
    return std::nullopt;
  }
  return IsProgram(path) ? std::optional(Command{path, words}) : Opener(Absolute(path));
}

int Become(const Command& command) {
  ::execve(command.path.c_str(), Pointers(command.words).data(), StartEnvironment());
  const auto error = errno;
  const auto other = error == ENOEXEC ? InPlaceOf(command) : std::nullopt;
  if (other) ::execve(other->path.c_str(), Pointers(other->words).data(), StartEnvironment());
  return error;
}

Apart StartApart(const Command& command, const std::string& folder, std::uint32_t priorityClass) {
  const auto apart = StartOne(command, folder, priorityClass);
  const auto other = apart.error == ENOEXEC ? InPlaceOf(command) : std::nullopt;
  return other ? StartOne(*other, folder, priorityClass) : apart;
}

}  // namespace onlinux
