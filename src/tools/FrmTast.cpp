#include "tools/FrmTast.h"

#include "app/LanguageId.h"
#include "app/Theme.h"
#include "i18n/Catalogue.h"
#include "i18n/LocaliseForm.h"
#include "i18n/TextIds.h"

#include <QGuiApplication>
#include <QInputMethod>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QRadioButton>

namespace kelvora {
namespace {

// The window around the keys, in twips like the keys.
constexpr int kWindowWidth = 7575;
constexpr int kWindowHeight = 2760;
constexpr int kOptionTop = 2340;
constexpr int kOptionWidth = 720;
constexpr int kOptionHeight = 300;
constexpr int kOptionLefts[] = {240, 1080};

constexpr int kOptionNameIds[] = {kNormalSizeText, kDoubleSizeText};

// The two fixed German tool tips of the design; they are not translated.
const QString kShiftTip = QStringLiteral("Groß-/Kleinschreibung");
const QString kSpaceTip = QStringLiteral("Leertaste betätigen");

QRect PixelsOfTwips(int left, int top, int width, int height) {
    return {left / kTwipsPerPixel, top / kTwipsPerPixel, width / kTwipsPerPixel,
            height / kTwipsPerPixel};
}

// ShownCaption is a caption as a button shows it: "&" would mark a shortcut, so a single
// one is doubled; the "&&" of the design already shows one.
QString ShownCaption(const std::string& caption) {
    QString shown = QString::fromStdString(caption);
    return shown == QStringLiteral("&&") ? shown : shown.replace(u'&', QStringLiteral("&&"));
}

QString KeyStyleSheet() {
    return QStringLiteral(R"(
        #FrmTast { background: %1; }
        QPushButton {
            background: %2; border: 1px solid %3; border-radius: 4px; padding: 0;
            color: %4; font-size: 9pt;
        }
        QPushButton:hover { border-color: %5; }
        QPushButton:focus { border: 2px solid %5; }
        QPushButton:pressed, QPushButton:checked { background: %5; color: white; }
        QPushButton:disabled { background: %1; color: #A0A8B4; border-color: #E3E7EC; }
        QRadioButton { color: %4; font-size: 9pt; }
    )")
        .arg(theme::kWindow.name(), theme::kSurface.name(), theme::kOutline.name(),
             theme::kText.name(), theme::kAccent.name());
}

} // namespace

FrmTast::FrmTast(QLineEdit& txtCode, int languageOffset, std::uint32_t keyboardLayout,
                 QWidget* parent)
    : QWidget(parent, Qt::Tool), m_txtCode(txtCode), m_languageOffset(languageOffset),
      m_layoutCode(LayoutCodeOf(keyboardLayout)), m_captions(CaptionsFor(m_layoutCode)) {
    setObjectName(QStringLiteral("FrmTast"));
    setProperty("Tag", QStringLiteral("#%1").arg(kScreenKeyboardTitle));
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_StyledBackground);
    setStyleSheet(KeyStyleSheet());
    BuildKeys();
    BuildSizeSwitch();
    setFixedSize(kWindowWidth / kTwipsPerPixel, kWindowHeight / kTwipsPerPixel);
    SetLanguage(languageOffset);
}

std::uint32_t FrmTast::SystemKeyboardLayout() {
    const QString name = QGuiApplication::inputMethod()->locale().name(); // "de_CH"
    return KeyboardLayoutOfLanguage(WindowsLanguageIdOfLocale(name.toStdString()));
}

void FrmTast::BuildKeys() {
    for (const KeyDesign& key : DesignedKeys()) {
        auto* button = new QPushButton(this);
        button->setObjectName(QStringLiteral("cmdNr_%1").arg(key.index));
        button->setGeometry(PixelsOfTwips(key.left, key.top, key.width, key.height));
        button->setAutoDefault(false);
        if (key.captionId != 0) {
            button->setProperty("Tag", QStringLiteral("#%1").arg(key.captionId));
        } else {
            button->setText(ShownCaption(m_captions[static_cast<std::size_t>(key.index)]));
        }
        button->setEnabled(!IsInactiveKey(key.index));
        connect(button, &QPushButton::clicked, this,
                [this, index = key.index] { OnKeyClick(index); });
        m_keys[static_cast<std::size_t>(key.index)] = button;
    }
    m_keys[kShiftKey]->setCheckable(true);
    m_keys[kShiftKey]->setToolTip(kShiftTip);
    m_keys[kSpaceKey]->setToolTip(kSpaceTip);
}

void FrmTast::BuildSizeSwitch() {
    const QString captions[] = {QStringLiteral("1x"), QStringLiteral("2x")};
    for (std::size_t i = 0; i < m_sizeOptions.size(); ++i) {
        auto* option = new QRadioButton(captions[i], this);
        option->setObjectName(QStringLiteral("Option1_%1").arg(i));
        option->setGeometry(
            PixelsOfTwips(kOptionLefts[i], kOptionTop, kOptionWidth, kOptionHeight));
        connect(option, &QRadioButton::clicked, this, &FrmTast::OnSizeOptionClick);
        m_sizeOptions[i] = option;
    }
    m_sizeOptions[0]->setChecked(true);
}

void FrmTast::SetLanguage(int languageOffset) {
    m_languageOffset = languageOffset;
    LocaliseForm(this, languageOffset);
    for (std::size_t i = 0; i < m_sizeOptions.size(); ++i) {
        m_sizeOptions[i]->setAccessibleName(Text(kOptionNameIds[i]));
    }
    UpdateKeyNames();
}

void FrmTast::OnKeyClick(int index) {
    QPushButton* key = m_keys[static_cast<std::size_t>(index)];
    const KeyAction action =
        PressKey(m_layoutCode, m_lowerCaseMode, index, m_captions[static_cast<std::size_t>(index)]);
    switch (action.kind) {
    case KeyAction::Kind::RemoveLast:
        if (!m_txtCode.text().isEmpty()) {
            m_txtCode.setText(m_txtCode.text().chopped(1));
        }
        break;
    case KeyAction::Kind::ToggleShift:
        m_lowerCaseMode = !m_lowerCaseMode;
        m_captions[kShiftKey] = ShiftCaption(m_lowerCaseMode);
        key->setText(ShownCaption(m_captions[kShiftKey]));
        key->setChecked(!m_lowerCaseMode);
        UpdateKeyNames();
        break;
    case KeyAction::Kind::Append:
        m_txtCode.setText(m_txtCode.text() + QString::fromStdString(action.text));
        break;
    case KeyAction::Kind::Nothing:
        break;
    }
}

void FrmTast::OnSizeOptionClick() {
    const ZoomChange change = ZoomChangeFor(m_sizeOptions[1]->isChecked(), m_zoomFactor);
    if (change == ZoomChange::None) {
        return;
    }
    const auto zoomed = [change](const QRect& place) {
        return QRect(ZoomedValue(place.left(), change), ZoomedValue(place.top(), change),
                     ZoomedValue(place.width(), change), ZoomedValue(place.height(), change));
    };
    setFixedSize(ZoomedValue(width(), change), ZoomedValue(height(), change));
    for (QWidget* control : findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        control->setGeometry(zoomed(control->geometry()));
    }
    m_zoomFactor = ZoomFactorAfter(m_zoomFactor, change);
}

// UpdateKeyNames names every key by what it types now, so a screen reader says the
// character (the letters follow shift), and the keys that type none by what they do.
void FrmTast::UpdateKeyNames() {
    for (const KeyDesign& design : DesignedKeys()) {
        QPushButton* key = m_keys[static_cast<std::size_t>(design.index)];
        const KeyAction action = PressKey(m_layoutCode, m_lowerCaseMode, design.index,
                                          m_captions[static_cast<std::size_t>(design.index)]);
        QString name;
        switch (action.kind) {
        case KeyAction::Kind::Append:
            name = action.text == " " ? Text(kSpaceKeyText) : QString::fromStdString(action.text);
            break;
        case KeyAction::Kind::RemoveLast:
            name = Text(kRemoveLastKeyName);
            break;
        case KeyAction::Kind::ToggleShift:
            name = Text(kShiftKeyName);
            break;
        case KeyAction::Kind::Nothing:
            name = key->text();
            break;
        }
        key->setAccessibleName(name);
    }
}

QString FrmTast::Text(int germanId) const {
    return QString::fromStdString(GetText(m_languageOffset, germanId));
}

} // namespace kelvora
