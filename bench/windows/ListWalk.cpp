#include "Compare.h"
#include "process/WalkProcesses.h"
#include "runtime/Application.h"
#include "runtime/ListBox.h"

namespace {

class ListForm : public velmaro::Form {
 public:
  ListForm() : Form({}), list(*this, {}) {}
  velmaro::ListBox list;
};

}  // namespace

void WalkIntoList() {
  static velmaro::Application application;
  velmaro::WalkProcesses("", 0, true, &application.Default<ListForm>().list);
}
