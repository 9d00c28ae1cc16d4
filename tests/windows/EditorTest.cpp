#include <gtest/gtest.h>

#include "Drive.h"

namespace drive {
namespace {

void CALLBACK KeepAnswer(HWND, UINT, ULONG_PTR kept, LRESULT answer) { *reinterpret_cast<LRESULT*>(kept) = answer; }

class EditorTest : public testing::Test {
 protected:
  EditorTest() : velmaro(folder) {}
  HWND Open(const std::wstring& entry = L"Edit Kill List Here...") {
    velmaro.Choose(entry);
    return editor = velmaro.Window(L"Settings");
  }
  void Append(const std::wstring& text) const {
    const auto field = Child(editor, L"EDIT");
    ::SendMessageW(field, EM_SETSEL, 1000000, 1000000);
    ::SendMessageW(field, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text.c_str()));
  }
  void Leave(const std::wstring& button) const {
    Press(Child(editor, L"BUTTON", button));
    EXPECT_TRUE(Until([&] { return !::IsWindow(editor); }));
  }

  Folder folder;
  Velmaro velmaro;
  HWND editor = nullptr;
};

TEST_F(EditorTest, FileComesBackByteForByte) {
  const std::vector<std::string> texts{"a.exe\r\nb.exe\r\n", "a.exe\rb.exe\r", "a.exe\nb.exe\n\n",
                                       "\xc5\xbb\xc3\xb3\xc5\x82w.exe\r\n\xff\xfe\xc3(", std::string("a\0b\0\r\n", 6),
                                       "\r\r\n\n\r", "end without a line end",
                                       // More than an edit control takes by itself.
                                       std::string(40000, 'x')};
  for (const auto& text : texts) {
    folder.Write(L"killlist.txt", text);
    Open();
    EXPECT_FALSE(::IsWindowEnabled(velmaro.Main()));
    Leave(L"&OK");
    EXPECT_EQ(folder.Read(L"killlist.txt"), text);
    // One more line, and the rest stays as it is.
    Open();
    Append(L"\u017c.exe");
    Leave(L"&OK");
    EXPECT_EQ(folder.Read(L"killlist.txt"), text + "\xc5\xbc.exe");
  }
  Open(L"Edit No Kill List Here...");
  Append(L"new.exe");
  Leave(L"&OK");
  EXPECT_EQ(folder.Read(L"nokilllist.txt"), "new.exe");
}

TEST_F(EditorTest, CloseAsksAboutChangesAndHeedsTheAnswer) {
  folder.Write(L"killlist.txt", "a.exe");
  Open();
  Append(L";");
  Press(Child(editor, L"BUTTON", L"&Cancel"));
  const auto box = velmaro.Await();
  EXPECT_EQ(box.text, L"Do you want to save the changes?");
  EXPECT_TRUE(::GetDlgItem(box.window, IDYES) && ::GetDlgItem(box.window, IDNO));
  box.Answer(IDCANCEL);
  EXPECT_EQ(Text(Child(editor, L"EDIT")), L"a.exe;");
  ::PostMessageW(editor, WM_CLOSE, 0, 0);
  velmaro.Await().Answer(IDYES);
  EXPECT_TRUE(Gone(editor));
  EXPECT_EQ(folder.Read(L"killlist.txt"), "a.exe;");
}

TEST_F(EditorTest, EndOfTheSessionAsksToo) {
  Open();
  Append(L"a.exe");
  for (const int button : {IDCANCEL, IDYES}) {
    LRESULT mayEnd = -1;
    ::SendMessageCallbackW(editor, WM_QUERYENDSESSION, 0, 0, &KeepAnswer, reinterpret_cast<ULONG_PTR>(&mayEnd));
    velmaro.Await().Answer(button);
    EXPECT_TRUE(Until([&] {
      MSG message;
      ::PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);
      return mayEnd == (button == IDYES);
    })) << mayEnd;
    EXPECT_TRUE(::IsWindowVisible(editor));
  }
  EXPECT_EQ(folder.Read(L"killlist.txt"), "a.exe");
}

TEST_F(EditorTest, BalloonExplainsTheList) {
  Open();
  HWND balloon = nullptr;
  EXPECT_TRUE(Until([&] {
    for (const auto window : velmaro.Windows(false))
      if (ClassOf(window) == TOOLTIPS_CLASSW && ::GetWindowLongW(window, GWL_STYLE) & TTS_BALLOON) balloon = window;
    return balloon != nullptr;
  }));
  Front(editor);
  POINT beside{-40, 5};
  Click(Child(editor, L"BUTTON", L"?"), 0, 0, &beside);
  Click(Child(editor, L"BUTTON", L"?"), 0, 0);
  EXPECT_TRUE(Until([&] { return ::IsWindowVisible(balloon) != FALSE; })) << "the system shows none without a text";
  Leave(L"&Cancel");
  EXPECT_FALSE(::IsWindow(balloon));
}

}  // namespace
}  // namespace drive
