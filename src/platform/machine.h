#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

// Does what the platform needs ahead of everything else. For the entry of the program.
void BeginProgram();
// The command line behind the program's own name, unchanged: one text, or words, each with a NUL behind it.
std::string CommandLine();
// Answers on the standard output what every program of this platform's shell is asked, "--help" and "--version". False
// for any other question, and where there is no such shell.
bool AnswersTheShell(std::string_view question);
// The folder of the list files, without a separator at its end unless it is a root: that of the executable, or, where
// programs are installed into folders that their users can't write, the user's own folder for this program.
std::string AppFolder();
// The character that stands between folders in the paths of this platform.
char PathSeparator();
// True where the command line comes as words. Switches are then words in front of the program's.
bool SwitchesAreWords();
// True where a lone LF ends a line of a text file, as CR LF and a lone CR do everywhere.
bool LineFeedEndsLine();
// The program's instance handle, for the records that ask for it.
std::uint32_t AppInstance();

// Reads a value of the user's settings store, addressed by application, section and key. Nothing when it is missing
// or is no text.
std::optional<std::string> ReadSetting(const std::string& application, const std::string& section,
                                       const std::string& key);
// Writes a value to the user's settings store: after a crash at any moment it is the old one or the new one, whole.
bool WriteSetting(const std::string& application, const std::string& section, const std::string& key,
                  const std::string& value);

// Starts a command line with a window style (1 normal, with focus). `ERROR_ELEVATION_REQUIRED`, or above 31 when it
// started.
std::uint32_t Shell(const std::string& commandLine, int windowStyle);
// The whole path of the program that a name in a command line stands for, with ".exe" behind it or not; "" for none.
std::string FindProgram(const std::string& name);
// The bare name of the first file, never a folder, that fits a path whose last part may hold "*" and "?"; else "".
std::string Dir(const std::string& pattern);
// Activates a visible top-level window with exactly that title, else the first whose title begins with it. False when
// there is none.
bool AppActivate(const std::string& title);
// Types keys into the active window; "~" is Enter, the only key the program sends.
bool SendKeys(const std::string& keys);

// Lower-cases the letters of every script that the system's code page holds. Bytes that are no text stay as they are.
std::string LowerCase(std::string_view text);
// A text in UTF-16 in the system's code page, and back. What one of them does not hold is lost.
std::string FromUtf16(std::u16string_view text);
std::u16string ToUtf16(std::string_view text);
// Bytes in UTF-8 as a text in the system's code page, and back: the same bytes where that is UTF-8. What the page does
// not hold is lost.
std::string FromUtf8(std::string_view bytes);
std::string ToUtf8(std::string_view text);
// The same for bytes in the page that plain texts of the user's locale have. Nothing where the system's page is no
// other one, for bytes that are text in the system's page, and where a character can't be had.
std::optional<std::string> FromLocalPage(std::string_view bytes);
std::optional<std::string> ToLocalPage(std::string_view text);
// The bytes that the first character of a text takes in the system's code page, 1 for a byte that is no text.
std::size_t CharacterLength(std::string_view text);

}  // namespace platform
