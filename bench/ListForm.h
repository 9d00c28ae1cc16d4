#pragma once

#include "runtime/Form.h"
#include "runtime/ListBox.h"

// A form that is never shown, for the list that a walk fills.
class ListForm : public velmaro::Form {
 public:
  ListForm() : Form({}), list(*this, {}) {}
  velmaro::ListBox list;
};
