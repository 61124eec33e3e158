#include <wx/translation.h>

#include "view/french.h"

namespace morvelle {

/// Windows' own boxes speak the language of Windows.
void AskDesktopForFrench() {}

void UseFrenchCatalogue() {
  auto* translations = new wxTranslations;
  wxTranslations::Set(translations);
  // In the program file, which stands alone.
  translations->SetLoader(new wxResourceTranslationsLoader);
  translations->SetLanguage(wxLANGUAGE_FRENCH);
  translations->AddStdCatalog();
}

}  // namespace morvelle
