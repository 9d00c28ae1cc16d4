#include "platform/windows/peers/FormWindow.h"

#include <algorithm>

#include "platform/windows/peers/ControlPeer.h"
#include "platform/windows/peers/FormStyle.h"
#include "runtime/Buttons.h"
#include "runtime/Timer.h"

namespace windows {
namespace {

// Sent to the form's own window when its menu bar was changed.
constexpr UINT RedrawMenuBar = WM_APP;
// WM_GETDPISCALEDSIZE, which not all headers have.
constexpr UINT NewResolutionAsked = 0x02E4;

ATOM RegisterFormClass(const wchar_t* name, WNDPROC procedure) {
  UseControlClasses(ICC_STANDARD_CLASSES);
  WNDCLASSEXW form{};
  form.cbSize = sizeof form;
  form.lpfnWndProc = procedure;
  form.hInstance = Instance();
  form.hCursor = ::LoadCursorA(nullptr, IDC_ARROW);
  form.lpszClassName = name;
  return ::RegisterClassExW(&form);
}

velmaro::WindowState StateOf(HWND window) {
  if (::IsIconic(window)) return velmaro::WindowState::Minimized;
  return ::IsZoomed(window) ? velmaro::WindowState::Maximized : velmaro::WindowState::Normal;
}

PixelPlace PlaceOf(const RECT& rect) { return {0, 0, rect.right - rect.left, rect.bottom - rect.top}; }

// The size that the client area probably takes. A window of another size is drawn for nothing, so this one is made of
// it; it is measured when it is placed.
PixelPlace LikelyPlace(const velmaro::FormArgs& form, bool hasMenu) {
  const auto scale = ResolutionOf(nullptr);
  RECT outer{0, 0, scale.ToPixels(form.ClientWidth), scale.ToPixels(form.ClientHeight)};
  ::AdjustWindowRectEx(&outer, StyleOf(form), hasMenu, ExtendedStyleOf(form));
  return {CW_USEDEFAULT, CW_USEDEFAULT, outer.right - outer.left, outer.bottom - outer.top};
}

bool TakesKeyboard(HWND window) { return ::IsWindowVisible(window) && ::IsWindowEnabled(window); }

}  // namespace

ATOM FormWindow::WindowClass() {
  static const auto registered = RegisterFormClass(L"Velmaro.Form", &FormWindow::Procedure);
  return registered;
}

FormWindow::FormWindow(velmaro::Form& form) : form_(form), menus_(form.MenuBar()) {
  window_ = Create({.windowClass = reinterpret_cast<const wchar_t*>(static_cast<ULONG_PTR>(WindowClass())),
                    .text = form.Caption(),
                    .style = StyleOf(form.Args()),
                    .extendedStyle = ExtendedStyleOf(form.Args()) | (form.DropFiles ? WS_EX_ACCEPTFILES : 0),
                    .place = LikelyPlace(form.Args(), menus_.Bar()),
                    .menu = menus_.Bar()});
  ::SetWindowLongPtrW(window_.get(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  scale_ = ResolutionOf(window_.get());
  LoadIcons();
}

FormWindow::~FormWindow() { ::SetWindowLongPtrW(window_.get(), GWLP_USERDATA, 0); }

FormWindow* FormWindow::Around(HWND window) {
  const auto root = window ? ::GetAncestor(window, GA_ROOT) : nullptr;
  if (!root || ::GetClassWord(root, GCW_ATOM) != WindowClass()) return nullptr;
  return reinterpret_cast<FormWindow*>(::GetWindowLongPtrW(root, GWLP_USERDATA));
}

void FormWindow::Apply(velmaro::Change what) {
  if (what == velmaro::Change::Caption) SetText(window_.get(), form_.Caption());
  if (what == velmaro::Change::Bounds)
    ::SetWindowPos(window_.get(), nullptr, 0, 0, scale_.ToPixels(form_.Width()), scale_.ToPixels(form_.Height()),
                   SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void FormWindow::Show(velmaro::Form* owner) {
  const auto above = owner ? platform::ToNative<HWND>(owner->hWnd()) : nullptr;
  if (above) ::SetWindowLongPtrW(window_.get(), GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(above));
  const bool first = !placed_;
  if (first) PlaceFirst(above);
  // The first show takes on the window state that the program was started with.
  const int command = first ? SW_SHOWNORMAL : SW_SHOW;
  ::ShowWindow(window_.get(), ::IsIconic(window_.get()) ? SW_RESTORE : command);
  ::SetForegroundWindow(window_.get());
  ::RedrawWindow(window_.get(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

void FormWindow::Hide(velmaro::Form* next) {
  if (next && ::GetActiveWindow() == window_.get()) ::SetActiveWindow(platform::ToNative<HWND>(next->hWnd()));
  ::ShowWindow(window_.get(), SW_HIDE);
}

void FormWindow::Block(bool blocked) { ::EnableWindow(window_.get(), !blocked); }

void FormWindow::ApplyMenu(velmaro::Menu& menu) {
  menus_.Update(menu);
  // Menus that change in one event show in one go.
  if (!menu.Parent()) ::PostMessageW(window_.get(), RedrawMenuBar, 0, 0);
}

void FormWindow::PopupMenu(velmaro::Menu& menu, std::optional<velmaro::Bounds> place, velmaro::Menu* defaultEntry) {
  const auto popup = menus_.PopupOf(menu);
  if (!popup) return;
  POINT point;
  if (place) {
    point = {scale_.ToPixels(place->Left), scale_.ToPixels(place->Top)};
    ::ClientToScreen(window_.get(), &point);
  } else {
    ::GetCursorPos(&point);
  }
  ::SetMenuDefaultItem(popup, defaultEntry ? menus_.IdOf(defaultEntry) : static_cast<UINT>(-1), FALSE);
  const auto chosen = ::TrackPopupMenuEx(popup, TPM_RETURNCMD, point.x, point.y, window_.get(), nullptr);
  if (auto* entry = menus_.Find(static_cast<UINT>(chosen))) entry->RaiseClick();
}

UINT_PTR FormWindow::StartTimer(velmaro::Timer& timer, int milliseconds) {
  const auto id = nextTimer_++;
  timers_[id] = &timer;
  ::SetTimer(window_.get(), id, static_cast<UINT>(milliseconds), nullptr);
  return id;
}

void FormWindow::StopTimer(UINT_PTR id) {
  ::KillTimer(window_.get(), id);
  timers_.erase(id);
}

LRESULT CALLBACK FormWindow::Procedure(HWND window, UINT id, WPARAM wParam, LPARAM lParam) noexcept {
  auto* form = reinterpret_cast<FormWindow*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
  const auto result = form ? form->Handle({window, id, wParam, lParam}) : std::nullopt;
  return result ? *result : ::DefWindowProcW(window, id, wParam, lParam);
}

std::optional<LRESULT> FormWindow::Handle(const Message& message) {
  if (const auto reflected = Reflect(message)) return reflected;
  switch (message.id) {
    case WM_COMMAND:
      return Command(message);
    case WM_TIMER:
      return Tick(message.wParam);
    case WM_SIZE:
      if (placed_) Report();
      return 0;
    case WM_ERASEBKGND:
      return Erase(reinterpret_cast<HDC>(message.wParam));
    case WM_ACTIVATE:
      return Activated(message);
    case WM_SETFOCUS:
      return TakeFocus();
    case WM_CLOSE:
      form_.CloseByUser();
      return 0;
    case WM_DROPFILES:
      return FilesDropped(reinterpret_cast<HDROP>(message.wParam));
    case WM_QUERYENDSESSION:
      return MayEndSession();
    case WM_GETMINMAXINFO:
      return LimitSize(*reinterpret_cast<MINMAXINFO*>(message.lParam));
    case NewResolutionAsked:
      return SizeAsked(static_cast<int>(message.wParam), *reinterpret_cast<SIZE*>(message.lParam));
    case WM_DPICHANGED:
      return NewResolution(LOWORD(message.wParam), *reinterpret_cast<const RECT*>(message.lParam));
    case WM_SETTINGCHANGE:
      if (message.wParam == SPI_SETHIGHCONTRAST)
        ::RedrawWindow(window_.get(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
      return {};
    case DM_GETDEFID:
      return DefaultId();
    case RedrawMenuBar:
      return ::DrawMenuBar(window_.get());
    default:
      return {};
  }
}

// The system covers a question that takes long with its list of what holds the end of the session up, and the reason.
LRESULT FormWindow::MayEndSession() {
  ::ShutdownBlockReasonCreate(window_.get(), L"There are unsaved changes.");
  const bool may = form_.MayEndSession();
  ::ShutdownBlockReasonDestroy(window_.get());
  return may;
}

LRESULT FormWindow::Command(const Message& message) {
  if (auto* menu = menus_.Find(LOWORD(message.wParam)); menu && message.lParam == 0) menu->RaiseClick();
  return 0;
}

LRESULT FormWindow::Tick(UINT_PTR id) {
  if (const auto at = timers_.find(id); at != timers_.end()) at->second->RaiseTick();
  return 0;
}

LRESULT FormWindow::Erase(HDC context) {
  RECT client;
  ::GetClientRect(window_.get(), &client);
  ::FillRect(context, &client, BrushFor(form_.Args().BackColor));
  return TRUE;
}

LRESULT FormWindow::Activated(const Message& message) {
  const bool active = LOWORD(message.wParam) != WA_INACTIVE;
  if (const auto focus = ::GetFocus(); !active && ::IsChild(window_.get(), focus)) focus_ = focus;
  const auto result = ::DefWindowProcW(message.window, message.id, message.wParam, message.lParam);
  if (active && HIWORD(message.wParam) == 0) form_.RaiseActivate();
  return result;
}

LRESULT FormWindow::TakeFocus() {
  const bool known = ::IsChild(window_.get(), focus_) && TakesKeyboard(focus_);
  if (const auto target = known ? focus_ : ::GetNextDlgTabItem(window_.get(), nullptr, FALSE)) ::SetFocus(target);
  return 0;
}

LRESULT FormWindow::DefaultId() const {
  const auto* button = form_.DefaultButton();
  if (!button) return 0;
  return MAKELRESULT(::GetDlgCtrlID(platform::ToNative<HWND>(button->hWnd())), DC_HASDEFID);
}

void FormWindow::LoadIcons() {
  if (form_.Args().Icon == velmaro::Picture::None) return;
  auto big = LoadPicture(form_.Args().Icon, SystemMetric(SM_CXICON, scale_));
  auto small = LoadPicture(form_.Args().Icon, SystemMetric(SM_CXSMICON, scale_));
  // The small one first, or the system would draw one from the big one for the moment in between.
  ::SendMessageW(window_.get(), WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(small.get()));
  ::SendMessageW(window_.get(), WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(big.get()));
  bigIcon_ = std::move(big);
  smallIcon_ = std::move(small);
}

FormWindow::Size FormWindow::Measure() const {
  RECT outer;
  RECT client;
  ::GetWindowRect(window_.get(), &outer);
  ::GetClientRect(window_.get(), &client);
  return {PlaceOf(outer), PlaceOf(client), StateOf(window_.get())};
}

void FormWindow::Report() {
  const auto size = Measure();
  if (reported_ == size) return;
  reported_ = size;
  form_.ResizedTo(scale_.ToTwips(size.outer.width), scale_.ToTwips(size.outer.height),
                  scale_.ToTwips(size.client.width), scale_.ToTwips(size.client.height), size.state);
}

}  // namespace windows
