#pragma once

#include "app/MessageService.h"
#include "app/SharedSecurityState.h"

#include <QWidget>
#include <array>
#include <functional>
#include <optional>

class QLabel;
class QLineEdit;
class QRadioButton;
class QScrollBar;
class QToolButton;

namespace kelvora {

// KeyPlace is one of the ten places SchlusselPlatz_0 to SchlusselPlatz_9 that show which
// shared keys are filled: a small square, filled when its key holds text, outlined darker
// while its key is on show. Its accessible name says the same in words.
class KeyPlace : public QWidget {
    Q_OBJECT

public:
    static constexpr int kSide = 12;

    explicit KeyPlace(int index, QWidget* parent = nullptr);
    bool IsFilled() const { return m_filled; }
    bool IsCurrent() const { return m_current; }
    void SetState(bool filled, bool current, const QString& description);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool m_filled = false;
    bool m_current = false;
};

// SharedSecurityPanel is pctSharedSecurity: the key count txtKeyNum, the position lblKeyOf,
// the arrows lblNextKey_0 (">") and lblNextKey_1 ("<"), the key selector KeyScroll, the ten
// key places and a line saying that the keys serve decryption. It also makes the two mode
// buttons optMults_0 (single passphrase) and optMults_1 (shared security), which the window
// places beside it (ModeButtons). The passphrase box it is given shows and edits the key on
// show; the keys themselves live in the panel's SharedSecurityState. The mode buttons are
// children of the panel's parent, which must therefore be given.
class SharedSecurityPanel : public QWidget {
    Q_OBJECT

public:
    SharedSecurityPanel(QLineEdit& txtCode, MessageService& messages,
                        std::function<int()> languageOffset, QWidget* parent = nullptr);

    QWidget* ModeButtons() const { return m_modeButtons; }
    bool IsShared() const;

    // SetOffered shows the mode buttons, and the panel in shared mode, or hides both (the
    // text page offers the single passphrase only; the selected mode keeps its value).
    void SetOffered(bool offered);

    // BuildKey is the shared key of the keys entered: it stores the key on show first. A key
    // among the first count that is empty shows message 386 with its number, a count
    // outside 1 to 10 message 385; both give nothing.
    [[nodiscard]] std::optional<SecretBytes> BuildKey();
    // ClearSlots empties all ten key slots (after a decryption has read them), and the
    // passphrase box, which shows one of them: no key stays on screen after it was used.
    void ClearSlots();
    // HideKeyPlace hides one of the ten key places until the count changes again.
    void HideKeyPlace(int index);
    // Localise sets the texts the window's catalogue marks cannot: tooltips, the places'
    // descriptions. The window calls it after each language switch.
    void Localise();

    const SharedSecurityState& State() const { return m_state; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void BuildControls();
    void OnOptMultsClick(int index);
    void OnCountChanged(const QString& text);
    bool ValidateCount();
    void ShowCountMessage();
    void OnScroll(int value);
    void OnArrow(int index);
    void ShowInBox(const std::optional<std::string>& text);
    void Mirror();
    void UpdatePlaces();
    QString Text(int germanId, const QString& s = {}) const;

    QLineEdit& m_txtCode;
    MessageService& m_messages;
    std::function<int()> m_languageOffset;
    SharedSecurityState m_state;
    bool m_offered = true;
    std::optional<int> m_hiddenPlace;
    bool m_countAnnounced = false; // message 385 was shown for the count as it stands

    QWidget* m_modeButtons = nullptr;
    std::array<QRadioButton*, 2> m_optMults{};
    QLineEdit* m_txtKeyNum = nullptr;
    QLabel* m_lblKeyOf = nullptr;
    std::array<QToolButton*, 2> m_lblNextKey{};
    QScrollBar* m_keyScroll = nullptr;
    std::array<KeyPlace*, kSharedKeySlots> m_places{};
};

} // namespace kelvora
