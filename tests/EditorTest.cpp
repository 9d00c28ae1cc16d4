#include "Fixture.h"
#include "desktop/modFiles.h"
#include "editor/formEdit.h"

namespace {

constexpr int Yes = 6, No = 7, Cancel = 2;

class Editor : public OnDesktop {
 protected:
  Editor() { Start(); }

  // Opens the kill list in the editor and acts in it; the actions must end in its close.
  void Edit(const std::function<void(formEdit&)>& act) {
    desktop.Then([&] { act(application.Default<formEdit>()); });
    Choose(application.Default<formVelmaro>().mnuEditKillListHere);
    EXPECT_EQ(application.Forms().size(), 1U) << "the editor did not go";
    EXPECT_TRUE(desktop.tooltips.empty());
  }
  // Types into the list, saves it and gives what stood there.
  std::string Save(
      const std::string& typed, const std::function<void()>& prepare = [] {}) {
    std::string text;
    Edit([&](formEdit& form) {
      text = form.txtData.Text();
      prepare();
      TypeText(form.txtData, typed);
      Press(form.btnOK);
    });
    return text;
  }
};

TEST_F(Editor, LoadingAndSavingWithoutAChangeGivesTheSameBytes) {
  std::string allBytes;
  for (int byte = 0; byte < 256; ++byte) allBytes += static_cast<char>(byte);
  std::string wide;
  for (int i = 0; i < 65535; ++i) wide += "\xC3\x89";
  for (const auto& bytes : {std::string("\r\r\n\n; \xC3\x89\r\n"), allBytes, wide, std::string(65535, 'x'),
                            std::string(65536, 'x'), std::string(200000, '\r'), std::string(17 << 20, 'x')}) {
    desktop.files[KillList].bytes = bytes;
    desktop.largestRead = 4096;
    desktop.boxes.clear();
    Edit([&](formEdit& form) {
      EXPECT_TRUE(form.txtData.Text() == bytes && !form.IsModified()) << bytes.size();
      EXPECT_THROW(Press(application.Default<formVelmaro>().btnRefresh), std::logic_error);
      Press(form.btnOK);
    });
    EXPECT_TRUE(desktop.files[KillList].bytes == bytes) << bytes.size();
    EXPECT_EQ(desktop.boxes.size(), bytes.size() < 65536 || bytes == wide ? 0U : 1U) << bytes.size();
  }
  const std::string warning = "If you save the changes to this file, the content will be truncated.";
  ExpectLastBox("'" + KillList + "' exceed the 64KB limit.\r\n" + warning, 48);
  EXPECT_EQ(desktop.files.size(), 1U) << "a save leaves no other file";
}

TEST_F(Editor, AChangedTextAsksBeforeItGoes) {
  for (const int road : {0, 1, 2}) {
    const auto close = [road](formEdit& form) {
      road == 0 ? Press(form.btnCancel) : road == 1 ? TypeKey(form, Key::Escape) : CloseBox(form);
    };
    for (const int last : {Yes, No}) {
      desktop.files[KillList].bytes = "a.exe";
      Edit([&](formEdit& form) {
        TypeText(form.txtData, "");
        EXPECT_FALSE(form.IsModified());
        TypeText(form.txtData, "b.exe\r\n");
        desktop.Answer(Cancel);
        close(form);
        ExpectLastBox("Do you want to save the changes?", 35);
        EXPECT_TRUE(Shows(form) && form.IsModified() && desktop.tooltips.size() == 1);
        EXPECT_EQ(form.txtData.Text() + '|' + desktop.files[KillList].bytes, "b.exe\r\na.exe|a.exe");
        desktop.Answer(last);
        close(form);
      });
      EXPECT_EQ(desktop.files[KillList].bytes, last == Yes ? "b.exe\r\na.exe" : "a.exe");
    }
  }
}

TEST_F(Editor, ASaveWritesAllOfAListOrLeavesTheOldOne) {
  const std::string before = "a.exe\r\nb.exe";
  auto& list = desktop.files[KillList];
  // A list that can't be replaced is written over where there is room.
  const std::vector<std::pair<std::function<void()>, bool>> cases = {
      {[&] { desktop.makeFails = true; }, true},
      {[&] { desktop.replaceFails = true; }, true},
      {[&] { std::tie(desktop.makeFails, desktop.diskRoom) = std::pair(true, 6); }, false},
      {[&] { std::tie(desktop.replaceFails, desktop.diskRoom) = std::pair(true, 22); }, false},
      {[&] { std::tie(desktop.makeFails, desktop.flushFails) = std::pair(true, true); }, false},
      {[&] { desktop.diskRoom = 5; }, false},
      {[&] { desktop.flushFails = true; }, false},
      {[&] { desktop.unwritable = {"C:\\Velmaro"}; }, false},
      {[&] { list.locked = true; }, false},
      {[&] { list.readOnly = true; }, false}};
  desktop.files[KillList + ".tmp"].bytes = desktop.files[KillList + ".0.tmp"].bytes = "the user's own";
  for (std::size_t i = 0; i < cases.size(); ++i) {
    list = {.bytes = before};
    desktop.diskRoom = 100;
    desktop.makeFails = desktop.replaceFails = desktop.flushFails = false;
    desktop.unwritable.clear();
    Save("c.exe\r\n", cases[i].first);
    EXPECT_EQ(list.bytes, cases[i].second ? "c.exe\r\n" + before : before) << i;
    EXPECT_EQ(desktop.files.size(), 3U) << i;
  }
  EXPECT_EQ(desktop.files[KillList + ".0.tmp"].bytes, "the user's own");
  EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(Editor, AListThatCantBeReadWholeIsNeverWrittenOver) {
  // One is more than memory holds, and the last more than the box takes.
  desktop.memory.total = 8;
  const std::vector<std::pair<File, std::set<Change>>> cases = {{{.bytes = "\xFF\xFE\0\0a\0\0\0"s}, {}},
                                                                {{.bytes = "a.exe", .readable = 3}, {}},
                                                                {{.bytes = "more.exe\r"}, {}},
                                                                {{.bytes = "a.exe"}, {Change::Text}}};
  for (const auto& [file, refused] : cases) {
    desktop.files[KillList] = file;
    desktop.refusedChanges = refused;
    EXPECT_EQ(Save("b.exe", [&] { desktop.refusedChanges.clear(); }), "");
    EXPECT_TRUE(desktop.files[KillList].bytes == file.bytes) << file.bytes.size();
  }
}

TEST_F(Editor, AListIsSavedInTheFormThatItsMarkTells) {
  const std::vector<std::array<std::string, 3>> cases = {
      {"\xEF\xBB\xBF\xC3\x89", "\xC3\x89", "\xEF\xBB\xBFz\xC3\x89"},
      {"\xFF\xFE\x3D\xD8\x00\xDE"s, "\xF0\x9F\x98\x80", "\xFF\xFEz\0\x3D\xD8\x00\xDE"s},
      {"\xFE\xFF\x30\x42\0y"s, "\xE3\x81\x82y", "\xFE\xFF\0z\x30\x42\0y"s},
      // What would not come back stays as it is.
      {"\xFF\xFExyz", "\xFF\xFExyz", "z\xFF\xFExyz"},
      {"\xFE\xFF\xD8\x3D\0a"s, "\xFE\xFF\xD8\x3D\0a"s, "z\xFE\xFF\xD8\x3D\0a"s},
      // Without a mark, what is no text of the system's page is text of the user's locale.
      {"\xC9", "\xC3\x89", "z\xC9"},
      {"\xC3\x89", "\xC3\x89", "z\xC3\x89"}};
  desktop.localPageIsLatin1 = true;
  for (const auto& [bytes, text, saved] : cases) {
    desktop.files[KillList].bytes = bytes;
    EXPECT_EQ(Save("z"), text);
    EXPECT_EQ(desktop.files[KillList].bytes, saved);
  }
}

TEST_F(Editor, FindGoesRoundTheText) {
  const std::string text = "anti.exe\r\n\xC3\x89mu.exe\r\nAntivirus.exe\r\naaa";
  desktop.files[KillList].bytes = text;
  Edit([&](formEdit& form) {
    using Selection = std::pair<std::size_t, std::size_t>;
    const auto key = [&](int code, int shift) {
      TypeKey(form, code, shift);
      return Selection(form.txtData.SelStart(), form.txtData.SelLength());
    };
    const auto find = [&](const std::string& wanted) {
      desktop.Then([=] {
        EXPECT_EQ(FrontForm().Caption(), "Find");
        Reply(wanted);
      });
      return key('F', ShiftKey::Ctrl);
    };
    const Selection second(text.find("Antivirus"), 4);
    desktop.Then([] { Press("Cancel"); });
    EXPECT_EQ(key(Key::F3, 0), Selection(0, 0)) << "without a text the key asks for one";
    EXPECT_EQ(find("ANTI"), second) << "the search begins behind the caret";
    EXPECT_EQ(key(Key::F3, 0), Selection(0, 4));
    EXPECT_EQ(find(""), Selection(0, 4));
    EXPECT_EQ(key(Key::F3, ShiftKey::Shift), second) << "an empty answer leaves the old text";
    EXPECT_EQ(find("\xC3\xA9MU"), Selection(10, 4));
    EXPECT_EQ(key(Key::F3, 0), Selection(10, 4)) << "the only hit is found again";
    EXPECT_EQ(find("aa"), Selection(text.size() - 3, 2));
    EXPECT_EQ(key(Key::F3, 0), Selection(text.size() - 2, 2)) << "a hit may begin inside the last one";
    MoveCaret(form.txtData, text.size());
    EXPECT_EQ(key(Key::F3, 0), Selection(text.size() - 3, 2));
    EXPECT_TRUE(desktop.boxes.empty());
    EXPECT_EQ(find("Not There"), Selection(text.size() - 3, 2));
    ExpectLastBox("'Not There' not found.", Tells, "Settings");
    key('F', ShiftKey::Ctrl + ShiftKey::Shift);
    EXPECT_FALSE(form.IsModified());
    Press(form.btnCancel);
  });
}

TEST_F(Editor, HelpStandsOnTheButtonAsABalloonAndInABox) {
  Edit([&](formEdit& form) {
    Press(form.btnHelp);
    ExpectLastBox(desktop.tooltips.begin()->second.tool.value().lpszText, Tells);
    desktop.GoToAnotherProgram();
    Activate(form);
    ASSERT_EQ(desktop.tooltips.size(), 1U) << "each activation makes the balloon anew";
    const auto& tip = desktop.tooltips.begin()->second;
    EXPECT_EQ(std::tuple(tip.owner, tip.style, tip.title, tip.icon, tip.tool->rect.right),
              std::tuple(form.btnHelp.hWnd(), 67U, "Settings", 1U, 25));
    EXPECT_TRUE(tip.tool->lpszText.starts_with("Enter a list of executable files that you want to close"));
    Press(form.btnOK);
  });
}

TEST_F(Editor, TheLayoutFollowsTheWindow) {
  Edit([](formEdit& form) {
    ResizeWindow(form, 9000, 4500);
    const auto text = form.txtData.At();
    EXPECT_EQ(text, (Bounds{0, 0, form.ScaleWidth(), form.ScaleHeight() - 465}));
    Minimize(form);
    EXPECT_EQ(form.txtData.At(), text);
    Restore(form);
    // Too low for a text box: it stays as it was, and the rest is still laid out by it.
    ResizeWindow(form, 6000, 600);
    EXPECT_EQ(form.txtData.At(), text);
    EXPECT_EQ(form.btnCancel.At(), (Bounds{form.ScaleWidth() - 1470, text.Height + 15, 1440, 435}));
    Press(form.btnOK);
  });
}

TEST_F(Editor, AModeSaysWhereTheTextGoesAndReadingMakesAMissingFile) {
  const auto bytes = [&]() -> std::string& { return desktop.files["C:\\a"].bytes; };
  for (const auto& [mode, saved] : std::vector<std::pair<int, std::string>>{
           {0, "new"}, {1, "old\nnew"}, {-1, "old\nnew"}, {2, "new\r\nold\n"}, {3, "old\n"}, {-2, "old\n"}}) {
    bytes() = "old\n";
    SaveTextFile("C:\\a", "new", mode);
    EXPECT_EQ(bytes(), saved) << mode;
  }
  EXPECT_EQ(ReadTextFile("C:\\a") + ReadTextFile("C:\\none"), bytes());
  EXPECT_TRUE(desktop.files.contains("C:\\none"));
}

}  // namespace
