#include "view/french.h"

#include <wx/translation.h>
#include <wx/utils.h>

namespace morvelle {

void AskDesktopForFrench() { wxSetEnv("LANGUAGE", "fr"); }

void UseFrenchCatalogue() {
  auto* translations = new wxTranslations;
  wxTranslations::Set(translations);
  translations->SetLanguage(wxLANGUAGE_FRENCH);
  translations->AddStdCatalog();
}

}  // namespace morvelle
