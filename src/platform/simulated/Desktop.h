#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <variant>
#include <vector>

#include "platform/kernel32.h"
#include "platform/rights.h"
#include "platform/simulated/Records.h"
#include "platform/start.h"

namespace velmaro {
class Control;
class Form;
}  // namespace velmaro

namespace simulated {

class FormWindow;
class TimerPeer;

// What the handles of the program stand for.
struct Snapshot {
  std::vector<Process> processes;
  std::size_t next = 0;
};
struct OpenedProcess {
  std::uint32_t id = 0;
};
struct OpenFile {
  std::string path;
  platform::FileAccess access = platform::FileAccess::Read;
  std::size_t at = 0;
};
using Object = std::variant<Snapshot, OpenedProcess, OpenFile>;

// A whole desktop in memory: what the platform's functions act on while it lives. A test makes one, before the program
// and its forms, sets what it needs, acts through User.h and looks at what is left behind. Exactly one lives at a time.
class Desktop {
 public:
  Desktop();
  Desktop(const Desktop&) = delete;
  Desktop& operator=(const Desktop&) = delete;
  ~Desktop();

  // Processes, in the order in which a snapshot tells them.
  std::deque<Process> processes;
  bool snapshotFails = false;
  bool realTimeAllowed = true;  // without it, Real Time silently becomes High
  std::string whyNoRealTime;    // told to whoever asks for it
  std::string whatHighIsWorth;  // where it is less than elsewhere
  bool highLeavesSession = false;
  bool classIsReadBack = false;
  platform::RoadToRight roadToRight = platform::RoadToRight::None;
  bool rightGiven = false;  // what the user who is asked for it has
  bool commandsMeanTheRow = false;
  bool namesAreWholeParts = false;
  bool shellTakesEveryFile = true;
  int snapshotsTaken = 0;
  std::vector<std::uint32_t> terminated;  // the numbers of the processes that the program ended
  std::uint32_t AddProcess(const std::string& name, std::int32_t basePriority = 8);
  // A process by its number, or the first living one by its exact name. Throws std::logic_error where there is none.
  Process& ProcessById(std::uint32_t id);
  Process& ProcessNamed(const std::string& name);
  // Handles of any kind that the program has not closed.
  std::size_t OpenHandles() const { return objects.size(); }

  // Windows of other programs, from front to back.
  std::deque<Window> windows;
  std::vector<Placing> placings;
  std::vector<platform::WindowHandle> broughtToFront;  // by SetForegroundWindow
  std::string whyWindowsAreMissing;
  platform::WindowHandle AddWindow(const std::string& title, bool visible = true);
  // A window of any program, the program's own forms too. Throws std::logic_error where there is none.
  Window& WindowOf(platform::WindowHandle handle);
  // The user goes to another program; the next touch of a form of the program comes back.
  void GoToAnotherProgram();
  // The form that has the keyboard, null for none.
  velmaro::Form* ActiveForm() const;

  // Files and folders by their whole path; a folder need not be named for a file in it.
  std::map<std::string, File, CaseLess> files;
  std::set<std::string, CaseLess> unwritable;   // files, and folders with all that is in them
  std::size_t diskRoom = Memory::Unlimited;     // the bytes that still fit on the disk
  std::size_t largestRead = Memory::Unlimited;  // the most that one read delivers
  bool makeFails = false;                       // no folder takes a new file
  bool replaceFails = false;                    // no file is put in another's place
  bool flushFails = false;
  std::string appFolder = "C:\\Velmaro";
  bool localPageIsLatin1 = false;  // of the user's plain texts; the system's code page is UTF-8

  // The command line, the settings by "application\section\key", and the registry by root, key and value.
  std::string commandLine;
  std::map<std::string, std::string, CaseLess> settings;
  bool settingsFail = false;
  std::map<std::uint32_t, std::map<std::string, std::map<std::string, RegistryValue, CaseLess>, CaseLess>> registry;
  std::map<std::uint32_t, std::pair<std::uint32_t, std::string>> openKeys;
  std::int32_t closeKeyResult = 0;

  Memory memory;

  // Program starts. The result of every start is 42, or what `onStart` gives, which may add the started process.
  std::vector<Start> starts;
  std::function<int(const Start&)> onStart;
  std::optional<platform::Started> startsAtClass;  // what comes of a start that takes a class with it
  std::vector<std::string> activations;            // the titles that AppActivate was asked for
  std::vector<SentKeys> sentKeys;

  // Message boxes: what was shown, and what the user will do in the coming ones. While a box is open its action runs,
  // with timers running and every form out of reach. A box without a queued answer gets its default button.
  std::vector<Box> boxes;
  void Answer(int answer, std::function<void()> whileOpen = {});

  // Open dialogs: what they were told, and the paths picked in the coming ones, nothing for Cancel.
  std::vector<platform::OPENFILENAME> openDialogs;
  std::deque<std::optional<std::string>> picks;

  // Popups: what was opened, and the entries chosen in the coming ones, null for Escape.
  std::vector<Popup> popups;
  std::deque<velmaro::Menu*> choices;

  // Queues what happens when the program next waits or yields: one action for each time, nothing for an empty one.
  // A wait with nothing queued is over: a modal form closes, the program's loop ends.
  void Then(std::function<void()> action = {}) { script.push_back(std::move(action)); }

  // The clock, in milliseconds from the desktop's start, and the pauses that the program made.
  std::uint64_t now = 0;
  std::vector<std::uint32_t> sleeps;
  // Lets time pass: timers tick in the order in which they are due.
  void Advance(std::uint64_t milliseconds);

  // Tooltip windows that live.
  std::map<platform::WindowHandle, Tooltip> tooltips;

  // Peers: the resolution for windows that are made from here on (15 at 96 dots an inch, 10 at 144), how many live, and
  // how many were ever made.
  velmaro::Twips twipsPerPixel = 15;
  int livePeers = 0;
  int peersMade = 0;
  bool windowsFail = false;                  // there is nothing to show windows on
  std::set<velmaro::Change> refusedChanges;  // what native controls don't take
  bool quits = false;                        // the program has been told to end

  // Handles closed twice, blocks given back that were not claimed and the like. A test expects none.
  std::vector<std::string> misuse;

  // From here on: for the platform's functions and the peers.
  struct Reply {
    int answer = 0;
    std::function<void()> whileOpen;
  };
  std::map<platform::Handle, Object> objects;
  std::deque<Reply> answers;
  std::deque<std::function<void()>> script;
  std::vector<FormWindow*> forms;  // front first
  std::vector<TimerPeer*> timers;
  std::map<platform::WindowHandle, const velmaro::Control*> controls;
  std::vector<platform::WindowHandle> openBoxes;
  bool anotherProgramInFront = false;

  // A number for a new handle of any kind.
  std::uint32_t NewHandle() { return lastHandle_ += 4; }
  // A window of any program, null where there is none.
  Window* FindWindow(platform::WindowHandle handle);
  // All windows from front to back, with the program's own.
  std::vector<Window*> StackedWindows();
  // The active window of the program, a box before a form, 0 for none.
  platform::WindowHandle ActiveWindow() const;
  // Notes as misuse what the program's controls, menus and timers show otherwise than their models hold it.
  void CompareWithModels();
  // Raises Activate where another form became the active window.
  void NoteActivation();
  // Runs the next queued action. False when there is none.
  bool RunNext();
  // What a handle stands for, null for a handle of another kind.
  template <class T>
  T* Find(platform::Handle handle) {
    const auto at = objects.find(handle);
    return at == objects.end() ? nullptr : std::get_if<T>(&at->second);
  }

 private:
  FormWindow* ActiveFormWindow() const;

  std::uint32_t lastHandle_ = 0x10000;
  platform::WindowHandle active_ = 0;
};

// The desktop that lives. Throws std::logic_error when there is none.
Desktop& TheDesktop();

// How often a control's peer was told of a change since the control's form was first shown.
int Told(const velmaro::Control& control, velmaro::Change what);

}  // namespace simulated
