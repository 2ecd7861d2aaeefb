#include "about/FrmAbout.h"
#include "app/EncryptPage.h"
#include "app/FileTree.h"
#include "app/InputListBox.h"
#include "app/WindowHarness.h"
#include "app/WorkingPanel.h"
#include "mail/frmEmail.h"
#include "tools/FrmTast.h"

#include <QAccessible>
#include <QDropEvent>
#include <QMimeData>
#include <QRadioButton>
#include <QTimer>
#include <QUrl>

namespace kelvora {

using namespace Qt::StringLiterals;
using testing::BannerOf;
using testing::Catalogue;
using testing::Harness;
using testing::RunCli;

namespace {

const char* const kFilesPage = "00 Frame_1 LstCryptFiles Command4";

const char* const kTextPage = "10 Frame_0 Command1 Command2 cmdMail LblLink";

// MainFlag is the main window's own flag of a language (the welcome window has flags too).
QWidget* MainFlag(FCrypt& window, const QString& name) {
    for (QWidget* flag : window.findChildren<QWidget*>(name)) {
        if (flag->window() == &window) {
            return flag;
        }
    }
    qFatal("no flag %s on the main window", qPrintable(name));
}

} // namespace

class FCryptTest : public QObject {
    Q_OBJECT

private slots:
    void LanguageSwitchRestoresEveryCaption() {
        Harness h(kGerman);
        QCOMPARE(h.Find<QAbstractButton>("Command1")->text(), Catalogue(kGerman, 161));
        QCOMPARE(h.Find<LightTab>("TabStr")->Caption(FCrypt::kTextTab), Catalogue(kGerman, 166));
        QVERIFY(h.window.windowFlags() & Qt::FramelessWindowHint);
        QVERIFY(!h.window.mask().isEmpty());
        QCOMPARE(h.Find<QLabel>("ImageDE")->frameShape(), QFrame::Box);
        const QStringList german = h.TaggedTexts();
        const QString germanTip = h.Find("IControlBx")->toolTip();
        QCOMPARE(germanTip, Catalogue(kGerman, 500));

        h.Click("ImageFR");
        QCOMPARE(h.window.LanguageOffset(), kFrench);
        QCOMPARE(h.Find<QLabel>("ImageFR")->frameShape(), QFrame::Box);
        QCOMPARE(h.Find<QLabel>("ImageDE")->frameShape(), QFrame::NoFrame);
        QCOMPARE(h.Find<QAbstractButton>("Command2")->text(), Catalogue(kFrench, 162));
        QCOMPARE(h.Find<LightTab>("TabFileCrypt")->Caption(0), Catalogue(kFrench, 183));
        QVERIFY(h.TaggedTexts() != german);
        // A tooltip is a mark only until it has been labelled once.
        QCOMPARE(h.Find("IControlBx")->toolTip(), germanTip);

        h.Click("ImageDE");
        QCOMPARE(h.TaggedTexts(), german);
    }

    void NoTextIsClippedInAnyLanguage_data() {
        QTest::addColumn<int>("languageOffset");
        QTest::addColumn<QString>("commandLine");
        for (const auto& [language, offset] : {std::pair{"German", kGerman},
                                               {"English", kEnglish},
                                               {"Spanish", kSpanish},
                                               {"French", kFrench}}) {
            for (const char* page : {"", "/filee", "/filed"}) {
                QTest::addRow("%s %s", language, page) << offset << QString::fromLatin1(page);
            }
        }
    }

    // Every shown caption has the room its text needs, and every control lies inside its parent.
    void NoTextIsClippedInAnyLanguage() {
        QFETCH(int, languageOffset);
        QFETCH(QString, commandLine);
        Harness h(languageOffset, commandLine.toStdString());
        QCOMPARE(h.ClippedControls(), QString());
        h.Click("cmdPassgen"); // the longest sentence the rating area shows
        QCOMPARE(h.ClippedControls(), QString());
        const JobScope working(h.window); // the working panel
        QCOMPARE(h.ClippedControls(), QString());
    }

    void CommandLineOpensPages_data() {
        for (const char* column : {"commandLine", "page", "decrFile", "decrOutPath", "message"}) {
            QTest::addColumn<QString>(column);
        }
        const auto row = [](const char* name, const char* commandLine, const char* page,
                            const char* decrFile = "", const char* decrOutPath = "",
                            const char* message = "") {
            QTest::newRow(name) << QString::fromLatin1(commandLine) << QString::fromLatin1(page)
                                << QString::fromLatin1(decrFile) << QString::fromLatin1(decrOutPath)
                                << QString::fromLatin1(message);
        };
        row("none opens the files page", "", kFilesPage);
        row("filee", "/fileeXYZ", "00 Frame_1 LstCryptFiles Command4");
        row("filed", "/FileD", "01 Frame_1 TxtDecrFile Command5");
        row("setDecrFile", "/SETDECRFILE /home/Ann/Box.vexo", "01 Frame_1 TxtDecrFile Command5",
            "/home/Ann/Box.vexo", "/home/Ann/");
        row("usage names the program", "/?", kFilesPage, "", "",
            "Parameters for Kelvora:\nkelvora [/setEncrFiles <list of files> /outputfile "
            "<file>]|[/setDecrFile <file>]");
    }

    void CommandLineOpensPages() {
        QFETCH(QString, commandLine);
        QFETCH(QString, page);
        QFETCH(QString, decrFile);
        QFETCH(QString, decrOutPath);
        QFETCH(QString, message);
        Harness h(kEnglish, commandLine.toStdString());
        QCOMPARE(h.Page(), page);
        QCOMPARE(h.Find<QLineEdit>("TxtDecrFile")->text(), decrFile);
        QCOMPARE(h.Find<QLineEdit>("TxtDecrOutPath")->text(), decrOutPath);
        QCOMPARE(h.messages.ShownIds(),
                 message.isEmpty() ? QList<int>{} : QList<int>{kUsageTextId});
        QCOMPARE(h.messages.shown.value(0).text, message);
    }

    void TabsSwitchPages() {
        Harness h;
        auto* strip = h.Find<LightTab>("TabStr");
        auto* files = h.Find<LightTab>("TabFileCrypt");
        QTest::mouseClick(strip, Qt::LeftButton, {}, strip->TabRect(FCrypt::kFilesTab).center());
        QCOMPARE(h.Page(), u"00 Frame_1 LstCryptFiles Command4"_s);
        QTest::mouseClick(files, Qt::LeftButton, {}, files->TabRect(FCrypt::kDecryptTab).center());
        QCOMPARE(h.Page(), u"01 Frame_1 TxtDecrFile Command5"_s);
        QTest::keyClick(strip, Qt::Key_Right);
        QCOMPARE(h.Page(), u"11 Frame_0 Command1 Command2 cmdMail LblLink"_s);
    }

    void FocusStartsInTheFirstFieldOfThePageShown_data() {
        QTest::addColumn<QString>("commandLine");
        QTest::addColumn<QString>("field");
        QTest::newRow("no page named") << QString() << u"LstCryptFiles"_s;
        QTest::newRow("decrypt page") << u"/filed"_s << u"TxtDecrFile"_s;
    }

    void FocusStartsInTheFirstFieldOfThePageShown() {
        QFETCH(QString, commandLine);
        QFETCH(QString, field);
        Harness h(kEnglish, commandLine.toStdString());
        QVERIFY(h.window.focusWidget() != nullptr);
        QCOMPARE(h.window.focusWidget()->objectName(), field);
        auto* strip = h.Find<LightTab>("TabStr");
        QTest::mouseClick(strip, Qt::LeftButton, {}, strip->TabRect(FCrypt::kTextTab).center());
        QTest::keyClick(strip, Qt::Key_Tab);
        QCOMPARE(h.window.focusWidget()->objectName(), u"txtResults"_s);
    }

    // Drops are synthesised as the system delivers them: one container opens the decrypt page,
    // anything else fills the input list and selects OptFiles.
    void DroppedFilesOpenTheirPage_data() {
        QTest::addColumn<QStringList>("dropped");
        QTest::addColumn<QString>("page");
        QTest::addColumn<int>("listed");
        QTest::newRow("one container")
            << QStringList{u"box.VEXO"_s} << u"01 Frame_1 TxtDecrFile Command5"_s << 0;
        QTest::newRow("container and a file") << QStringList{u"box.VEXO"_s, u"a b.txt"_s}
                                              << u"00 Frame_1 LstCryptFiles Command4"_s << 2;
        QTest::newRow("a folder") << QStringList{u"dir"_s} << u"00 Frame_1 LstCryptFiles Command4"_s
                                  << 2;
    }

    void DroppedFilesOpenTheirPage() {
        QFETCH(QStringList, dropped);
        QFETCH(QString, page);
        QFETCH(int, listed);
        testing::FileTree tree;
        tree.Write(u"box.VEXO"_s, "container");
        tree.Write(u"a b.txt"_s, "a");
        tree.Write(u"dir/x"_s, "x");
        tree.Write(u"dir/y/z"_s, "z");
        Harness h(kEnglish, "/filed");
        h.Click("OptDirs");
        auto* mime = new QMimeData;
        QList<QUrl> urls;
        for (const QString& name : dropped) {
            urls << QUrl::fromLocalFile(tree.Path(name));
        }
        mime->setUrls(urls);
        const QPoint at(200, 200);
        QDragEnterEvent enter(at, Qt::CopyAction, mime, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&h.window, &enter);
        QVERIFY(enter.isAccepted());
        QDropEvent drop(at, Qt::CopyAction, mime, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&h.window, &drop);
        QCOMPARE(h.Page(), page);
        QCOMPARE(h.Find<InputListBox>("LstCryptFiles")->count(), listed);
        if (listed == 0) {
            QCOMPARE(h.Find<QLineEdit>("TxtDecrFile")->text(), tree.Path(u"box.VEXO"_s));
            QCOMPARE(h.Find<QLineEdit>("TxtDecrOutPath")->text(), tree.Path() + u'/');
        } else {
            QVERIFY(h.Find<QRadioButton>("OptFiles")->isChecked());
            QVERIFY(!h.Find<QLineEdit>("TxtEncrFileName")->text().isEmpty());
        }
        delete mime;
    }

    void DropsOfOtherDataAreRefused() {
        Harness h;
        QMimeData text;
        text.setText(u"just text"_s);
        QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &text, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&h.window, &enter);
        QVERIFY(!enter.isAccepted());
    }

    // The system splits the command line into words; a path with blanks is one of them.
    void CommandLineWordsKeepBlanksInPaths() {
        testing::FileTree tree;
        const QString first = tree.Write(u"a b/c.txt"_s, "c");
        const QString second = tree.Write(u"d.txt"_s, "d");
        const QString output = tree.Path(u"x y/out.vexo"_s);
        testing::RecordingMessageService messages;
        testing::FixedRandom random;
        FCrypt window(messages, random, kFrench);
        window.show();
        window.Load({"/SetEncrFiles", first.toStdString(), second.toStdString(), "/OUTPUTFILE",
                     output.toStdString()},
                    u"kelvora"_s);
        auto* list = window.findChild<InputListBox*>(u"LstCryptFiles"_s);
        QCOMPARE(list->count(), 2);
        QCOMPARE(list->item(0)->text(), first);
        QCOMPARE(list->item(1)->text(), second);
        QCOMPARE(window.findChild<QLineEdit*>(u"TxtEncrFileName"_s)->text(), output);
        QVERIFY(window.findChild<QWidget*>(u"Command4"_s)->isVisible());
        QVERIFY(messages.shown.isEmpty());
    }

    // A file manager opening files with the program passes their paths alone.
    void PathsAloneOpenAsIfDropped() {
        testing::FileTree tree;
        const QString container = tree.Write(u"my box.vexo"_s, "container");
        Harness h(kEnglish);
        h.window.Load(std::vector<std::string>{container.toStdString()}, u"kelvora"_s);
        QCOMPARE(h.Page(), u"01 Frame_1 TxtDecrFile Command5"_s);
        QCOMPARE(h.Find<QLineEdit>("TxtDecrFile")->text(), container);
    }

    // Closing the window during a job cancels the job; the window goes once it has ended.
    void ClosingDuringAJobCancelsIt() {
        testing::FileTree tree;
        const QString input = tree.WriteNoise(u"noise.bin"_s, 32 * 1024 * 1024);
        Harness h(kEnglish);
        h.window.OpenPaths({input});
        h.Fill({}, u"pw"_s);
        bool closed = false;
        QTimer poll;
        QObject::connect(&poll, &QTimer::timeout, [&] {
            if (h.window.IsWorking() && !closed) {
                closed = h.window.close();
            }
        });
        poll.start(20);
        h.Click("Command4");
        QVERIFY(closed);
        QVERIFY(!h.window.isVisible());
        QVERIFY(h.window.Working().CancelRequested());
        QCOMPARE(tree.Contents().keys(), QStringList{u"noise.bin"_s});
    }

    // What a screen reader finds: the custom controls with their roles, names and states,
    // and every field named by its caption. Pressing through the accessibility layer works.
    void CustomControlsTellTheAccessibilityLayerWhatTheyAre() {
        Harness h(kGerman);
        const auto node = [&h](const char* name) {
            return QAccessible::queryAccessibleInterface(h.Find(name));
        };
        QAccessibleInterface* strip = node("TabStr");
        QCOMPARE(strip->role(), QAccessible::PageTabList);
        QCOMPARE(strip->text(QAccessible::Name), Catalogue(kGerman, 523));
        QCOMPARE(strip->childCount(), 2);
        QAccessibleInterface* textTab = strip->child(FCrypt::kTextTab);
        QCOMPARE(textTab->role(), QAccessible::PageTab);
        QCOMPARE(textTab->text(QAccessible::Name), Catalogue(kGerman, 166));
        QCOMPARE(strip->indexOfChild(textTab), FCrypt::kTextTab);
        QVERIFY(strip->child(FCrypt::kFilesTab)->state().selected);
        QVERIFY(!textTab->state().selected);
        textTab->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QCOMPARE(h.Find<LightTab>("TabStr")->ActiveTab(), FCrypt::kTextTab);
        QVERIFY(textTab->state().selected);
        h.Find("TabStr")->setFocus();
        QCOMPARE(strip->focusChild(), textTab);
        QCOMPARE(node("TabFileCrypt")->child(1)->text(QAccessible::Name), Catalogue(kGerman, 184));

        QCOMPARE(node("ImageFR")->role(), QAccessible::Button);
        QCOMPARE(node("ImageFR")->text(QAccessible::Name), u"Fran\u00e7ais"_s);
        node("ImageFR")->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QCOMPARE(h.window.LanguageOffset(), kFrench);
        QCOMPARE(node("TabStr")->text(QAccessible::Name), Catalogue(kFrench, 523));

        QCOMPARE(node("LblLink")->role(), QAccessible::Link);
        QCOMPARE(node("LblLink")->text(QAccessible::Name), Catalogue(kFrench, 160));

        QAccessibleInterface* box = node("IControlBx");
        QCOMPARE(box->childCount(), 2);
        QCOMPARE(box->child(0)->role(), QAccessible::Button);
        QCOMPARE(box->child(0)->text(QAccessible::Name), Catalogue(kFrench, 524));
        QCOMPARE(box->child(1)->text(QAccessible::Name), Catalogue(kFrench, 525));
        box->child(0)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QVERIFY(h.window.windowState() & Qt::WindowMinimized);

        for (const auto& [field, caption] : {std::pair{"TxtCode", "Label4"},
                                             {"txtResults", "LblText"},
                                             {"LstCryptFiles", "LblInputFiles"},
                                             {"TxtEncrFileName", "LblOutputFile"},
                                             {"TxtDecrFile", "LblDecrFile"},
                                             {"TxtDecrOutPath", "LblDecrOutPath"}}) {
            QCOMPARE(node(field)->text(QAccessible::Name), h.Find<QLabel>(caption)->text());
        }
    }

    void NoStarShowsBeforeTheFirstRating() {
        testing::RecordingMessageService messages;
        testing::FixedRandom random;
        FCrypt window(messages, random, kEnglish);
        for (const char* star : {"Stern_1", "Stern_5"}) {
            QVERIFY(window.findChild<QWidget*>(QString::fromLatin1(star))->isHidden());
        }
    }

    void ControlBoxMinimisesOnItsLeftAndClosesElsewhere() {
        Harness h;
        auto* box = h.Find("IControlBx");
        QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(14, box->height() / 2));
        QVERIFY(h.window.windowState() & Qt::WindowMinimized);
        QVERIFY(h.window.isVisible());
        h.window.showNormal();
        QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(15, box->height() / 2));
        QVERIFY(!h.window.isVisible());
    }

    void ScreenKeyboardTypesIntoThePassphraseOnly() {
        Harness h(kGerman);
        h.Fill(u"text"_s, u"pw"_s);
        QCOMPARE(h.Find<QAbstractButton>("cmdTast")->text(), Catalogue(kGerman, 156));
        h.Click("cmdTast");
        auto* keyboard = h.window.findChild<FrmTast*>(u"FrmTast"_s);
        QVERIFY(keyboard != nullptr && keyboard->isVisible());
        QCOMPARE(keyboard->windowTitle(), Catalogue(kGerman, 169));
        QTest::mouseClick(keyboard->findChild<QWidget*>(u"cmdNr_19"_s), Qt::LeftButton);
        QTest::mouseClick(keyboard->findChild<QWidget*>(u"cmdNr_18"_s), Qt::LeftButton);
        QCOMPARE(h.Passphrase(), u"pwa "_s);
        QCOMPARE(h.Results(), u"text"_s);
        h.Click("cmdTast");
        QCOMPARE(h.window.findChildren<FrmTast*>().size(), 1);
        QTest::mouseClick(MainFlag(h.window, u"ImageES"_s), Qt::LeftButton);
        QCOMPARE(keyboard->windowTitle(), Catalogue(kSpanish, 169));
        keyboard->close();
        QTRY_COMPARE(h.window.findChildren<FrmTast*>().size(), 0);
    }

    void CmdMailHandsOverTheEncryptedText() {
        Harness h(kEnglish);
        h.Find<LightTab>("TabStr")->SetActiveTab(FCrypt::kTextTab);
        QVERIFY(h.Find("cmdMail")->isVisible());
        QVERIFY(!h.Find("cmdMail")->isEnabled());
        h.Fill(u"meet at noon"_s, u"pw"_s);
        h.Click("Command1");
        const QString encrypted = h.Results();
        QVERIFY(h.Find("cmdMail")->isEnabled());
        h.Click("cmdMail");
        auto* mail = h.window.findChild<frmEmail*>(u"frmEmail"_s);
        QVERIFY(mail != nullptr && mail->isVisible());
        QCOMPARE(mail->windowTitle(), Catalogue(kEnglish, 394));
        QCOMPARE(mail->findChild<QPlainTextEdit*>(u"TxtCrypt"_s)->toPlainText(), encrypted);
        QTest::mouseClick(MainFlag(h.window, u"ImageES"_s), Qt::LeftButton);
        QCOMPARE(mail->windowTitle(), Catalogue(kSpanish, 394));
        QCOMPARE(mail->findChild<QLabel*>(u"lblWarn"_s)->text(), Catalogue(kSpanish, 399));
        mail->findChild<QLineEdit*>(u"TxtSender"_s)->setText(u"Ann"_s);
        h.Click("cmdMail"); // the open window gets the text again and keeps its fields
        QCOMPARE(h.window.findChildren<frmEmail*>().size(), 1);
        QCOMPARE(mail->findChild<QLineEdit*>(u"TxtSender"_s)->text(), u"Ann"_s);
        mail->close();
        // Once the box shows anything else, there is nothing to send.
        h.Find<QPlainTextEdit>("txtResults")->setPlainText(u"meet at noon"_s);
        QVERIFY(!h.Find("cmdMail")->isEnabled());
        h.Find<QPlainTextEdit>("txtResults")->setPlainText(encrypted);
        QVERIFY(h.Find("cmdMail")->isEnabled());
    }

    void CmdAboutOpensTheWelcomeWindow() {
        Harness h(kEnglish);
        QCOMPARE(h.Find<QAbstractButton>("cmdAbout")->text(), Catalogue(kEnglish, 554));
        h.Click("cmdAbout");
        auto* about = h.window.findChild<FrmAbout*>(u"FrmAbout"_s);
        QVERIFY(about != nullptr && about->isVisible());
        QCOMPARE(about->windowTitle(), Catalogue(kEnglish, 200));
        QTest::mouseClick(about->findChild<QWidget*>(u"ImageFR"_s), Qt::LeftButton);
        QCOMPARE(h.window.LanguageOffset(), kFrench);
        QCOMPARE(h.Find<QAbstractButton>("Command2")->text(), Catalogue(kFrench, 162));
        QTest::mouseClick(MainFlag(h.window, u"ImageDE"_s), Qt::LeftButton);
        QCOMPARE(about->findChild<QLabel*>(u"LblDescription"_s)->text(), Catalogue(kGerman, 560));
        h.Click("cmdAbout");
        QCOMPARE(h.window.findChildren<FrmAbout*>().size(), 1);
        QTest::mouseClick(about->findChild<QWidget*>(u"Command1"_s), Qt::LeftButton);
        QTRY_COMPARE(h.window.findChildren<FrmAbout*>().size(), 0);
    }

    void ClosingTheMainWindowClosesTheSideWindows() {
        Harness h(kEnglish);
        h.Fill(u"text"_s, u"pw"_s);
        h.Click("Command1");
        h.Click("cmdTast");
        h.Click("cmdMail");
        h.Click("cmdAbout");
        const QList<QWidget*> sides{h.window.findChild<FrmTast*>(u"FrmTast"_s),
                                    h.window.findChild<frmEmail*>(u"frmEmail"_s),
                                    h.window.findChild<FrmAbout*>(u"FrmAbout"_s)};
        for (QWidget* side : sides) {
            QVERIFY(side != nullptr && side->isVisible());
        }
        h.window.close();
        for (QWidget* side : sides) {
            QVERIFY2(!side->isVisible(), qPrintable(side->objectName()));
        }
    }
};

} // namespace kelvora

QTEST_MAIN(kelvora::FCryptTest)
#include "FCryptTest.moc"
