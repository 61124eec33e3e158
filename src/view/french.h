#pragma once

/// French in every window, whatever language the desktop speaks.
namespace morvelle {

/// The window system's own texts (file chooser, printing). To be called before the toolkit starts.
void AskDesktopForFrench();

/// The toolkit's texts, where its French catalogue is installed.
void UseFrenchCatalogue();

}  // namespace morvelle
