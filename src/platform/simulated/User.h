#pragma once

#include <string>
#include <vector>

#include "runtime/Buttons.h"
#include "runtime/ComboBox.h"
#include "runtime/Form.h"
#include "runtime/HScrollBar.h"
#include "runtime/ListBox.h"
#include "runtime/Menu.h"
#include "runtime/TextBox.h"
#include "runtime/Types.h"

// What a user can do at the desktop. Only what shows, is enabled and is not covered by a box or a modal form can be
// touched: anything else throws std::logic_error, which says why. Touching a form makes it the active one.
namespace simulated {

// True where a form is on the screen, minimized or not; where a control shows, with its containers and its form.
bool Shows(const velmaro::Form& form);
bool Shows(const velmaro::Control& control);

// The form that has the keyboard. Throws std::logic_error when none of the program's has.
velmaro::Form& FrontForm();

// Clicks with the left mouse button: MouseUp, then Click. A button or list takes the keyboard by it.
void Press(velmaro::CommandButton& button);
void Press(velmaro::OptionButton& button);
void Click(velmaro::Control& control);
// Presses the button with that caption on the form that has the keyboard.
void Press(const std::string& caption);
// Clicks with another mouse button: MouseUp alone.
void RightPress(velmaro::Control& control, int button = velmaro::MouseButton::Right);

// Clicks a row of a list, or presses it twice; the row -1 is the empty space behind the last one.
void Select(velmaro::ListBox& list, int row);
void DoubleClick(velmaro::ListBox& list, int row);
// Brings another row to the top of a list.
void Scroll(velmaro::ListBox& list, int top);
// The first row that holds a text. Throws std::logic_error for none.
int RowWith(const velmaro::ListBox& list, const std::string& text);

// Chooses an entry from the menu bar.
void Choose(velmaro::Menu& entry);

// Presses and releases a key in a form: KeyDown, then what the key does (a shortcut, Enter, Esc, Space), then KeyUp.
void TypeKey(velmaro::Form& form, int keyCode, int shift = 0);
// Types over the selection of a text box; replaces all that stands in a combo box.
void TypeText(velmaro::TextBox& box, const std::string& text);
void TypeText(velmaro::ComboBox& box, const std::string& text);
// Moves the caret of a text box, or selects from there on.
void MoveCaret(velmaro::TextBox& box, std::size_t start, std::size_t length = 0);
// Answers the input box that is open: types over its text and presses Enter.
void Reply(const std::string& text);
// Picks an entry from the drop-down list of a combo box.
void PickEntry(velmaro::ComboBox& box, int index);
// Drags the thumb of a scroll bar to a value.
void Slide(velmaro::HScrollBar& bar, int value);

// What a window's title bar and frame do; the outer size is in twips.
void CloseBox(velmaro::Form& form);
void ResizeWindow(velmaro::Form& form, velmaro::Twips width, velmaro::Twips height);
// A desktop that lays windows out side by side gives this one a size and holds it there.
void ImposeSize(velmaro::Form& form, velmaro::Twips width, velmaro::Twips height);
void Minimize(velmaro::Form& form);
void Maximize(velmaro::Form& form);
void Restore(velmaro::Form& form);
void Activate(velmaro::Form& form);
// Drops files on a window.
void Drop(velmaro::Form& form, const std::vector<std::string>& files);

}  // namespace simulated
