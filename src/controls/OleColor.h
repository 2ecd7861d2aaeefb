#pragma once

#include <QColor>
#include <QPalette>
#include <cstdint>
#include <optional>

namespace kelvora {

// OleColor is a colour as the controls store it: 0x00BBGGRR (blue in the high byte), or
// 0x800000nn for the system colour with index nn. Stored values keep this form so that
// saved properties read the same on every platform.
using OleColor = std::uint32_t;

constexpr OleColor kSystemColourFlag = 0x80000000u;
constexpr OleColor kColourButtonFace = 0x8000000Fu;
constexpr OleColor kColourHighlight = 0x8000000Du;
constexpr OleColor kColourAppWorkspace = 0x8000000Cu;
constexpr OleColor kColourWindow = 0x80000005u;

// SystemColourRole names the palette role that stands for system colour index, or nothing for
// an index the system does not define.
std::optional<QPalette::ColorRole> SystemColourRole(std::uint32_t index);

// TranslateOleColor turns colour into a QColor: plain values by their blue-green-red bytes,
// system colours from palette. An unknown system colour gives an invalid QColor.
QColor TranslateOleColor(OleColor colour, const QPalette& palette);

// OleColorFromRgb packs red, green and blue into the stored blue-green-red form.
constexpr OleColor OleColorFromRgb(int red, int green, int blue) {
    return static_cast<OleColor>(red & 0xFF) | static_cast<OleColor>(green & 0xFF) << 8 |
           static_cast<OleColor>(blue & 0xFF) << 16;
}

} // namespace kelvora
