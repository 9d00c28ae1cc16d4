#pragma once

#include <map>
#include <optional>

#include "platform/windows/peers/Drawing.h"
#include "platform/windows/peers/FormMenus.h"
#include "platform/windows/peers/Tips.h"
#include "runtime/Form.h"

namespace windows {

// The native window of a form.
class FormWindow final : public velmaro::FormPeer {
 public:
  explicit FormWindow(velmaro::Form& form);
  FormWindow(const FormWindow&) = delete;
  FormWindow& operator=(const FormWindow&) = delete;
  ~FormWindow() override;

  // The form's window around a window or control of this program, null where there is none.
  static FormWindow* Around(HWND window);

  void Apply(velmaro::Change what) override;
  platform::WindowHandle hWnd() const override { return platform::ToNumber(window_.get()); }
  void Show(velmaro::Form* owner) override;
  void Hide(velmaro::Form* next) override;
  void Block(bool blocked) override;
  void ApplyMenu(velmaro::Menu& menu) override;
  void PopupMenu(velmaro::Menu& menu, std::optional<velmaro::Bounds> place, velmaro::Menu* defaultEntry) override;
  velmaro::Twips TwipsPerPixel() const override { return scale_.TwipsPerPixel(); }

  // For the peers of the form's controls and timers.
  HWND Window() const { return window_.get(); }
  Resolution Scale() const { return scale_; }
  HFONT FontFor(const velmaro::Font& font) { return tools_.FontFor(font, scale_); }
  HBRUSH BrushFor(velmaro::Color color) { return tools_.BrushFor(color); }
  Tips& ControlTips() { return tips_; }
  int NextId() { return nextId_++; }
  UINT_PTR StartTimer(velmaro::Timer& timer, int milliseconds);
  void StopTimer(UINT_PTR id);

  // Takes a message of the form or of one of its controls ahead of its window. True when nothing is left to do.
  bool Translate(MSG& message);

 private:
  struct Size {
    PixelPlace outer;
    PixelPlace client;
    velmaro::WindowState state;
    bool operator==(const Size&) const = default;
  };

  static LRESULT CALLBACK Procedure(HWND window, UINT id, WPARAM wParam, LPARAM lParam) noexcept;
  static ATOM WindowClass();
  std::optional<LRESULT> Handle(const Message& message);
  LRESULT MayEndSession();
  LRESULT FilesDropped(HDROP dropped);
  LRESULT Command(const Message& message);
  LRESULT Tick(UINT_PTR id);
  LRESULT Erase(HDC context);
  LRESULT Activated(const Message& message);
  LRESULT TakeFocus();
  LRESULT LimitSize(MINMAXINFO& limits) const;
  std::optional<LRESULT> SizeAsked(int dpi, SIZE& outer) const;
  LRESULT NewResolution(int dpi, const RECT& suggested);
  LRESULT DefaultId() const;

  bool KeyDown(const MSG& message);
  bool PressedByKey(const MSG& message);

  Size Measure() const;
  void Report();
  std::optional<SIZE> FixedSizeAt(Resolution scale) const;
  void SizeClient();
  void PlaceFirst(HWND owner);
  void Center(HWND owner);
  void Rescale();
  void LoadIcons();

  velmaro::Form& form_;
  DrawingTools tools_;
  FormMenus menus_;
  OwnedIcon bigIcon_;
  OwnedIcon smallIcon_;
  OwnedWindow window_;
  Resolution scale_;
  Tips tips_;
  std::map<UINT_PTR, velmaro::Timer*> timers_;
  std::optional<Size> reported_;
  HWND focus_ = nullptr;
  bool placed_ = false;
  int nextId_ = 1000;
  UINT_PTR nextTimer_ = 1;
};

}  // namespace windows
