#pragma once

#include "tools/ScreenKeyboard.h"

#include <QWidget>
#include <array>
#include <cstdint>

class QLineEdit;
class QPushButton;
class QRadioButton;

namespace kelvora {

// FrmTast is the screen keyboard: 66 keys (cmdNr_<index>) that type into the passphrase box
// they are given and nothing else, and the size switch Option1_0 "1x" / Option1_1 "2x",
// which doubles or halves every place and size but no font. The captions follow the
// keyboard layout given on construction (German, English or Spanish); shift stays on until
// it is pressed again. Every key is a button named by what it types.
class FrmTast : public QWidget {
    Q_OBJECT

public:
    // keyboardLayout is a Windows keyboard layout handle, SystemKeyboardLayout() in the program.
    FrmTast(QLineEdit& txtCode, int languageOffset, std::uint32_t keyboardLayout,
            QWidget* parent = nullptr);

    // SystemKeyboardLayout is the handle of the input method's language, mapped to its
    // Windows language id.
    static std::uint32_t SystemKeyboardLayout();

    KeyboardLayoutCode LayoutCode() const { return m_layoutCode; }
    bool LowerCaseMode() const { return m_lowerCaseMode; }
    int ZoomFactor() const { return m_zoomFactor; }

    // SetLanguage re-labels the window (caption, space and tab keys, names) in a language.
    void SetLanguage(int languageOffset);

private:
    void BuildKeys();
    void BuildSizeSwitch();
    void OnKeyClick(int index);
    void OnSizeOptionClick();
    void UpdateKeyNames();
    QString Text(int germanId) const;

    QLineEdit& m_txtCode;
    int m_languageOffset;
    KeyboardLayoutCode m_layoutCode;
    bool m_lowerCaseMode = true;
    int m_zoomFactor = 1;
    KeyCaptions m_captions;
    std::array<QPushButton*, kKeyIndexCount> m_keys{};
    std::array<QRadioButton*, 2> m_sizeOptions{};
};

} // namespace kelvora
