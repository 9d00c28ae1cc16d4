#include "runtime/TextForm.h"

#include <utility>

#include "platform/machine.h"
#include "runtime/Failures.h"

namespace velmaro {
namespace {

std::string_view MarkOf(TextForm form) {
  switch (form) {
    case TextForm::Utf8:
      return Utf8Mark;
    case TextForm::Utf16Little:
      return "\xFF\xFE";
    case TextForm::Utf16Big:
      return "\xFE\xFF";
    default:
      return {};
  }
}

bool IsUtf16(TextForm form) { return form == TextForm::Utf16Little || form == TextForm::Utf16Big; }

}  // namespace

TextForm FormOf(std::string_view bytes) {
  using namespace std::string_view_literals;
  if (bytes.starts_with("\xFF\xFE\0\0"sv) || bytes.starts_with("\0\0\xFE\xFF"sv)) return TextForm::Utf32;
  for (const auto form : {TextForm::Utf8, TextForm::Utf16Little, TextForm::Utf16Big})
    if (bytes.starts_with(MarkOf(form))) return form;
  return TextForm::Plain;
}

void TextDecoder::Append(std::string& text, std::string_view bytes) {
  if (!std::exchange(begun_, true)) {
    form_ = FormOf(bytes);
    if (form_ == TextForm::Utf32) throw RuntimeError("a text in UTF-32 is not read");
    bytes.remove_prefix(MarkOf(form_).size());
  }
  if (!IsUtf16(form_)) {
    text.append(bytes);
    return;
  }
  rest_.append(bytes);
  const auto lead = rest_.size() / 2 * 2;
  const auto high = lead == 0 ? 0 : rest_[form_ == TextForm::Utf16Little ? lead - 1 : lead - 2] & 0xFC;
  // The first half of a pair waits for the second one.
  AppendUtf16(text, high == 0xD8 ? lead - 2 : lead);
}

void TextDecoder::Finish(std::string& text) { AppendUtf16(text, rest_.size() / 2 * 2); }

void TextDecoder::AppendUtf16(std::string& text, std::size_t size) {
  const std::size_t low = form_ == TextForm::Utf16Little ? 0 : 1;
  std::u16string units;
  units.reserve(size / 2);
  for (std::size_t i = 0; i < size; i += 2) {
    const auto unit = static_cast<char16_t>(static_cast<unsigned char>(rest_[i + low]) |
                                            static_cast<unsigned char>(rest_[i + 1 - low]) << 8);
    if (dropsMarks_ && atLineStart_ && unit == u'\xFEFF') continue;
    atLineStart_ = unit == u'\r' || unit == u'\n';
    units += unit;
  }
  rest_.erase(0, size);
  text += platform::FromUtf16(units);
}

FormedText FromBytes(std::string bytes) {
  if (const auto form = FormOf(bytes); form == TextForm::Plain) return {std::move(bytes), form};
  FormedText read;
  TextDecoder decoder(false);
  decoder.Append(read.text, bytes);
  decoder.Finish(read.text);
  read.form = decoder.Form();
  if (read.form == TextForm::Utf8) read.text = platform::FromUtf8(read.text);
  return read;
}

std::string ToBytes(std::string_view text, TextForm form) {
  if (form == TextForm::Local) {
    auto local = platform::ToLocalPage(text);
    return local ? std::move(*local) : ToBytes(text, TextForm::Utf8);
  }
  std::string bytes(MarkOf(form));
  if (!IsUtf16(form)) return bytes.append(form == TextForm::Utf8 ? platform::ToUtf8(text) : text);
  for (const auto unit : platform::ToUtf16(text)) {
    const auto low = static_cast<char>(unit & 0xFF);
    const auto high = static_cast<char>(unit >> 8);
    bytes += form == TextForm::Utf16Little ? low : high;
    bytes += form == TextForm::Utf16Little ? high : low;
  }
  return bytes;
}

}  // namespace velmaro
