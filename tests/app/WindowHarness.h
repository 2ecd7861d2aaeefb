#pragma once

// WindowHarness drives the whole main window headlessly, as a person would: controls are found
// by name and every dialog is answered by a recording message service.
#include "app/FCrypt.h"
#include "app/JobScope.h"
#include "app/RecordingMessageService.h"
#include "app/WindowTestTools.h"
#include "app/WorkingPanel.h"
#include "cli/CliRun.h"
#include "common/Ansi.h"
#include "common/FixedRandom.h"
#include "controls/LightTab.h"
#include "controls/ProgressBar.h"
#include "text/EncryptedText.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTest>
#include <QTimer>

namespace kelvora::testing {

using namespace Qt::StringLiterals;

inline QString BannerOf(int languageOffset) {
    return QString::fromStdString(Utf8FromAnsi(BannerLine(languageOffset)));
}

// Harness owns a shown main window with a recording message service and fixed random bytes.
struct Harness {
    RecordingMessageService messages;
    FixedRandom random;
    FCrypt window;

    explicit Harness(int languageOffset = kEnglish, const std::string& commandLine = {})
        : window(messages, random, languageOffset) {
        window.show();
        window.Load(commandLine, u"kelvora"_s);
        Settle();
    }

    // Settle lays the window out as the event loop does: each layout request can raise
    // another one in the parent.
    static void Settle() {
        for (int round = 0; round < 8; ++round) {
            QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        }
    }

    // Activate makes the window the active one, so that the focus can move within it.
    void Activate() {
        QApplication::setActiveWindow(&window);
        if (!QTest::qWaitForWindowActive(&window)) {
            qFatal("the window did not become active");
        }
    }

    template <typename Widget = QWidget> Widget* Find(const char* name) {
        return FindControl<Widget>(&window, QString::fromLatin1(name));
    }
    void Click(const char* name) { QTest::mouseClick(Find(name), Qt::LeftButton); }
    // Text is what the named label, button, field or text box shows.
    QString Text(const char* name) {
        const QVariant plain = Find(name)->property("plainText");
        return plain.isValid() ? plain.toString() : Find(name)->property("text").toString();
    }
    QString Results() { return Text("txtResults"); }
    QString Passphrase() { return Text("TxtCode"); }
    QString Sentence() { return Text("Label3"); }
    void Fill(const QString& text, const QString& passphrase) {
        Find<QPlainTextEdit>("txtResults")->setPlainText(text);
        Find<QLineEdit>("TxtCode")->setText(passphrase);
    }

    // ClickAndCancel clicks command and presses Cancel as soon as the job's bar shows the first
    // bytes done: the poll only runs while the job lets the window serve its events.
    void ClickAndCancel(const char* command) {
        QTimer poll;
        QObject::connect(&poll, &QTimer::timeout, [this] {
            if (window.IsWorking() && window.Working().ChunkBar().Position() > 0) {
                Click("cmdCancel");
            }
        });
        poll.start(2);
        Click(command);
    }

    // Names joins the names of the given controls for which the test holds.
    QString Names(std::initializer_list<const char*> names, bool (*test)(QWidget*)) {
        QStringList held;
        for (const char* name : names) {
            if (test(Find(name))) {
                held << QString::fromLatin1(name);
            }
        }
        return held.join(u' ');
    }
    // Page is the active tabs of TabStr and TabFileCrypt, then the page controls shown.
    QString Page() {
        return u"%1%2 "_s.arg(Find<LightTab>("TabStr")->ActiveTab())
                   .arg(Find<LightTab>("TabFileCrypt")->ActiveTab()) +
               Names({"Frame_0", "Command1", "Command2", "cmdMail", "LblLink", "Frame_1",
                      "LstCryptFiles", "Command4", "TxtDecrFile", "Command5"},
                     [](QWidget* w) { return w->isVisible(); });
    }
    // State is what the busy state changes: the flag, the panels shown, the areas enabled.
    QString State() {
        return (window.IsWorking() ? u"working: "_s : u"idle: "_s) +
               Names({"FrameW", "PictAmpel"}, [](QWidget* w) { return !w->isHidden(); }) +
               u" / "_s + Names({"Frame_0", "FramePwd"}, [](QWidget* w) { return w->isEnabled(); });
    }
    // Rating is which stars show and which lamps are lit, e.g. "11100 010".
    QString Rating() {
        QString rating;
        for (const char* star : {"Stern_1", "Stern_2", "Stern_3", "Stern_4", "Stern_5"}) {
            rating += QLatin1Char(Find(star)->isHidden() ? '0' : '1');
        }
        rating += u' ';
        for (const char* lamp : {"AmpelL_0", "AmpelL_1", "AmpelL_2"}) {
            rating += QLatin1Char(Find(lamp)->property("lit").toBool() ? '1' : '0');
        }
        return rating;
    }
    // ClippedControls names every shown control whose text lacks room or that sticks out of
    // its parent.
    QString ClippedControls() {
        Settle();
        QStringList clipped;
        for (QWidget* w : window.findChildren<QWidget*>()) {
            const QSize size = w->size();
            auto* label = qobject_cast<QLabel*>(w);
            const bool captioned = label != nullptr ||
                                   qobject_cast<QAbstractButton*>(w) != nullptr ||
                                   qobject_cast<LightTab*>(w) != nullptr;
            const bool textFits =
                label != nullptr && label->wordWrap()
                    ? label->heightForWidth(size.width()) <= size.height()
                    : !captioned || (w->sizeHint().width() <= size.width() &&
                                     w->minimumSizeHint().height() <= size.height());
            const bool inside = QRect({}, w->parentWidget()->size()).contains(w->geometry());
            if (w->isVisible() && !(textFits && inside)) {
                clipped << u"%1 %2x%3"_s.arg(w->objectName()).arg(size.width()).arg(size.height());
            }
        }
        return clipped.join(u", "_s);
    }
    // TaggedTexts is every text the window's marks put into it, with the tab captions.
    QStringList TaggedTexts() {
        QStringList texts;
        for (QWidget* widget : window.findChildren<QWidget*>()) {
            if (widget->property("Tag").toString().startsWith(u'#')) {
                texts << widget->property("text").toString();
            }
        }
        for (const char* strip : {"TabStr", "TabFileCrypt"}) {
            texts << Find<LightTab>(strip)->Caption(0) << Find<LightTab>(strip)->Caption(1);
        }
        return texts;
    }
};

// RunCli runs a kelvora-cli command line in the test with input on standard input and the
// passphrase in its environment, and gives its output (or how it failed).
inline QString RunCli(const QStringList& args, const QString& input, const QString& passphrase) {
    std::vector<std::string> words;
    for (const QString& arg : args) {
        words.push_back(arg.toStdString());
    }
    const CliResult result =
        RunInProcess(words, input.toStdString(), Passphrase(passphrase.toStdString()));
    return result.status == 0 ? QString::fromStdString(result.out)
                              : u"failed with status %1"_s.arg(result.status);
}

} // namespace kelvora::testing
