#include <windows.h>
// After windows.h, on which it leans.
#include <shellapi.h>

#include <string>
#include <system_error>

#include "app/messages/messages.h"
#include "app/messages/text.h"
#include "platform/programs_win32.h"
#include "platform/shell_win32.h"
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
    std::error_code error;
    const auto place = std::filesystem::absolute(folder, error);
    const auto explorer = WindowsFolder() / "explorer.exe";
    if (!Messages::FolderExists(folder) ||
        !StartProgramAt(explorer, FolderCommand(explorer, place), SW_SHOWNOACTIVATE)) {
      messages_.FileDoesNotExist(folder);
    }
  }

  void OpenLink(const std::string& address) override {
    if (!IsWebAddress(address) || !Browse(address)) {
      messages_.Msg(std::string("Aucun navigateur n'a pu ouvrir "_cp) + address, kBoxExclamation);
    }
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

  static bool Browse(const std::string& address) {
    // Up to this number it is the reason of a failure.
    constexpr INT_PTR kLastFailure = 32;
    const auto opened =
        ::ShellExecuteA(nullptr, "Open", address.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
    return reinterpret_cast<INT_PTR>(opened) > kLastFailure;
  }

  /// The viewer of Windows, which is loaded when it is first wanted: not every edition has it.
  HtmlHelp Viewer() {
    if (library_ == nullptr) library_ = LoadLibraryAt(SystemFolder() / "hhctrl.ocx");
    if (library_ == nullptr) return nullptr;
    return reinterpret_cast<HtmlHelp>(
        reinterpret_cast<void*>(::GetProcAddress(library_, "HtmlHelpW")));
  }

  Messages messages_;
  HMODULE library_ = nullptr;
};

}  // namespace

std::wstring FolderCommand(const std::filesystem::path& explorer, std::filesystem::path folder) {
  // A backslash before the closing quote may be taken for a sign that it is none.
  if (!folder.has_filename()) folder = folder.parent_path();
  return L"\"" + explorer.native() + L"\" /n,/root,\"" + folder.make_preferred().native() + L"\"";
}

std::unique_ptr<Shell> MakeShell(Dialogs& dialogs, const Environment& /*environment*/) {
  return std::make_unique<Win32Shell>(dialogs);
}

}  // namespace morvelle
