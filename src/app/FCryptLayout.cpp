// Builds the controls of the main window and lays them out. The layouts size every label
// from its text, so no caption is clipped in any of the four languages.
#include "app/CountAnimation.h"
#include "app/FCrypt.h"
#include "app/Theme.h"
#include "app/WindowChrome.h"
#include "controls/LightTab.h"
#include "controls/ProgressBar.h"
#include "controls/ucShape.h"
#include "i18n/Catalogue.h"
#include "tools/RatingDisplay.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace kelvora {
namespace {

constexpr int kCountInterval = 125; // milliseconds between two steps of the busy animation
constexpr int kCardMargin = 16;
constexpr int kLogoSide = 30;
constexpr int kPagesMinimumHeight = 260;
constexpr int kControlBoxTipId = 500;
constexpr int kFirstFlagTipId = 501; // German, English, Spanish, French

// Tag names a control and marks it with the German catalogue id of its text.
template <typename Widget> Widget* Tag(Widget* widget, const QString& name, int germanId) {
    widget->setObjectName(name);
    widget->setProperty("Tag", QStringLiteral("#%1").arg(germanId));
    return widget;
}

QLabel* Caption(const QString& name, int germanId, QWidget* parent,
                const QString& role = QStringLiteral("caption")) {
    auto* label = Tag(new QLabel(parent), name, germanId);
    label->setProperty("role", role);
    label->setWordWrap(true);
    return label;
}

QPushButton* Button(const QString& name, int germanId, QWidget* parent, bool primary = false) {
    auto* button = Tag(new QPushButton(parent), name, germanId);
    if (primary) {
        button->setProperty("role", QStringLiteral("primary"));
    }
    button->setCursor(Qt::PointingHandCursor);
    return button;
}

QLineEdit* Edit(const QString& name, QWidget* parent) {
    auto* edit = new QLineEdit(parent);
    edit->setObjectName(name);
    return edit;
}

QFrame* Card(const QString& name, QWidget* parent) {
    auto* card = new QFrame(parent);
    card->setObjectName(name);
    card->setProperty("role", QStringLiteral("card"));
    return card;
}

ProgressBar* Bar(const QString& name, int height, QWidget* parent) {
    auto* bar = new ProgressBar(parent);
    bar->setObjectName(name);
    bar->SetSmooth(true);
    bar->SetBorderStyle(ProgressBar::BorderNone);
    bar->SetForeColor(
        OleColorFromRgb(theme::kAccent.red(), theme::kAccent.green(), theme::kAccent.blue()));
    bar->SetBackColor(OleColorFromRgb(0xE4, 0xE8, 0xEE));
    bar->hwnd()->setTextVisible(false);
    bar->setFixedHeight(height);
    return bar;
}

QWidget* Panel(const QString& name, QWidget* parent) {
    auto* panel = new QWidget(parent);
    panel->setObjectName(name);
    return panel;
}

// Column gives holder a vertical layout without margins.
QVBoxLayout* Column(QWidget* holder, int spacing) {
    auto* column = new QVBoxLayout(holder);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(spacing);
    return column;
}

// Stacked places widgets on top of each other in one cell. They keep their room when hidden,
// so the cell is as large as the largest of them whichever is shown.
QWidget* Stacked(std::initializer_list<QWidget*> widgets, QWidget* parent) {
    auto* holder = new QWidget(parent);
    auto* grid = new QGridLayout(holder);
    grid->setContentsMargins(0, 0, 0, 0);
    for (QWidget* widget : widgets) {
        QSizePolicy policy = widget->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        widget->setSizePolicy(policy);
        grid->addWidget(widget, 0, 0);
    }
    return holder;
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

    m_tabStr = new LightTab(this);
    m_tabStr->setObjectName(QStringLiteral("TabStr"));
    m_tabStr->SetNumberOfTabs(2);
    layout->addWidget(m_tabStr);

    // The passphrase area gets the height its texts ask for; the pages take what is left.
    QWidget* pages = Stacked({BuildTextPage(), BuildFilesPage()}, this);
    pages->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Ignored);
    pages->setMinimumHeight(kPagesMinimumHeight);
    layout->addWidget(pages, 1);
    QWidget* passphraseArea = Stacked({BuildPassphraseArea(), BuildWorkingPanel()}, this);
    passphraseArea->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    layout->addWidget(passphraseArea);
    m_frameW->hide();

    setFixedSize(theme::kWindowWidth, theme::kWindowHeight);
    ConnectControls();
}

QWidget* FCrypt::BuildHeader() {
    auto* header = new QWidget(this);
    auto* row = new QHBoxLayout(header);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(4);
    auto* logo = new QLabel(header);
    logo->setObjectName(QStringLiteral("ImgLogo"));
    logo->setPixmap(LogoPixmap(kLogoSide, devicePixelRatioF()));
    row->addWidget(logo);
    row->addSpacing(8);
    auto* title = new QLabel(QStringLiteral("Kelvora"), header);
    title->setObjectName(QStringLiteral("LblTitle"));
    title->setProperty("role", QStringLiteral("title"));
    row->addWidget(title);
    row->addStretch();

    const std::array<std::pair<FlagImage::Country, const char*>, 4> flags{{
        {FlagImage::Country::Germany, "ImageDE"},
        {FlagImage::Country::UnitedKingdom, "ImageEN"},
        {FlagImage::Country::Spain, "ImageES"},
        {FlagImage::Country::France, "ImageFR"},
    }};
    for (std::size_t i = 0; i < flags.size(); ++i) {
        m_flags[i] = new FlagImage(flags[i].first, QString::fromLatin1(flags[i].second), header);
        m_flags[i]->setToolTip(QStringLiteral("#%1").arg(kFirstFlagTipId + static_cast<int>(i)));
        row->addWidget(m_flags[i]);
    }
    row->addSpacing(18);
    auto* controlBox = new ControlBox(header);
    controlBox->setToolTip(QStringLiteral("#%1").arg(kControlBoxTipId));
    connect(controlBox, &ControlBox::minimiseRequested, this, &QWidget::showMinimized);
    connect(controlBox, &ControlBox::closeRequested, this, &QWidget::close);
    row->addWidget(controlBox, 0, Qt::AlignVCenter);
    return header;
}

QWidget* FCrypt::BuildTextPage() {
    auto* page = Panel(QStringLiteral("Frame_0"), this);
    m_frames[0] = page;
    auto* layout = Column(page, 8);
    layout->setContentsMargins(0, 4, 0, 0);
    layout->addWidget(Caption(QStringLiteral("LblText"), 165, page));

    m_txtResults = new QPlainTextEdit(page);
    m_txtResults->setObjectName(QStringLiteral("txtResults"));
    QFont mono(QStringLiteral("DejaVu Sans Mono"));
    mono.setStyleHint(QFont::Monospace);
    mono.setPointSize(9);
    m_txtResults->setFont(mono);
    layout->addWidget(m_txtResults, 1);

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    m_command1 = Button(QStringLiteral("Command1"), 161, page, true);
    m_command2 = Button(QStringLiteral("Command2"), 162, page, true);
    // cmdMail opens the mail window, which the program does not have yet: the button keeps
    // its state (enabled after an encryption) but stays hidden and connected to nothing.
    m_cmdMail = Button(QStringLiteral("cmdMail"), 181, page);
    m_cmdMail->setEnabled(false);
    m_cmdMail->hide();
    m_lblLink = Tag(new ClickLabel(page), QStringLiteral("LblLink"), 160);
    m_lblLink->setProperty("role", QStringLiteral("link"));
    m_lblLink->setCursor(Qt::PointingHandCursor);
    buttons->addWidget(m_command1);
    buttons->addWidget(m_command2);
    buttons->addWidget(m_cmdMail);
    buttons->addStretch();
    buttons->addWidget(m_lblLink);
    layout->addLayout(buttons);
    return page;
}

QWidget* FCrypt::BuildFilesPage() {
    auto* page = Panel(QStringLiteral("Frame_1"), this);
    m_frames[1] = page;
    auto* layout = Column(page, 10);
    layout->setContentsMargins(0, 4, 0, 0);
    m_tabFileCrypt = new LightTab(page);
    m_tabFileCrypt->setObjectName(QStringLiteral("TabFileCrypt"));
    m_tabFileCrypt->SetNumberOfTabs(2);
    layout->addWidget(m_tabFileCrypt);

    m_encryptPanel = Panel(QStringLiteral("FrameEncrypt"), page);
    auto* encrypt = Column(m_encryptPanel, 6);
    encrypt->addWidget(
        Caption(QStringLiteral("LblEncrHint"), 144, m_encryptPanel, QStringLiteral("hint")));
    encrypt->addSpacing(4);
    encrypt->addWidget(Caption(QStringLiteral("LblInputFiles"), 145, m_encryptPanel));
    m_lstCryptFiles = new QListWidget(m_encryptPanel);
    m_lstCryptFiles->setObjectName(QStringLiteral("LstCryptFiles"));
    m_lstCryptFiles->setSelectionMode(QAbstractItemView::ExtendedSelection);
    encrypt->addWidget(m_lstCryptFiles, 1);
    encrypt->addSpacing(4);
    encrypt->addWidget(Caption(QStringLiteral("LblOutputFile"), 146, m_encryptPanel));
    m_txtEncrFileName = Edit(QStringLiteral("TxtEncrFileName"), m_encryptPanel);
    encrypt->addWidget(m_txtEncrFileName);

    m_decryptPanel = Panel(QStringLiteral("FrameDecrypt"), page);
    auto* decrypt = Column(m_decryptPanel, 6);
    decrypt->addWidget(Caption(QStringLiteral("LblDecrFile"), 148, m_decryptPanel));
    m_txtDecrFile = Edit(QStringLiteral("TxtDecrFile"), m_decryptPanel);
    decrypt->addWidget(m_txtDecrFile);
    decrypt->addSpacing(8);
    decrypt->addWidget(Caption(QStringLiteral("LblDecrOutPath"), 153, m_decryptPanel));
    m_txtDecrOutPath = Edit(QStringLiteral("TxtDecrOutPath"), m_decryptPanel);
    decrypt->addWidget(m_txtDecrOutPath);
    decrypt->addStretch();

    layout->addWidget(Stacked({m_encryptPanel, m_decryptPanel}, page), 1);
    return page;
}

QWidget* FCrypt::BuildPassphraseArea() {
    auto* card = Card(QStringLiteral("FramePwd"), this);
    m_framePwd = card;
    auto* grid = new QGridLayout(card);
    grid->setContentsMargins(kCardMargin, 12, kCardMargin, 14);
    grid->setHorizontalSpacing(10);
    grid->setVerticalSpacing(8);
    grid->addWidget(Caption(QStringLiteral("Label4"), 149, card, QStringLiteral("prompt")), 0, 0, 1,
                    2);

    m_txtCode = Edit(QStringLiteral("TxtCode"), card);
    m_txtCode->setStyleSheet(QStringLiteral("lineedit-password-character: 42;")); // hide as "*"
    m_cmdPassgen = Button(QStringLiteral("cmdPassgen"), 155, card);
    grid->addWidget(m_txtCode, 1, 0);
    grid->addWidget(m_cmdPassgen, 1, 1);
    m_chkHPwd = Tag(new QCheckBox(card), QStringLiteral("ChkHPwd"), 158);
    grid->addWidget(m_chkHPwd, 2, 0, 1, 2, Qt::AlignLeft);

    m_rating = new RatingDisplay(card);
    grid->addWidget(m_rating, 3, 0, 1, 2);
    grid->setColumnStretch(0, 1);
    return card;
}

QWidget* FCrypt::BuildWorkingPanel() {
    auto* card = Card(QStringLiteral("FrameW"), this);
    m_frameW = card;
    auto* layout = new QVBoxLayout(card);
    layout->setContentsMargins(kCardMargin, 14, kCardMargin, 14);
    layout->setSpacing(8);

    auto* heading = new QHBoxLayout;
    heading->setSpacing(10);
    m_pictArbeitampel = new Lamp(QColor(0xF5, 0xA6, 0x23), QStringLiteral("PictArbeitampel"), card);
    heading->addWidget(m_pictArbeitampel);
    heading->addWidget(Caption(QStringLiteral("LblWorking"), 142, card));
    heading->addStretch();
    m_imgCount = new CountAnimation(card);
    heading->addWidget(m_imgCount);
    layout->addLayout(heading);
    layout->addWidget(Caption(QStringLiteral("LblWait"), 143, card, QStringLiteral("hint")));

    m_progressBar1 = Bar(QStringLiteral("ProgressBar1"), 10, card);
    m_progressBar2 = Bar(QStringLiteral("ProgressBar2"), 5, card);
    layout->addWidget(m_progressBar1);
    layout->addWidget(m_progressBar2);
    layout->addStretch();

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    m_cmdCancel = Button(QStringLiteral("cmdCancel"), 150, card);
    m_cmdCancel->setCursor(Qt::ArrowCursor);
    buttons->addWidget(m_cmdCancel);
    layout->addLayout(buttons);

    m_tmrCount = new QTimer(this);
    m_tmrCount->setObjectName(QStringLiteral("TmrCount"));
    m_tmrCount->setInterval(kCountInterval);
    return card;
}

void FCrypt::ConnectControls() {
    connect(m_tabStr, &LightTab::AfterTabChange, this, &FCrypt::OnTabStrChange);
    connect(m_tabFileCrypt, &LightTab::AfterTabChange, this, &FCrypt::OnTabFileCryptChange);
    connect(m_command1, &QPushButton::clicked, this, &FCrypt::OnCommand1Click);
    connect(m_command2, &QPushButton::clicked, this, &FCrypt::OnCommand2Click);
    connect(m_cmdCancel, &QPushButton::clicked, this, &FCrypt::OnCmdCancelClick);
    connect(m_cmdPassgen, &QPushButton::clicked, this, &FCrypt::OnCmdPassgenClick);
    connect(m_lblLink, &ClickLabel::clicked, this, &FCrypt::OnLblLinkClick);
    connect(m_chkHPwd, &QCheckBox::toggled, this, &FCrypt::OnChkHPwdClick);
    connect(m_txtCode, &QLineEdit::textChanged, this, &FCrypt::PwdBewert);
    connect(m_tmrCount, &QTimer::timeout, this, &FCrypt::OnTmrCountTick);
    constexpr std::array kOffsets{kGerman, kEnglish, kSpanish, kFrench};
    for (std::size_t i = 0; i < m_flags.size(); ++i) {
        connect(m_flags[i], &FlagImage::clicked, this,
                [this, offset = kOffsets[i]] { SetLanguage(offset); });
    }
}

} // namespace kelvora
