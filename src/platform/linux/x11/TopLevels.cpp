#include "platform/linux/x11/TopLevels.h"

#include <algorithm>
#include <map>

#include "platform/linux/ground/Utf8.h"
#include "platform/linux/x11/CompoundText.h"

namespace onlinux {
namespace {

using Tree = Reply<xcb_query_tree_reply_t>;

// All are asked about before the first answer is awaited.
std::vector<Tree> ReadTrees(XServer& server, const std::vector<xcb_window_t>& windows) {
  std::vector<xcb_query_tree_cookie_t> requests;
  for (const auto window : windows) requests.push_back(::xcb_query_tree(server.Line(), window));
  std::vector<Tree> trees;
  for (const auto& request : requests) trees.emplace_back(::xcb_query_tree_reply(server.Line(), request, nullptr));
  return trees;
}

// The windows that the window manager looks after, by the frames that it put around them.
std::map<xcb_window_t, xcb_window_t> ManagedByFrame(XServer& server) {
  std::map<xcb_window_t, xcb_window_t> byFrame;
  auto windows = server.ReadNumbers(server.Root(), "_NET_CLIENT_LIST_STACKING");
  auto around = windows;
  constexpr int deepest = 8;
  for (int depth = 0; depth < deepest && !around.empty(); ++depth) {
    const auto trees = ReadTrees(server, around);
    std::vector<xcb_window_t> left, outer;
    for (std::size_t i = 0; i < trees.size(); ++i) {
      if (!trees[i] || trees[i]->parent == XCB_NONE) continue;
      if (trees[i]->parent == server.Root()) {
        byFrame[around[i]] = windows[i];
      } else {
        left.push_back(windows[i]);
        outer.push_back(trees[i]->parent);
      }
    }
    windows = std::move(left);
    around = std::move(outer);
  }
  return byFrame;
}

// Some windows only take input or stand for a program, such as those that toolkits keep a selection by: they have no
// picture, or are hidden where no manager sees them, or would show but a dot.
bool CanShow(const xcb_get_window_attributes_reply_t& facts, const xcb_get_geometry_reply_t& size) {
  constexpr std::uint16_t dot = 10;
  const bool isDot = size.width <= dot && size.height <= dot;
  const bool hidden = facts.map_state == XCB_MAP_STATE_UNMAPPED;
  return facts._class == XCB_WINDOW_CLASS_INPUT_OUTPUT && !(hidden && (facts.override_redirect || isDot));
}

// Of the outermost windows, the ones that can show something. All are asked about before the first answer is awaited.
std::vector<xcb_window_t> Drawable(XServer& server, const std::vector<xcb_window_t>& windows) {
  std::vector<std::pair<xcb_get_window_attributes_cookie_t, xcb_get_geometry_cookie_t>> requests;
  for (const auto window : windows)
    requests.emplace_back(::xcb_get_window_attributes(server.Line(), window),
                          ::xcb_get_geometry(server.Line(), window));
  std::vector<xcb_window_t> drawable;
  for (std::size_t i = 0; i < windows.size(); ++i) {
    const WindowFacts facts(::xcb_get_window_attributes_reply(server.Line(), requests[i].first, nullptr));
    const Reply<xcb_get_geometry_reply_t> size(::xcb_get_geometry_reply(server.Line(), requests[i].second, nullptr));
    if (facts && size && CanShow(*facts, *size)) drawable.push_back(windows[i]);
  }
  return drawable;
}

// Lets no other program change a window for as long as it lives: a window on its way out of its frame would be seen
// neither in it nor outside.
class Standstill {
 public:
  explicit Standstill(XServer& server) : server_(server) { ::xcb_grab_server(server_.Line()); }
  Standstill(const Standstill&) = delete;
  Standstill& operator=(const Standstill&) = delete;
  ~Standstill() {
    ::xcb_ungrab_server(server_.Line());
    ::xcb_flush(server_.Line());
  }

 private:
  XServer& server_;
};

// Asks no more than that: what reads a title may have a line of its own to the server, which stands still.
std::vector<bool> HaveTitles(XServer& server, const std::vector<xcb_window_t>& windows) {
  std::vector<bool> have;
  for (const auto& [title, old] : server.ReadTwo(windows, "_NET_WM_NAME", "WM_NAME"))
    have.push_back(!title.bytes.empty() || !old.bytes.empty());
  return have;
}

// The window in a frame that its manager has not yet taken up, or not yet given back; else the window itself.
xcb_window_t InsideOf(XServer& server, xcb_window_t frame) {
  const auto tree = std::move(ReadTrees(server, {frame}).front());
  if (!tree) return frame;
  const auto* first = ::xcb_query_tree_children(tree.get());
  const std::vector<xcb_window_t> children(first, first + ::xcb_query_tree_children_length(tree.get()));
  const auto titled = HaveTitles(server, children);
  for (std::size_t i = 0; i < children.size(); ++i)
    if (titled[i] || !server.Read(children[i], "WM_STATE").bytes.empty()) return children[i];
  return frame;
}

std::string FromLatin1(const std::string& bytes) {
  std::string text;
  for (const char byte : bytes) AppendCharacter(text, static_cast<unsigned char>(byte));
  return text;
}

std::string TitleOf(XServer& server, const Property& modern, const Property& title) {
  if (!modern.bytes.empty()) return modern.bytes.substr(0, modern.bytes.find('\0'));
  auto text = title.type == server.Atom("COMPOUND_TEXT") ? FromCompoundText(title.bytes) : std::string();
  if (text.empty()) text = title.bytes.substr(0, title.bytes.find('\0'));
  return title.type == XCB_ATOM_STRING ? FromLatin1(text) : text;
}

}  // namespace

WindowFacts ReadFacts(XServer& server, xcb_window_t window) {
  const auto request = ::xcb_get_window_attributes(server.Line(), window);
  return WindowFacts(::xcb_get_window_attributes_reply(server.Line(), request, nullptr));
}

std::vector<xcb_window_t> TopLevels(XServer& server) {
  const Standstill standstill(server);
  const auto managed = ManagedByFrame(server);
  const auto root = std::move(ReadTrees(server, {server.Root()}).front());
  if (!root) return {};
  const auto* children = ::xcb_query_tree_children(root.get());
  std::vector<xcb_window_t> windows(children, children + ::xcb_query_tree_children_length(root.get()));
  std::ranges::reverse(windows);
  // The window manager's mark is a window of its own, with a title that nobody sees.
  for (const auto mark : server.ReadNumbers(server.Root(), "_NET_SUPPORTING_WM_CHECK")) std::erase(windows, mark);
  windows = Drawable(server, windows);
  const auto titled = HaveTitles(server, windows);
  for (std::size_t i = 0; i < windows.size(); ++i) {
    const auto at = managed.find(windows[i]);
    if (at != managed.end())
      windows[i] = at->second;
    else if (!titled[i])
      windows[i] = InsideOf(server, windows[i]);
  }
  return windows;
}

std::vector<std::string> TitlesOf(XServer& server, const std::vector<xcb_window_t>& windows) {
  std::vector<std::string> titles;
  for (const auto& [modern, title] : server.ReadTwo(windows, "_NET_WM_NAME", "WM_NAME"))
    titles.push_back(TitleOf(server, modern, title));
  return titles;
}

bool IsManaged(XServer& server, xcb_window_t window) {
  const auto state = server.ReadNumbers(window, "WM_STATE");
  return !state.empty() && state.front() != 0;
}

bool IsVisible(XServer& server, xcb_window_t window) {
  const auto facts = ReadFacts(server, window);
  return facts && (facts->map_state == XCB_MAP_STATE_VIEWABLE || IsManaged(server, window));
}

}  // namespace onlinux
