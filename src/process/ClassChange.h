#pragma once

#include <cstdint>
#include <string>

#include "platform/types.h"

namespace velmaro {

// What came of a change of class: whether the platform made it, and the class that the process then had, 0 for none.
struct ClassOutcome {
  bool made = true;
  std::uint32_t now = 0;
};

// One sentence about a change of class. `help` ends the one about a refused change.
std::string ClassSentence(const std::string& name, std::uint32_t asked, const ClassOutcome& outcome,
                          const std::string& help);
// Sets the priority class of an opened process and, unless the run is quiet, tells the user of it. Where a refusal is
// told and the user can be asked for the right, he is.
void ChangeClass(platform::Handle process, const std::string& name, std::uint32_t priorityClass, bool quiet);

}  // namespace velmaro
