#pragma once

#include <functional>
#include <string>

// Does the same work both ways in turn, and prints the medians of their times and the ratio. `tidy` runs behind each
// and is not timed.
void Compare(const std::string& what, int rounds, const std::function<void()>& program,
             const std::function<void()>& bare, const std::function<void()>& tidy);

// Fills a list box without a window from the processes that run, as the program does it.
void WalkIntoList();
// The same snapshot with the system's calls alone. Gives the sum of what it read of every entry.
unsigned long BareWalk();

// An unattended run of velmaro.exe against the command interpreter's own start of the same program. False where one of
// the programs is missing beside this one.
bool CompareStarts();
