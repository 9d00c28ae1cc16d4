#pragma once

#include <string>
#include <string_view>

namespace velmaro {

class Form;

// The part of a file name up to and with its last "\" or "/", what stands behind a "?" left out; empty without one.
std::string ExtractFilePath(std::string_view fileName);
// The part of a file name behind its last "\" or "/", what stands behind a "?" left out; empty without a separator, so
// a bare name must not come here.
std::string ExtractFileName(std::string_view fileName);

// Lets the user pick a file. The filter is a list of pairs, such as "Text files|*.txt|All files|*.*", and comes back
// with NUL characters in place of the bars; an empty folder leaves the start to the dialog. Gives the path, empty when
// the user cancelled or the dialog failed.
std::string ShowOpenDialog(const Form& owner, std::string& filter, const std::string& title,
                           const std::string& initialFolder);

// Writes a text to a file: mode 0 replaces its contents, 1 and -1 write behind them, 2 puts the text and CR LF in front
// of them, any other mode does nothing. Replacing is done whole or not at all; a write-protected file, and one whose
// old contents can't be read where they are to stay, is left alone. A failure is not reported.
void SaveTextFile(const std::string& fileName, const std::string& text, int mode);
// The whole contents of a file, which is made when missing; empty when it can't be read.
std::string ReadTextFile(const std::string& fileName);

// Shows the about box in front of everything and returns when the user has closed it.
void ShowCreditsBox();

}  // namespace velmaro
