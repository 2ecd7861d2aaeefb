#pragma once

namespace kelvora {

// InstallAccessibility teaches the accessibility layer what the window's custom-drawn
// controls are, so a screen reader can name and press them: the tab strips are tab lists
// whose tabs carry their captions and the selected state, the language flags and the window
// buttons of the control box are buttons, and the online link is a link. Call it once before
// the main window is shown; calling it again does nothing.
void InstallAccessibility();

class LightTab;

// NotifyTabSelected tells a listening screen reader that a tab strip now shows tab.
void NotifyTabSelected(LightTab* strip, int tab);

} // namespace kelvora
