#include "platform/linux/Start.h"

#include <fcntl.h>
#include <linux/close_range.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

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

std::vector<char*> Pointers(const std::vector<std::string>& words) {
  std::vector<char*> pointers;
  for (const auto& word : words) pointers.push_back(const_cast<char*>(word.c_str()));
  pointers.push_back(nullptr);
  return pointers;
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

// Runs in the first child: the program is a child of that one, and of nobody once it has ended. Both children use this
// process's memory, which waits for them meanwhile, so an error needs no other way back.
[[noreturn]] void Fork(char* const* words, const char* folder, volatile int& error) {
  const auto child = ::vfork();
  if (child == 0) {
    BecomeOfItsOwn(folder);
    ::execv(words[0], words);
  }
  if (child <= 0) error = errno;
  ::_exit(0);
}

}  // namespace

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

int StartApart(const std::vector<std::string>& words, const std::string& folder) {
  const auto pointers = Pointers(words);
  volatile int error = 0;
  // Two copies of the tables of this memory would cost a fifth of an unattended start.
  const auto child = ::vfork();
  if (child < 0) return errno;
  if (child == 0) Fork(pointers.data(), folder.c_str(), error);
  while (::waitpid(child, nullptr, 0) < 0 && errno == EINTR) continue;
  return error;
}

int OpenWithDesktop(const std::string& what, const std::string& folder) {
  const auto opener = FindInPath("xdg-open");
  return opener.empty() ? ENOENT : StartApart({opener, what}, folder);
}

}  // namespace onlinux
