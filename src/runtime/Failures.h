#pragma once

#include <exception>
#include <new>
#include <stdexcept>
#include <utility>

namespace velmaro {

// What a statement of the form runtime throws when it fails: a refused property, a row that is not there, an invalid
// pattern. Nothing else is ever passed over, so a real bug stays visible.
class RuntimeError : public std::exception {
 public:
  // Keeps the pointer alone: the text is one that stands in the program.
  explicit RuntimeError(const char* text) : text_(text) {}
  // Says what failed, to a developer.
  const char* what() const noexcept override { return text_; }

 private:
  const char* text_;
};

// Runs one statement and drops its failure; the caller goes on with the next statement.
template <class Statement>
void Resume(Statement&& statement) {
  try {
    std::forward<Statement>(statement)();
  } catch (const RuntimeError&) {
  }
}

// Evaluates one test; a test that fails counts as true.
template <class Test>
bool ResumeTest(Test&& test) {
  try {
    return std::forward<Test>(test)();
  } catch (const RuntimeError&) {
    return true;
  }
}

// Does work on a text of any length. Throws RuntimeError too where memory can't hold it.
template <class Work>
decltype(auto) WithinMemory(Work&& work) {
  try {
    return std::forward<Work>(work)();
  } catch (const std::bad_alloc&) {
    throw RuntimeError("memory can't hold the text");
  } catch (const std::length_error&) {
    throw RuntimeError("no text is so long");
  }
}

}  // namespace velmaro
