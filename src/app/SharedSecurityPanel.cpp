#include "app/SharedSecurityPanel.h"

#include "app/Theme.h"
#include "app/WindowParts.h"
#include "i18n/Catalogue.h"
#include "i18n/TextIds.h"

#include <QFocusEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QRadioButton>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

namespace kelvora {
namespace {

constexpr std::array kModeCaptionIds = {kSinglePassphraseText, kSharedSecurityText};
constexpr std::array kArrowTipIds = {kNextKeyTip, kPreviousKeyTip}; // next, previous
constexpr int kCountFieldWidth = 44;

// LeavesTheField tells whether a focus loss moves the focus to another control of the window,
// which is when the count is checked; a dialog or another window taking the focus is not.
bool LeavesTheField(const QFocusEvent& event) {
    switch (event.reason()) {
    case Qt::ActiveWindowFocusReason:
    case Qt::PopupFocusReason:
    case Qt::MenuBarFocusReason:
        return false;
    default:
        return true;
    }
}

} // namespace

KeyPlace::KeyPlace(int index, QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("SchlusselPlatz_%1").arg(index));
    setFixedSize(kSide, kSide);
}

void KeyPlace::SetState(bool filled, bool current, const QString& description) {
    setAccessibleName(description);
    setToolTip(description);
    if (filled == m_filled && current == m_current) {
        return;
    }
    m_filled = filled;
    m_current = current;
    update();
}

void KeyPlace::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(m_current ? theme::kAccentDark : theme::kOutline, m_current ? 2.0 : 1.0));
    painter.setBrush(m_filled ? theme::kAccent : theme::kSurface);
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 3, 3);
}

SharedSecurityPanel::SharedSecurityPanel(QLineEdit& txtCode, MessageService& messages,
                                         std::function<int()> languageOffset, QWidget* parent)
    : QWidget(parent), m_txtCode(txtCode), m_messages(messages),
      m_languageOffset(std::move(languageOffset)) {
    setObjectName(QStringLiteral("pctSharedSecurity"));
    BuildControls();
    Mirror();
    UpdatePlaces();
    setVisible(false);
}

void SharedSecurityPanel::BuildControls() {
    m_modeButtons = new QWidget(parentWidget());
    m_modeButtons->setObjectName(QStringLiteral("FrameMults"));
    auto* modes = new QHBoxLayout(m_modeButtons);
    modes->setContentsMargins(0, 0, 0, 0);
    for (int i = 0; i < 2; ++i) {
        m_optMults[i] =
            parts::Tag(new QRadioButton(m_modeButtons), QStringLiteral("optMults_%1").arg(i),
                       kModeCaptionIds[static_cast<std::size_t>(i)]);
        modes->addWidget(m_optMults[i]);
        connect(m_optMults[i], &QRadioButton::clicked, this, [this, i] { OnOptMultsClick(i); });
    }
    modes->addStretch();
    m_optMults[0]->setChecked(true);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    auto* row = new QHBoxLayout;
    auto* caption = parts::Tag(new QLabel(this), QStringLiteral("lblsharedkey"), kKeysCaption);
    m_txtKeyNum = new QLineEdit(QString::fromLatin1(SharedSecurityState::kInitialCount), this);
    m_txtKeyNum->setObjectName(QStringLiteral("txtKeyNum"));
    m_txtKeyNum->setFixedWidth(kCountFieldWidth);
    m_txtKeyNum->installEventFilter(this);
    caption->setBuddy(m_txtKeyNum);
    m_lblKeyOf = new QLabel(this);
    m_lblKeyOf->setObjectName(QStringLiteral("lblKeyOf"));
    m_keyScroll = new QScrollBar(Qt::Horizontal, this);
    m_keyScroll->setObjectName(QStringLiteral("KeyScroll"));
    m_keyScroll->setFocusPolicy(Qt::StrongFocus);
    m_keyScroll->setMinimum(1);
    for (int i = 0; i < 2; ++i) {
        m_lblNextKey[i] = new QToolButton(this);
        m_lblNextKey[i]->setObjectName(QStringLiteral("lblNextKey_%1").arg(i));
        m_lblNextKey[i]->setText(i == 0 ? QStringLiteral(">") : QStringLiteral("<"));
        m_lblNextKey[i]->setAutoRaise(true);
        connect(m_lblNextKey[i], &QToolButton::clicked, this, [this, i] { OnArrow(i); });
    }
    row->addWidget(caption);
    row->addWidget(m_txtKeyNum);
    row->addSpacing(8);
    row->addWidget(m_lblKeyOf);
    row->addWidget(m_lblNextKey[1]);
    row->addWidget(m_keyScroll, 1);
    row->addWidget(m_lblNextKey[0]);
    row->addSpacing(8);
    for (int i = 0; i < kSharedKeySlots; ++i) {
        m_places[static_cast<std::size_t>(i)] = new KeyPlace(i, this);
        row->addWidget(m_places[static_cast<std::size_t>(i)]);
    }
    column->addLayout(row);
    auto* hint = parts::Tag(new QLabel(this), QStringLiteral("LblSharedHint"), kDecryptionOnlyHint);
    hint->setProperty("role", QStringLiteral("hint"));
    hint->setWordWrap(true);
    column->addWidget(hint);

    connect(m_txtKeyNum, &QLineEdit::textChanged, this, &SharedSecurityPanel::OnCountChanged);
    connect(m_keyScroll, &QScrollBar::valueChanged, this, &SharedSecurityPanel::OnScroll);
    connect(&m_txtCode, &QLineEdit::textChanged, this, &SharedSecurityPanel::UpdatePlaces);
}

bool SharedSecurityPanel::IsShared() const {
    return m_optMults[1]->isChecked();
}

void SharedSecurityPanel::SetOffered(bool offered) {
    m_offered = offered;
    m_modeButtons->setVisible(offered);
    setVisible(offered && IsShared());
}

void SharedSecurityPanel::OnOptMultsClick(int index) {
    setVisible(m_offered && IsShared());
    m_state.ClearSlots();
    if (m_optMults[0]->isChecked()) {
        m_txtCode.clear();
    }
    UpdatePlaces();
    if (index != 0) {
        m_txtKeyNum->setFocus(Qt::OtherFocusReason);
    } else {
        m_txtCode.setFocus(Qt::OtherFocusReason);
    }
}

void SharedSecurityPanel::OnCountChanged(const QString& text) {
    const std::string box = m_txtCode.text().toStdString();
    const std::optional<std::string> shown = m_state.OnCountChanged(text.toStdString(), box);
    m_hiddenPlace.reset();
    m_countAnnounced = false;
    Mirror();
    ShowInBox(shown);
}

bool SharedSecurityPanel::ValidateCount() {
    switch (SharedSecurityState::Validate(m_txtKeyNum->text().toStdString())) {
    case SharedSecurityState::Validation::Accept:
        return true;
    case SharedSecurityState::Validation::RefuseOutOfRange:
        ShowCountMessage();
        m_countAnnounced = true;
        return false;
    case SharedSecurityState::Validation::Refuse:
        return false;
    case SharedSecurityState::Validation::FallBackToSingle:
        break;
    }
    // One key is no shared security: back to the single passphrase, "2" kept for next time.
    m_optMults[0]->setChecked(true);
    OnOptMultsClick(0);
    m_txtKeyNum->setText(QString::fromLatin1(SharedSecurityState::kFallbackCount));
    return true;
}

void SharedSecurityPanel::ShowCountMessage() {
    m_messages.ShowMessage(kKeyCountMessageId, Text(kKeyCountMessageId),
                           MessageService::Icon::Information, QString());
}

void SharedSecurityPanel::OnScroll(int value) {
    ShowInBox(m_state.OnScroll(value, m_txtCode.text().toStdString()));
    Mirror();
}

void SharedSecurityPanel::OnArrow(int index) {
    ShowInBox(m_state.OnArrow(index, m_txtCode.text().toStdString()));
    Mirror();
}

std::optional<SecretBytes> SharedSecurityPanel::BuildKey() {
    SharedKey shared = m_state.BuildKey(m_txtCode.text().toStdString());
    UpdatePlaces();
    if (shared.emptyKeyNumber == SharedSecurityState::kCountOutOfRange) {
        // A click on a command first takes the focus from the count field, which has said so.
        if (!std::exchange(m_countAnnounced, false)) {
            ShowCountMessage();
        }
        return std::nullopt;
    }
    if (!shared.ok()) {
        m_messages.ShowMessage(kEmptyKeyMessageId,
                               Text(kEmptyKeyMessageId, QString::number(shared.emptyKeyNumber)),
                               MessageService::Icon::Information, QString());
        return std::nullopt;
    }
    return std::move(shared.key);
}

void SharedSecurityPanel::ClearSlots() {
    m_state.ClearSlots();
    m_txtCode.clear();
    UpdatePlaces();
}

void SharedSecurityPanel::HideKeyPlace(int index) {
    if (index >= 0 && index < kSharedKeySlots) {
        m_hiddenPlace = index;
        UpdatePlaces();
    }
}

void SharedSecurityPanel::Localise() {
    for (std::size_t i = 0; i < m_lblNextKey.size(); ++i) {
        m_lblNextKey[i]->setToolTip(Text(kArrowTipIds[i]));
        m_lblNextKey[i]->setAccessibleName(Text(kArrowTipIds[i]));
    }
    m_keyScroll->setAccessibleName(Text(kKeyOnShowName));
    UpdatePlaces();
}

bool SharedSecurityPanel::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_txtKeyNum && event->type() == QEvent::FocusOut &&
        LeavesTheField(*static_cast<QFocusEvent*>(event)) && !ValidateCount()) {
        // The count must be put right before the focus may go elsewhere.
        QTimer::singleShot(0, m_txtKeyNum, [field = m_txtKeyNum] { field->setFocus(); });
    }
    return QWidget::eventFilter(watched, event);
}

void SharedSecurityPanel::ShowInBox(const std::optional<std::string>& text) {
    if (text) {
        m_txtCode.setText(QString::fromStdString(*text));
    }
    UpdatePlaces();
}

void SharedSecurityPanel::Mirror() {
    const QSignalBlocker countBlocker(m_txtKeyNum);
    const QSignalBlocker scrollBlocker(m_keyScroll);
    const QString count = QString::fromStdString(m_state.CountText());
    if (m_txtKeyNum->text() != count) {
        m_txtKeyNum->setText(count);
    }
    m_lblKeyOf->setText(QString::fromStdString(m_state.Caption()));
    m_keyScroll->setMaximum(std::max(1, m_state.ScrollMaximum()));
    m_keyScroll->setValue(m_state.ScrollValue());
}

void SharedSecurityPanel::UpdatePlaces() {
    const int used = std::clamp(m_state.ScrollMaximum(), 0, kSharedKeySlots);
    for (int i = 0; i < kSharedKeySlots; ++i) {
        KeyPlace* place = m_places[static_cast<std::size_t>(i)];
        const bool current = i == m_state.ShownSlot();
        const bool filled = current ? !m_txtCode.text().isEmpty() : !m_state.Slot(i).empty();
        const QString number = QString::number(i + 1);
        place->SetState(filled, current, Text(filled ? kPlaceFilledName : kPlaceEmptyName, number));
        place->setVisible(i < used && m_hiddenPlace != i);
    }
}

QString SharedSecurityPanel::Text(int germanId, const QString& s) const {
    return QString::fromStdString(GetText(m_languageOffset(), germanId, s.toStdString()));
}

} // namespace kelvora
