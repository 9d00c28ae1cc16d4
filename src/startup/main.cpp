#include "mainform/formVelmaro.h"
#include "platform/machine.h"
#include "runtime/Application.h"

int main(int count, char** arguments) {
  platform::BeginProgram();
  if (count == 2 && platform::AnswersTheShell(arguments[1])) return 0;
  velmaro::Application application;
  application.Default<velmaro::formVelmaro>().Show();
  application.Run();
  return application.ExitCode();
}
