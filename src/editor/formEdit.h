#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "desktop/Tooltip.h"
#include "runtime/Buttons.h"
#include "runtime/Form.h"
#include "runtime/Label.h"
#include "runtime/TextBox.h"
#include "runtime/TextForm.h"

namespace velmaro {

// A small editor for one list file.
class formEdit : public Form {
 public:
  formEdit();

  TextBox txtData;
  CommandButton btnOK;
  CommandButton btnCancel;
  CommandButton btnHelp;
  Label lblCredits;

  // Puts a file into the editor, an empty text where there is none. A file of more than 65,535 characters brings a
  // warning.
  void LoadFile(const std::string& file);
  // Puts lines, each with a line feed behind it, into the editor as the beginning of a new list: they are in its file
  // once the user has saved them.
  void Suggest(std::string_view lines);
  // True once the user has changed the text.
  bool IsModified() const { return Modified; }

  void Form_Load();
  void Form_Activate();
  void Form_KeyDown(int KeyCode, int Shift);
  void Form_Resize();
  void Form_Unload(bool& Cancel);
  void txtData_Change();
  void btnOK_Click();
  void btnCancel_Click();
  void btnHelp_Click();
  void lblCredits_Click();

 private:
  // Asks about a changed text, and saves it where the user says so.
  void AskToSave(bool& Cancel);
  // Puts a text into the box. Where that can't hold it, it is empty and nothing is saved.
  void Show(std::string text);
  // Takes the text out of the file, by its byte order mark. Throws RuntimeError where it can't be read whole.
  std::string ReadText();
  // Writes the text to its file in the form that the file had. A file that could not be read stays as it is.
  void Save();
  void PromptFind();
  void FindNext();

  std::string EditFile;
  TextForm FileForm = TextForm::Plain;
  bool IsRead = true;
  bool Modified = false;
  std::string FindText;
  std::unique_ptr<Tooltip> Tip;
};

}  // namespace velmaro
