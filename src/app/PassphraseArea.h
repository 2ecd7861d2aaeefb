#pragma once

#include "common/Bytes.h"
#include "tools/FrmTast.h"

#include <QFrame>
#include <QPointer>
#include <optional>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace kelvora {

class RatingDisplay;
class SharedSecurityPanel;
struct WindowContext;

// PassphraseArea is FramePwd, the passphrase area every page shares: the passphrase box
// TxtCode, the check box ChkHPwd that hides it as "*", the generator button cmdPassgen, the
// rating display with its warning lines LblPwdWarning, cmdTast, which opens the screen
// keyboard, and the shared-security mode buttons and panel. Commands take their key from
// here and never build one themselves.
class PassphraseArea : public QFrame {
    Q_OBJECT

public:
    PassphraseArea(WindowContext& context, QWidget* parent = nullptr);

    bool IsEmpty() const;
    // EncryptionKey is the key of the passphrase box alone, whatever the mode. When the box is
    // empty it shows message missingMessageId, when it holds a character the key cannot hold
    // (it would become "?") a message naming it; both give nothing.
    [[nodiscard]] std::optional<SecretBytes> EncryptionKey(int missingMessageId);
    // DecryptionKey is the key decryption uses: the passphrase box's (empty: as EncryptionKey;
    // characters the key cannot hold are taken, so texts made elsewhere keep opening), or in
    // shared mode the shared key of all keys entered, after which all ten key slots are
    // emptied. A key missing there is named by its message; nothing is given then.
    [[nodiscard]] std::optional<SecretBytes> DecryptionKey(int missingMessageId);
    // Clear empties the passphrase box (after a command has used the key).
    void Clear();

    // Rate shows the rating of the passphrase in the box (PwdBewert), in the window's language.
    void Rate();
    // SetWorking locks the area during a job and hides the rating light, whose place the
    // working panel takes.
    void SetWorking(bool on);

    // SetLanguage re-labels the screen keyboard when it is open.
    void SetLanguage(int languageOffset);
    // SetSharedSecurityOffered shows or hides the mode buttons and the shared-security panel
    // (the text page hides them; the mode keeps its value).
    void SetSharedSecurityOffered(bool offered);
    // Localise sets the texts the window's catalogue marks cannot reach.
    void Localise();

    QLineEdit* Box() const { return m_txtCode; }
    SharedSecurityPanel& SharedSecurity() const { return *m_sharedSecurity; }

private:
    void OnGenerateClick();
    void OnHideClick();
    void OnKeyboardClick();
    // ShowWarnings shows what the key will not take from the box as typed.
    void ShowWarnings();

    WindowContext& m_context;
    QLineEdit* m_txtCode = nullptr;
    QCheckBox* m_hidePassphrase = nullptr;
    QPushButton* m_generateButton = nullptr;
    RatingDisplay* m_rating = nullptr;
    QPushButton* m_keyboardButton = nullptr;
    QPointer<FrmTast> m_keyboard; // the screen keyboard while it is open
    QLabel* m_warnings = nullptr;
    SharedSecurityPanel* m_sharedSecurity = nullptr;
};

} // namespace kelvora
