#pragma once

#include "runtime/Buttons.h"
#include "runtime/Form.h"
#include "runtime/Label.h"
#include "runtime/Pictures.h"
#include "runtime/Timer.h"

namespace velmaro {

// The panel that names the product. It is loaded as a splash that closes by itself; the about box is made of it.
class formSplash : public Form {
 public:
  formSplash();

  velmaro::Timer Timer1;
  PictureBox Picture1;
  Label lblName;
  Line Line1;
  Label Label6;
  Label lblProgrammers;
  CommandButton btnOK;
  Label lblHome;
  Label Label3;

  // Turns the splash into the about box.
  void Initialize();
  void btnOK_Click();
  void Timer1_Timer();
  void lblHome_Click();
};

}  // namespace velmaro
