#include "runtime/TextBox.h"

#include <algorithm>

namespace velmaro {

const std::string& TextBox::Text() const {
  ReadPeer();
  return text_;
}

std::size_t TextBox::SelStart() const {
  ReadPeer();
  return selStart_;
}

std::size_t TextBox::SelLength() const {
  ReadPeer();
  return selLength_;
}

void TextBox::SetText(std::string text) {
  ReadPeer();
  if (text == text_) return;
  text_ = std::move(text);
  selStart_ = selLength_ = 0;
  isRefused_ = false;
  Tell(velmaro::Change::Text);
  if (isRefused_) throw RuntimeError("the control can't hold the text");
  if (Change) Resume(Change);
}

void TextBox::SetSelStart(std::size_t start) {
  ReadPeer();
  selStart_ = std::min(start, text_.size());
  selLength_ = 0;
  Tell(velmaro::Change::Selection);
}

void TextBox::SetSelLength(std::size_t length) {
  ReadPeer();
  selLength_ = std::min(length, text_.size() - selStart_);
  Tell(velmaro::Change::Selection);
}

void TextBox::TextByUser(std::string text) {
  if (text == text_) return;
  text_ = std::move(text);
  selStart_ = std::min(selStart_, text_.size());
  selLength_ = std::min(selLength_, text_.size() - selStart_);
  if (Change) Resume(Change);
}

}  // namespace velmaro
