#include "../ListForm.h"
#include "Compare.h"
#include "process/WalkProcesses.h"
#include "runtime/Application.h"

void WalkIntoList() {
  static velmaro::Application application;
  velmaro::WalkProcesses("", 0, true, &application.Default<ListForm>().list);
}
