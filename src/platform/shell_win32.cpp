#include <windows.h>
// After windows.h, on which it leans.
#include <shellapi.h>

#include <string>
#include <type_traits>

#include "app/messages/messages.h"
#include "platform/system_shell.h"

namespace morvelle {

namespace {

/// Command of HtmlHelp (htmlhelp.h, HH_DISPLAY_TOPIC).
constexpr UINT kDisplayTopic = 0;

class Win32Shell final : public Shell {
 public:
  explicit Win32Shell(Dialogs& dialogs) : messages_(dialogs) {}
  Win32Shell(const Win32Shell&) = delete;
  Win32Shell& operator=(const Win32Shell&) = delete;
  // The help viewer lives in our process: its library stays until that ends.
  ~Win32Shell() override = default;

  void OpenFolder(const std::filesystem::path& folder) override {
    auto path = folder;
    const auto arguments = L"/n,/root," + path.make_preferred().native();
    ::ShellExecuteW(nullptr, nullptr, L"explorer", arguments.c_str(), nullptr, SW_SHOWNOACTIVATE);
  }

  void OpenLink(const std::string& address) override {
    ::ShellExecuteA(nullptr, "Open", address.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
  }

  void ShowHelp(const std::filesystem::path& helpFile, const std::string& page) override {
    auto topic = helpFile.native();
    if (!page.empty()) topic += L"::/" + std::filesystem::path(page).native();
    const auto show = Viewer();
    if (!messages_.FileExists(helpFile) || show == nullptr ||
        show(::GetDesktopWindow(), topic.c_str(), kDisplayTopic, 0) == nullptr) {
      messages_.FileDoesNotExist(helpFile);
    }
  }

 private:
  using HtmlHelp = HWND(WINAPI*)(HWND, LPCWSTR, UINT, DWORD_PTR);

  /// The viewer of Windows, which is loaded when it is first wanted: not every edition has it.
  HtmlHelp Viewer() {
    if (library_ == nullptr) library_ = ::LoadLibraryA("hhctrl.ocx");
    if (library_ == nullptr) return nullptr;
    return reinterpret_cast<HtmlHelp>(
        reinterpret_cast<void*>(::GetProcAddress(library_, "HtmlHelpW")));
  }

  Messages messages_;
  HMODULE library_ = nullptr;
};

}  // namespace

std::unique_ptr<Shell> MakeShell(Dialogs& dialogs, const Environment& /*environment*/) {
  return std::make_unique<Win32Shell>(dialogs);
}

}  // namespace morvelle
