#pragma once

#include "common/Bytes.h"

#include <QFrame>
#include <optional>

class QCheckBox;
class QLineEdit;
class QPushButton;

namespace kelvora {

class RatingDisplay;
struct WindowContext;

// PassphraseArea is FramePwd, the passphrase area every page shares: the passphrase box
// TxtCode, the check box ChkHPwd that hides it as "*", the generator button cmdPassgen and the
// rating display. Commands take their key from here and never build one themselves.
class PassphraseArea : public QFrame {
    Q_OBJECT

public:
    PassphraseArea(WindowContext& context, QWidget* parent = nullptr);

    bool IsEmpty() const;
    // EncryptionKey is the key of the passphrase box alone. When the box is empty it shows
    // message missingMessageId and gives nothing.
    [[nodiscard]] std::optional<SecretBytes> EncryptionKey(int missingMessageId);
    // DecryptionKey is the key decryption uses; as EncryptionKey when the box is empty.
    [[nodiscard]] std::optional<SecretBytes> DecryptionKey(int missingMessageId);
    // Clear empties the passphrase box (after a command has used the key).
    void Clear();

    // Rate shows the rating of the passphrase in the box (PwdBewert), in the window's language.
    void Rate();
    // SetWorking locks the area during a job and hides the rating light, whose place the
    // working panel takes.
    void SetWorking(bool on);

    QLineEdit* Box() const { return m_txtCode; }

private:
    void OnCmdPassgenClick();
    void OnChkHPwdClick();

    WindowContext& m_context;
    QLineEdit* m_txtCode = nullptr;
    QCheckBox* m_chkHPwd = nullptr;
    QPushButton* m_cmdPassgen = nullptr;
    RatingDisplay* m_rating = nullptr;
};

} // namespace kelvora
