#pragma once

#include <string>
#include <string_view>

namespace velmaro {

// How the bytes of a text file stand for its text: in the code page, or as the byte order mark before them tells.
enum class TextForm { Plain, Utf8, Utf16Little, Utf16Big };

// A text in the code page, and the form of the bytes that it came from.
struct FormedText {
  std::string text;
  TextForm form = TextForm::Plain;
};

// Reads the bytes of a text file by their mark, which the text then lacks. Half a character at the end is dropped.
FormedText FromBytes(std::string bytes);
// The bytes of a text in a form, with its mark.
std::string ToBytes(std::string_view text, TextForm form);

}  // namespace velmaro
