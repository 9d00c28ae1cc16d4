#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace velmaro {

// How the bytes of a text file stand for its text: in the code page, in the page of the user's locale, or as the byte
// order mark before them tells.
enum class TextForm { Plain, Local, Utf8, Utf16Little, Utf16Big, Utf32 };

// The mark of a text in UTF-8.
inline constexpr std::string_view Utf8Mark = "\xEF\xBB\xBF";

// Turns the bytes of a text file into text of the code page, piece by piece, as the mark before them tells; UTF-8 stays
// as it is.
class TextDecoder {
 public:
  // Whether marks of UTF-16 at the beginning of lines are passed over, too.
  explicit TextDecoder(bool dropsMarks) : dropsMarks_(dropsMarks) {}
  // Appends what the next bytes stand for, without the mark that the first piece may begin with; that one holds 4 bytes
  // where the file does. Throws RuntimeError for UTF-32, which is not read.
  void Append(std::string& text, std::string_view bytes);
  // Appends what half a pair at the end of the bytes stands for. Half a character is dropped.
  void Finish(std::string& text);
  // The form, known from the first piece on.
  TextForm Form() const { return form_; }

 private:
  void AppendUtf16(std::string& text, std::size_t size);

  TextForm form_ = TextForm::Plain;
  bool dropsMarks_;
  bool begun_ = false;
  bool atLineStart_ = true;
  std::string rest_;  // bytes of UTF-16 that are not turned yet
};

// What the mark tells that a file begins with.
TextForm FormOf(std::string_view bytes);

// A text in the code page, and the form of the bytes that it came from.
struct FormedText {
  std::string text;
  TextForm form = TextForm::Plain;
};

// Reads the bytes of a text file by their mark, which the text then lacks. Half a character at the end is dropped.
// Throws RuntimeError for UTF-32.
FormedText FromBytes(std::string bytes);
// The bytes of a text in a form, with its mark; in UTF-8 where the user's locale has no page for the text.
std::string ToBytes(std::string_view text, TextForm form);

}  // namespace velmaro
