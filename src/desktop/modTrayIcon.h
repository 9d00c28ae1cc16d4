#pragma once

namespace velmaro {

class Form;
class Menu;

// Brings a form to the front and opens the entries of one of its menus as a popup: at the mouse pointer when a default
// entry is given, which is then marked, or when X + Y is not above 0; else at X and Y, in twips of the form. Returns
// when the popup has closed and a chosen entry has raised its own click.
void ShowPopupAtCursor(Form& form, Menu& menu, Menu* defaultEntry, float X, float Y);

}  // namespace velmaro
