#pragma once

#include <functional>
#include <string>

// Does the same work both ways in turn, and prints the medians of their times and the ratio. `tidy` runs behind each
// and is not timed. `wanted` is what the ratio is wanted to be at most, 0 for nothing.
void Compare(const std::string& what, int rounds, const std::function<void()>& program,
             const std::function<void()>& bare, const std::function<void()>& tidy, double wanted = 0);

// Fills a list box without a window from the processes that run, as the program does it.
void WalkIntoList();
// The same snapshot with the system's calls alone. Gives the sum of what it read of every entry.
unsigned long BareWalk();

// An unattended run of velmaro.exe against the command interpreter's own start of the same program. False where one of
// the programs is missing beside this one.
bool CompareStarts();
// Starts a program and waits until a list of its visible window has so many rows. Gives its handle, null where that
// does not come.
void* StartFilled(std::string commandLine, long rows);
// The starts of an empty window and of the main one against that of the system's own task manager, until the list is
// filled. False where one of the three fills none.
bool CompareAttended();
