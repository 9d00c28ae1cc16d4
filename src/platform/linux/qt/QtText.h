#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace onlinux {

// A text for the screen; bytes that are no text show as a mark.
QString ToQt(std::string_view text);
// The same with one kind of line end, for boxes and labels that show more than one line.
QString ToQtLines(std::string_view text);
// The same on one line: what would break it or hide in it shows as a sign of its own, except for tabs.
QString ToQtLine(std::string_view text);
// A text of the screen as the program holds it.
std::string FromQt(const QString& text);

}  // namespace onlinux
