#include "app/FileTree.h"
#include "app/InputListBox.h"
#include "app/WindowHarness.h"
#include "i18n/TextIds.h"

#include <QAccessible>
#include <QDropEvent>
#include <QMimeData>
#include <QRadioButton>
#include <QUrl>

namespace kelvora {

using namespace Qt::StringLiterals;
using namespace testing;

namespace {

const QString kFilesPage = u"00 Frame_1 LstCryptFiles Command4"_s;
const QString kDecryptPage = u"01 Frame_1 TxtDecrFile Command5"_s;

} // namespace

class FCryptTest : public QObject {
    Q_OBJECT

private slots:
    // A flag relabels the window as if it had started in that language, the tabs too; a
    // tooltip keeps the text it was first given.
    void FlagsSwitchTheLanguage() {
        Harness h(kGerman);
        QVERIFY(h.window.windowFlags() & Qt::FramelessWindowHint);
        QVERIFY(!h.window.mask().isEmpty());
        const QStringList german = h.TaggedTexts();
        h.Click("ImageFR");
        QCOMPARE(h.window.LanguageOffset(), kFrench);
        QCOMPARE(h.Find<QLabel>("ImageFR")->frameShape(), QFrame::Box);
        QCOMPARE(h.Find<LightTab>("TabFileCrypt")->Caption(0), Catalogue(kFrench, 183));
        QCOMPARE(h.TaggedTexts(), Harness(kFrench).TaggedTexts());
        QCOMPARE(h.Find("IControlBx")->toolTip(), Catalogue(kGerman, 500));
        h.Click("ImageDE");
        QCOMPARE(h.TaggedTexts(), german);
    }

    // Every shown caption has the room its text needs, and every control lies inside its parent,
    // on each page in each language, with the longest rating sentence (a made passphrase), the
    // shared-security panel and the working panel shown.
    void NoTextIsClippedInAnyLanguage() {
        for (const int language : {kGerman, kEnglish, kSpanish, kFrench}) {
            for (const char* page : {"", "/filee", "/filed"}) {
                Harness h(language, page);
                const QString where = u"%1 %2: "_s.arg(language).arg(QLatin1StringView(page));
                QCOMPARE(where + h.ClippedControls(), where);
                h.Click("cmdPassgen");
                h.Click("optMults_1");
                QCOMPARE(where + h.ClippedControls(), where);
                const JobScope working(h.window);
                QCOMPARE(where + h.ClippedControls(), where);
            }
        }
    }

    // The command line chooses the page, fills the decrypt fields or shows the usage; the
    // focus starts in the first field of the page shown.
    void CommandLineOpensPages() {
        const QString usage = u"Parameters for Kelvora:\nkelvora [/setEncrFiles <list of files> "
                              u"/outputfile <file>]|[/setDecrFile <file>]"_s;
        for (const auto& [commandLine, page, focus, decrFile, message] :
             {std::tuple{"", kFilesPage, "LstCryptFiles", QString(), QString()},
              {"/filee", kFilesPage, "LstCryptFiles", QString(), QString()},
              {"/FileD", kDecryptPage, "TxtDecrFile", QString(), QString()},
              {"/SETDECRFILE /home/Ann/Box.vexo", kDecryptPage, "TxtDecrFile",
               u"/home/Ann/Box.vexo"_s, QString()},
              {"/?", kFilesPage, "LstCryptFiles", QString(), usage}}) {
            Harness h(kEnglish, commandLine);
            QCOMPARE(h.Page(), page);
            QVERIFY(h.window.focusWidget() != nullptr);
            QCOMPARE(h.window.focusWidget()->objectName(), QString::fromLatin1(focus));
            QCOMPARE(h.Find<QLineEdit>("TxtDecrFile")->text(), decrFile);
            QCOMPARE(h.Find<QLineEdit>("TxtDecrOutPath")->text(),
                     decrFile.left(decrFile.lastIndexOf(u'/') + 1));
            QCOMPARE(h.messages.ShownIds(),
                     message.isEmpty() ? QList<int>{} : QList<int>{kUsageTextId});
            QCOMPARE(h.messages.shown.value(0).text, message);
        }
    }

    // The tabs switch by mouse and by keyboard; Tab leads from the strip into the page.
    void TabsSwitchPages() {
        Harness h;
        auto* strip = h.Find<LightTab>("TabStr");
        auto* files = h.Find<LightTab>("TabFileCrypt");
        QTest::mouseClick(strip, Qt::LeftButton, {}, strip->TabRect(FCrypt::kFilesTab).center());
        QCOMPARE(h.Page(), kFilesPage);
        QTest::mouseClick(files, Qt::LeftButton, {}, files->TabRect(FCrypt::kDecryptTab).center());
        QCOMPARE(h.Page(), kDecryptPage);
        strip->setFocus();
        QTest::keyClick(strip, Qt::Key_Right);
        QCOMPARE(h.Page(), u"11 Frame_0 Command1 Command2 cmdMail LblLink"_s);
        QTest::keyClick(strip, Qt::Key_Tab);
        QCOMPARE(h.window.focusWidget()->objectName(), u"txtResults"_s);
    }

    // Drops are synthesised as the system delivers them: one container opens the decrypt page,
    // other files fill the input list and select OptFiles, and a drop without files is refused.
    void DropsOpenTheirPage() {
        FileTree tree;
        for (const char* name : {"box.VEXO", "a b.txt", "dir/x", "dir/y/z"}) {
            tree.Write(QString::fromLatin1(name), name);
        }
        for (const auto& [dropped, page, listed] :
             {std::tuple{QStringList{u"box.VEXO"_s}, kDecryptPage, 0},
              {QStringList{u"box.VEXO"_s, u"a b.txt"_s}, kFilesPage, 2},
              {QStringList{u"dir"_s}, kFilesPage, 2},
              {QStringList{}, kDecryptPage, 0}}) {
            Harness h(kEnglish, "/filed");
            h.Click("OptDirs");
            QMimeData mime;
            mime.setText(u"just text"_s);
            QList<QUrl> urls;
            for (const QString& name : dropped) {
                urls << QUrl::fromLocalFile(tree.Path(name));
            }
            mime.setUrls(urls);
            const QPoint at(200, 200);
            QDragEnterEvent enter(at, Qt::CopyAction, &mime, Qt::LeftButton, {});
            QCoreApplication::sendEvent(&h.window, &enter);
            QCOMPARE(enter.isAccepted(), !dropped.isEmpty());
            if (enter.isAccepted()) {
                QDropEvent drop(at, Qt::CopyAction, &mime, Qt::LeftButton, {});
                QCoreApplication::sendEvent(&h.window, &drop);
            }
            QCOMPARE(h.Page(), page);
            QCOMPARE(h.Find<InputListBox>("LstCryptFiles")->count(), listed);
            if (listed > 0) {
                QVERIFY(h.Find<QRadioButton>("OptFiles")->isChecked());
                QVERIFY(!h.Find<QLineEdit>("TxtEncrFileName")->text().isEmpty());
            } else if (!dropped.isEmpty()) {
                QCOMPARE(h.Find<QLineEdit>("TxtDecrFile")->text(), tree.Path(u"box.VEXO"_s));
                QCOMPARE(h.Find<QLineEdit>("TxtDecrOutPath")->text(), tree.Path() + u'/');
            }
        }
    }

    // The system splits the command line into words; a path with blanks is one of them. Paths
    // alone, as a file manager passes them, open as if dropped.
    void ArgumentWordsKeepBlanksInPaths() {
        FileTree tree;
        const QString first = tree.Write(u"a b/c.txt"_s, "c");
        const QString second = tree.Write(u"d.txt"_s, "d");
        const QString output = tree.Path(u"x y/out.vexo"_s);
        Harness h(kFrench);
        h.window.Load({"/SetEncrFiles", first.toStdString(), second.toStdString(), "/OUTPUTFILE",
                       output.toStdString()},
                      u"kelvora"_s);
        auto* list = h.Find<InputListBox>("LstCryptFiles");
        QCOMPARE(list->count(), 2);
        QCOMPARE(list->item(0)->text(), first);
        QCOMPARE(list->item(1)->text(), second);
        QCOMPARE(h.Find<QLineEdit>("TxtEncrFileName")->text(), output);
        QCOMPARE(h.Page(), kFilesPage);
        QVERIFY(h.messages.shown.isEmpty());

        const QString container = tree.Write(u"my box.vexo"_s, "container");
        h.window.Load(std::vector<std::string>{container.toStdString()}, u"kelvora"_s);
        QCOMPARE(h.Page(), kDecryptPage);
        QCOMPARE(h.Find<QLineEdit>("TxtDecrFile")->text(), container);
    }

    // What a screen reader finds, in every language: every control reached by Tab, and every
    // part of a custom one, has a name; a field is named by its caption; tabs are the selectable
    // parts. Pressing a tab, a flag or a window button through the accessibility layer works.
    void EveryFocusableControlIsNamedInEveryLanguage() {
        for (const int language : {kFrench, kEnglish, kSpanish, kGerman}) {
            Harness h(language);
            h.Click("optMults_1");
            for (QWidget* w : h.window.findChildren<QWidget*>()) {
                QAccessibleInterface* node = QAccessible::queryAccessibleInterface(w);
                const bool hasParts = node->childCount() > 0 && node->child(0)->object() == nullptr;
                const bool tabStop = (w->focusPolicy() & Qt::TabFocus) && !w->isHidden();
                if (tabStop || hasParts) {
                    QVERIFY2(!node->text(QAccessible::Name).isEmpty(), qPrintable(w->objectName()));
                }
                for (int i = 0; hasParts && i < node->childCount(); ++i) {
                    QAccessibleInterface* part = node->child(i);
                    QVERIFY(!part->text(QAccessible::Name).isEmpty());
                    QCOMPARE(part->state().selectable, part->role() == QAccessible::PageTab);
                }
                auto* label = qobject_cast<QLabel*>(w);
                if (label != nullptr && label->buddy() != nullptr) {
                    QCOMPARE(label->buddy()->accessibleName(), label->text());
                }
            }
        }
        Harness h(kGerman);
        const auto node = [&h](const char* name) {
            return QAccessible::queryAccessibleInterface(h.Find(name));
        };
        QAccessibleInterface* strip = node("TabStr");
        QAccessibleInterface* textTab = strip->child(FCrypt::kTextTab);
        QCOMPARE(strip->role(), QAccessible::PageTabList);
        QCOMPARE(node("LblLink")->role(), QAccessible::Link);
        QCOMPARE(node("ImageFR")->text(QAccessible::Name), u"Fran\u00e7ais"_s);
        QCOMPARE(strip->indexOfChild(textTab), FCrypt::kTextTab);
        QVERIFY(!textTab->state().selected);
        textTab->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QCOMPARE(h.Find<LightTab>("TabStr")->ActiveTab(), FCrypt::kTextTab);
        QVERIFY(textTab->state().selected);
        h.Find("TabStr")->setFocus();
        QCOMPARE(strip->focusChild(), textTab);
        node("ImageFR")->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QCOMPARE(h.window.LanguageOffset(), kFrench);
        QCOMPARE(strip->text(QAccessible::Name), Catalogue(kFrench, 523));
        node("IControlBx")
            ->child(0)
            ->actionInterface()
            ->doAction(QAccessibleActionInterface::pressAction());
        QVERIFY(h.window.windowState() & Qt::WindowMinimized);
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

    // A side window opens once however often its button is clicked, speaks the main window's
    // language as its flags change, and goes with the main window.
    void SideWindowsFollowTheMainWindow() {
        const struct {
            const char* button;
            QString name;
            QString label;
            int title;
            int labelText;
        } sides[] = {{"cmdTast", u"FrmTast"_s, u"cmdNr_18"_s, kScreenKeyboardTitle, kSpaceKeyText},
                     {"cmdMail", u"frmEmail"_s, u"lblWarn"_s, kMailTitle, 399},
                     {"cmdAbout", u"FrmAbout"_s, u"LblDescription"_s, kWelcomeTitle, 560}};
        for (const auto& [button, name, label, title, labelText] : sides) {
            Harness h(kGerman);
            h.Fill(u"text"_s, u"pw"_s);
            h.Click("Command1"); // the mail window needs an encrypted text
            // The main window's flag, found before the welcome window brings flags of its own.
            QWidget* spanish = h.Find("ImageES");
            h.Click(button);
            QWidget* side = FindControl(&h.window, name);
            QVERIFY(side->isVisible());
            QCOMPARE(side->windowTitle(), Catalogue(kGerman, title));
            QTest::mouseClick(spanish, Qt::LeftButton);
            QCOMPARE(side->windowTitle(), Catalogue(kSpanish, title));
            QCOMPARE(FindControl(side, label)->property("text").toString(),
                     Catalogue(kSpanish, labelText));
            h.Click(button);
            QCOMPARE(h.window.findChildren<QWidget*>(name).size(), 1);
            side->close();
            QTRY_COMPARE(h.window.findChildren<QWidget*>(name).size(), 0);
            h.Click(button);
            side = FindControl(&h.window, name);
            QVERIFY(side->isVisible());
            h.window.close();
            QVERIFY(!side->isVisible());
        }
    }

    void ScreenKeyboardTypesIntoThePassphraseOnly() {
        Harness h;
        h.Fill(u"text"_s, u"pw"_s);
        h.Click("cmdTast");
        auto* keyboard = FindControl(&h.window, u"FrmTast"_s);
        QTest::mouseClick(FindControl(keyboard, u"cmdNr_19"_s), Qt::LeftButton);
        QTest::mouseClick(FindControl(keyboard, u"cmdNr_18"_s), Qt::LeftButton);
        QCOMPARE(h.Passphrase(), u"pwa "_s);
        QCOMPARE(h.Results(), u"text"_s);
    }

    // The mail window gets the encrypted text while the box shows it, again on each click,
    // keeping what was typed into it.
    void CmdMailHandsOverTheEncryptedText() {
        Harness h(kEnglish, "/text");
        QVERIFY(!h.Find("cmdMail")->isEnabled());
        h.Fill(u"meet at noon"_s, u"pw"_s);
        h.Click("Command1");
        const QString encrypted = h.Results();
        h.Click("cmdMail");
        auto* mail = FindControl(&h.window, u"frmEmail"_s);
        auto* sent = FindControl<QPlainTextEdit>(mail, u"TxtCrypt"_s);
        auto* sender = FindControl<QLineEdit>(mail, u"TxtSender"_s);
        QCOMPARE(sent->toPlainText(), encrypted);
        sender->setText(u"Ann"_s);
        sent->clear();
        h.Click("cmdMail");
        QCOMPARE(sent->toPlainText(), encrypted);
        QCOMPARE(sender->text(), u"Ann"_s);
        // Once the box shows anything else, there is nothing to send.
        h.Find<QPlainTextEdit>("txtResults")->setPlainText(u"meet at noon"_s);
        QVERIFY(!h.Find("cmdMail")->isEnabled());
        h.Find<QPlainTextEdit>("txtResults")->setPlainText(encrypted);
        QVERIFY(h.Find("cmdMail")->isEnabled());
    }

    void WelcomeWindowFlagsChooseTheMainWindowsLanguage() {
        Harness h(kEnglish);
        h.Click("cmdAbout");
        auto* about = FindControl(&h.window, u"FrmAbout"_s);
        QTest::mouseClick(FindControl(about, u"ImageFR"_s), Qt::LeftButton);
        QCOMPARE(h.window.LanguageOffset(), kFrench);
        QCOMPARE(h.Find<QAbstractButton>("Command2")->text(), Catalogue(kFrench, 162));
    }
};

} // namespace kelvora

QTEST_MAIN(kelvora::FCryptTest)
#include "FCryptTest.moc"
