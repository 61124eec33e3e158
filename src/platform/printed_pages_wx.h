#pragma once

#include <wx/print.h>

#include <cstddef>
#include <string>
#include <vector>

namespace morvelle {

/// A listing laid out on pages: margins, a font of one width, long lines that go on below under
/// their own start, and the page's number in the bottom margin.
class PrintedPages final : public wxPrintout {
 public:
  /// Lines are Windows-1252.
  PrintedPages(const std::string& title, const std::vector<std::string>& lines);

  void OnPreparePrinting() override;
  bool HasPage(int page) override;
  void GetPageInfo(int* first, int* last, int* from, int* to) override;
  bool OnPrintPage(int page) override;

 private:
  /// Device units of the paper, from its top left corner.
  struct Layout {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    int lineHeight = 1;
    int numberTop = 0;
    std::size_t columns = 1;
    std::size_t linesOfPage = 1;
  };

  void ChooseFont(wxDC& dc) const;
  void Measure(wxDC& dc);
  void Wrap();
  [[nodiscard]] int PageCount() const;

  const std::vector<std::string>& lines_;
  Layout layout_;
  std::vector<wxString> wrapped_;
};

}  // namespace morvelle
