#include <numeric>

#include "Fixture.h"
#include "editor/formEdit.h"
#include "process/KillLists.h"

namespace {

class KillLists : public OnDesktop {
 protected:
  KillLists() { NoKillListPath = NoKillList; }

  // Each case is a no-kill list and the name that it lets end or doesn't.
  void ExpectEnded(bool ended, const Texts& cases) {
    for (const auto& text : cases) {
      const auto [bytes, name] = Sides(text);
      desktop.files[NoKillList].bytes = bytes;
      EXPECT_EQ(CanKillProcess(name), ended) << text;
    }
  }

  formVelmaro& StartWithLists(const std::string& line = "") {
    for (const auto* name : {"game.exe", "mame.exe", "other.exe"}) desktop.AddProcess(name);
    desktop.files[KillList].bytes = "mame.exe\r\nGAME.exe";
    desktop.files[NoKillList].bytes = "mame.exe";
    return Start(line);
  }
};

TEST_F(KillLists, NoKillPatternsFitTheEndOfANameInAnyCase) {
  ExpectEnded(false, {"explorer.exe => explorer.exe", R"(explorer.exe => C:\Windows\EXPLORER.EXE)",
                      "explorer.exe => myexplorer.exe", "EXPLORER.exe => explorer.exe", "explorer* => explorer.exe",
                      "*.exe => a.exe", "? => x", "nemu##.exe => nemu64.exe", "[a-c].exe => zb.exe",
                      "\xC3\x89.exe => \xC3\xA9.EXE", "\xFF.exe => a\xFF.exe", "  a.exe   => a.exe",
                      "a;b.exe => a;b.exe", "x\r\na.exe => a.exe", "x\ra.exe\ry => a.exe", "x\n a.exe => x\n a.exe",
                      "x\r\n\r\na.exe\r\n => a.exe", "a[].exe => a.exe"});
  ExpectEnded(false, {"\xEF\xBB\xBF\xEF\xBB\xBFx.exe => x.exe", "a\r\xEF\xBB\xBF x.exe => x.exe"});
  desktop.localPageIsLatin1 = true;
  ExpectEnded(false, {"x\r\n\xC9.exe => \xC3\x89.exe"});
  // An invalid pattern protects everything, wherever it stands and whatever would fit before it fails.
  ExpectEnded(false, {"[ => a.exe", "x\r\n zzz[ab => a.exe", "[z-a] => q", "q[b-a] => a.exe"});
  ExpectEnded(true, {"explorer => explorer.exe", "*.exe => a.dat", "? => ", "nemu#.exe => nemux.exe",
                     "[!a-c].exe => zb.exe", "\ta.exe => a.exe", ";a.exe => a.exe", "   ;a => ;a", "      => a.exe",
                     "x\na.exe => a.exe", "\r\n\r\n => a.exe", "; [ => a.exe", "x] => a.exe"});
}

TEST_F(KillLists, WhereNamesAreWholePartsOfPathsPatternsStillFitEveryEnd) {
  desktop.namesAreWholeParts = true;
  ExpectEnded(false, {R"(sh => \bin\SH)", R"(Bin\sh => \usr\bin\sh)", R"(\bin\sh => \usr\bin\sh)", "sh => sh",
                      R"(*sh => \bin\bash)", R"(?sh => \bin\bash)", R"(as[h] => \bin\bash)", R"(\b*h => \bin\bash)",
                      R"(a* => \bin\bash)", R"([ => \bin\bash)", R"(s# => \bin\bas1)"});
  ExpectEnded(true, {R"(sh => \bin\bash)", R"(in\sh => \bin\sh)", R"(bin => \bin\sh)", R"(b? => \bin\bash)"});
}

TEST_F(KillLists, ANoKillListThatCantBeReadProtectsEverything) {
  desktop.files[NoKillList].locked = true;
  auto& form = StartWithLists("/q /k");
  EXPECT_EQ(Ended(), Texts{});
  const std::string unread = "other.exe";
  for (const auto& file :
       {File{.bytes = unread, .locked = true}, File{.folder = true}, File{.bytes = "\xFF\xFE\0\0x\0\0\0"s},
        File{.bytes = "\0\0\xFE\xFF\0\0\0x"s}, File{.bytes = unread, .readable = 3}}) {
    desktop.files[NoKillList] = file;
    desktop.sleeps.clear();
    EXPECT_FALSE(CanKillProcess("game.exe"));
    EXPECT_EQ(std::accumulate(desktop.sleeps.begin(), desktop.sleeps.end(), 0U), 300U) << "it is given some time";
    desktop.sleeps.clear();
    Choose(form.mnuFileKillProcesses);
    EXPECT_LE(desktop.sleeps.size(), 6U) << "the run waits once, whatever it finds";
    Select(form.List1, 0);
    Choose(form.mnuOptions[4]);
  }
  EXPECT_EQ(Ended(), Texts{});
  // One that is given free in time is read, and one without bytes protects nothing, whoever holds it.
  desktop.files[NoKillList] = {.bytes = unread, .lockedUntil = desktop.now + 299};
  EXPECT_TRUE(CanKillProcess("game.exe"));
  desktop.files[NoKillList].lockedUntil = desktop.now + 299;
  EXPECT_FALSE(CanKillProcess("other.exe"));
  desktop.files[NoKillList] = {.locked = true};
  EXPECT_TRUE(CanKillProcess("other.exe"));
  desktop.files.erase(NoKillList);
  EXPECT_TRUE(CanKillProcess("mame.exe"));
}

TEST_F(KillLists, AKillListThatCantBeReadCountsAsMissing) {
  auto& form = StartWithLists("/q");
  Select(form.List1, 0);
  Choose(form.mnuOptions[0]);
  // What goes wrong at the end of a long list goes wrong before anything is ended.
  for (const auto& file : {File{.bytes = "game.exe", .locked = true}, File{.bytes = "game.exe", .folder = true}, File{},
                           File{.bytes = "game.exe\r" + std::string(40000, ' '), .readable = 39000}}) {
    desktop.files[KillList] = file;
    Choose(form.mnuFileKillProcesses);
    EXPECT_EQ(State(form), "Normal 0, row 0 of 3") << "no check mark moves and the list keeps its selection";
  }
  EXPECT_EQ(Ended(), Texts{});
  desktop.files[KillList].readable = std::string::npos;
  Choose(form.mnuFileKillProcesses);
  EXPECT_EQ(Ended(), Texts{"game.exe"});
}

TEST_F(KillLists, AConfirmedRunEndsWhatIsListedAndNotSpared) {
  auto& form = StartWithLists();
  Choose(form.mnuOptions[1]);
  Select(form.List1, 2);
  TypeKey(form, 'K', ShiftKey::Ctrl);
  ExpectLastBox("Do you want to kill all the processes listed\r\nin '" + KillList + "'?", AsksWithNo);
  EXPECT_EQ(State(form), "High 1, row 2 of 3");
  desktop.Answer(6);
  Choose(form.mnuFileKillProcesses);
  EXPECT_EQ(Ended(), Texts{"game.exe"});
  EXPECT_EQ(State(form), "Real Time 2, row -1 of 2");
  EXPECT_EQ(desktop.boxes.size(), 2U) << "one question covers the run";
  // The answer holds for one run alone, and the next termination asks again.
  Select(form.List1, 1);
  Choose(form.mnuOptions[4]);
  ExpectLastBox("Do you want to terminate the process 'other.exe'?", AsksWithNo);
}

TEST_F(KillLists, EachLineEndsTheFirstMatchAtMost) {
  for (const auto* name : {"a.exe", "a.exe", "A.exe", "my b.exe", "C:\\x\\b.exe", "c.exe", "d;.exe", "e.exe", "e.exe"})
    desktop.AddProcess(name);
  desktop.files[KillList].bytes =
      "; a comment\r\n  ; a.exe\r\n\r\n   \r\n  a.exe  \r\"D:\\other\\B.EXE\"\r*.exe\r?.exe\r[c].exe\nc.exe\rd;.exe\r"
      "none.exe\re.exe\ra.exe";
  desktop.files[NoKillList].bytes = "my*";
  Start("/q /k");
  // The first to end in "b.exe" is spared, so the second is not tried; the lone LF makes one line of two.
  EXPECT_EQ(Ended(), (Texts{"a.exe", "d;.exe", "e.exe", "a.exe"}));
}

TEST_F(KillLists, TheSystemOpensTheListsThatAreInForce) {
  desktop.onStart = [](const auto&) { return 31; };
  auto& form = Start("/y D:\\keep.txt");
  RightPress(form.btnFree, MouseButton::Middle);
  EXPECT_TRUE(desktop.starts.empty());
  RightPress(form.btnFree);
  Choose(form.mnuFileEditKillList);
  Choose(form.mnuFileEditNoKillList);
  Texts opened;
  for (const auto& start : desktop.starts) opened.push_back(start.file + std::to_string(start.show));
  EXPECT_EQ(opened, (Texts{KillList + '1', KillList + '1', "D:\\keep.txt1"}));
  EXPECT_EQ(application.Forms().size(), 1U) << "what the system can't open opens nowhere";
}

TEST_F(KillLists, WhereTheShellMayLeaveNothingTheProgramsOwnEditorStepsIn) {
  desktop.shellTakesEveryFile = false;
  auto& form = Start("/y D:\\keep.txt");
  // Types into the editor that an entry opens, and gives what stood there.
  const auto edit = [&](Menu& entry, const std::string& typed) {
    std::string text;
    desktop.Then([&] {
      auto& editor = application.Default<formEdit>();
      text = editor.txtData.Text();
      if (!typed.empty()) TypeText(editor.txtData, typed);
      Press(typed.empty() ? editor.btnCancel : editor.btnOK);
    });
    Choose(entry);
    return text;
  };
  EXPECT_TRUE(edit(form.mnuFileEditKillList, "").starts_with("; The kill list:") && desktop.files.empty());
  edit(form.mnuFileEditNoKillList, "a.exe");
  const auto saved = desktop.files["D:\\keep.txt"].bytes;
  EXPECT_TRUE(saved.starts_with("; The no-kill list:") && saved.ends_with("name.\r\na.exe")) << saved;
  EXPECT_TRUE(desktop.boxes.empty() && desktop.starts.empty());
  desktop.onStart = [](const auto&) { return 31; };
  EXPECT_EQ(edit(form.mnuFileEditNoKillList, ""), saved);
  EXPECT_EQ(desktop.starts.size(), 1U);
}

}  // namespace
