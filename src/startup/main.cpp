#include "mainform/formVelmaro.h"
#include "platform/machine.h"
#include "runtime/Application.h"

int main() {
  if (platform::AnswersTheShell()) return 0;
  velmaro::Application application;
  application.Default<velmaro::formVelmaro>().Show();
  application.Run();
  return application.ExitCode();
}
