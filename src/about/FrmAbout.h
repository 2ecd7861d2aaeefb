#pragma once

#include "about/AboutPanels.h"
#include "app/MessageService.h"

#include <QWidget>
#include <array>

class QLabel;
class QPushButton;

namespace kelvora {

class ClickLabel;
class FlagImage;

// FrmAbout is the welcome and about window: the welcome title, what the program does, its
// version, and one of three panels drawn at random when the window opens, each with its
// link (Label2_<n>). Its own flags switch the window's texts between the four languages;
// the panel stays. Command1 "Start" closes it and leads to the main window.
class FrmAbout : public QWidget {
    Q_OBJECT

public:
    // draw is a uniform random number in [0, 1) that picks the panel; DrawPanel() in the program.
    FrmAbout(MessageService& messages, int languageOffset, double draw, QWidget* parent = nullptr);

    // DrawPanel draws the number that picks the panel.
    static double DrawPanel();

    // SetLanguage shows the window's texts in a language, as its flags do, but announces nothing.
    void SetLanguage(int languageOffset) { SetLanguageBase(LanguageBaseOf(languageOffset)); }

    AboutPanel Panel() const { return m_panel; }
    int LanguageBase() const { return m_languageBase; }

signals:
    // StartRequested: the person pressed Start. LanguageChosen: one of the flags was clicked.
    void StartRequested();
    void LanguageChosen(int languageOffset);

private:
    void BuildWindow();
    QWidget* BuildHeader();
    QWidget* BuildPanel();
    void SetLanguageBase(int languageBase);
    void FillTexts();
    void OnLinkClick(int labelIndex);
    QString Text(int germanId, const QString& s = {}) const;

    MessageService& m_messages;
    AboutPanel m_panel;
    int m_languageBase;
    std::array<FlagImage*, 4> m_flags{};
    QLabel* m_lblVersion = nullptr;
    QLabel* m_lblDescription = nullptr;
    QLabel* m_lblHeading = nullptr;
    std::array<QLabel*, 2> m_lblTools{};
    QLabel* m_lblParagraph = nullptr;
    QLabel* m_lblAction = nullptr;
    std::array<ClickLabel*, 2> m_links{};
    std::array<int, 2> m_linkTextIds{};
    QPushButton* m_startButton = nullptr;
};

} // namespace kelvora
