#include <QPlainTextEdit>
#include <QScreen>
#include <QSessionManager>

#include "Desktop.h"

namespace velmaro {
namespace {

std::string told;

std::string EndSession() {
  told.clear();
  alignas(QSessionManager) std::array<std::byte, sizeof(QSessionManager)> nobody{};
  Q_EMIT qGuiApp->commitDataRequest(*reinterpret_cast<QSessionManager*>(nobody.data()));
  return told;
}

// Looks at a form that has just come up, centred on an area.
void ExpectDesigned(const QRect& around) {
  const auto& form = *App().Forms().back();
  EXPECT_LT((ClientOf(form).window()->geometry().center() - around.center()).manhattanLength(), 20) << form.Caption();
  for (const auto* control : form.Controls())
    if (const auto& widget = WidgetOf(*control); dynamic_cast<const Line*>(control)) {
      const auto shown = widget.parentWidget()->grab(widget.geometry().adjusted(9, -3, -9, 3)).toImage();
      int red = 0;
      for (int y = 0; y < shown.height(); ++y) red += shown.pixel(0, y) == qRgb(255, 0, 0);
      EXPECT_EQ(red, (2 * dotsPerInch + 48) / 96) << "the line is two pixels high at 96 dots an inch";
    }
  ExpectShown(form);
}

TEST_F(LinuxDesktop, EveryFormComesUpAsItWasDesignedInALightAndInADarkThemeAndWithLargeFonts) {
  const auto screen = main->screen()->geometry();
  const auto before = QApplication::font();
  ExpectDesigned(screen);
  main->move(150, 300);
  for (const auto& window : {QColor(239, 239, 239), QColor(49, 54, 59), QColor(Qt::black)}) {
    QPalette theme(window);
    theme.setColor(QPalette::HighlightedText, QColor(0, 0, 60));
    QApplication::setPalette(theme);
    for (const QString entry : {"Run...", "Edit Kill List Here...", "About", "Find..."}) {
      Then([&](QWidget& box) {
        ExpectDesigned(entry == "About" ? screen : main->geometry());
        Press(box, Qt::Key_Escape);
      });
      Choose(entry);
    }
    for (Form* form : {static_cast<Form*>(&app.Default<formFreeMem>()), static_cast<Form*>(&app.New<formVelmaro>())}) {
      form->Show();
      ExpectDesigned(screen);
      UnloadForm(*form);
    }
    auto font = QApplication::font();
    font.setPointSizeF(font.pointSizeF() * 2);
    QApplication::setFont(font);
  }
  QApplication::setPalette({});
  QApplication::setFont(before);
}

TEST_F(LinuxDesktop, ARefusedQuestionKeepsTheSession) {
  if (UnderSanitizer) GTEST_SKIP() << "what stands for the session's manager is none to it";
  EXPECT_EQ(EndSession(), "") << "nobody need ask";
  Then([](QWidget& editor) {
    QTest::keyClicks(editor.findChild<QPlainTextEdit*>(), "x");
    EXPECT_EQ(EndSession(), "cancel release ");
    EXPECT_EQ(EndSession(), "release ");
    editor.close();
  });
  for (const auto* answer : {"Cancel", "No", "No"}) AnswerSave(answer);
  Choose("Edit Kill List Here...");
}

}  // namespace
}  // namespace velmaro

// In place of the session's own manager, which a test can't have.
bool QSessionManager::allowsInteraction() { return true; }
void QSessionManager::cancel() { velmaro::told += "cancel "; }
void QSessionManager::release() { velmaro::told += "release "; }
void QSessionManager::setRestartHint(RestartHint) {}
