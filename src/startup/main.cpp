#include "mainform/formVelmaro.h"
#include "runtime/Application.h"

int main() {
  velmaro::Application application;
  application.Default<velmaro::formVelmaro>().Show();
  application.Run();
  return application.ExitCode();
}
