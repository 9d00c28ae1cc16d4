#include "Fixture.h"
#include "desktop/Credits.h"
#include "desktop/formSplash.h"
#include "editor/formEdit.h"
#include "launcher/formLauncher.h"
#include "memory/formFreeMem.h"
#include "platform/simulated/peers/FormWindow.h"

namespace {

class About : public OnDesktop {
 protected:
  // Opens the about box in some way, looks at it and acts in it; it must have gone at the end.
  void Open(const std::function<void()>& open, const std::function<void(formSplash&)>& act) {
    const auto forms = application.Forms().size();
    desktop.Then([&] {
      auto& box = application.Default<formSplash>();
      EXPECT_EQ(&FrontForm(), &box);
      EXPECT_EQ(WindowFor(box)->owner, &desktop.forms.at(1)->form) << "it belongs to the form before it";
      EXPECT_TRUE(Shows(box.btnOK) && Shows(box.lblProgrammers) && desktop.WindowOf(box.hWnd()).topmost);
      desktop.Advance(60000);
      EXPECT_TRUE(Shows(box)) << "it never goes by itself";
      act(box);
    });
    open();
    EXPECT_TRUE(desktop.script.empty()) << "it did not open";
    EXPECT_EQ(application.Forms().size(), forms);
  }
};

TEST_F(About, EveryCreditsLabelOpensIt) {
  auto& main = Start();
  const auto escape = [](formSplash& box) { TypeKey(box, Key::Escape); };
  const auto openFrom = [&](auto& form) {
    Open([&] { Click(form.lblCredits); }, escape);
    EXPECT_EQ(&FrontForm(), &form) << "it takes input again";
    EXPECT_THROW(Press(main.btnRefresh), std::logic_error) << "what stands under it does not";
    Press(form.btnCancel);
  };
  desktop.onStart = [](const auto&) { return 0; };
  Open([&] { Click(main.lblCredits); },
       [&](formSplash& box) {
         EXPECT_THROW(Press(main.btnRefresh), std::logic_error);
         EXPECT_EQ(box.lblHome.Pointer(), Pointer::Hand);
         Click(box.lblHome);
         const auto& start = desktop.starts.at(0);
         EXPECT_EQ(start.verb + start.file + start.parameters + start.folder, "Open" + box.lblHome.ToolTipText());
         EXPECT_EQ(start.show, 1);
         Press(box.btnOK);
       });
  Open([&] { Choose(main.mnuHelpAbout); }, escape);
  Open([&] { TypeKey(main, Key::F1); }, escape);
  Choose(main.mnuFileFreeMem);
  auto& meter = application.Default<formFreeMem>();
  Open([&] { Click(meter.lblCredits); }, escape);
  Open([&] { TypeKey(main, Key::F1); }, escape);
  desktop.Then([&] { openFrom(application.Default<formLauncher>()); });
  TypeKey(main, 'R', ShiftKey::Ctrl);
  desktop.Then([&] { openFrom(application.Default<formEdit>()); });
  Choose(main.mnuEditKillListHere);
  for (const auto* label : {&main.lblCredits, &meter.lblCredits}) EXPECT_EQ(label->ToolTipText(), credits::HomePage);
  for (Form* form : {static_cast<Form*>(&main), static_cast<Form*>(&meter)}) Minimize(*form);
  EXPECT_EQ(application.ActiveForm(), nullptr) << "what opens then would show nowhere above one of them";
}

}  // namespace
