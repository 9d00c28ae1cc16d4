#pragma once

#include <stdexcept>
#include <string>
#include <vector>

// A measurement that would mean nothing; what it says is printed.
struct Failure : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// One of two ways to reach the same, and the times of its rounds in milliseconds.
struct Way {
  std::string name;
  std::vector<double> times = {};
};

// Prints the medians and their ratio, and what the ratio is wanted to be at most; 0 where nothing is wanted.
void PrintRatio(const Way& program, const Way& other, double wanted = 0);

// Which processes have a program file, by their numbers: the threads of the kernel have none, and nobody asks for it.
std::vector<bool> HaveProgram();
// Reads what a list of the processes is made of, and makes nothing of it. Gives how many processes there were.
int BareWalk(const std::vector<bool>& haveProgram);

// The list's refresh against a bare read of the same files, and against the viewers that are installed.
void CompareWalks();
// An unattended run against a start with nice.
void CompareStarts();
// What a start gives its program of a core, against what nice gives.
void CompareShares();
// Until the window of an attended start is filled, against the viewers that are installed, and the memory of each.
void CompareAttended();
// The path of a program that lies in this one's folder.
std::string Beside(const std::string& name);
