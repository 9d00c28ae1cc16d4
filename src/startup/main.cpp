#include "runtime/Application.h"
#include "mainform/formVelmaro.h"

int main() {
  velmaro::Application application;
  application.Default<velmaro::formVelmaro>().Show();
  application.Run();
  return 0;
}
