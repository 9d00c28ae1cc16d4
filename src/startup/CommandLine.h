#pragma once

#include <cstdint>
#include <string>

namespace velmaro {

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
// neither words nor quotes matter, except where "/" divides folders: there a switch is a word of its own. List files
// without a folder get `appPath` in front.
StartOptions ReadCommandLine(std::string line, const std::string& appPath);

// The lines of the help box, with CR LF between them.
std::string CommandLineHelp();

}  // namespace velmaro
