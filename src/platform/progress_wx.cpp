#include "platform/progress_wx.h"

#include <wx/progdlg.h>

#include <algorithm>

#include "app/messages/messages.h"
#include "app/messages/text.h"
#include "platform/dialogs_wx.h"

namespace morvelle {

namespace {

constexpr std::chrono::milliseconds kPatience{500};
constexpr std::chrono::milliseconds kBetweenUpdates{100};

wxString ToWx(std::string_view text) { return wxString::FromUTF8(ToUtf8(text)); }

}  // namespace

WxProgress::WxProgress() = default;
WxProgress::~WxProgress() = default;

void WxProgress::Begin(const std::string& what, int steps) {
  what_ = what;
  steps_ = std::max(steps, 1);
  next_ = Clock::now() + kPatience;
}

void WxProgress::Done(int steps) {
  const auto now = Clock::now();
  if (now < next_) return;
  next_ = now + kBetweenUpdates;
  if (box_ == nullptr) {
    box_ = std::make_unique<wxProgressDialog>(ToWx(kAppTitle), ToWx(what_), steps_, OwnerOfBox(),
                                              wxPD_APP_MODAL | wxPD_SMOOTH);
  }
  // At its greatest value the box would wait to be closed.
  box_->Update(std::clamp(steps, 0, steps_ - 1));
}

void WxProgress::End() { box_.reset(); }

}  // namespace morvelle
