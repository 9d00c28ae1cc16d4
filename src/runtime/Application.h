#pragma once

#include <map>
#include <memory>
#include <typeindex>
#include <utility>
#include <vector>

#include "runtime/Form.h"

namespace velmaro {

// The program as the form runtime sees it: its loaded forms, their instances, and whether it goes on.
class Application {
 public:
  // The name that the program's boxes bear.
  static constexpr const char* Title = "Velmaro";

  Application();
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;
  ~Application();

  // The one instance of a form that bears the form's name: made at first use, made anew after it was unloaded.
  template <class T>
  T& Default() {
    auto*& place = defaults_[typeid(T)];
    if (!place || place->Unloaded()) place = &New<T>();
    return static_cast<T&>(*place);
  }
  // A further instance of a form, apart from the default one. It lives until it was unloaded.
  template <class T, class... Arguments>
  T& New(Arguments&&... arguments) {
    instances_.push_back(std::make_unique<T>(std::forward<Arguments>(arguments)...));
    return static_cast<T&>(*instances_.back());
  }

  // Raises events until no form is left or the program was ended. Where none can be shown it ends at once, with 1.
  void Run();
  // Raises events for as long as `goOn` holds and the program was not ended.
  template <class Test>
  void RunWhile(Test goOn) {
    while (!ended_ && goOn() && ProcessNextEvent()) continue;
  }
  // Ends the program at once, with an exit code: no form is shown any more and no form is asked.
  void End(int exitCode = 0) {
    ended_ = true;
    exitCode_ = exitCode;
  }
  bool Ended() const { return ended_; }
  int ExitCode() const { return exitCode_; }

  // The forms that are loaded, in the order of their loading.
  const std::vector<Form*>& Forms() const { return forms_; }
  // The form that the user works in: the one that was active last of those on the screen, null for none.
  Form* ActiveForm() const;
  // For forms: they are loaded, they became the active one, they are none of the program's any more.
  void Add(Form& form) { forms_.push_back(&form); }
  void CameToFront(Form& form);
  void Remove(Form& form);

 private:
  void ReleaseUnloaded();

  std::vector<std::unique_ptr<Form>> instances_;
  std::map<std::type_index, Form*> defaults_;
  std::vector<Form*> forms_;
  std::vector<Form*> activated_;  // the one that was active last at the end
  bool ended_ = false;
  int exitCode_ = 0;
};

// The running program. There is exactly one while any form or box is used: the entry, or a test, keeps it alive.
Application& App();

}  // namespace velmaro
