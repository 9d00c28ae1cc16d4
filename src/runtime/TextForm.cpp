#include "runtime/TextForm.h"

#include "platform/machine.h"

namespace velmaro {
namespace {

std::string_view MarkOf(TextForm form) {
  switch (form) {
    case TextForm::Utf8:
      return "\xEF\xBB\xBF";
    case TextForm::Utf16Little:
      return "\xFF\xFE";
    case TextForm::Utf16Big:
      return "\xFE\xFF";
    default:
      return {};
  }
}

TextForm FormOf(std::string_view bytes) {
  for (const auto form : {TextForm::Utf8, TextForm::Utf16Little, TextForm::Utf16Big})
    if (bytes.starts_with(MarkOf(form))) return form;
  return TextForm::Plain;
}

bool IsUtf16(TextForm form) { return form == TextForm::Utf16Little || form == TextForm::Utf16Big; }

}  // namespace

FormedText FromBytes(std::string bytes) {
  const auto form = FormOf(bytes);
  bytes.erase(0, MarkOf(form).size());
  if (!IsUtf16(form)) return {std::move(bytes), form};
  const std::size_t low = form == TextForm::Utf16Little ? 0 : 1;
  std::u16string units(bytes.size() / 2, u'\0');
  for (std::size_t i = 0; i < units.size(); ++i)
    units[i] = static_cast<char16_t>(static_cast<unsigned char>(bytes[2 * i + low]) |
                                     static_cast<unsigned char>(bytes[2 * i + 1 - low]) << 8);
  return {platform::FromUtf16(units), form};
}

std::string ToBytes(std::string_view text, TextForm form) {
  std::string bytes(MarkOf(form));
  if (!IsUtf16(form)) return bytes.append(text);
  for (const auto unit : platform::ToUtf16(text)) {
    const auto low = static_cast<char>(unit & 0xFF);
    const auto high = static_cast<char>(unit >> 8);
    bytes += form == TextForm::Utf16Little ? low : high;
    bytes += form == TextForm::Utf16Little ? high : low;
  }
  return bytes;
}

}  // namespace velmaro
