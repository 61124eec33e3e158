#include "platform/dialogs_wx.h"

#include <wx/button.h>
#include <wx/dialog.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/uiaction.h>

#include "tests/view/window_fixture.h"

namespace morvelle {
namespace {

class BoxTest : public WindowTest {
 protected:
  static std::vector<wxString> ButtonsOf(const wxDialog& box) {
    std::vector<wxString> labels;
    for (auto* child : box.GetChildren()) {
      if (auto* button = dynamic_cast<wxButton*>(child)) labels.push_back(button->GetLabel());
    }
    return labels;
  }
  /// Shows a box, presses a key in it when it is up, and gives its answer.
  Button AnswerByKey(int style, int key) {
    wxTimer timer;
    timer.Bind(wxEVT_TIMER, [key](wxTimerEvent&) {
      wxUIActionSimulator user;
      user.Char(key);
    });
    driver.KeepHandsOff(true);
    timer.StartOnce(300);
    const auto answer = boxes.ShowMessage("Question", style, "Morvelle");
    driver.KeepHandsOff(false);
    return answer;
  }
};

TEST_F(BoxTest, ButtonsSayOuiNonOkAnnuler) {
  struct Case {
    int style;
    std::vector<wxString> buttons;
    wxString pressed;
    Button answer;
  };
  const Case cases[] = {
      {kBoxOk + kBoxStop, {"OK"}, "OK", Button::Ok},
      {kBoxOkCancel + kBoxExclamation, {"OK", "Annuler"}, "Annuler", Button::Cancel},
      {kBoxYesNo + kBoxQuestion, {"Oui", "Non"}, "Oui", Button::Yes},
      {kBoxYesNo + kBoxQuestion + kBoxSecondDefault, {"Oui", "Non"}, "Non", Button::No},
  };
  for (const auto& [style, buttons, pressed, answer] : cases) {
    std::vector<wxString> seen;
    driver.Answer(pressed, [&](wxDialog& box) { seen = ButtonsOf(box); });
    EXPECT_EQ(boxes.ShowMessage("Question", style, "Morvelle"), answer);
    EXPECT_EQ(seen, buttons);
  }
}

TEST_F(BoxTest, EnterTakesTheDefaultAndEscapeTheHarmlessAnswer) {
  EXPECT_EQ(AnswerByKey(kBoxYesNo, WXK_RETURN), Button::Yes);
  EXPECT_EQ(AnswerByKey(kBoxYesNo + kBoxSecondDefault, WXK_RETURN), Button::No);
  EXPECT_EQ(AnswerByKey(kBoxYesNo, WXK_ESCAPE), Button::No);
  EXPECT_EQ(AnswerByKey(kBoxOkCancel, WXK_ESCAPE), Button::Cancel);
  EXPECT_EQ(AnswerByKey(kBoxOk, WXK_ESCAPE), Button::Ok);
}

TEST_F(BoxTest, TextIsShownAsItStandsAndTheWindowIsUpToDateBehindIt) {
  form.lblNb[0].SetCaption("7 mots");
  wxString behind;
  driver.Answer("OK",
                [&](wxDialog&) { behind = driver.FindAs<wxStaticText>("lblNb(0)").GetLabel(); });
  boxes.ShowMessage("A & B\rdeux\r\ntrois\nquatre\tcinq", kBoxInformation, "Morvelle");
  EXPECT_EQ(driver.LastBox(), "A && B\ndeux\ntrois\nquatre\tcinq");
  EXPECT_EQ(behind, "7 mots");
}

TEST_F(BoxTest, AnInputBoxRefusesWhatANameCannotHold) {
  wxString refusal;
  for (const char* refused : {"Ж", "a\nb"}) {
    driver.Answer("OK", [&](wxDialog& box) {
      auto& input = dynamic_cast<wxTextCtrl&>(*wxWindow::FindWindowByName("input", &box));
      input.SetValue(wxString::FromUTF8(refused));
      refusal = wxWindow::FindWindowByName("refusal", &box)->GetLabel();
    });
    driver.Answer("OK", [&](wxDialog& box) {
      auto& input = dynamic_cast<wxTextCtrl&>(*wxWindow::FindWindowByName("input", &box));
      EXPECT_EQ(input.GetValue(), wxString::FromUTF8(refused)) << "the box is still there";
      EXPECT_NE(std::exchange(refusal, ""), "");
      input.SetValue("Famille");
      driver.Paste("deux\nlignes");
      EXPECT_EQ(input.GetValue(), "Famille") << "refused whole";
      EXPECT_NE(wxWindow::FindWindowByName("refusal", &box)->GetLabel(), "");
      input.SelectAll();
      driver.Paste(wxString::FromUTF8("Été à 3 €"));
      EXPECT_EQ(wxWindow::FindWindowByName("refusal", &box)->GetLabel(), "");
    });
    EXPECT_EQ(boxes.AskText("Nouveau nom ?", "Morvelle", "Famille"), "Été à 3 €"_cp);
    EXPECT_EQ(driver.PendingAnswers(), 0U);
  }
  driver.Answer("Annuler");
  EXPECT_EQ(boxes.AskText("Nouveau nom ?", "Morvelle", "Famille"), std::nullopt);
}

}  // namespace
}  // namespace morvelle
