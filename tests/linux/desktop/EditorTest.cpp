#include <QClipboard>
#include <QMimeData>
#include <QPlainTextEdit>

#include "Desktop.h"

TEST_F(LinuxDesktop, TheEditorKeepsEveryByteThatTheUserDoesNotTouch) {
  using namespace std::string_literals;
  for (const std::string end : {"\r\n", "\n"}) {
    const auto rest = [&](const std::string& smiley) {
      return end + "two\r\nthree\rnb\xc2\xa0sp \xff\xfe 日本 " + smiley + "\0 two\n\r\n"s;
    };
    WriteBytes(killList, "one" + rest("😀"));
    Then([](QWidget& editor) {
      auto* page = editor.findChild<QPlainTextEdit*>();
      page->moveCursor(QTextCursor::Down);
      Press(editor, Qt::Key_F, Qt::ControlModifier);
      EXPECT_TRUE(page->textCursor().selectedText() == "two" && page->textCursor().blockNumber() == 3);
      EXPECT_EQ(page->lineWrapMode(), QPlainTextEdit::NoWrap);
      QTest::keyClick(page, Qt::Key_End, Qt::ControlModifier);
      QTest::keyClicks(page, "x");
      page->moveCursor(QTextCursor::Start);
      QTest::keyClick(page, Qt::Key_End);
      QTest::keyClick(page, Qt::Key_Return);
      page->insertPlainText("é");
      page->document()->find("😀").insertText("🨀");  // both end in the same half
      Click(editor, "OK");
    });
    Then([](QWidget& find) {
      QTest::keyClicks(find.focusWidget(), "two");
      Press(find, Qt::Key_Return);
    });
    Choose("Edit Kill List Here...");
    EXPECT_EQ(ReadBytes(killList), "one" + end + "é" + rest("🨀") + "x");
  }
  const auto before = ReadBytes(killList);
  Then([](QWidget& editor) {
    QTest::keyClicks(editor.findChild<QPlainTextEdit*>(), "y");
    Press(editor, Qt::Key_Escape);
  });
  AnswerSave("Cancel");
  Then([](QWidget& editor) {
    for (const bool isAbove : {false, true}) {
      editor.move(isAbove ? 600 : 100, isAbove ? 790 - editor.height() : 0);
      ExpectBalloon(Find(editor, "?"), isAbove, "title Settings;icon;Enter a list of executable files that you want");
    }
    editor.close();
  });
  AnswerSave("No");
  Choose("Edit Kill List Here...");
  EXPECT_EQ(ReadBytes(killList), before);
}

TEST_F(LinuxDesktop, AListIsOpenedByTheDesktopWhereThatHasAProgramForIt) {
  WriteBytes(killList, "zzone\n");
  WriteProgram(folder / "xdg-open", "#!/bin/sh\necho \"$1\" >'" + (folder / "opened") + "'\n");
  WriteProgram(folder / "xdg-mime", "#!/bin/sh\n");
  ::setenv("PATH", (folder.Path() + ':' + std::getenv("PATH")).c_str(), 1);
  Then([](QWidget& editor) {
    EXPECT_EQ(editor.findChild<QPlainTextEdit*>()->toPlainText(), "zzone\n");
    Press(editor, Qt::Key_Escape);
  });
  Choose("Edit Kill List...");
  EXPECT_FALSE(fs::exists(folder / "opened"));
  WriteBytes(folder / "xdg-mime", "#!/bin/sh\n[ \"$*\" = 'query default text/plain' ] && echo editor.desktop\n");
  Choose("Edit Kill List...");
  EXPECT_TRUE(QTest::qWaitFor([&] { return ReadBytes(folder / "opened") == killList + '\n'; }));
}

TEST_F(LinuxDesktop, NothingThatAClipboardHoldsEndsTheProgram) {
  auto& clipboard = *QApplication::clipboard();
  Then([&](QWidget& editor) {
    auto& page = *editor.findChild<QPlainTextEdit*>();
    // What is held under the name of a kind, and as text; of no kind where nobody owns the clipboard.
    const auto pasted = [&](const QString& kind, const QByteArray& bytes, const QString& text) {
      auto* data = new QMimeData;
      if (!kind.isEmpty()) data->setData(kind, bytes);
      if (!text.isEmpty()) data->setText(text);
      clipboard.setMimeData(data);
      page.clear();
      Press(page, Qt::Key_V, Qt::ControlModifier);
      return page.toPlainText().toStdString();
    };
    EXPECT_EQ(pasted("", "", "") + pasted("image/png", "no picture", ""), "");
    EXPECT_EQ(pasted("text/markdown", "*a*", "*a*"), "*a*");
    EXPECT_EQ(pasted("text/plain", QByteArray(100'000'000, 'x'), ""), "");
    Press(editor, Qt::Key_Escape);
  });
  AnswerSave("No");
  Choose("Edit Kill List Here...");
  clipboard.setText("before");
  Press(List(), Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(clipboard.text().toStdString(), "before") << "no row is picked";
}
