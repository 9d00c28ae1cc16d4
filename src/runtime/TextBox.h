#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "runtime/Control.h"

namespace velmaro {

// How a text box behaves.
struct TextBoxArgs {
  bool MultiLine = false;
  bool ScrollBars = false;  // both of them
};

// A field of text of one line or of many. Positions count bytes from 0.
class TextBox : public Control {
 public:
  TextBox(Container container, ControlArgs args, TextBoxArgs kind = {})
      : Control(container, std::move(args)), kind_(kind) {}

  // The text changed, by the user or by the program.
  std::function<void()> Change;

  bool MultiLine() const { return kind_.MultiLine; }
  bool ScrollBars() const { return kind_.ScrollBars; }
  const std::string& Text() const;
  // Replaces the text, moves the caret to its start, and raises Change where it differs. Throws RuntimeError where the
  // native control can't hold it.
  void SetText(std::string text);
  // Where the selection, or the caret, starts.
  std::size_t SelStart() const;
  // How many bytes are selected.
  std::size_t SelLength() const;
  // Moves the caret, with nothing selected. A place behind the text becomes its end.
  void SetSelStart(std::size_t start);
  // Selects from SelStart on. A length that runs behind the text is cut.
  void SetSelLength(std::size_t length);

  // For peers: the native control can't hold the text. A peer must not throw: it can be in a library whose failures the
  // program can't catch.
  void TextRefused() { isRefused_ = true; }
  // For peers: the user changed the text, or moved the caret or the selection.
  void TextByUser(std::string text);
  void SelectionByUser(std::size_t start, std::size_t length) {
    selStart_ = start;
    selLength_ = length;
  }

 protected:
  std::unique_ptr<velmaro::Peer> NewPeer() override { return MakePeer(*this); }

 private:
  TextBoxArgs kind_;
  std::string text_;
  std::size_t selStart_ = 0;
  std::size_t selLength_ = 0;
  bool isRefused_ = false;
};

}  // namespace velmaro
