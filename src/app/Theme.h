#pragma once

#include <QColor>
#include <QString>

namespace kelvora::theme {

// The window's palette: a calm light surface, one steel-blue accent, grey text levels.
inline const QColor kWindow{0xF4, 0xF6, 0xF9};
inline const QColor kSurface{0xFF, 0xFF, 0xFF};
inline const QColor kOutline{0xD5, 0xDB, 0xE3};
inline const QColor kAccent{0x2B, 0x5C, 0x8A};
inline const QColor kAccentDark{0x1F, 0x46, 0x6C};
inline const QColor kText{0x1F, 0x29, 0x37};
inline const QColor kMutedText{0x5B, 0x67, 0x78};

inline constexpr int kWindowRounding = 20; // the 20 x 20 corner ellipse of the main window
inline constexpr int kWindowWidth = 780;
inline constexpr int kWindowHeight = 690;

// StyleSheet is the main window's style sheet. Frames and labels that draw borders of their
// own (the flags) are left alone by it.
QString StyleSheet();

} // namespace kelvora::theme
