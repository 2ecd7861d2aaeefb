#include "about/FrmAbout.h"

#include "app/Theme.h"
#include "app/WindowChrome.h"
#include "app/WindowParts.h"
#include "common/Version.h"
#include "i18n/Catalogue.h"
#include "i18n/LocaliseForm.h"
#include "i18n/TextIds.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRandomGenerator>
#include <QVBoxLayout>

namespace kelvora {
namespace {

constexpr int kLogoSide = 40;
constexpr int kWindowWidth = 580;

// The maker's product the second panel asks about.
constexpr const char* kToolboxName = "Kelvora Toolbox";

// A link of a panel: the element of Label2 and the catalogue id of its text.
struct PanelLink {
    int labelIndex;
    int textId;
};

// PanelTexts are the catalogue ids of a panel: its heading, up to two one-line tool
// descriptions (0 for none), a paragraph, a call to action and its links.
struct PanelTexts {
    int heading;
    std::array<int, 2> tools;
    int paragraph;
    int action;
    std::array<PanelLink, 2> links;
};

const PanelTexts& TextsOf(AboutPanel panel) {
    static constexpr PanelTexts kPrivacyTest{kPrivacyHeading,
                                             {0, 0},
                                             kPrivacyParagraph,
                                             kPrivacyAction,
                                             {{{1, kPrivacyLinkText}, {0, 0}}}};
    static constexpr PanelTexts kMakerTool{
        kDoYouKnowHeading,
        {kCookieToolText, kShredderToolText},
        kToolboxParagraph,
        kToolboxAction,
        {{{2, kToolboxLinkText}, {kStartPageLinkIndex, kAllProductsLinkText}}}};
    static constexpr PanelTexts kPartnerTrial{
        kTrialHeading, {0, 0}, kTrialParagraph, kTrialAction, {{{3, kTrialLinkText}, {0, 0}}}};
    switch (panel) {
    case AboutPanel::MakerTool:
        return kMakerTool;
    case AboutPanel::PartnerTrial:
        return kPartnerTrial;
    case AboutPanel::PrivacyTest:
        break;
    }
    return kPrivacyTest;
}

QLabel* TextLabel(const QString& name, QWidget* parent, const QString& role = {}) {
    auto* label = new QLabel(parent);
    label->setObjectName(name);
    label->setWordWrap(true);
    if (!role.isEmpty()) {
        label->setProperty("role", role);
    }
    return label;
}

} // namespace

FrmAbout::FrmAbout(MessageService& messages, int languageOffset, double draw, QWidget* parent)
    : QWidget(parent, Qt::Window), m_messages(messages), m_panel(PanelForDraw(draw)),
      m_languageBase(LanguageBaseOf(languageOffset)) {
    BuildWindow();
    SetLanguageBase(m_languageBase);
}

double FrmAbout::DrawPanel() {
    return QRandomGenerator::global()->generateDouble();
}

void FrmAbout::BuildWindow() {
    setObjectName(QStringLiteral("FrmAbout"));
    setProperty("Tag", QStringLiteral("#%1").arg(kWelcomeTitle));
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_StyledBackground);
    setStyleSheet(theme::StyleSheet() +
                  QStringLiteral("#FrmAbout { background: %1; }"
                                 "QLabel[role=\"heading\"] { color: %2; font-size: 12pt;"
                                 " font-weight: bold; }"
                                 "QLabel[role=\"link\"]:focus { background: %3; }")
                      .arg(theme::kWindow.name(), theme::kAccent.name(), theme::kOutline.name()));

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 18, 24, 20);
    layout->setSpacing(12);
    layout->addWidget(BuildHeader());
    layout->addWidget(
        parts::Caption(QStringLiteral("LblWelcome"), kWelcomeTitle, this, QStringLiteral("title")));
    m_lblDescription = TextLabel(QStringLiteral("LblDescription"), this);
    layout->addWidget(m_lblDescription);
    layout->addWidget(BuildPanel());
    layout->addSpacing(4);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    m_startButton = parts::Button(QStringLiteral("Command1"), kStartButtonText, this, true);
    m_startButton->setDefault(true);
    buttons->addWidget(m_startButton);
    layout->addLayout(buttons);
    connect(m_startButton, &QPushButton::clicked, this, [this] {
        emit StartRequested();
        close();
    });
    setFixedWidth(kWindowWidth);
}

QWidget* FrmAbout::BuildHeader() {
    auto* header = new QWidget(this);
    auto* row = new QHBoxLayout(header);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(10);
    row->addWidget(parts::Logo(kLogoSide, header));
    auto* names = new QVBoxLayout;
    names->setSpacing(0);
    auto* product = new QLabel(QStringLiteral("Kelvora"), header);
    product->setProperty("role", QStringLiteral("title"));
    m_lblVersion = TextLabel(QStringLiteral("LblVersion"), header, QStringLiteral("hint"));
    names->addWidget(product);
    names->addWidget(m_lblVersion);
    row->addLayout(names);
    row->addStretch();

    m_flags = LanguageFlags(header);
    for (std::size_t i = 0; i < m_flags.size(); ++i) {
        const int languageBase = static_cast<int>(i) * kLanguageBaseStep;
        connect(m_flags[i], &FlagImage::Clicked, this, [this, languageBase] {
            SetLanguageBase(languageBase);
            emit LanguageChosen(LanguageOffsetOfBase(languageBase));
        });
        row->addWidget(m_flags[i], 0, Qt::AlignTop);
    }
    return header;
}

QWidget* FrmAbout::BuildPanel() {
    auto* card = new QFrame(this);
    parts::MakeCard(card, QStringLiteral("FramePanel"));
    auto* column = new QVBoxLayout(card);
    column->setContentsMargins(18, 14, 18, 16);
    column->setSpacing(8);
    m_lblHeading = TextLabel(QStringLiteral("LblHeading"), card, QStringLiteral("heading"));
    column->addWidget(m_lblHeading);
    for (std::size_t i = 0; i < m_lblTools.size(); ++i) {
        m_lblTools[i] = TextLabel(QStringLiteral("LblTool_%1").arg(i), card);
        column->addWidget(m_lblTools[i]);
    }
    m_lblParagraph = TextLabel(QStringLiteral("LblParagraph"), card);
    m_lblAction = TextLabel(QStringLiteral("LblAction"), card, QStringLiteral("prompt"));
    column->addWidget(m_lblParagraph);
    column->addWidget(m_lblAction);

    auto* links = new QHBoxLayout;
    links->setSpacing(18);
    const PanelTexts& texts = TextsOf(m_panel);
    for (std::size_t i = 0; i < texts.links.size(); ++i) {
        const int labelIndex = texts.links[i].labelIndex;
        if (labelIndex == 0) {
            continue;
        }
        auto* link = new ClickLabel(card);
        link->setObjectName(QStringLiteral("Label2_%1").arg(labelIndex));
        link->setProperty("role", QStringLiteral("link"));
        link->setFocusPolicy(Qt::StrongFocus); // Tab reaches it, Enter or Space follows it
        link->setCursor(Qt::PointingHandCursor);
        connect(link, &ClickLabel::Clicked, this, [this, labelIndex] { OnLinkClick(labelIndex); });
        links->addWidget(link);
        m_links[i] = link;
        m_linkTextIds[i] = texts.links[i].textId;
    }
    links->addStretch();
    column->addLayout(links);
    return card;
}

void FrmAbout::SetLanguageBase(int languageBase) {
    m_languageBase = languageBase;
    const int offset = LanguageOffsetOfBase(languageBase);
    MarkLanguageFlag(this, offset);
    LocaliseForm(this, offset);
    FillTexts();
}

// FillTexts writes the description, the version and the panel in the window's language. A
// tool description the language lacks is left out rather than shown as a marker.
void FrmAbout::FillTexts() {
    const PanelTexts& texts = TextsOf(m_panel);
    m_lblVersion->setText(Text(kVersionLineText, QString::fromLatin1(kVersionText)));
    m_lblDescription->setText(Text(kProductDescriptionText));
    m_lblHeading->setText(Text(texts.heading, QString::fromLatin1(kToolboxName)));
    const int offset = LanguageOffsetOfBase(m_languageBase);
    for (std::size_t i = 0; i < m_lblTools.size(); ++i) {
        const bool present = texts.tools[i] != 0 && FindText(offset, texts.tools[i]);
        m_lblTools[i]->setVisible(present);
        m_lblTools[i]->setText(present ? QStringLiteral("• ") + Text(texts.tools[i]) : QString());
    }
    m_lblParagraph->setText(Text(texts.paragraph));
    m_lblAction->setText(Text(texts.action));
    for (std::size_t i = 0; i < m_links.size(); ++i) {
        if (m_links[i] != nullptr) {
            m_links[i]->setText(Text(m_linkTextIds[i]));
        }
    }
    // The window is as tall as the wrapped texts of this language need.
    setFixedHeight(layout()->totalHeightForWidth(kWindowWidth));
}

void FrmAbout::OnLinkClick(int labelIndex) {
    m_messages.OpenUrl(QString::fromStdString(LinkAddress(m_panel, m_languageBase, labelIndex)));
}

QString FrmAbout::Text(int germanId, const QString& s) const {
    return QString::fromStdString(
        GetText(LanguageOffsetOfBase(m_languageBase), germanId, s.toStdString()));
}

} // namespace kelvora
