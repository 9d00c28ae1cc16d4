#include <QGroupBox>
#include <QProxyStyle>

#include "Desktop.h"

// Puts the caption of a frame inside of it.
struct CaptionInside : QProxyStyle {
  QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                       const QWidget* widget) const override {
    if (control != CC_GroupBox) return QProxyStyle::subControlRect(control, option, part, widget);
    return part == SC_GroupBoxLabel ? QRect(9, 45, 90, 20) : option->rect;
  }
};

TEST_F(LinuxDesktop, TheCaptionOfAFrameStandsOnNothingInAnyStyle) {
  CaptionInside style;
  Then([&](QWidget& launcher) {
    auto& frame = *launcher.findChild<QGroupBox*>();
    for (auto* button : frame.findChildren<QWidget*>()) button->hide();
    QGroupBox usual(frame.title(), frame.parentWidget());
    usual.resize(frame.size()), usual.setFont(frame.font()), usual.setPalette(frame.palette());
    EXPECT_TRUE(usual.grab().toImage() == frame.grab().toImage()) << "the style has it at the top";
    frame.setStyle(&style);
    const auto inside = frame.grab({9, 45, 90, 20}).toImage();
    auto plain = inside;
    plain.fill(inside.pixel(0, 0));
    EXPECT_TRUE(inside == plain);
    frame.setStyle(nullptr);
    Press(launcher, Qt::Key_Escape);
  });
  Click(*main, "Launch...");
}

TEST_F(LinuxDesktop, MenusAndSizesFollowWhatTheProgramDoes) {
  auto& form = app.Default<formVelmaro>();
  Choose("High");
  Click(*main, "Hidden");
  EXPECT_TRUE(form.mnuOptions[1].Checked() && form.mnuWOptionsMain.Visible() && form.Option1[6].Value());
  List().setFocus();
  Press(*main, Qt::Key_Tab);
  EXPECT_EQ(main->focusWidget(), &Find(*main, "Velmaro!"));
  Press(*main, Qt::Key_F10);
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
