#include "controls/OleColor.h"

#include <array>

namespace kelvora {

namespace {

constexpr OleColor kSystemIndexMask = 0xFFu;

} // namespace

std::optional<QPalette::ColorRole> SystemColourRole(std::uint32_t index) {
    using R = QPalette::ColorRole;
    // Indexed by the system colour number; NoRole marks the one number the system leaves out.
    static constexpr std::array<R, 31> kRoles = {
        R::Mid,             // 0 scroll bar
        R::Dark,            // 1 desktop
        R::Highlight,       // 2 active caption
        R::Midlight,        // 3 inactive caption
        R::Window,          // 4 menu
        R::Base,            // 5 window
        R::Shadow,          // 6 window frame
        R::WindowText,      // 7 menu text
        R::Text,            // 8 window text
        R::HighlightedText, // 9 caption text
        R::Window,          // 10 active border
        R::Window,          // 11 inactive border
        R::Mid,             // 12 application workspace
        R::Highlight,       // 13 highlight
        R::HighlightedText, // 14 highlight text
        R::Button,          // 15 button face
        R::Dark,            // 16 button shadow
        R::PlaceholderText, // 17 grey text
        R::ButtonText,      // 18 button text
        R::WindowText,      // 19 inactive caption text
        R::Light,           // 20 button highlight
        R::Shadow,          // 21 3-D dark shadow
        R::Midlight,        // 22 3-D light
        R::ToolTipText,     // 23 info text
        R::ToolTipBase,     // 24 info background
        R::NoRole,          // 25 not defined
        R::Link,            // 26 hot-tracked item
        R::Highlight,       // 27 gradient of the active caption
        R::Midlight,        // 28 gradient of the inactive caption
        R::Highlight,       // 29 menu highlight
        R::Window,          // 30 menu bar
    };
    if (index >= kRoles.size() || kRoles[index] == R::NoRole) {
        return std::nullopt;
    }
    return kRoles[index];
}

QColor TranslateOleColor(OleColor colour, const QPalette& palette) {
    if ((colour & kSystemColourFlag) != 0) {
        if ((colour & ~(kSystemColourFlag | kSystemIndexMask)) != 0) {
            return {};
        }
        const auto role = SystemColourRole(colour & kSystemIndexMask);
        return role ? palette.color(QPalette::Active, *role) : QColor();
    }
    if ((colour & 0xFF000000u) != 0) {
        return {};
    }
    const auto channel = [colour](int shift) {
        return static_cast<int>((colour >> shift) & 0xFFu);
    };
    return QColor(channel(0), channel(8), channel(16));
}

} // namespace kelvora
