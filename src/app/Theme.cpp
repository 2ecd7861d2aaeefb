#include "app/Theme.h"

namespace kelvora::theme {
namespace {

QString Hex(const QColor& colour) {
    return colour.name(QColor::HexRgb);
}

} // namespace

QString StyleSheet() {
    return QStringLiteral(R"(
        #FCrypt { background: transparent; }
        QWidget { color: %1; font-size: 10pt; }
        QLabel[role="caption"] { color: %2; font-weight: bold; }
        QLabel[role="hint"] { color: %2; }
        QLabel[role="prompt"] { color: %1; }
        QLabel[role="title"] { color: %4; font-size: 17pt; font-weight: bold; }
        QLabel[role="link"] { color: %4; text-decoration: underline; }
        QLabel[role="link"]:hover { color: %5; }
        QLabel[role="link"]:disabled { color: %2; }
        QFrame[role="card"] { background: %6; border: 1px solid %3; border-radius: 10px; }
        QPlainTextEdit, QLineEdit, QListWidget {
            background: %6; border: 1px solid %3; border-radius: 6px; padding: 4px 6px;
            selection-background-color: %4;
        }
        QPlainTextEdit:focus, QLineEdit:focus, QListWidget:focus { border: 1px solid %4; }
        QPlainTextEdit:disabled, QLineEdit:disabled, QListWidget:disabled { color: %2; }
        QPushButton {
            background: %6; border: 1px solid %3; border-radius: 6px; padding: 6px 16px;
            min-height: 20px;
        }
        QPushButton:hover { border-color: %4; }
        QPushButton:pressed { background: %7; }
        QPushButton:disabled { color: #A0A8B4; border-color: #E3E7EC; }
        QPushButton[role="primary"] { background: %4; border-color: %4; color: white; }
        QPushButton[role="primary"]:hover { background: %5; border-color: %5; }
        QPushButton[role="primary"]:disabled { background: #9DB3C8; border-color: #9DB3C8; }
        QPushButton[role="quiet"] {
            background: transparent; border: none; color: %4; padding: 4px 6px;
        }
        QPushButton[role="quiet"]:hover { color: %5; text-decoration: underline; }
        QPushButton[role="quiet"]:focus { text-decoration: underline; }
        QCheckBox { spacing: 6px; }
    )")
        .arg(Hex(kText), Hex(kMutedText), Hex(kOutline), Hex(kAccent), Hex(kAccentDark),
             Hex(kSurface), Hex(kWindow));
}

} // namespace kelvora::theme
