#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "platform/types.h"

namespace platform {

// Closes a kernel handle of any kind. 0 and `InvalidHandle` are passed over.
void CloseHandle(Handle handle);

// A kernel handle that closes itself.
using OwnedHandle = Owned<Handle, &CloseHandle>;

// One process of a snapshot: the Toolhelp record in its form with single-byte names, 296 bytes. A name longer than
// 259 bytes loses its front, up to a whole character: a process is known by its end.
struct PROCESSENTRY32 {
  std::uint32_t dwSize = 0;
  std::uint32_t cntUsage = 0;
  std::uint32_t th32ProcessID = 0;
  std::uint32_t th32DefaultHeapID = 0;
  std::uint32_t th32ModuleID = 0;
  std::uint32_t cntThreads = 0;
  std::uint32_t th32ParentProcessID = 0;
  std::int32_t pcPriClassBase = 0;
  std::uint32_t dwFlags = 0;
  char szExeFile[260] = {};
};
static_assert(sizeof(PROCESSENTRY32) == 296, "the Toolhelp record has a fixed size");

inline constexpr std::uint32_t TH32CS_SNAPPROCESS = 2;
inline constexpr std::uint32_t PROCESS_ALL_ACCESS = 0x1F0FFF;
inline constexpr std::uint32_t NORMAL_PRIORITY_CLASS = 32;
inline constexpr std::uint32_t IDLE_PRIORITY_CLASS = 64;
inline constexpr std::uint32_t HIGH_PRIORITY_CLASS = 128;
inline constexpr std::uint32_t REALTIME_PRIORITY_CLASS = 256;

// Takes a frozen view of the running processes. Gives 0 or `InvalidHandle` when none can be had.
Handle CreateToolhelp32Snapshot(std::uint32_t flags);
// Delivers the first process of a snapshot. False when there is none; `dwSize` must be 296.
bool Process32First(Handle snapshot, PROCESSENTRY32& entry);
// Delivers the next process of a snapshot. False at the end.
bool Process32Next(Handle snapshot, PROCESSENTRY32& entry);
// Opens a process by its number. Gives 0 when it is gone or access is denied.
Handle OpenProcess(std::uint32_t access, bool inherit, std::uint32_t processId);
// Sets the priority class of an opened process. False when it is refused.
bool SetPriorityClass(Handle process, std::uint32_t priorityClass);
// Has an opened process ended. False when it is refused. It stays in snapshots until it is gone.
bool TerminateProcess(Handle process, std::uint32_t exitCode);
// Waits until an opened process is gone, so many milliseconds at most. False where it is not gone by then.
bool WaitForEnd(Handle process, std::uint32_t milliseconds);

// Physical memory in bytes, 64 bits wide so that a machine of any size shows true figures.
struct MEMORYSTATUS {
  std::uint64_t dwTotalPhys = 0;
  std::uint64_t dwAvailPhys = 0;
};

// Reads the figures of physical memory. Leaves the record alone when they can't be read.
void GlobalMemoryStatus(MEMORYSTATUS& status);

// Claims `bytes` of zeroed memory that go back to the system as one piece. Null when they can't be had.
void* VirtualAlloc(std::size_t bytes);
// Gives back what `VirtualAlloc` claimed with the same size.
void VirtualFree(void* block, std::size_t bytes);

// What a start gives that only the shell can make: the program asks for an administrator's rights, and the shell asks
// the user for them.
inline constexpr std::uint32_t ERROR_ELEVATION_REQUIRED = 740;

// Runs a command line with a show command (0 hidden, 1 normal, 2 minimized, 3 maximized), in the folder "C:\" where
// there is one. `ERROR_ELEVATION_REQUIRED`, or above 31 when it started.
std::uint32_t WinExec(const std::string& commandLine, int showCommand);
// Blocks the thread for so many milliseconds.
void Sleep(std::uint32_t milliseconds);

// How a file is opened: to read what is there, to write over the old contents from their start, to write behind them,
// or to read with a missing file made first, as binary access does. Writing makes a missing file too, and writing over
// allows to read.
enum class FileAccess { Read, Over, Append, Binary };

// Opens a file. Gives `InvalidHandle` when it can't be, also for a folder, for a file that is locked and, to read, for
// what is no file, such as a pipe or a device.
Handle CreateFileA(const std::string& path, FileAccess access);
// An open file that closes itself.
using OwnedFile = Owned<Handle, &CloseHandle, InvalidHandle>;
// Reads up to `bytes` into `buffer` and gives the number read, 0 at the end. Nothing on a failure.
std::optional<std::size_t> ReadFile(Handle file, void* buffer, std::size_t bytes);
// Writes all of `bytes`. False when not all could be written.
bool WriteFile(Handle file, const void* buffer, std::size_t bytes);
// Goes back to the start of a file. False when that can't be done.
bool Rewind(Handle file);
// Cuts a file opened for writing, or claims the room on the disk for it to grow. False when there is none.
bool SetFileLength(Handle file, std::size_t bytes);
// Forces what was written onto the disk. False when that fails.
bool FlushFileBuffers(Handle file);
// True where anything bears this name, a file or not, and where that can't be told.
bool IsThere(const std::string& path);
// The length of a file in bytes, without opening it; -1 when it is missing or no file.
std::int64_t GetFileLength(const std::string& path);
// True for a file that is there and that its marks or the user's rights keep from being written.
bool IsWriteProtected(const std::string& path);

// A new file that is to take the place of another one: open for writing, and what its platform finds both again by.
struct Replacement {
  OwnedFile file = {};
  OwnedHandle folder = {};
  std::string name = {};
  std::string target = {};
};

// Makes a new file beside another one, in the folder where links lead to that, under a name that neither a file nor a
// link had. Its `file` is none when it can't be made.
Replacement CreateReplacement(const std::string& path);
// Puts a new file in the place that it was made for, in one step and with the owner and the rights of the old one.
// False, with the old one as it was and the new one gone, where all of that can't be had.
bool TakePlace(Replacement& replacement);
// Closes a new file and removes it.
void Discard(Replacement& replacement);

}  // namespace platform
