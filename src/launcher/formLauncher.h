#pragma once

#include <array>

#include "runtime/Buttons.h"
#include "runtime/ComboBox.h"
#include "runtime/Form.h"
#include "runtime/Label.h"
#include "runtime/Pictures.h"

namespace velmaro {

// The Run dialog: a command, with the history of earlier ones, and the priority that its process gets.
class formLauncher : public Form {
 public:
  formLauncher();

  Image Image1;
  Label Label1;
  ComboBox cmbRun;
  Frame Frame1;
  // From the highest priority to the lowest; the settings store keeps the index.
  std::array<OptionButton, 4> optPriority;
  CommandButton btnOK;
  CommandButton btnCancel;
  CommandButton btnBrowse;
  Label lblCredits;

  // Fills the dialog from the settings store.
  void Form_Load();
  // Stores the priority, on every way out.
  void Form_Unload();
  // Files the command in the history, starts it, marks the priority in the main window and sets it.
  void btnOK_Click();
  void btnCancel_Click();
  void btnBrowse_Click();
  void lblCredits_Click();

 private:
  void FileCommand(const std::string& command);
  // The entry of the main window's options that stands for the chosen priority.
  std::int16_t ChosenEntry() const;
  void MarkEntry(std::int16_t entry);
};

}  // namespace velmaro
