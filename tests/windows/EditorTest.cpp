#include "Velmaro.h"

namespace {

void CALLBACK KeepAnswer(HWND, UINT, ULONG_PTR kept, LRESULT answer) { *reinterpret_cast<LRESULT*>(kept) = answer; }

class EditorTest : public testing::Test {
 protected:
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
  // Puts a text behind a list, and gives what the file holds then.
  std::string Save(const std::wstring& text, const std::wstring& file = L"killlist.txt",
                   const std::wstring& entry = L"Edit Kill List Here...") {
    Open(entry);
    Append(text);
    Leave(L"&OK");
    return folder.Read(file);
  }

  Folder folder;
  Velmaro velmaro{folder};
  HWND editor = nullptr;
};

TEST_F(EditorTest, FileComesBackByteForByte) {
  // The long one is more than an edit control takes by itself.
  for (const auto& text :
       {std::string("\xc5\xbb\xc3\xb3\xc5\x82w.exe\r\n\xff\xfe\xc3(\r\r\n\n\ra\0b\0", 25), std::string(40000, 'x')}) {
    folder.Write(L"killlist.txt", text);
    Open();
    EXPECT_FALSE(::IsWindowEnabled(velmaro.Main()));
    Leave(L"&OK");
    EXPECT_EQ(folder.Read(L"killlist.txt"), text);
    // One more line, and the rest stays as it is.
    EXPECT_EQ(Save(L"\u017c.exe"), text + "\xc5\xbc.exe");
  }
  EXPECT_EQ(Save(L"new.exe", L"nokilllist.txt", L"Edit No Kill List Here..."), "new.exe");
}

TEST_F(EditorTest, ASaveGoesWhereItCanAndHarmsNoOtherFile) {
  const auto path = folder.Path(L"killlist.txt");
  folder.Write(L"killlist.txt.tmp", "own");
  folder.Write(L"killlist.txt", "held");
  {
    // Another program shares the file for reading and writing alone, so that it can't be replaced.
    const OwnedHandle held(::CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                         OPEN_EXISTING, 0, nullptr));
    EXPECT_EQ(Save(L"z"), "heldz");
  }
  ::SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY);
  EXPECT_EQ(Save(L"z"), "heldz") << "it is marked read-only";
  ::SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
  folder.Write(L"killlist.txt", std::string("\xFF\xFE\x3D\xD8\x00\xDE", 6));
  EXPECT_EQ(Save(L"z"), std::string("\xFF\xFE\x3D\xD8\x00\xDEz\0", 8));
  EXPECT_EQ(folder.Read(L"killlist.txt.tmp"), "own");
  const std::filesystem::directory_iterator files(std::filesystem::path(path).parent_path());
  EXPECT_EQ(std::distance(files, {}), 3) << "the program and both files";
}

TEST_F(EditorTest, ASearchGoesOnFromWhereverTheCaretWasPut) {
  folder.Write(L"killlist.txt", "\xc5\xbc\xc5\xbc\xc5\xbc b\r\nb\r\nab");
  Open();
  const auto field = Child(editor, L"EDIT");
  const auto marked = [&](int at) {
    EXPECT_TRUE(Until([&] { return ::SendMessageW(field, EM_GETSEL, 0, 0) == MAKELONG(at, at + 1); })) << at;
  };
  Front(editor);
  Keys({'F'}, VK_CONTROL);
  velmaro.Window(L"Find");
  Keys({'B', VK_RETURN});
  marked(4);
  Keys({VK_F3});
  marked(7);
  Keys({VK_HOME}, VK_CONTROL);
  Keys({VK_F3});
  marked(4);
  Leave(L"&Cancel");
}

TEST_F(EditorTest, EndOfTheSessionAsksToo) {
  Open();
  Append(L"a.exe");
  for (const int button : {IDCANCEL, IDYES}) {
    LRESULT mayEnd = -1;
    ::SendMessageCallbackW(editor, WM_QUERYENDSESSION, 0, 0, &KeepAnswer, reinterpret_cast<ULONG_PTR>(&mayEnd));
    const auto box = velmaro.Await();
    EXPECT_EQ(box.defaultButton, IDYES);
    box.Answer(button);
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
  Click(Child(editor, L"BUTTON", L"?"), 0, 0, POINT{-40, 5});
  Click(Child(editor, L"BUTTON", L"?"), 0, 0);
  EXPECT_TRUE(Until([&] { return ::IsWindowVisible(balloon) != FALSE; })) << "the system shows none without a text";
  Leave(L"&Cancel");
  EXPECT_FALSE(::IsWindow(balloon));
}

}  // namespace
