// render-side-windows draws the side windows into PNG files for the README:
//   render-side-windows <folder> [language offset]
// It writes FrmTast-1x.png and FrmTast-2x.png (the screen keyboard at both sizes),
// frmEmail.png and FrmAbout.png. Nothing is sent and no link is opened.
#include "about/FrmAbout.h"
#include "app/MessageService.h"
#include "i18n/Catalogue.h"
#include "mail/frmEmail.h"
#include "tools/FrmTast.h"

#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QEventLoop>
#include <QTimer>
#include <cstdio>

namespace {

constexpr std::uint32_t kGermanKeyboard = 0x04070407;
constexpr double kPanelDraw = 0.5; // the maker's tools

bool Save(QWidget& window, const QDir& folder, const QString& name) {
    window.show();
    QEventLoop settle; // lets the window lay itself out and paint before it is grabbed
    QTimer::singleShot(200, &settle, &QEventLoop::quit);
    settle.exec();
    const QString path = folder.filePath(name);
    if (!window.grab().save(path)) {
        std::fprintf(stderr, "render-side-windows: cannot write %s\n", qPrintable(path));
        return false;
    }
    std::printf("render-side-windows: wrote %s\n", qPrintable(path));
    return true;
}

} // namespace

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: render-side-windows <folder> [language offset]\n");
        return 2;
    }
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    const int language = argc > 2 ? std::atoi(argv[2]) : kelvora::kEnglish;
    kelvora::QtMessageService messages;
    bool saved = true;

    QLineEdit passphrase;
    auto* keyboard = new kelvora::FrmTast(passphrase, language, kGermanKeyboard);
    saved &= Save(*keyboard, folder, QStringLiteral("FrmTast-1x.png"));
    auto* doubleSize = keyboard->findChild<QRadioButton*>(QStringLiteral("Option1_1"));
    doubleSize->click();
    saved &= Save(*keyboard, folder, QStringLiteral("FrmTast-2x.png"));
    delete keyboard;

    auto* mail = new kelvora::frmEmail(messages, language);
    mail->SetMsg(QStringLiteral("Q2pHMVd4c0JmV1R6a2tLU3VjbE9yN0ZqZ2lHS3pCQ3VqUnRXM0xlUzlQ\n"
                                "c1hQbWJ0Y2ZQZ2ZhR2ZqdUhRVzRmNnRtQ0J4c2J0Z0JkUUw1UWpmZ3Zs"));
    mail->findChild<QLineEdit*>(QStringLiteral("TxtSender"))->setText(QStringLiteral("Anna Berg"));
    mail->findChild<QLineEdit*>(QStringLiteral("TxtAdrSender"))
        ->setText(QStringLiteral("anna@example.org"));
    mail->findChild<QLineEdit*>(QStringLiteral("txtReceipAdr"))
        ->setText(QStringLiteral("bo@example.net"));
    saved &= Save(*mail, folder, QStringLiteral("frmEmail.png"));
    delete mail;

    auto* about = new kelvora::FrmAbout(messages, language, kPanelDraw);
    saved &= Save(*about, folder, QStringLiteral("FrmAbout.png"));
    delete about;
    return saved ? 0 : 1;
}
