// Builds the main window from its parts and lays them out. The layouts size every label
// from its text, so no caption is clipped in any of the four languages.
#include "app/DecryptPage.h"
#include "app/EncryptPage.h"
#include "app/FCrypt.h"
#include "app/PassphraseArea.h"
#include "app/TextPage.h"
#include "app/Theme.h"
#include "app/WindowChrome.h"
#include "app/WindowParts.h"
#include "app/WorkingPanel.h"
#include "controls/LightTab.h"
#include "controls/ucShape.h"
#include "i18n/Catalogue.h"
#include "i18n/TextIds.h"

#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace kelvora {
namespace {

constexpr int kLogoSide = 30;
constexpr int kPagesMinimumHeight = 260;

// ChainFocus lets Tab visit the areas in the given order, each area's controls in the order
// they were made, whatever order the areas themselves were made in.
void ChainFocus(std::initializer_list<QWidget*> areas) {
    QWidget* previous = nullptr;
    for (QWidget* area : areas) {
        QList<QWidget*> widgets{area};
        widgets += area->findChildren<QWidget*>();
        for (QWidget* widget : widgets) {
            if ((widget->focusPolicy() & Qt::TabFocus) == 0) {
                continue;
            }
            if (previous != nullptr) {
                QWidget::setTabOrder(previous, widget);
            }
            previous = widget;
        }
    }
}

} // namespace

void FCrypt::BuildWindow() {
    setObjectName(QStringLiteral("FCrypt"));
    setWindowTitle(QStringLiteral("Kelvora"));
    setWindowIcon(QIcon(LogoPixmap(64, 1.0)));
    setStyleSheet(theme::StyleSheet());

    m_background = new ucShape(this);
    m_background->setObjectName(QStringLiteral("ucShape1"));
    m_background->SetRounding(theme::kWindowRounding);
    m_background->SetFillColor(
        OleColorFromRgb(theme::kWindow.red(), theme::kWindow.green(), theme::kWindow.blue()));
    m_background->SetForeColor(
        OleColorFromRgb(theme::kOutline.red(), theme::kOutline.green(), theme::kOutline.blue()));
    m_background->lower();

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 14, 24, 22);
    layout->setSpacing(12);
    layout->addWidget(BuildHeader());

    m_pageTabs = new LightTab(this);
    m_pageTabs->setObjectName(QStringLiteral("TabStr"));
    m_pageTabs->SetNumberOfTabs(2);
    layout->addWidget(m_pageTabs);

    m_passphraseArea = new PassphraseArea(m_context, this);
    m_workingPanel = new WorkingPanel(m_context, this);
    m_textPage = new TextPage(m_context, *m_passphraseArea, *this, this);

    // The passphrase area gets the height its texts ask for; the pages take what is left.
    QWidget* pages = parts::Stacked({m_textPage, BuildFilesPage()}, this);
    pages->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Ignored);
    pages->setMinimumHeight(kPagesMinimumHeight);
    layout->addWidget(pages, 1);
    QWidget* passphraseArea = parts::Stacked({m_passphraseArea, m_workingPanel}, this);
    passphraseArea->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    layout->addWidget(passphraseArea);
    m_workingPanel->hide();

    setFixedSize(theme::kWindowWidth, theme::kWindowHeight);
    setAcceptDrops(true);
    ChainFocus({m_pageTabs, pages, passphraseArea});
    ConnectControls();
}

QWidget* FCrypt::BuildHeader() {
    auto* header = new QWidget(this);
    auto* row = new QHBoxLayout(header);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(4);
    row->addWidget(parts::Logo(kLogoSide, header));
    row->addSpacing(8);
    auto* title = new QLabel(QStringLiteral("Kelvora"), header);
    title->setObjectName(QStringLiteral("LblTitle"));
    title->setProperty("role", QStringLiteral("title"));
    row->addWidget(title);
    row->addStretch();

    auto* cmdAbout = parts::Button(QStringLiteral("cmdAbout"), kAboutButtonText, header);
    cmdAbout->setProperty("role", QStringLiteral("quiet"));
    connect(cmdAbout, &QPushButton::clicked, this, &FCrypt::OnAboutClick);
    row->addWidget(cmdAbout);
    row->addSpacing(8);
    m_flags = LanguageFlags(header);
    for (FlagImage* flag : m_flags) {
        row->addWidget(flag);
    }
    row->addSpacing(18);
    m_controlBox = new ControlBox(header);
    m_controlBox->setToolTip(QStringLiteral("#%1").arg(kControlBoxTip));
    connect(m_controlBox, &ControlBox::MinimiseRequested, this, &QWidget::showMinimized);
    connect(m_controlBox, &ControlBox::CloseRequested, this, &QWidget::close);
    row->addWidget(m_controlBox, 0, Qt::AlignVCenter);
    return header;
}

QWidget* FCrypt::BuildFilesPage() {
    m_filesPage = new QWidget(this);
    m_filesPage->setObjectName(QStringLiteral("Frame_1"));
    auto* layout = parts::Column(m_filesPage, 10);
    layout->setContentsMargins(0, 4, 0, 0);
    m_fileTabs = new LightTab(m_filesPage);
    m_fileTabs->setObjectName(QStringLiteral("TabFileCrypt"));
    m_fileTabs->SetNumberOfTabs(2);
    layout->addWidget(m_fileTabs);

    m_encryptPage = new EncryptPage(m_context, *m_passphraseArea, *this, m_filesPage);
    m_decryptPage = new DecryptPage(m_context, *m_passphraseArea, *this, m_filesPage);
    layout->addWidget(parts::Stacked({m_encryptPage, m_decryptPage}, m_filesPage), 1);
    return m_filesPage;
}

void FCrypt::ConnectControls() {
    connect(m_pageTabs, &LightTab::AfterTabChange, this, &FCrypt::OnPageTabChange);
    connect(m_fileTabs, &LightTab::AfterTabChange, this, &FCrypt::OnFileTabChange);
    constexpr std::array kOffsets{kGerman, kEnglish, kSpanish, kFrench};
    for (std::size_t i = 0; i < m_flags.size(); ++i) {
        connect(m_flags[i], &FlagImage::Clicked, this,
                [this, offset = kOffsets[i]] { SetLanguage(offset); });
    }
}

} // namespace kelvora
