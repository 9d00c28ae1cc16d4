#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace velmaro {

// The title of the window that "/x" hides where the line names none.
inline constexpr auto DefaultTitle = "ePSXe";

// What a command line asks for.
struct StartOptions {
  bool help = false;                // "/?": the help box, and nothing else
  bool quiet = false;               // "/q"
  bool hideWindow = false;          // "/x"
  std::string hideTitle = {};       // its title
  std::int16_t windowStyle = 1;     // "/max" 3, "/min" 2, "/normal" 1, "/hide" 0
  std::string noKillListPath = {};  // "/y"; empty where the line names no file
  bool killRun = false;             // "/k"
  std::string killListPath = {};    // its file; empty where the line names none
  bool freeMemory = false;          // "/m"
  bool high = false;                // "/h"
  bool idle = false;                // "/i"
  std::string target = {};          // what is left when all switches are cut
};

// Reads a command line, the text behind the program's own name. It is one string and never split into arguments: each
// switch is looked for in the whole of what is left, in any case, in a fixed order, its first occurrence is cut, and
// neither words nor quotes matter. List files without a folder get `appPath` in front.
StartOptions ReadCommandLine(std::string line, const std::string& appPath);
// Reads a command line that comes as words, each with a NUL behind it. The switches are the words in front of the first
// that is none; the target is that word and all behind it, unchanged.
StartOptions ReadCommandWords(std::string_view words, const std::string& appPath);

// The lines of the help box, with CR LF between them.
std::string CommandLineHelp();

}  // namespace velmaro
