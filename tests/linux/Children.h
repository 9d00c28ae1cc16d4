#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>
#include <sstream>
#include <string>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include "platform/kernel32.h"
#include "platform/linux/processes/EndProcess.h"

namespace velmaro {

namespace fs = std::filesystem;

#ifdef __SANITIZE_ADDRESS__
inline constexpr bool UnderSanitizer = true;
#else
inline constexpr bool UnderSanitizer = false;
#endif

// Waits until something holds, for as long as a busy machine may need.
template <class Test>
bool Eventually(Test test) {
  for (int i = 0; i < 500; ++i) {
    if (test()) return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return false;
}

// A folder of its own for a test, with whatever stands in it.
class TestFolder {
 public:
  TestFolder() {
    static const auto base = fs::temp_directory_path();  // a test leads it to its own
    path_ = base / "velmaro-XXXXXX";
    if (!::mkdtemp(path_.data())) throw std::system_error(errno, std::generic_category(), path_ + " can't be made");
  }
  TestFolder(const TestFolder&) = delete;
  TestFolder& operator=(const TestFolder&) = delete;
  ~TestFolder() {
    // What has just been ended may still write into it.
    Eventually([&, error = std::error_code()]() mutable { return fs::remove_all(path_, error) != 0 && !error; });
  }
  std::string operator/(const std::string& name) const { return path_ + '/' + name; }
  const std::string& Path() const { return path_; }
  // A program under a name of the test's own: others run the same one.
  std::string Copy(const std::string& program, const std::string& name) const {
    fs::create_directories(fs::path(*this / name).parent_path());
    fs::copy_file(program, *this / name);
    return *this / name;
  }
  std::string Sleeper(const std::string& name) const { return Copy("/bin/sleep", name); }

 private:
  std::string path_;
};

// A test that works in a folder of its own, as do the programs that it starts.
struct InFolder : testing::Test {
  InFolder() {
    fs::current_path(folder.Path());
    for (const auto* place : {"HOME", "TMPDIR", "XDG_CACHE_HOME", "XDG_CONFIG_HOME"})
      ::setenv(place, folder.Path().c_str(), 1);
  }
  const TestFolder folder;
};

inline void WriteBytes(const std::string& path, const std::string& bytes) { std::ofstream(path) << bytes; }

inline void WriteProgram(const std::string& path, const std::string& bytes) {
  WriteBytes(path, bytes);
  fs::permissions(path, fs::perms::owner_all);
}

inline std::string ProcOf(pid_t id, const std::string& file) { return "/proc/" + std::to_string(id) + '/' + file; }

inline std::string ReadBytes(const std::string& path) {
  std::ostringstream bytes;
  bytes << std::ifstream(path).rdbuf();
  return bytes.str();
}

inline bool Holds(const std::string& text, const std::string& part) { return text.find(part) != text.npos; }

inline auto FilesIn(const std::string& folder) { return std::distance(fs::directory_iterator(folder), {}); }

// Makes a process. Throws where none can be had: -1, taken for the number of one, stands for everything that runs.
inline pid_t Fork() {
  const auto child = ::fork();
  if (child < 0) throw std::system_error(errno, std::generic_category(), "no process can be made");
  return child;
}

[[noreturn]] inline void Execute(const std::vector<std::string>& words) {
  std::vector<char*> pointers;
  for (const auto& word : words) pointers.push_back(const_cast<char*>(word.c_str()));
  pointers.push_back(nullptr);
  ::execv(pointers[0], pointers.data());
  ::_exit(127);
}

// Takes all rights of an administrator away from a child process.
inline bool BecomeNobody() { return ::geteuid() != 0 || (::setgid(65533) == 0 && ::setuid(65534) == 0); }

// Limits a child process to so many bytes more than what this one has, of which a sanitizer may have terabytes.
inline bool LimitRoom(__rlimit_resource_t resource, rlim_t more) {
  const auto room = std::stoull(ReadBytes("/proc/self/statm")) * static_cast<rlim_t>(::sysconf(_SC_PAGESIZE)) + more;
  const rlimit limit{room, room};
  return ::setrlimit(resource, &limit) == 0;
}

inline bool TellErrorsTo(const std::string& file) { return ::dup2(::creat(file.c_str(), 0644), STDERR_FILENO) > 0; }

// Shows this process and its children a file in the place of another. What holds the other must be mounted somewhere:
// the root of a plain chroot is not.
inline bool PutOver(const std::string& file, const std::string& other) {
  if (::unshare(CLONE_NEWNS) != 0) return false;
  fs::path holder = other;
  while (::mount("", holder.c_str(), "", MS_PRIVATE | MS_REC, "") != 0) {
    if (holder == "/") return false;
    holder = holder.parent_path();
  }
  return ::mount(file.c_str(), other.c_str(), "", MS_BIND, "") == 0;
}

using Variables = std::vector<std::pair<std::string, std::string>>;

// Starts a program with no other display than the variables lead to.
inline pid_t Start(const std::vector<std::string>& words, const Variables& variables = {},
                   const std::function<bool()>& prepare = nullptr) {
  const auto child = Fork();
  if (child != 0) return child;
  for (const auto* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) ::unsetenv(variable);
  for (const auto& [name, value] : variables) ::setenv(name.c_str(), value.c_str(), 1);
  if (prepare && !prepare()) ::_exit(99);
  Execute(words);
}

// The exit code of a process, -1 where a signal ended it or where it did not end in time.
inline int Ended(pid_t child) {
  int status = 0;
  const auto hasEnded = [&] { return ::waitpid(child, &status, WNOHANG) == child; };
  if (!Eventually(hasEnded) && !Eventually(hasEnded) && !Eventually(hasEnded)) {
    onlinux::EndProcess(child);
    ::waitpid(child, &status, 0);
  }
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

template <class Work>
int InChild(Work work) {
  const auto child = Fork();
  if (child == 0) ::_exit(work());
  return Ended(child);
}

// Expects something in a process of its own, which may do to itself what it likes.
template <class Work>
void Alone(Work work) {
  EXPECT_EQ(InChild([&] { return work(), testing::Test::HasFailure(); }), 0);
}

// A running process of the test's own, ended and forgotten with the object. A number below 2 stands for none.
class Child {
 public:
  explicit Child(pid_t id) : id_(id), held_(onlinux::HoldProcess(id)) {}
  explicit Child(const std::vector<std::string>& words) : Child(Fork()) {
    if (id_ == 0) ::prctl(PR_SET_PDEATHSIG, SIGKILL), Execute(words);
  }
  explicit Child(const std::string& program) : Child(std::vector{program, std::string("300")}) {
    Eventually([&] { return Holds(ReadBytes(ProcOf(id_, "cmdline")), program); });
  }
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;
  ~Child() { End(); }
  void End(int signal = SIGKILL) {
    const auto id = std::exchange(id_, 0);
    if (onlinux::EndProcess(id, held_, signal)) ::waitpid(id, nullptr, 0);
  }
  pid_t Id() const { return id_; }
  bool Runs() const {
    siginfo_t info{};
    return ::waitid(P_PID, static_cast<id_t>(id_), &info, WEXITED | WNOHANG | WNOWAIT) == 0 && info.si_pid == 0;
  }
  int Nice() const { return ::getpriority(PRIO_PROCESS, static_cast<id_t>(id_)); }

 private:
  pid_t id_;
  onlinux::Descriptor held_;
};

inline pid_t Running(const std::string& program) {
  for (const auto& entry : fs::directory_iterator("/proc")) {
    std::error_code error;
    if (fs::read_symlink(entry.path() / "exe", error) == program) return std::stoi(entry.path().filename());
  }
  return 0;
}

// Ends what runs a program, and waits for its end: one that is idle takes its time. False where nothing does.
inline bool EndRunning(const std::string& program) {
  bool ended = false;
  return Eventually([&] { return ended |= onlinux::EndProcess(Running(program)), Running(program) == 0; }) && ended;
}

inline bool MayRaise() {
  return InChild([] { return ::setpriority(PRIO_PROCESS, 0, -10); }) == 0;
}

class VirtualDisplay {
 public:
  explicit VirtualDisplay(const std::vector<std::string>& guard = {}) {
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0) return;
    std::vector<std::string> words = {"/usr/bin/Xvfb", "-displayfd", std::to_string(ends[1]), "-noreset"};
    words.insert(words.end(), guard.begin(), guard.end());
    server_.emplace(Start(words, {}, [] { return ::prctl(PR_SET_PDEATHSIG, SIGTERM) == 0; }));
    ::close(ends[1]);
    for (char c = 0; ::read(ends[0], &c, 1) == 1 && c != '\n';) number_ += c;
    ::close(ends[0]);
  }
  VirtualDisplay(const VirtualDisplay&) = delete;
  VirtualDisplay& operator=(const VirtualDisplay&) = delete;
  ~VirtualDisplay() {
    if (server_) server_->End(SIGTERM);  // so it takes its socket along
  }
  // Has its display be the one in the environment. False where there is none.
  bool Use() const {
    ::unsetenv("WAYLAND_DISPLAY");
    return !number_.empty() && ::setenv("DISPLAY", (':' + number_).c_str(), 1) == 0;
  }

 private:
  std::optional<Child> server_;
  std::string number_;
};

// The one of this process: what it asks of the X server goes over one line for good.
inline bool UseDisplay() {
  static const VirtualDisplay display;
  return display.Use();
}

inline platform::OwnedHandle Open(pid_t id) {
  const auto number = static_cast<std::uint32_t>(id);
  return platform::OwnedHandle(platform::OpenProcess(platform::PROCESS_ALL_ACCESS, false, number));
}

// What a snapshot, a fresh one, says of a process; nothing where it does not list it.
inline std::optional<platform::PROCESSENTRY32> Listed(
    pid_t id, platform::Handle of = platform::CreateToolhelp32Snapshot(platform::TH32CS_SNAPPROCESS)) {
  const platform::OwnedHandle snapshot(of);
  platform::PROCESSENTRY32 entry;
  entry.dwSize = sizeof entry;
  for (bool more = Process32First(snapshot.get(), entry); more; more = Process32Next(snapshot.get(), entry))
    if (entry.th32ProcessID == static_cast<std::uint32_t>(id)) return entry;
  return std::nullopt;
}

}  // namespace velmaro

using namespace velmaro;
