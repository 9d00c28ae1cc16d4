// clang-format off
#include <windows.h>
#include <tlhelp32.h>
// clang-format on

#include <array>
#include <cstdio>
#include <set>
#include <string>

#include "Compare.h"

namespace {

std::string Folder() {
  char path[MAX_PATH] = {};
  GetModuleFileNameA(nullptr, path, MAX_PATH);
  const std::string whole = path;
  return whole.substr(0, whole.rfind('\\') + 1);
}

bool IsThere(const std::string& path) { return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES; }

void RunAndWait(std::string commandLine) {
  STARTUPINFOA startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process{};
  if (!CreateProcessA(nullptr, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process))
    return;
  WaitForSingleObject(process.hProcess, 60000);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
}

std::set<DWORD> Running(const std::string& name) {
  std::set<DWORD> running;
  PROCESSENTRY32 entry{};
  entry.dwSize = sizeof entry;
  const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
  for (BOOL more = Process32First(snapshot, &entry); more; more = Process32Next(snapshot, &entry))
    if (name == entry.szExeFile) running.insert(entry.th32ProcessID);
  CloseHandle(snapshot);
  return running;
}

// Ends the started programs, so that the next start finds the machine as this one did. Gives their number.
int EndAllBut(const std::set<DWORD>& before, const std::string& name) {
  int ended = 0;
  for (const DWORD id : Running(name)) {
    if (before.contains(id)) continue;
    const HANDLE process = OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, id);
    if (TerminateProcess(process, 0)) ++ended;
    WaitForSingleObject(process, 5000);
    CloseHandle(process);
  }
  return ended;
}

}  // namespace

bool CompareStarts() {
  const auto velmaro = Folder() + "velmaro.exe";
  const auto probe = Folder() + "probe.exe";
  if (!IsThere(velmaro) || !IsThere(probe)) {
    std::printf("velmaro.exe or probe.exe is missing beside this program\n");
    return false;
  }
  const auto before = Running("probe.exe");
  constexpr int rounds = 15;
  int ended = 0;
  Compare(
      "velmaro /q /h PROBE, against start /high PROBE", rounds,
      [&] { RunAndWait('"' + velmaro + "\" /q /h " + probe); }, [&] { RunAndWait("cmd /c start /high " + probe); },
      [&] { ended += EndAllBut(before, "probe.exe"); });
  if (ended == 2 * rounds) return true;
  std::printf("only %d of %d programs were really started\n", ended, 2 * rounds);
  return false;
}

bool CompareAttended() {
  void* shown = nullptr;
  int filled = 0;
  // Some programs of the system's own run everywhere; a list of windows alone would be shorter.
  const auto start = [&](const std::string& program) {
    shown = StartFilled(program, 5);
    filled += shown ? 1 : 0;
  };
  const auto end = [&] {
    TerminateProcess(shown, 0);
    WaitForSingleObject(shown, 5000);
    CloseHandle(shown);
  };
  struct Program {
    std::string name;
    std::string file;
    double wanted;
  };
  const std::array<Program, 2> programs{
      {{"an empty window", "velmaro_bench_empty.exe", 0}, {"velmaro", "velmaro.exe", 0.5}}};
  constexpr int rounds = 9;
  for (const auto& [name, file, wanted] : programs)
    Compare(
        name + ", until its list is filled, against taskmgr", rounds, [&] { start('"' + Folder() + file + '"'); },
        [&] { start("taskmgr"); }, end, wanted);
  constexpr int starts = 2 * rounds * static_cast<int>(programs.size());
  if (filled == starts) return true;
  std::printf("only %d of %d lists were filled\n", filled, starts);
  return false;
}
