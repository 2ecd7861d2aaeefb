#pragma once

#include <string>

namespace kelvora {

// The welcome window shows one of three panels, drawn at random on each load: an invitation
// to the maker's privacy test, one of the maker's other tools, or a trial of a partner's
// anonymising service. Its texts switch between languages by a language base of 0, 1000,
// 2000 or 3000 (German, English, Spanish, French).

enum class AboutPanel { PrivacyTest, MakerTool, PartnerTrial };

// The panel bounds: a draw up to 0.33 gives the first panel, up to 0.66 the second.
inline constexpr double kFirstPanelBound = 0.33;
inline constexpr double kSecondPanelBound = 0.66;

// PanelForDraw chooses the panel for a uniform draw r in [0, 1) from the two flags
// r > 0.33 and r > 0.66.
[[nodiscard]] AboutPanel PanelForDraw(double r);

inline constexpr int kLanguageBaseStep = 1000;

// LanguageBaseOf and LanguageOffsetOfBase convert between the catalogue's language offset
// (0, 900, 1900, 2900) and the welcome window's language base (0, 1000, 2000, 3000).
[[nodiscard]] int LanguageBaseOf(int languageOffset);
[[nodiscard]] int LanguageOffsetOfBase(int languageBase);

// The element of the link label Label2 that leads to the maker's start page on the second
// panel; the panel's other link leads to the tool's own page unless the language base is
// above 1000.
inline constexpr int kStartPageLinkIndex = 5;

// LinkAddress is the address a click on element labelIndex of Label2 opens on a panel.
[[nodiscard]] std::string LinkAddress(AboutPanel panel, int languageBase, int labelIndex);

} // namespace kelvora
