#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QListView>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QTest>

#include "Children.h"
#include "editor/formEdit.h"
#include "mainform/formVelmaro.h"
#include "platform/linux/qt/ControlPeer.h"
#include "runtime/Application.h"

namespace velmaro {
namespace {

template <class Widget>
Widget& WidgetOf(const Control& of) {
  return static_cast<Widget&>(static_cast<onlinux::ControlPeer*>(of.Peer())->Widget());
}

TEST(LinuxPaste, NothingThatAClipboardHoldsEndsTheProgram) {
  if (!UseDisplay()) GTEST_SKIP() << "there is no Xvfb";
  Application app;
  app.Default<formEdit>().Show();
  auto& page = WidgetOf<QPlainTextEdit>(app.Default<formEdit>().txtData);
  auto& clipboard = *QApplication::clipboard();
  const auto pasted = [&] {
    page.clear();
    QTest::mouseClick(page.viewport(), Qt::MiddleButton);
    return page.toPlainText().toStdString();
  };
  const auto held = [&](const QString& kind, const QByteArray& bytes, const QString& text) {
    auto* data = new QMimeData;
    data->setData(kind, bytes);
    if (!text.isEmpty()) data->setText(text);
    clipboard.setMimeData(data, QClipboard::Selection);
    return pasted();
  };
  EXPECT_EQ(pasted(), "") << "nobody owns it";
  EXPECT_EQ(held("text/markdown", "*a*", "*a*"), "*a*");
  EXPECT_EQ(held("image/png", "no picture", ""), "");
  EXPECT_EQ(held("text/plain", QByteArray(100'000'000, 'x'), ""), "");
  app.Default<formVelmaro>().Show();
  clipboard.setText("before");
  QTest::keyClick(&WidgetOf<QListView>(app.Default<formVelmaro>().List1), Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(clipboard.text().toStdString(), "before") << "no row is picked";
}

}  // namespace
}  // namespace velmaro

int main(int count, char** arguments) {
  ::setenv("QT_QPA_PLATFORM", "xcb", 1);
  testing::InitGoogleTest(&count, arguments);
  return RUN_ALL_TESTS();
}
