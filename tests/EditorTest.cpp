#include "Fixture.h"
#include "desktop/Tooltip.h"
#include "editor/formEdit.h"

namespace velmaro {
namespace {

using namespace simulated;

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
  // Opens the search, types a text and presses Enter.
  void FindFor(formEdit& form, const std::string& text) {
    desktop.Then([=] { Reply(text); });
    TypeKey(form, 'F', ShiftKey::Ctrl);
  }
};

TEST_F(Editor, LoadingAndSavingWithoutAChangeGivesTheSameBytes) {
  std::string allBytes;
  for (int byte = 0; byte < 256; ++byte) allBytes += static_cast<char>(byte);
  for (const auto& bytes :
       {std::string("a.exe\r\nb.exe"), std::string("\r\r\n\n; \xC3\x89\r\n"), allBytes, std::string("\n"),
        std::string(65535, 'x'), std::string(65536, 'x'), std::string(200000, '\r')}) {
    desktop.files[KillList].bytes = bytes;
    desktop.largestRead = 4096;
    desktop.boxes.clear();
    Edit([&](formEdit& form) {
      EXPECT_EQ(form.Caption(), "Settings");
      EXPECT_TRUE(form.txtData.Text() == bytes) << bytes.size();
      EXPECT_FALSE(form.IsModified());
      EXPECT_THROW(Press(application.Default<formVelmaro>().btnRefresh), std::logic_error);
      Press(form.btnOK);
    });
    EXPECT_TRUE(desktop.files[KillList].bytes == bytes) << bytes.size();
    EXPECT_EQ(desktop.boxes.size(), bytes.size() < 65536 ? 0U : 1U) << bytes.size();
  }
  const std::string warning = "If you save the changes to this file, the content will be truncated.";
  ExpectLastBox("'" + KillList + "' exceed the 64KB limit.\r\n" + warning, 48);
  EXPECT_EQ(desktop.files.size(), 1U) << "a save leaves no other file";
}

TEST_F(Editor, AChangedTextAsksBeforeItGoes) {
  const std::vector<std::function<void(formEdit&)>> roads = {[](formEdit& form) { Press(form.btnCancel); },
                                                             [](formEdit& form) { TypeKey(form, Key::Escape); },
                                                             [](formEdit& form) { CloseBox(form); }};
  for (const auto& close : roads) {
    for (const int last : {Yes, No}) {
      desktop.files[KillList].bytes = "a.exe";
      Edit([&](formEdit& form) {
        TypeText(form.txtData, "b.exe\r\n");
        desktop.Answer(Cancel);
        close(form);
        ExpectLastBox("Do you want to save the changes?", 35);
        EXPECT_TRUE(Shows(form) && form.IsModified());
        EXPECT_EQ(form.txtData.Text(), "b.exe\r\na.exe");
        EXPECT_EQ(desktop.tooltips.size(), 1U) << "the balloon stays with its form";
        EXPECT_EQ(desktop.files[KillList].bytes, "a.exe");
        desktop.Answer(last);
        close(form);
      });
      EXPECT_EQ(desktop.files[KillList].bytes, last == Yes ? "b.exe\r\na.exe" : "a.exe");
    }
  }
  EXPECT_EQ(desktop.boxes.size(), 12U);
}

TEST_F(Editor, ASaveThatFailsLeavesTheOldListWhole) {
  const std::vector<std::function<void()>> faults = {
      [&] { desktop.diskRoom = 5; }, [&] { desktop.flushFails = true; }, [&] { desktop.replaceFails = true; },
      [&] { desktop.unwritable = {"C:\\Velmaro"}; }, [&] { desktop.files[KillList].locked = true; }};
  for (std::size_t i = 0; i < faults.size(); ++i) {
    desktop.files[KillList] = {.bytes = "a.exe\r\nb.exe"};
    desktop.diskRoom = 100;
    desktop.flushFails = desktop.replaceFails = false;
    Edit([&](formEdit& form) {
      TypeText(form.txtData, "c.exe\r\n");
      faults[i]();
      Press(form.btnOK);
    });
    EXPECT_EQ(desktop.files[KillList].bytes, "a.exe\r\nb.exe") << i;
    EXPECT_EQ(desktop.files.size(), 1U) << i;
  }
  EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(Editor, FindGoesRoundTheText) {
  const std::string text = "anti.exe\r\n\xC3\x89mu.exe\r\nAntivirus.exe\r\naaa";
  desktop.files[KillList].bytes = text;
  Edit([&](formEdit& form) {
    const auto expectHit = [&](std::size_t start, std::size_t length) {
      EXPECT_EQ(form.txtData.SelStart(), start);
      EXPECT_EQ(form.txtData.SelLength(), length);
    };
    desktop.Then([] { Press("Cancel"); });
    TypeKey(form, Key::F3);
    expectHit(0, 0);
    FindFor(form, "ANTI");
    // The caret stands on the first hit, which the search begins behind.
    expectHit(text.find("Antivirus"), 4);
    TypeKey(form, Key::F3);
    expectHit(0, 4);
    TypeKey(form, Key::F3, ShiftKey::Shift);
    expectHit(text.find("Antivirus"), 4);
    desktop.Then([&] {
      EXPECT_EQ(FrontForm().Caption(), "Find");
      Reply("");
    });
    TypeKey(form, 'F', ShiftKey::Ctrl);
    TypeKey(form, Key::F3);
    expectHit(0, 4);
    FindFor(form, "\xC3\xA9MU");
    expectHit(10, 4);
    TypeKey(form, Key::F3);
    expectHit(10, 4);
    FindFor(form, "aa");
    expectHit(text.size() - 3, 2);
    TypeKey(form, Key::F3);
    expectHit(text.size() - 2, 2);
    form.txtData.SelectionByUser(text.size(), 0);
    TypeKey(form, Key::F3);
    expectHit(text.size() - 3, 2);
    EXPECT_TRUE(desktop.boxes.empty());
    FindFor(form, "Not There");
    expectHit(text.size() - 3, 2);
    ExpectLastBox("'Not There' not found.", Tells, "Settings");
    TypeKey(form, 'F', ShiftKey::Ctrl + ShiftKey::Shift);
    TypeKey(form, 'F');
    EXPECT_FALSE(form.IsModified());
    form.txtData.SelectionByUser(0, text.size());
    TypeText(form.txtData, std::string());
    TypeKey(form, Key::F3);
    EXPECT_EQ(desktop.boxes.size(), 2U) << "an empty text holds nothing";
    desktop.Answer(No);
    Press(form.btnCancel);
  });
}

TEST_F(Editor, HelpStandsOnTheButtonAsABalloonAndInABox) {
  const std::string help =
      "Enter a list of executable files that you want to close or terminate\n"
      "when you hit 'Free Resources' button.\n\nExample: Antivirus.exe";
  Edit([&](formEdit& form) {
    for (int activation = 0; activation < 2; ++activation) {
      ASSERT_EQ(desktop.tooltips.size(), 1U) << "each activation makes the balloon anew";
      const auto& tip = desktop.tooltips.begin()->second;
      EXPECT_EQ(std::tuple(tip.owner, tip.style, tip.title, tip.icon),
                std::tuple(form.btnHelp.hWnd(), 67U, "Settings", 1U));
      ASSERT_TRUE(tip.tool.has_value());
      EXPECT_EQ(std::tuple(tip.tool->lpszText, tip.tool->uFlags), std::tuple(help, 16U));
      desktop.GoToAnotherProgram();
      Activate(form);
    }
    Press(form.btnHelp);
    ExpectLastBox(help, Tells);
    Press(form.btnOK);
  });
}

TEST_F(Editor, TheLayoutFollowsTheWindow) {
  Edit([](formEdit& form) {
    const auto expectLayout = [&] {
      const auto width = form.ScaleWidth();
      const auto height = form.ScaleHeight();
      EXPECT_EQ(form.txtData.At(), (Bounds{0, 0, width, height - 465}));
      EXPECT_EQ(form.btnCancel.At(), (Bounds{width - 1470, height - 450, 1440, 435}));
      EXPECT_EQ(form.btnOK.At(), (Bounds{width - 2970, height - 450, 1440, 435}));
      EXPECT_EQ(form.btnHelp.At(), (Bounds{30, height - 420, 375, 345}));
      EXPECT_EQ(form.lblCredits.At(), (Bounds{495, height - 360, 2145, 195}));
    };
    EXPECT_EQ(form.ScaleWidth(), 7830);
    expectLayout();
    ResizeWindow(form, 9000, 4500);
    expectLayout();
    const auto before = form.btnOK.At();
    Minimize(form);
    EXPECT_EQ(form.btnOK.At(), before);
    Restore(form);
    expectLayout();
    Maximize(form);
    EXPECT_GT(form.ScaleWidth(), 9000);
    expectLayout();
    Restore(form);
    // Too low for a text box: it stays as it was, and the rest is still laid out by it.
    const auto text = form.txtData.At();
    ResizeWindow(form, 6000, 600);
    EXPECT_EQ(form.txtData.At(), text);
    EXPECT_EQ(form.btnCancel.Left(), form.ScaleWidth() - 1470);
    EXPECT_EQ(form.btnCancel.Top(), text.Height + 15);
    ResizeWindow(form, 9000, 4500);
    expectLayout();
    Press(form.btnOK);
  });
}

class Tooltips : public OnDesktop {
 protected:
  Tooltips() { form.Show(); }
  // The messages since the last look, as "number:wParam:text".
  Texts Sent() {
    Texts sent;
    for (const auto& message : desktop.tooltipMessages)
      sent.push_back(std::to_string(message.message) + ':' + std::to_string(message.wParam) + ':' + message.text);
    desktop.tooltipMessages.clear();
    return sent;
  }

  Form form{FormArgs{.ClientWidth = 3000, .ClientHeight = 3000}};
  CommandButton button{form, {.At = {0, 0, 600, 300}}};
  std::unique_ptr<Tooltip> tip = std::make_unique<Tooltip>();
};

TEST_F(Tooltips, CreateTellsTheWindowEverythingThatIsSet) {
  tip->SetTipText("text");
  tip->SetTitle("title");
  tip->SetIcon(2);
  tip->SetForeColor(0x10);
  tip->SetBackColor(0x20);
  tip->SetStyle(1);
  tip->SetCentered(true);
  EXPECT_FALSE(tip->Create());
  EXPECT_TRUE(desktop.tooltips.empty() && Sent().empty()) << "without a control there is no window";
  tip->SetParentControl(&button);
  EXPECT_FALSE(tip->Create());
  EXPECT_EQ(Sent(), (Texts{"1028:0:text", "1056:2:title", "1044:16:", "1043:32:"}));
  ASSERT_EQ(desktop.tooltips.size(), 1U);
  const auto& [handle, window] = *desktop.tooltips.begin();
  EXPECT_EQ(desktop.placings.back(), (Placing{handle, -1, 0, 0, 0, 0, 19}));
  const auto& tool = *window.tool;
  EXPECT_EQ(std::tuple(window.style, tool.cbSize, tool.uFlags, tool.uId), std::tuple(67U, 44U, 18U, 0U));
  EXPECT_EQ(std::tuple(window.owner, tool.hwnd), std::tuple(button.hWnd(), button.hWnd()));
  EXPECT_EQ(std::tuple(tool.rect.right, tool.rect.bottom), std::tuple(40, 20));
  // Another control size, style and place count from the next Create on, which replaces the window.
  button.SetWidth(1200);
  tip->SetStyle(2);
  tip->SetCentered(false);
  EXPECT_EQ(Sent(), Texts{});
  tip->Create();
  ASSERT_EQ(desktop.tooltips.size(), 1U);
  const auto& next = desktop.tooltips.begin()->second;
  EXPECT_EQ(std::tuple(next.style, next.tool->uFlags, next.tool->rect.right), std::tuple(3U, 16U, 80));
  tip->SetParentControl(nullptr);
  tip->Create();
  EXPECT_TRUE(desktop.tooltips.empty());
}

TEST_F(Tooltips, SettersReachALiveWindowUnderTheirOwnConditions) {
  tip->SetParentControl(&button);
  tip->Create();
  EXPECT_EQ(Sent(), Texts{"1028:0:"}) << "black and empty are not sent at first";
  tip->SetTitle("title");
  EXPECT_EQ(Sent(), Texts{}) << "a title needs an icon";
  tip->SetIcon(1);
  tip->SetTitle("other");
  EXPECT_EQ(Sent(), (Texts{"1056:1:title", "1056:1:other"}));
  tip->SetTitle("");
  tip->SetIcon(3);
  EXPECT_EQ(Sent(), Texts{});
  tip->Create();
  EXPECT_EQ(Sent(), (Texts{"1028:0:", "1056:3:"})) << "one of the two is enough there";
  tip->SetForeColor(0);
  tip->SetBackColor(0);
  tip->SetTipText("new");
  EXPECT_EQ(Sent(), (Texts{"1044:0:", "1043:0:", "1036:0:new"}));
  EXPECT_EQ(desktop.tooltips.begin()->second.tool->lpszText, "new");
  tip->SetIcon(0);
  tip->SetTitle("kept");
  tip->Create();
  EXPECT_EQ(Sent(), (Texts{"1028:0:new", "1056:0:kept"}));
  tip.reset();
  EXPECT_TRUE(desktop.tooltips.empty());
}

}  // namespace
}  // namespace velmaro
