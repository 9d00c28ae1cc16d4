#include <QAccessible>
#include <QHelpEvent>
#include <QLabel>
#include <QMenuBar>
#include <algorithm>
#include <cmath>
#include <map>

#include "Desktop.h"

namespace velmaro {
namespace {

int Pixels(Twips length) { return static_cast<int>(std::lround(length * dotsPerInch / 1440)); }
QString ToQt(const std::string& text) { return QString::fromStdString(text); }

double Contrast(const QColor& a, const QColor& b) {
  const auto linear = [](double v) { return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4); };
  const auto light = [&](const QColor& color) {
    return 0.05 + 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
  };
  return std::max(light(a) / light(b), light(b) / light(a));
}

QColor InTheme(Color color, const QPalette& theme) {
  const std::map<Color, QPalette::ColorRole> roles = {
      {SystemColor::Window, QPalette::Base},           {SystemColor::WindowText, QPalette::Text},
      {SystemColor::Highlight, QPalette::Highlight},   {SystemColor::HighlightText, QPalette::HighlightedText},
      {SystemColor::ButtonText, QPalette::WindowText}, {SystemColor::ButtonFace, QPalette::Window}};
  if (const auto role = roles.find(color); role != roles.end()) return theme.color(role->second);
  return QColor(color & 255, color >> 8 & 255, color >> 16 & 255);
}

// The ground has the colour of the model, and the text too where it can be read on that.
void ExpectColored(const Control& control, const QPalette& theme) {
  const auto& widget = WidgetOf(control);
  const auto* label = dynamic_cast<const Label*>(&control);
  const auto around = control.Parent() ? control.Parent()->BackColor() : control.Owner().Args().BackColor;
  const bool isWhite = control.Parent() && around == SystemColor::Window && control.BackColor() == 0xFFFFFF;
  const auto meant = InTheme(control.ForeColor(), theme);
  const auto ground = InTheme(isWhite || (label && label->Transparent()) ? around : control.BackColor(), theme);
  const bool isField = !widget.inherits("QAbstractButton") && widget.focusPolicy() != Qt::NoFocus;
  const auto text = widget.palette().color(isField ? QPalette::Text : widget.foregroundRole());
  const bool isLine = dynamic_cast<const Line*>(&control), isPanel = dynamic_cast<const PictureBox*>(&control);
  EXPECT_TRUE(isLine || widget.palette().color(isField ? QPalette::Base : widget.backgroundRole()) == ground);
  EXPECT_TRUE(!isPanel || widget.autoFillBackground());
  EXPECT_TRUE(isPanel || (!isLine && Contrast(meant, ground) < 4.5 ? Contrast(text, ground) >= 4.5 : text == meant));
}

// The text has the size that forms are laid out for, or on buttons and labels as much of it as there is room for.
void ExpectSized(const QWidget& widget, const Font& font) {
  const QString alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
  const auto letters = QFontMetricsF(QApplication::font()).horizontalAdvance(alphabet);
  const auto whole = QApplication::font().pointSizeF() * font.Size / 8.25 * std::min(1.0, Pixels(5000) / letters);
  const auto size = widget.font().pointSizeF();
  const auto* button = qobject_cast<const QAbstractButton*>(&widget);
  const bool fits = button || widget.inherits("QLabel"), hasPicture = button && !button->icon().isNull();
  EXPECT_TRUE(size < whole + 0.3 && size > whole * (fits ? 0.6 : 0.97)) << size / whole;
  EXPECT_TRUE(widget.font().bold() == font.Bold && widget.font().underline() == font.Underline);
  const auto room = widget.size() - QSize(0, hasPicture ? Pixels(480) : 0);
  const int breaks = button && !hasPicture ? Qt::TextSingleLine : Qt::TextWordWrap;
  const auto text = widget.property("text").toString().remove('&');
  const auto taken = widget.fontMetrics().boundingRect({0, 0, widget.width(), 9999}, breaks, text).size();
  EXPECT_TRUE(!fits || size <= 5.5 || taken == taken.boundedTo(room)) << size;
}

void ExpectShown(const Control& control, const QWidget& client) {
  SCOPED_TRACE(control.Caption() + control.AccessibleName());
  auto& widget = WidgetOf(control);
  const auto* parent = control.Parent() ? &WidgetOf(*control.Parent()) : &client;
  const auto is = [&](const char* name, const QVariant& meant) {
    auto shown = widget.property(name);
    EXPECT_TRUE(shown.convert(meant.metaType()) && shown == meant) << name << " is " << shown.toString().toStdString();
  };
  const auto& at = control.At();
  const auto* line = dynamic_cast<const Line*>(&control);
  const auto* label = dynamic_cast<const Label*>(&control);
  const auto* button = dynamic_cast<const CommandButton*>(&control);
  const auto* option = dynamic_cast<const OptionButton*>(&control);
  const auto* bar = dynamic_cast<const HScrollBar*>(&control);
  const auto height = line ? std::max(at.Height, line->BorderWidth() * 15.F) : at.Height;
  is("geometry", QRect(Pixels(at.Left), Pixels(at.Top), Pixels(at.Width), Pixels(height)));
  is("enabled", control.Enabled() && parent->isEnabled());
  is("visible", control.Visible() && parent->isVisible());
  is("toolTip", ToQt(control.ToolTipText()).toHtmlEscaped());
  is("accessibleName", ToQt(control.AccessibleName()));
  if (label || button || option) is("text", ToQt(control.Caption()));
  if (bar) is("focusPolicy", int{Qt::StrongFocus});
  if (label) is("wordWrap", true), is("autoFillBackground", !label->Transparent());
  EXPECT_EQ(widget.cursor().shape() == Qt::PointingHandCursor, label && label->Pointer() == Pointer::Hand);
  if (const auto* panel = dynamic_cast<const PictureBox*>(&control))
    is("frameShape", panel->Border() ? 2 : 0), is("frameShadow", panel->Border() ? QFrame::Sunken : QFrame::Plain);
  constexpr std::array sides = {Qt::AlignLeft, Qt::AlignRight, Qt::AlignHCenter};
  if (label) is("alignment", (sides[static_cast<std::size_t>(label->Alignment())] | Qt::AlignTop).toInt());
  if (button) is("default", button->Default());
  if (option) is("checkable", true), is("checked", option->Value()), is("autoExclusive", true);
  if (bar) is("maximum", bar->Max()), is("value", bar->Value()), is("singleStep", bar->SmallChange());
  if (dynamic_cast<const Frame*>(&control)) is("title", ToQt(control.Caption()));
  EXPECT_EQ(widget.parentWidget(), parent);
  const auto* there = client.childAt(widget.mapTo(&client, widget.rect().center()));
  const bool isPassive = widget.focusPolicy() == Qt::NoFocus || !widget.isVisible();
  EXPECT_TRUE(isPassive || there == &widget || widget.isAncestorOf(there));
  EXPECT_FALSE(!isPassive && QAccessible::queryAccessibleInterface(&widget)->text(QAccessible::Name).isEmpty());
  if (!bar && !(button && SystemColor::Is(control.BackColor()))) ExpectColored(control, client.palette());
  if (!line && !dynamic_cast<const Image*>(&control)) ExpectSized(widget, control.Font());
  EXPECT_FALSE(dynamic_cast<const Image*>(&control) && static_cast<const QLabel&>(widget).pixmap().isNull());
}

void ExpectShown(const std::vector<Menu*>& models, const QList<QAction*>& entries) {
  ASSERT_EQ(models.size(), entries.size());
  for (std::size_t i = 0; i < models.size(); ++i) {
    const auto& model = *models[i];
    const auto& entry = *entries[static_cast<qsizetype>(i)];
    const auto key = model.Shortcut().KeyCode == 0 ? "" : '\t' + ShortcutText(model.Shortcut());
    EXPECT_EQ(entry.isSeparator() ? "-" : entry.text(), ToQt(model.Caption() + key));
    EXPECT_TRUE(entry.isChecked() == model.Checked() && entry.isVisible() == model.Visible());
    ExpectShown(model.Entries(), entry.menu() ? entry.menu()->actions() : QList<QAction*>());
  }
}

}  // namespace

void ExpectShown(const Form& form) {
  SCOPED_TRACE(form.Caption());
  auto& client = ClientOf(form);
  auto& window = *client.window();
  const auto& told = *QAccessible::queryAccessibleInterface(&window);
  const auto& args = form.Args();
  const auto* bar = window.findChild<QMenuBar*>();
  EXPECT_EQ(window.windowTitle(), ToQt(form.Caption()));
  EXPECT_EQ(told.role(), window.isModal() ? QAccessible::Dialog : QAccessible::Window);
  EXPECT_FALSE(told.text(QAccessible::Name).isEmpty());
  EXPECT_EQ(window.minimumSize() == window.maximumSize(), args.BorderStyle != BorderStyle::Sizable);
  const auto has = [&](Qt::WindowType flag) { return window.windowFlags().testFlag(flag); };
  EXPECT_EQ(has(Qt::FramelessWindowHint), args.BorderStyle == BorderStyle::None);
  EXPECT_EQ(has(Qt::WindowMinimizeButtonHint), args.MinButton);
  EXPECT_EQ(has(Qt::WindowMaximizeButtonHint), args.MaxButton);
  EXPECT_EQ(window.windowType() == Qt::Window, args.ShowInTaskbar);
  EXPECT_EQ(window.windowIcon().isNull(), args.Icon == Picture::None);
  EXPECT_EQ(client.palette().color(QPalette::Window), InTheme(args.BackColor, QApplication::palette()));
  EXPECT_EQ(client.size(), QSize(Pixels(form.Width() - 120), Pixels(form.Height() - (bar ? 690 : 405))));
  EXPECT_EQ(client.geometry(), window.rect().adjusted(0, bar ? bar->height() : 0, 0, 0));
  EXPECT_TRUE(!bar || bar->size() == QSize(window.width(), bar->sizeHint().height()));
  ExpectShown(form.MenuBar(), bar ? bar->actions() : QList<QAction*>());
  std::vector<int> tabIndexes;
  for (const auto* at = window.nextInFocusChain(); at != &window; at = at->nextInFocusChain())
    for (const auto* control : form.Controls())
      if (&WidgetOf(*control) == at && at->focusPolicy() != Qt::NoFocus) tabIndexes.push_back(control->TabIndex());
  EXPECT_TRUE(std::ranges::is_sorted(tabIndexes)) << testing::PrintToString(tabIndexes);
  for (int changes = 0; changes < 3; ++changes)
    for (auto* control : form.Controls()) {
      if (changes > 0) control->SetEnabled(!control->Enabled()), control->SetVisible(!control->Visible());
      ExpectShown(*control, client);
    }
}

void ExpectBalloon(QWidget& control, bool isAbove, const QString& meant) {
  const auto at = control.mapToGlobal(QPoint(5, 5));
  QHelpEvent rest(QEvent::ToolTip, {5, 5}, at);
  QEvent leave(QEvent::Leave), hide(QEvent::Hide), toAnotherWindow(QEvent::WindowDeactivate);
  QKeyEvent key(QEvent::KeyPress, Qt::Key_Shift, Qt::NoModifier);
  QMouseEvent click(QEvent::MouseButtonPress, {5, 5}, at, Qt::RightButton, Qt::RightButton, Qt::NoModifier);
  for (QEvent* end : std::initializer_list<QEvent*>{&leave, &hide, &toAnotherWindow, &key, &click}) {
    QApplication::sendEvent(&control, &rest);
    auto tips = QApplication::topLevelWidgets();
    tips.removeIf([](const auto* window) { return window->windowType() != Qt::ToolTip || !window->isVisible(); });
    ASSERT_EQ(tips.size(), 1);
    const QPointer<QWidget> tip = tips.front();
    EXPECT_EQ(tip->y(), at.y() - 5 + (isAbove ? -tip->height() : control.height()));
    EXPECT_TRUE(tip->screen()->geometry().contains(tip->geometry()));
    QString told;
    for (const auto* label : tip->findChildren<QLabel*>())
      told += (label->font().bold() ? "title " : "") + label->text() + (label->pixmap().isNull() ? ";" : "icon;");
    EXPECT_TRUE(told.startsWith(meant)) << told.toStdString();
    QApplication::sendEvent(&control, end);
    EXPECT_TRUE(!tip || !tip->isVisible()) << end->type();
  }
}

}  // namespace velmaro
