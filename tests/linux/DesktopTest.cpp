#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QWindow>
#include <algorithm>
#include <cmath>
#include <deque>
#include <functional>
#include <map>

#include "Children.h"
#include "mainform/formVelmaro.h"
#include "memory/formFreeMem.h"
#include "platform/linux/qt/ControlPeer.h"
#include "platform/machine.h"
#include "process/StartCommand.h"
#include "runtime/Application.h"
#include "runtime/Boxes.h"

namespace velmaro {
namespace {

using Action = std::function<void(QWidget& window)>;

void Key(QWidget& window, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
  QTest::keyClick(window.focusWidget() ? window.focusWidget() : &window, key, modifiers);
}

template <class Widget = QAbstractButton>
Widget& Find(QWidget& window, const QString& caption) {
  for (auto* widget : window.findChildren<Widget*>())
    if (widget->text().remove('&') == caption && widget->isVisible()) return *widget;
  throw std::runtime_error("there is no " + caption.toStdString());
}

template <class Widget = QAbstractButton>
void Click(QWidget& window, const QString& caption) {
  QTest::mouseClick(&Find<Widget>(window, caption), Qt::LeftButton);
}

// Counts how often a widget is painted.
struct Paints : QObject {
  int times = 0;
  bool eventFilter(QObject*, QEvent* event) override {
    times += event->type() == QEvent::Paint;
    return false;
  }
};

constexpr int dotsPerInch = 120;

int Pixels(Twips length) { return static_cast<int>(std::lround(length * dotsPerInch / 1440)); }
QString ToQt(const std::string& text) { return QString::fromStdString(text); }
QWidget& ClientOf(const Form& form) { return static_cast<onlinux::FormWindow*>(form.Peer())->Client(); }
QWidget& WidgetOf(const Control& of) { return static_cast<onlinux::ControlPeer*>(of.Peer())->Widget(); }

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
  const auto& widget = WidgetOf(control);
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

// All that a form shows, as it is, with its controls hidden and disabled, and as it was before.
void ExpectShown(const Form& form) {
  SCOPED_TRACE(form.Caption());
  auto& client = ClientOf(form);
  const auto& window = *client.window();
  const auto& args = form.Args();
  const auto* bar = window.findChild<QMenuBar*>();
  EXPECT_EQ(window.windowTitle(), ToQt(form.Caption()));
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

// Rests the pointer on a control, whose balloon must then stand under it, or above it.
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

// The real program on a screen that nobody sees. What the user does in a box or dialog is queued beforehand.
class LinuxDesktop : public testing::Test {
 protected:
  LinuxDesktop() {
    ::setenv("XDG_CONFIG_HOME", folder.Path().c_str(), 1);
    app.Default<formVelmaro>().Show();
    main = ClientOf(app.Default<formVelmaro>()).window();
    EXPECT_TRUE(QTest::qWaitForWindowActive(main));
    QObject::connect(&user, &QTimer::timeout, &user, [this] {
      auto* window = QApplication::activePopupWidget();
      if (!window) window = QApplication::activeModalWidget();
      if (!window || actions.empty() || !window->isVisible()) return;
      // A timer does not tick while it is answered, and an action may bring the next box.
      QTimer::singleShot(0, window, [action = std::exchange(actions.front(), {}), window] { action(*window); });
      actions.pop_front();
    });
    user.start(20);
  }
  ~LinuxDesktop() override {
    EXPECT_TRUE(actions.empty()) << "a box that was awaited did not come";
    for (const auto& file : {killList, spareList}) fs::remove(file);
  }
  void Then(Action action) { actions.push_back(std::move(action)); }
  // Answers the next box, which must hold a text, and have an icon and buttons with a mark at the default one.
  void Answer(const QString& text, const QString& answer, const QString& buttons = "OK*",
              QMessageBox::Icon icon = QMessageBox::Information) {
    Then([=](QWidget& window) {
      const auto& box = static_cast<QMessageBox&>(window);
      EXPECT_TRUE(box.text().contains(text) && box.textFormat() == Qt::PlainText) << box.text().toStdString();
      QStringList names;
      for (auto* button : box.buttons())
        names << button->text().remove('&') + (button->property("default").toBool() ? "*" : "");
      names.sort();
      EXPECT_TRUE(names.join(' ') == buttons && box.icon() == icon) << names.join(' ').toStdString();
      Click(window, answer);
    });
  }
  void Choose(const QString& caption) {
    for (auto* action : main->findChildren<QAction*>())
      if (action->text().remove('&').section('\t', 0, 0) == caption) return action->trigger();
    throw std::runtime_error("there is no " + caption.toStdString());
  }
  // The entry that bears the check mark in the next popup, which is closed again.
  void LookAtPopup(const std::string& marked) {
    Then([=](QWidget& popup) {
      std::string marks;
      for (const auto* action : popup.actions())
        if (action->isChecked()) marks += action->text().section('\t', 0, 0).toStdString();
      EXPECT_EQ(marks, marked);
      const auto place = static_cast<QMenu&>(popup).actionGeometry(popup.actions().front()).center();
      QTest::mouseClick(&popup, Qt::RightButton, {}, place);
      EXPECT_TRUE(popup.isVisible()) << "the right button chooses nothing";
      popup.close();
    });
  }
  // The last row of a program, -1 for none, as the list shows it.
  int RowOf(const std::string& program) {
    const auto shown = '\t' + QString::fromStdString(platform::LowerCase(program));
    const auto* rows = List().model();
    int row = rows->rowCount() - 1;
    while (row >= 0 && !rows->index(row, 0).data().toString().endsWith(shown)) --row;
    return row;
  }
  std::string Row(int row) { return List().model()->index(row, 0).data().toString().section('\t', 0, 0).toStdString(); }
  QPoint PlaceOf(int row) {
    const auto index = List().model()->index(row, 0);
    List().scrollTo(index);
    return List().visualRect(index).center();
  }
  void Pick(int row) { QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, PlaceOf(row)); }
  QListView& List() { return *main->findChild<QListView*>(); }

  TestFolder folder;
  Application app;
  QWidget* main = nullptr;
  QTimer user;
  std::deque<Action> actions;
  const std::string killList = platform::AppFolder() + "/killlist.txt";
  const std::string spareList = platform::AppFolder() + "/nokilllist.txt";
};

TEST_F(LinuxDesktop, AClassIsChangedFromTheMenuAndTheListShowsIt) {
  if (::getpriority(PRIO_PROCESS, 0) >= 15) GTEST_SKIP() << "whatever this user starts here is idle already";
  const auto program = folder.Sleeper("zzdesktop");
  const Child child(program);
  Click(*main, "Refresh");
  ASSERT_GE(RowOf(program), 0);
  Key(List(), Qt::Key_End);
  EXPECT_EQ(List().currentIndex().row(), List().model()->rowCount() - 1);
  EXPECT_EQ(Row(RowOf(program)) == "[Normal]", child.Nice() == 0);
  Pick(RowOf(program));
  Key(List(), Qt::Key_Space, Qt::ControlModifier);
  EXPECT_TRUE(List().selectionModel()->isSelected(List().currentIndex())) << "a picked row stays in sight";
  Answer("set to IDLE", "OK");
  Choose("Idle");
  EXPECT_EQ(child.Nice(), 19);
  EXPECT_EQ(Row(RowOf(program)), "[Idle]");
  Key(*main, Qt::Key_E, Qt::AltModifier);  // a menu has the same letter
  EXPECT_EQ(RowOf(program), -1);
  Click(*main, "Idle");
  EXPECT_GE(RowOf(program), 0);
}

TEST_F(LinuxDesktop, AButtonIsPressedWhereTheMouseWentDownAndUp) {
  if (::getpriority(PRIO_PROCESS, 0) >= 15) GTEST_SKIP() << "whatever this user starts here is idle already";
  const auto program = folder.Sleeper("zzdesktop");
  const Child child(program);
  auto& button = Find(*main, "Velmaro!");
  Choose("Idle");
  Pick(RowOf(program));
  QTest::mousePress(&button, Qt::LeftButton);
  QTest::mouseRelease(&button, Qt::LeftButton, {}, QPoint(-9, -9));
  QTest::mouseRelease(&button, Qt::LeftButton);
  LookAtPopup("Idle");
  QTest::mouseClick(&button, Qt::RightButton);
  EXPECT_EQ(child.Nice(), ::getpriority(PRIO_PROCESS, 0));
  Answer("set to IDLE", "OK");
  QTest::mouseClick(&button, Qt::LeftButton);
  EXPECT_EQ(child.Nice(), 19);
  for (const auto key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
    const Child another(program);
    Click(*main, "Refresh");
    Pick(RowOf(program));
    Answer("set to IDLE", "OK");
    Key(key == Qt::Key_Space ? static_cast<QWidget&>(button) : List(), key);
    EXPECT_EQ(another.Nice(), 19) << "the button hears keys too";
  }
  QTest::keyPress(main->focusWidget(), Qt::Key_F5);
  const Child late(folder.Sleeper("zzlate"));
  QKeyEvent held(QEvent::KeyRelease, Qt::Key_F5, {}, {}, true);
  QApplication::sendEvent(main->focusWidget(), &held);
  EXPECT_EQ(RowOf(folder / "zzlate"), -1) << "a key that is held down does not come up";
  QTest::keyRelease(main->focusWidget(), Qt::Key_F5);
  EXPECT_GE(RowOf(folder / "zzlate"), 0) << "the list is read anew when the key comes up";
  Pick(RowOf(folder / "zzlate"));
  LookAtPopup("Normal");
  QTest::mouseClick(List().viewport(), Qt::RightButton, {}, PlaceOf(RowOf(program)));
  EXPECT_EQ(List().currentIndex().row(), RowOf(folder / "zzlate")) << "the other buttons pick no row";
  Then([&](QWidget& popup) {
    EXPECT_TRUE(QRect(List().mapToGlobal(QPoint()), List().size()).contains(popup.pos()));
    EXPECT_LT(std::abs(popup.y() - 10 - List().viewport()->mapToGlobal(PlaceOf(RowOf(folder / "zzlate"))).y()), 10);
    popup.close();
  });
  List().scrollToTop();
  Key(List(), Qt::Key_F10, Qt::ShiftModifier);
  if (::geteuid() != 0) GTEST_SKIP() << "only an administrator may give a program Real Time";
  Answer("set to REAL TIME", "OK");
  QTest::mouseDClick(List().viewport(), Qt::LeftButton, {}, PlaceOf(RowOf(program)));
  EXPECT_EQ(Row(RowOf(program)), "[REAL]");
}

TEST_F(LinuxDesktop, MenusAndSizesFollowWhatTheProgramDoes) {
  auto& form = app.Default<formVelmaro>();
  Choose("High");
  Click(*main, "Hidden");
  EXPECT_TRUE(form.mnuOptions[1].Checked() && form.mnuWOptionsMain.Visible() && form.Option1[6].Value());
  List().setFocus();
  Key(*main, Qt::Key_Tab);
  EXPECT_EQ(main->focusWidget(), &Find(*main, "Velmaro!"));
  Key(*main, Qt::Key_F10);
  ASSERT_TRUE(QApplication::activePopupWidget());
  QApplication::activePopupWidget()->close();
  main->resize(700, 650);
  ExpectShown(form);
  main->resize(100, 100);
  EXPECT_TRUE(QTest::qWaitFor([&] { return main->size() == main->minimumSize(); }));
  EXPECT_TRUE(main->minimumWidth() >= 425 && main->minimumHeight() >= 172);
  main->showMinimized();
  EXPECT_EQ(form.WindowState(), WindowState::Minimized);
  for (const bool on : {false, true}) {
    auto& peer = static_cast<onlinux::FormWindow&>(*form.Peer());
    peer.ShowOrHide(on), peer.KeepAbove(on);
    EXPECT_TRUE(main->isVisible() == on && main->windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint) == on);
  }
}

TEST_F(LinuxDesktop, ARefusedClassIsSetWithARightThatWasGiven) {
  if (!std::getenv("VELMARO_POLKIT")) GTEST_SKIP() << "polkit.sh runs this as a user who has the right by a rule";
  const auto program = folder.Sleeper("zzdesktop");
  const Child child(program);
  Click(*main, "Refresh");
  Pick(RowOf(program));
  Answer("set to HIGH", "OK");
  Choose("High");
  EXPECT_EQ(child.Nice(), -10);
  EXPECT_EQ(Row(RowOf(program)), "[HIGH]");
}

TEST_F(LinuxDesktop, AProcessIsEndedOnlyWhenTheUserSaysYes) {
  const auto program = folder.Sleeper("zzdesktop");
  const Child older(program);
  const Child child(program);
  const auto end = [&] {
    Key(*main, Qt::Key_F5);
    Pick(RowOf(program));
    Key(*main, Qt::Key_Delete);
  };
  Then([&](QWidget& box) {
    EXPECT_EQ(box.parentWidget(), main);
    Key(box, Qt::Key_Return);
  });
  end();
  EXPECT_TRUE(child.Runs());
  WriteBytes(spareList, "zzDESKTOP\r\n");
  end();
  EXPECT_TRUE(child.Runs()) << "a spared process is not even asked about";
  fs::remove(spareList);
  Answer("zzdesktop'?", "Yes", "No* Yes", QMessageBox::Question);
  end();
  EXPECT_TRUE(older.Runs() && !child.Runs()) << "the row that was picked, not the first of that name";
  Answer("zzdesktop'?", "Yes", "No* Yes", QMessageBox::Question);
  end();
  EXPECT_EQ(RowOf(program), -1);
}

TEST_F(LinuxDesktop, ARefreshInTheBackgroundKeepsTheRowAndThePlaceOfTheList) {
  std::deque<Child> children;
  for (int i = 0; i < 30; ++i) children.emplace_back(folder.Sleeper("zz" + std::to_string(i)));
  const auto picked = folder / "zz29";
  Click(*main, "Refresh");
  auto& bar = *List().verticalScrollBar();
  Pick(RowOf(picked));
  bar.setValue(RowOf(folder / "zz5"));
  const auto row = RowOf(picked);
  children.pop_front();
  QWidget other;
  other.show();
  other.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
  EXPECT_TRUE(QTest::qWaitFor([&] { return RowOf(picked) < row; }, 20000)) << "every 4 seconds";
  EXPECT_EQ(List().currentIndex().row(), RowOf(picked));
  EXPECT_TRUE(List().selectionModel()->isSelected(List().currentIndex()));
  EXPECT_EQ(bar.value(), RowOf(folder / "zz5"));
  Paints paints;
  List().viewport()->installEventFilter(&paints);
  const auto refresh = [&] {
    paints.times = 0;
    app.Default<formVelmaro>().Timer1_Timer();
    QTest::qWait(50);
    return paints.times;
  };
  EXPECT_TRUE(Eventually([&] { return refresh() == 0; })) << "a list that has not changed is not painted anew";
  children.pop_back();
  EXPECT_GT(refresh(), 0);
  EXPECT_FALSE(List().currentIndex().isValid()) << "no other row takes the place of one that is gone";
  EXPECT_EQ(bar.value(), RowOf(folder / "zz5"));
}

TEST_F(LinuxDesktop, TheEditorKeepsEveryByteThatTheUserDoesNotTouch) {
  using namespace std::string_literals;
  for (const std::string end : {"\r\n", "\n"}) {
    const auto bytes = "one" + end + "two\r\nthree\rnb\xc2\xa0sp \xff\xfe 日本 😀\0 two\n\r\n"s;
    WriteBytes(killList, bytes);
    Then([](QWidget& editor) {
      auto* page = editor.findChild<QPlainTextEdit*>();
      page->moveCursor(QTextCursor::Down);
      Key(editor, Qt::Key_F, Qt::ControlModifier);
      EXPECT_TRUE(page->textCursor().selectedText() == "two" && page->textCursor().blockNumber() == 3);
      EXPECT_EQ(page->lineWrapMode(), QPlainTextEdit::NoWrap);
      QTest::keyClick(page, Qt::Key_End, Qt::ControlModifier);
      QTest::keyClicks(page, "x");
      page->moveCursor(QTextCursor::Start);
      QTest::keyClick(page, Qt::Key_End);
      QTest::keyClick(page, Qt::Key_Return);
      page->insertPlainText("é");
      Click(editor, "OK");
    });
    Then([](QWidget& find) {
      QTest::keyClicks(find.focusWidget(), "two");
      Key(find, Qt::Key_Return);
    });
    Choose("Edit Kill List Here...");
    EXPECT_EQ(ReadBytes(killList), "one" + end + "é" + bytes.substr(3) + "x");
  }
  const auto before = ReadBytes(killList);
  Then([](QWidget& editor) {
    QTest::keyClicks(editor.findChild<QPlainTextEdit*>(), "y");
    Key(editor, Qt::Key_Escape);
  });
  Answer("save the changes", "Cancel", "Cancel No Yes*", QMessageBox::Question);
  Then([](QWidget& editor) {
    for (const bool isAbove : {false, true}) {
      editor.move(isAbove ? 600 : 100, isAbove ? 790 - editor.height() : 0);
      ExpectBalloon(Find(editor, "?"), isAbove, "title Settings;icon;Enter a list of executable files that you want");
    }
    ExpectShown(*App().Forms().back());
    editor.close();
  });
  Answer("save the changes", "No", "Cancel No Yes*", QMessageBox::Question);
  Choose("Edit Kill List Here...");
  EXPECT_EQ(ReadBytes(killList), before);
}

TEST_F(LinuxDesktop, AListIsOpenedByTheDesktopWhereThatHasAProgramForIt) {
  const std::string path = std::getenv("PATH");
  WriteBytes(killList, "zzone\n");
  WriteProgram(folder / "xdg-open", "#!/bin/sh\necho \"$1\" >'" + (folder / "opened") + "'\n");
  WriteProgram(folder / "xdg-mime", "#!/bin/sh\n");
  ::setenv("PATH", (folder.Path() + ':' + path).c_str(), 1);
  Then([](QWidget& editor) {
    EXPECT_EQ(editor.findChild<QPlainTextEdit*>()->toPlainText(), "zzone\n");
    Key(editor, Qt::Key_Escape);
  });
  Choose("Edit Kill List...");
  EXPECT_FALSE(fs::exists(folder / "opened"));
  WriteBytes(folder / "xdg-mime", "#!/bin/sh\n[ \"$*\" = 'query default text/plain' ] && echo editor.desktop\n");
  Choose("Edit Kill List...");
  EXPECT_TRUE(QTest::qWaitFor([&] { return ReadBytes(folder / "opened") == killList + '\n'; }));
  ::setenv("PATH", path.c_str(), 1);
}

TEST_F(LinuxDesktop, TheLauncherStartsWhatIsTypedAtItsPriority) {
  const auto program = folder.Sleeper("zz launched");
  ::setenv("HOME", folder.Path().c_str(), 1);
  main->move(0, 0);
  Then([&](QWidget& launcher) {
    EXPECT_LT((launcher.geometry().center() - main->geometry().center()).manhattanLength(), 20);
    QTest::keyClicks(launcher.focusWidget(), QString::fromStdString('"' + program + "\" 300"));
    Click<QRadioButton>(launcher, "Idle");
    Key(launcher, Qt::Key_Return);
  });
  Key(*main, Qt::Key_R, Qt::ControlModifier);
  main->move(QPoint(790, 790) - main->rect().center());
  Then([&](QWidget& launcher) {
    EXPECT_EQ(QRect(launcher.pos(), launcher.size()).bottomRight(), QPoint(799, 799)) << "all of it is on the screen";
    EXPECT_TRUE(launcher.isModal() && launcher.windowHandle()->transientParent() == main->windowHandle());
    auto* box = launcher.findChild<QComboBox*>();
    EXPECT_TRUE(Find<QRadioButton>(launcher, "Idle").isChecked());
    QTest::keyClicks(launcher.focusWidget(), "\"");  // what is there is marked, and nothing is put behind what is typed
    EXPECT_EQ(box->currentText(), "\"");
    QTest::keyClick(box, Qt::Key_Down);
    EXPECT_EQ(box->currentText().toStdString(), '"' + program + "\" 300");
    Click(launcher, "Browse...");
    EXPECT_EQ(box->currentText().toStdString(), program);
    Key(launcher, Qt::Key_Escape);
  });
  Then([&](QWidget& dialog) {
    EXPECT_EQ(static_cast<QFileDialog&>(dialog).nameFilters(), QStringList({"Applications (*)", "All files (*)"}));
    EXPECT_EQ(dialog.windowTitle() + dialog.parentWidget()->windowTitle(), "BrowseVelmaro Launcher");
    dialog.findChild<QLineEdit*>()->setText(QString::fromStdString(program));
    Key(dialog, Qt::Key_Return);
  });
  Key(*main, Qt::Key_R, Qt::ControlModifier);
  Click(*main, "Refresh");
  ASSERT_GE(RowOf(program), 0);
  EXPECT_EQ(Row(RowOf(program)), "[Idle]");
  EXPECT_EQ(fs::read_symlink("/proc/" + std::to_string(Running(program)) + "/cwd"), folder.Path());
  EXPECT_EQ(::getsid(Running(program)), Running(program)) << "it outlives the terminal";
  Pick(RowOf(program));
  Answer("terminate", "Yes", "No* Yes", QMessageBox::Question);
  Key(*main, Qt::Key_Delete);
  Answer("launched process has been set to IDLE.", "OK");
  StartAtMode({.command = '"' + program + "\" 300"}, 3, false);
  EXPECT_TRUE(EndRunning(program));
  EXPECT_NE(ReadBytes(folder / "velmaro/settings.conf").find("LastRun=\"" + program + "\" 300\n"), std::string::npos);
}

// A figure of this process, such as "VmRSS:", in kB.
int OwnMemory(const std::string& name) {
  const auto status = ReadBytes("/proc/self/status");
  return std::stoi(status.substr(status.find(name) + name.size()));
}

TEST_F(LinuxDesktop, AMemoryRunHoldsItsTargetAndGivesAllOfItBack) {
  Click(*main, "Free Mem");
  auto& meter = *ClientOf(app.Default<formFreeMem>()).window();
  meter.findChild<QScrollBar*>()->setValue(24);
  WriteBytes("/proc/self/clear_refs", "5");  // the peak counts from here
  const int before = OwnMemory("VmRSS:");
  Click(meter, "Free 24 MB");
  EXPECT_GE(OwnMemory("VmHWM:"), before + 24 * 2048);
  EXPECT_LE(OwnMemory("VmRSS:"), before + 4096);
  EXPECT_TRUE(meter.windowTitle().endsWith("KB Free Memory"));
}

TEST_F(LinuxDesktop, EveryCaptionCanBeReadInALightAndInADarkThemeAndWithLargeFonts) {
  const auto before = QApplication::font();
  for (const auto& window : {QColor(239, 239, 239), QColor(49, 54, 59), QColor(Qt::black)}) {
    QPalette theme(window);
    theme.setColor(QPalette::HighlightedText, QColor(0, 0, 60));
    QApplication::setPalette(theme);
    auto font = QApplication::font();
    font.setPointSizeF(font.pointSizeF() * 2);
    QApplication::setFont(font);
    auto& another = app.New<formVelmaro>();
    another.Show();
    ExpectShown(another);
    UnloadForm(another);
    const auto look = [](QWidget& box) {
      ExpectShown(*App().Forms().back());
      Key(box, Qt::Key_Escape);
    };
    Then(look);
    Key(*main, Qt::Key_F1);
    Then(look);
    Key(*main, Qt::Key_R, Qt::ControlModifier);
    Click(*main, "Free Mem");
    ExpectShown(app.Default<formFreeMem>());
    UnloadForm(app.Default<formFreeMem>());
  }
  QApplication::setPalette({});
  QApplication::setFont(before);
}

TEST_F(LinuxDesktop, EachKeyAndEachButtonOfTheMouseIsToldAsWhatItIs) {
  auto& form = app.Default<formVelmaro>();
  std::ostringstream told;
  form.KeyDown = [&](int key, int shift) { told << key << '+' << shift << ' '; };
  form.KeyUp = [&](int key, int shift) { told << key << '-' << shift << ' '; };
  form.lblCredits.MouseUp = [&](auto... figures) { ((told << figures << ','), ...), told << ' '; };
  for (auto* control : form.Controls()) control->Click = [&, control] { told << control->Caption() << ' '; };
  form.btnRefresh.SetVisible(false);
  const auto press = [&](QKeyCombination keys) {
    Key(*main, keys.key(), keys.keyboardModifiers());
    return std::exchange(told, std::ostringstream()).str();
  };
  EXPECT_EQ(press(Qt::Key_Enter) + press(Qt::Key_Semicolon), "13+0 Velmaro! 13-0 ");
  EXPECT_EQ(press(Qt::SHIFT | Qt::Key_Return), "16+1 13+1 13-1 16-0 ");
  EXPECT_EQ(press(Qt::CTRL | Qt::Key_Return), "17+2 13+2 13-2 17-0 ");
  EXPECT_EQ(press(Qt::ALT | Qt::Key_R) + press(Qt::ALT | Qt::Key_L), "18+4 82+4 82-4 18-0 18+4 76+4 &Launch... ");
  EXPECT_EQ(press(Qt::Key_Return) + press(Qt::Key_Space), "13+0 &Launch... 13-0 32+0 32-0 &Launch... ");
  Then([&](QWidget& popup) {
    EXPECT_EQ(popup.pos(), ClientOf(form).mapToGlobal(QPoint(50, 25)));
    EXPECT_EQ(static_cast<QMenu&>(popup).defaultAction(), popup.actions().back());
    EXPECT_EQ(press(Qt::Key_F2), "") << "the popup has the keyboard";
    popup.close();
  });
  form.PopupMenu(form.mnuOptionsMain, Bounds{600, 300}, &form.mnuOptions[4]);
  auto& label = WidgetOf(form.lblCredits);
  QTest::mouseClick(&label, Qt::LeftButton, Qt::ShiftModifier, {10, 5});
  QTest::mouseClick(&label, Qt::RightButton, Qt::ControlModifier, {20, 5});
  QTest::mouseClick(&label, Qt::MiddleButton, Qt::AltModifier, {10, 8});
  EXPECT_EQ(told.str(), form.lblCredits.Caption() + " 1,1,120,60, 2,2,240,60, 4,4,120,96, ");
}

TEST_F(LinuxDesktop, RowsArePaintedInColumnsAndTheSelectedOneInItsColours) {
  auto& form = app.Default<formVelmaro>();
  const std::string many(99, 'n');
  form.List1.Clear();
  for (const auto* tag : {"[Normal]\t", "[Idle]\t", ""}) form.List1.AddItem(tag + many);
  for (const std::string ends : {"aaa", "aba", "bba", "abb"})
    form.List1.AddItem(ends[0] + many + ends[1] + many + ends[2]);
  const auto row = [&](int at, int from = 0) {
    const auto place = List().visualRect(List().model()->index(at, 0));
    return List().viewport()->grab(place.adjusted(from, 0, 0, 0)).toImage();
  };
  const int tag = 3 + List().fontMetrics().horizontalAdvance("[Normal]");
  EXPECT_TRUE(row(0, tag) == row(1, tag) && row(0) != row(1) && row(2, tag) != row(1, tag)) << "names have a column";
  EXPECT_TRUE(row(3) == row(4) && row(4) != row(5) && row(4) != row(6)) << "of a long path both ends are told";
  EXPECT_EQ(row(0).height(), List().fontMetrics().height() + 1);
  auto theme = List().palette();
  for (const auto role : {QPalette::Highlight, QPalette::HighlightedText}) theme.setColor(role, Qt::darkGreen);
  List().setPalette(theme);
  List().clearFocus();
  form.List1.SetListIndex(1);
  auto ground = row(1);
  ground.fill(Qt::darkGreen);
  EXPECT_TRUE(row(1) == ground) << "the selected row has the theme's colours";
  while (form.List1.ListCount() < 99) form.List1.AddItem("");
  form.List1.SetListIndex(90);
  EXPECT_TRUE(List().viewport()->rect().contains(List().visualRect(List().currentIndex()))) << "it is brought in sight";
}

TEST_F(LinuxDesktop, ModalWindowsComeAndGoAndTheCloseBoxEndsTheProgram) {
  Answer("<b>\nb", "OK", "OK*", QMessageBox::Warning);
  EXPECT_EQ(MsgBox("<b>\r\nb", platform::MB_ICONWARNING), platform::IDOK);
  Then([&](QWidget& about) {
    Key(*main, Qt::Key_F1);  // a window that stands under a modal one hears nothing
    Choose("Exit");
    main->close();
    Key(about, Qt::Key_Escape);
  });
  main->move(-main->rect().center());
  Click<QLabel>(*main, "The Velmaro team");
  EXPECT_TRUE(app.Default<formVelmaro>().Loaded());
  Then([](QWidget& find) {
    EXPECT_EQ(find.pos(), QPoint()) << "all of it is on the screen";
    QTest::keyClicks(find.focusWidget(), "no such row");
    Key(find, Qt::Key_Return);
  });
  Answer("was not found", "OK");
  Key(*main, Qt::Key_F, Qt::ControlModifier);
  Then([](QWidget& find) {
    EXPECT_EQ(find.findChild<QLineEdit*>()->selectedText(), "no such row");
    ExpectShown(*App().Forms().back());
    Key(find, Qt::Key_Escape);
  });
  Key(*main, Qt::Key_F, Qt::ControlModifier);
  Click(*main, "Free Mem");
  EXPECT_EQ(app.Forms().size(), 2U);
  std::string places;
  for (auto& slider = app.Default<formFreeMem>().HScroll1;
       const auto key : {Qt::Key_Home, Qt::Key_PageDown, Qt::Key_Right, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_Left}) {
    Key(WidgetOf(slider), key);
    places += std::to_string(slider.Value()) + ' ';
  }
  EXPECT_EQ(places, "0 10 11 12 2 1 ");
  auto& meter = app.Default<formFreeMem>();
  for (const auto* panel : {&meter.Picture1, &meter.Picture2}) {
    meter.lblStatus.SetCaption("before");
    QTest::mouseClick(&WidgetOf(*panel), Qt::LeftButton, {}, {3, 1});
    EXPECT_NE(meter.lblStatus.Caption(), "before") << "a click on the bar refreshes it";
  }
  bool passed = false;
  QTimer::singleShot(200, [&] { passed = true; });
  int events = 0;
  for (; !passed; ++events) ProcessNextEvent();
  EXPECT_LT(events, 100) << "the program sleeps until something happens";
  QTimer::singleShot(0, [&] {
    for (auto* window : QApplication::topLevelWidgets()) window->close();
  });
  app.Run();
  EXPECT_TRUE(app.Forms().empty());
}

}  // namespace
}  // namespace velmaro

int main(int count, char** arguments) {
  ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
  ::setenv("QT_FONT_DPI", std::to_string(velmaro::dotsPerInch).c_str(), 1);
  ::setenv("QT_ENABLE_HIGHDPI_SCALING", "0", 1);
  ::setpriority(PRIO_PROCESS, 0, 0);
  testing::InitGoogleTest(&count, arguments);
  return RUN_ALL_TESTS();
}
