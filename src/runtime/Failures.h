#pragma once

#include <stdexcept>
#include <utility>

namespace velmaro {

// What a statement of the form runtime throws when it fails: a refused property, a row that is not there, an invalid
// pattern. Nothing else is ever passed over, so a real bug stays visible.
class RuntimeError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
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

}  // namespace velmaro
