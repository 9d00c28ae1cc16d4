#include <QApplication>
#include <QFrame>
#include <QPlainTextEdit>
#include <QScreen>
#include <QSessionManager>
#include <algorithm>
#include <array>
#include <cmath>
#include <map>

#include "../../Forms.h"
#include "Desktop.h"

namespace velmaro {
namespace {

// What the manager of the session was told.
std::string told;

std::string EndSession() {
  told.clear();
  alignas(QSessionManager) std::array<std::byte, sizeof(QSessionManager)> nobody{};
  Q_EMIT qGuiApp->commitDataRequest(*reinterpret_cast<QSessionManager*>(nobody.data()));
  return told;
}

int Pixels(double length) { return static_cast<int>(std::lround(length * dotsPerInch / 1440)); }

QRgb ColorOf(const std::string& name) {
  const std::map<std::string, QPalette::ColorRole> desktop = {
      {"face", QPalette::Window},     {"text", QPalette::WindowText},     {"window", QPalette::Base},
      {"windowtext", QPalette::Text}, {"highlight", QPalette::Highlight}, {"highlighttext", QPalette::HighlightedText}};
  const auto role = desktop.find(name);
  return role == desktop.end() ? static_cast<QRgb>(std::stoul("FF" + name, nullptr, 16))
                               : QApplication::palette().color(role->second).rgb();
}

void ExpectWidget(QWidget& widget, const forms::Row& row, const forms::Size& size, const QImage& shown) {
  SCOPED_TRACE(row.kind + ' ' + row.at[0] + ' ' + row.text);
  const auto place = widget.geometry();
  const std::array sides = {place.x(), place.y(), place.width(), place.height()};
  for (std::size_t side = 0; side < 4; ++side) {
    const auto length = row.Length(side, size);
    EXPECT_FALSE(std::abs(sides[side] - length * dotsPerInch / 1440) > 1.1) << side << ": " << sides[side];
  }
  const auto* frame = qobject_cast<QFrame*>(&widget);
  EXPECT_EQ(row.kind == "panel" && frame->frameShadow() == QFrame::Sunken, row.Has("sunken"));
  EXPECT_EQ(row.kind == "button" && widget.property("default").toBool(), row.Has("default"));
  EXPECT_EQ(row.kind == "option" && widget.property("checked").toBool(), row.Has("set"));
  const auto ground = row.Color("ground", row.kind == "line"    ? row.Color("ink", "")
                                          : row.kind == "label" ? "face"
                                                                : "");
  if (ground.empty()) return;
  if (row.kind == "button") {
    EXPECT_EQ(widget.palette().color(widget.backgroundRole()).rgb(), ColorOf(ground)) << "the style shades it";
    return;
  }
  std::map<QRgb, int> pixels;
  const auto inside = widget.visibleRegion().boundingRect().adjusted(3, 0, -3, 0);
  for (int y = inside.top(); y <= inside.bottom(); ++y)
    for (int x = inside.left(); x <= inside.right(); ++x)
      ++pixels[shown.pixel(widget.mapTo(widget.window(), QPoint(x, y)))];
  const auto most = std::ranges::max_element(pixels, {}, [](const auto& pixel) { return pixel.second; });
  EXPECT_EQ(most->first, ColorOf(ground));
}

// Looks at a form that has just come up, as the table has it.
void ExpectLook(const Form& form, const std::string& name, const QRect& owner) {
  SCOPED_TRACE(name);
  const auto rows = forms::Rows(name);
  auto& client = ClientOf(form);
  auto& window = *client.window();
  const auto has = [&](Qt::WindowType flag) { return window.windowFlags().testFlag(flag); };
  const bool taskbar = window.windowType() == Qt::Window, fixed = window.minimumSize() == window.maximumSize();
  EXPECT_EQ(has(Qt::FramelessWindowHint) ? "none" : !fixed ? "sizable" : taskbar ? "fixed" : "tool", rows[0].at[2]);
  EXPECT_TRUE(taskbar == rows[0].Has("taskbar") && window.windowIcon().isNull() != rows[0].Has("icon"));
  EXPECT_EQ(has(Qt::WindowMinimizeButtonHint), rows[0].Has("minimize"));
  EXPECT_EQ(has(Qt::WindowMaximizeButtonHint), rows[0].Has("maximize"));
  EXPECT_EQ(client.size(), QSize(Pixels(std::stod(rows[0].at[0])), Pixels(std::stod(rows[0].at[1]))));
  const auto around = rows[0].at[3] == "owner" ? owner : window.screen()->geometry();
  EXPECT_LT((window.geometry().center() - around.center()).manhattanLength(), 20);
  auto controls = form.Controls();
  std::ranges::stable_sort(controls, {}, &Control::TabIndex);
  ASSERT_EQ(controls.size() + 1, rows.size());
  const auto shown = window.grab().toImage();
  std::vector<const QWidget*> stops, chain;
  for (std::size_t i = 0; i < controls.size(); ++i) {
    auto& widget = WidgetOf(*controls[i]);
    ExpectWidget(widget, rows[i + 1], {form.ScaleWidth(), form.Width(), form.Height()}, shown);
    if (widget.focusPolicy() != Qt::NoFocus) stops.push_back(&widget);
  }
  for (const auto* at = window.nextInFocusChain(); at != &window; at = at->nextInFocusChain())
    if (std::ranges::count(stops, at) > 0) chain.push_back(at);
  EXPECT_EQ(chain, stops) << "Tab goes another way";
}

TEST_F(LinuxDesktop, EveryFormComesUpAsItWasDesigned) {
  ExpectLook(app.Default<formVelmaro>(), "main", main->screen()->geometry());
  main->move(150, 300);
  const std::vector<std::pair<QString, std::string>> forms = {
      {"Run...", "launcher"}, {"Edit Kill List Here...", "editor"}, {"About", "about"}, {"Find...", "find"}};
  for (const auto& [entry, name] : forms) {
    Then([&](QWidget& window) {
      ExpectLook(*App().Forms().back(), name, main->geometry());
      Press(window, Qt::Key_Escape);
    });
    Choose(entry);
  }
  Choose("Free Memory...");
  ExpectLook(*App().Forms().back(), "meter", {});
}

TEST_F(LinuxDesktop, ARefusedQuestionKeepsTheSession) {
  EXPECT_EQ(EndSession(), "") << "nobody need ask";
  Then([](QWidget& editor) {
    QTest::keyClicks(editor.findChild<QPlainTextEdit*>(), "x");
    EXPECT_EQ(EndSession(), "cancel release ");
    EXPECT_EQ(EndSession(), "release ");
    editor.close();
  });
  for (const auto* answer : {"Cancel", "No", "No"})
    Answer("save the changes", answer, "Cancel No Yes*", QMessageBox::Question);
  Choose("Edit Kill List Here...");
}

}  // namespace
}  // namespace velmaro

// In place of the session's own manager, which a test can't have.
bool QSessionManager::allowsInteraction() { return true; }
void QSessionManager::cancel() { velmaro::told += "cancel "; }
void QSessionManager::release() { velmaro::told += "release "; }
void QSessionManager::setRestartHint(RestartHint) {}
